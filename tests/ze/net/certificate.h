// A self-signed certificate of the test's own, made by the openssl program.
#pragma once

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QStringList>
#include <QTemporaryDir>

namespace test {

/// For a server on 127.0.0.1; without certificate if openssl is not there or fails.
inline QSslConfiguration self_signed() {
    const QTemporaryDir dir;
    const QString key = dir.filePath(QStringLiteral("key.pem"));
    const QString certificate = dir.filePath(QStringLiteral("certificate.pem"));
    QProcess::execute(QStringLiteral("openssl"),
                      QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 "
                                     "-nodes -days 2 -subj /CN=127.0.0.1 -keyout %1 -out %2")
                          .arg(key, certificate)
                          .split(QLatin1Char(' ')));
    QFile file(key);
    QSslConfiguration tls;
    if (file.open(QIODevice::ReadOnly)) {
        tls.setPrivateKey(QSslKey(&file, QSsl::Ec));
        tls.setLocalCertificateChain(QSslCertificate::fromPath(certificate));
    }
    return tls;
}

}  // namespace test
