// The queries that look at the running system, on the offscreen platform: one screen, no touch at
// first.
#include "ze/tools/os.h"

#include <QGuiApplication>
#include <QPointingDevice>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

namespace {

namespace os = ze::os;

TEST(os_screen, has_the_size_of_the_primary_screen) {
    const QSize size = QGuiApplication::primaryScreen()->size();
    bool ok = false;
    EXPECT_EQ(os::get_view_port_size(ok), size);
    EXPECT_TRUE(ok);
    EXPECT_EQ(os::primary_screen_size(), size);
    EXPECT_EQ(os::smallest_width_or_height(), std::min(size.width(), size.height()));
}

TEST(os_screen, is_no_small_device_from_600_pixels_on) {
    ASSERT_GE(os::smallest_width_or_height(), 600);
    EXPECT_FALSE(os::is_small_device());
}

TEST(os_screen, has_no_touch_screen) {
    EXPECT_FALSE(os::is_touch_device());
}

TEST(os_screen, counts_a_touch_screen_and_no_touch_pad_as_touch) {
    using Type = QInputDevice::DeviceType;
    const std::unique_ptr<QPointingDevice> pad(QTest::createTouchDevice(Type::TouchPad));
    EXPECT_FALSE(os::is_touch_device());
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice(Type::TouchScreen));
    EXPECT_TRUE(os::is_touch_device());
}

}  // namespace
