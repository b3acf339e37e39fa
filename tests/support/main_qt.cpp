#include "support/IsolatedHome.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const test::IsolatedHome home;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    const QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
