// gallery [--pictures FOLDER] [--__bounds x,y,width,height]
#include "ze/qt/GApp.h"
#include "ze/qt/resources.h"
#include "ze/tools/os.h"

#include "GalleryWindow.h"

#include <QMetaObject>

int main(int argc, char** argv) {
    using ze::qt::GApp;
    GApp::prepare_settings(QStringLiteral("vork2d.example"), 0, false,
                           ze::os::get_program_name_qs());
    GApp app(argc, argv, nullptr);
    ze::qt::set_res_prefix(QStringLiteral(":/wb/shared-res"));
    gallery::GalleryWindow window;
    window.resize(900, 700);
    window.setup();
    window.show();
    const auto folder = GApp::argv.get<QString>(QStringLiteral("pictures"), {});
    if (!folder.isEmpty()) {
        QMetaObject::invokeMethod(
            &window, [&window, folder] { window.save_pictures(folder); }, Qt::QueuedConnection);
    }
    return GApp::exec();
}
