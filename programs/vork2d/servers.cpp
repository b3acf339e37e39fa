#include "servers.h"

#include "ze/log/pp.h"
#include "ze/qt/GApp.h"

namespace vork2d::servers {

namespace {

constexpr int DEVELOPMENT_PORT = 8888;

/// Where a relay answers, on every host.
QUrl relay_url() {
    QUrl url;
    url.setScheme(QStringLiteral("wss"));
    url.setPath(QStringLiteral("/ws/chat"));
    url.setQuery(QStringLiteral("sessid=play"));
    return url;
}

bool is_host_and_port(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() && url.userInfo().isEmpty();
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
    const QString built_in = QStringLiteral(VORK2D_SERVER_HOST);
    const QString wanted = ze::qt::GApp::argv.get<QString>(QStringLiteral("server"), built_in);
    QUrl url = relay_url();
    url.setAuthority(wanted, QUrl::StrictMode);
    if (is_host_and_port(url)) {
        return url;
    }
    ze::pp_error("servers::default_url, '$' is no host or host:port", wanted);
    url = relay_url();
    url.setAuthority(built_in);
    return url;
}

QString default_name() {
    return default_url().authority();
}

}  // namespace vork2d::servers
