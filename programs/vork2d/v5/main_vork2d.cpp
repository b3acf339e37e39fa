// The whole of the program's start and end.

#include "main_vork2d.h"

#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/resources.h"
#include "ze/tools/os.h"

#include "Window.h"
#include "vork2d/servers.h"

#include <QIcon>

namespace vork {

/// Empty on the desktop; a browser build filters keys here that the page would take.
static void install_filter_WASM_bla_bla() {}

}  // namespace vork

namespace {

constexpr unsigned SETTINGS_FORMAT = 110;  // an older store is cleared
constexpr unsigned DEFAULT_THEME = 1;      // dark

void resize_to_device(vork2d::v5::Window& window) {
    if (ze::os::is_desktop()) {
        window.resize(800, 600);
    } else {
        window.resize(400, 600);
    }
}

QString host_from_command_line() {
    namespace servers = vork2d::servers;
    const QString known = servers::default_name();
    QString host = ze::qt::GApp::argv.get<QString>(QStringLiteral("host"), known);
    if (host == servers::development_alias()) {
        host = servers::development_name();
    }
    // A default server that is none has been told of already, and nothing connects to it.
    const bool flagKnown =
        host.compare(known, Qt::CaseInsensitive) == 0 || host == servers::development_name();
    if (!flagKnown && !servers::default_url().isEmpty()) {
        ze::pp_format(ze::log::WARN, 0, "host '$' is unknown, --login takes the default server '$'",
                      host, known);
    }
    return host;
}

}  // namespace

int qMain(int argc, char** argv) {
    using ze::qt::GApp;

    vork::install_filter_WASM_bla_bla();
    GApp::prepare_settings(QStringLiteral(VORK2D_ORGANISATION), SETTINGS_FORMAT, true,
                           ze::os::get_program_name_qs());
    GApp app(argc, argv, nullptr);

    const QString user =
        GApp::argv.get<QString>(QStringLiteral("user"), QStringLiteral("group1:Nilo"));
    const QString pass = GApp::argv.get<QString>(QStringLiteral("pass"), QString());
    const QString host = host_from_command_line();
    ze::pp("user '$'", user);
    ze::qt::set_res_prefix(QStringLiteral(":/wb/shared-res"));
    QApplication::setWindowIcon(QIcon(ze::qt::get_res_path(QStringLiteral("^icons/vork2d.svg"))));

    vork2d::v5::Window window;
    window.follow_orientation(app.orientation_detector);
    window.set_theme_default(DEFAULT_THEME);
    const bool flagLogin = GApp::argv.get<bool>(QStringLiteral("login"), false);
    window.post_ini_hook = [&window, user, pass, host, flagLogin] {
        window.post_after_ini(user, pass, host, flagLogin);
    };
    resize_to_device(window);
    window.setup();
    window.show();
    return QApplication::exec();
}
