#include "servers.h"

#include "ze/log/pp.h"
#include "ze/qt/GApp.h"

#include <optional>

namespace vork2d::servers {

namespace {

constexpr int DEVELOPMENT_PORT = 8888;
constexpr int DEFAULT_PORT = 443;  // of the scheme

/// Where a relay answers, on every host.
QUrl relay_url() {
    QUrl url;
    url.setScheme(QStringLiteral("wss"));
    url.setPath(QStringLiteral("/ws/chat"));
    url.setQuery(QStringLiteral("sessid=play"));
    return url;
}

/// The address of a relay at HOST or HOST:PORT; empty for any other text.
QUrl relay_url(const QString& hostAndPort) {
    QUrl url = relay_url();
    url.setAuthority(hostAndPort, QUrl::StrictMode);
    const bool named = url.isValid() && !url.host().isEmpty();
    return named && !hostAndPort.contains(u'@') && url.port(DEFAULT_PORT) > 0 ? url : QUrl();
}

/// What takes the place of the default server, as the command line says it.
QString wanted_server() {
    const QString key = QStringLiteral("server");
    if (ze::qt::GApp::argv.is_flag(key, false)) {
        return {};  // the key stands there without a value
    }
    return ze::qt::GApp::argv.get<QString>(key, QStringLiteral(VORK2D_SERVER_HOST));
}

QUrl parse_server(const QString& wanted) {
    const QUrl url = relay_url(wanted);
    if (url.isEmpty()) {
        ze::pp_error("servers::default_url, '$' is no host or host:port", wanted);
    }
    return url;
}

}  // namespace

QString development_name() {
    return QStringLiteral("localhost");
}

QString development_alias() {
    return QStringLiteral(VORK2D_DEV_HOST);
}

QUrl development_url() {
    QUrl url = relay_url();
    url.setHost(development_alias());
    url.setPort(DEVELOPMENT_PORT);
    return url;
}

QUrl default_url() {
    static std::optional<QString> parsed;  // each text once, so that a bad one is reported once
    static QUrl url;
    const QString wanted = wanted_server();
    if (parsed != wanted) {
        parsed = wanted;
        url = parse_server(wanted);
    }
    return url;
}

QString default_name() {
    const QUrl url = default_url();
    if (url.isEmpty()) {
        return wanted_server();
    }
    const QString name = url.authority();
    // What bears its name, or the alias of that, would be taken for the development relay.
    const bool taken = name == development_name() || name == development_alias();
    return taken ? name + QLatin1Char(':') + QString::number(DEFAULT_PORT) : name;
}

}  // namespace vork2d::servers
