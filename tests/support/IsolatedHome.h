// A home folder of its own for one run of a test program, so that no test reads or writes the
// user's settings.
#pragma once

#include <QTemporaryDir>

namespace test {

/// Sets HOME and the XDG folders to a fresh directory; it is removed with this object.
class IsolatedHome {
public:
    IsolatedHome() {
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
            qputenv(name, dir.path().toUtf8());
        }
    }

private:
    QTemporaryDir dir;  // made with mode 0700, as a runtime folder has to be
};

}  // namespace test
