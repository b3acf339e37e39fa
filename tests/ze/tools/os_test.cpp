#include "ze/tools/os.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <algorithm>

#include <gtest/gtest.h>

namespace {

namespace os = ze::os;

#if defined(__linux__)
TEST(os, answers_for_a_desktop_linux) {
    EXPECT_TRUE(os::is_linux());
    EXPECT_TRUE(os::is_desktop());
    EXPECT_TRUE(os::is_window_based_platform());
    EXPECT_FALSE(os::is_windows());
    EXPECT_FALSE(os::is_mac());
    EXPECT_FALSE(os::is_android());
    EXPECT_FALSE(os::is_wasm());
    EXPECT_FALSE(os::is_sandboxed());
    EXPECT_FALSE(os::is_mobile());
}
#endif

TEST(os, counts_the_bits_of_a_pointer) {
    EXPECT_EQ(os::get_os_bit_system(), sizeof(void*) * 8);
    EXPECT_EQ(os::is_64_bit(), sizeof(void*) == 8);
    EXPECT_EQ(os::is_32_bit(), sizeof(void*) == 4);
}

TEST(os, is_called_linux) {
    EXPECT_EQ(os::get_os_name(), "Linux");
    EXPECT_EQ(os::get_os_name_qs(), QStringLiteral("Linux"));
}

TEST(os, names_the_program_by_its_file) {
    EXPECT_EQ(os::get_program_name(), "os_test");
    EXPECT_EQ(os::get_program_name_qs(), QStringLiteral("os_test"));
}

#if defined(__linux__)
/// Runs the present test again in a copy of this program, which has the name and removes itself.
void name_a_removed_program(const QString& name) {
    const QString mark = QStringLiteral("THIS_COPY_IS_REMOVED");
    const QString self = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (environment.contains(mark)) {
        ASSERT_TRUE(QFile::remove(self));
        EXPECT_EQ(os::get_program_name_qs(), name);
        return;
    }
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(self, folder.filePath(name)));
    environment.insert(mark, name);
    QProcess copy;
    copy.setProcessEnvironment(environment);
    copy.setProcessChannelMode(QProcess::ForwardedChannels);
    copy.start(folder.filePath(name),
               {QStringLiteral("--gtest_filter=os.") +
                QLatin1String(testing::UnitTest::GetInstance()->current_test_info()->name())});
    ASSERT_TRUE(copy.waitForFinished());
    EXPECT_EQ(copy.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(copy.exitCode(), 0);
    EXPECT_FALSE(QFile::exists(folder.filePath(name)));
}

TEST(os, names_the_program_by_its_file_when_that_was_removed) {
    name_a_removed_program(QStringLiteral("game"));
}

TEST(os, leaves_the_name_of_a_program_that_is_called_deleted) {
    name_a_removed_program(QStringLiteral("game (deleted)"));
}
#endif

TEST(os, without_a_screen_has_no_size_and_is_not_small) {
    bool ok = true;
    EXPECT_EQ(os::get_view_port_size(ok), QSize(-1, -1));
    EXPECT_FALSE(ok);
    EXPECT_EQ(os::primary_screen_size(), QSize(-1, -1));
    EXPECT_EQ(os::smallest_width_or_height(), -1);
    EXPECT_FALSE(os::is_small_device());
    EXPECT_FALSE(os::is_touch_device());
}

struct ScreenRow {
    int width;
    int height;
    bool isSmall;
};

TEST(os, is_small_where_the_shorter_side_of_the_screen_has_less_than_600_pixels) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QTemporaryDir folder;
    const QString config = folder.filePath(QStringLiteral("screens.json"));
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.toUtf8());
    for (const auto& [width, height, isSmall] :
         {ScreenRow{200, 900, true}, ScreenRow{900, 599, true}, ScreenRow{600, 900, false}}) {
        QFile file(config);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"screens":[{"name":"only","x":0,"y":0,"logicalDpi":96,"logicalBaseDpi":96,)"
                   R"("dpr":1,"width":)" +
                   QByteArray::number(width) + ",\"height\":" + QByteArray::number(height) + "}]}");
        file.close();
        const QGuiApplication app(argc, argv);
        EXPECT_EQ(os::primary_screen_size(), QSize(width, height));
        EXPECT_EQ(os::smallest_width_or_height(), std::min(width, height));
        EXPECT_EQ(os::is_small_device(), isSmall) << width << 'x' << height;
    }
}

}  // namespace
