// A home folder of its own for one run of a test program, so that no test reads or writes the
// user's settings.
#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

namespace test {

/// Sets HOME and the XDG folders to a fresh directory; it is removed with this object. Make it a
/// static of main: the settings are written once more behind main, and would make the folder again.
/// A death test that starts the program anew kills it before it removes its own, so that lies
/// inside its parent's.
class IsolatedHome {
public:
    IsolatedHome()
        : dir(qEnvironmentVariable(OUTER, QDir::tempPath()) + QStringLiteral("/home-XXXXXX")) {
        qputenv(OUTER, dir.path().toUtf8());
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
            qputenv(name, dir.path().toUtf8());
        }
    }

    /// The child that a death test forks may come here, too, and leaves the folder to its parent.
    ~IsolatedHome() { dir.setAutoRemove(QCoreApplication::applicationPid() == owner); }
    IsolatedHome(const IsolatedHome&) = delete;
    IsolatedHome& operator=(const IsolatedHome&) = delete;

private:
    static constexpr const char* OUTER = "VORK2D_TEST_HOME";

    const qint64 owner = QCoreApplication::applicationPid();
    QTemporaryDir dir;  // made with mode 0700, as a runtime folder has to be
};

}  // namespace test
