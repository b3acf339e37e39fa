#include "support/IsolatedHome.h"
#include "support/offscreen.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    static const test::IsolatedHome home;
    test::use_offscreen_platform();
    testing::InitGoogleTest(&argc, argv);
    const QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
