// The application object of the framework on the offscreen platform, with the program's resources.
#include "ze/log/LogConsole.h"
#include "ze/log/log.h"
#include "ze/qt/GApp.h"
#include "ze/qt/resources.h"

#include "support/IsolatedHome.h"
#include "support/offscreen.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    static const test::IsolatedHome home;
    test::use_offscreen_platform();
    testing::InitGoogleTest(&argc, argv);
    ze::qt::GApp::prepare_settings(QStringLiteral("vork2d.example"), 0, false,
                                   QStringLiteral("tests"));
    const ze::qt::GApp app(argc, argv, nullptr);
    ze::log::remove_log_appender(&ze::log::consoleLogger);
    ze::qt::set_res_prefix(QStringLiteral(":/wb/shared-res"));
    return RUN_ALL_TESTS();
}
