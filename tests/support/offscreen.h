// Lets the tests of widgets run where no display is.
#pragma once

#include <QtGlobal>

namespace test {

/// Widgets live on Qt's offscreen platform unless the caller has named another one.
inline void use_offscreen_platform() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

}  // namespace test
