#include "ze/qt/components/GTimer.h"

#include <QTest>

#include <gtest/gtest.h>

using ze::qt::GTimer;

TEST(GTimer, a_timeout_fires_the_listener) {
    GTimer timer;
    int calls = 0;
    timer.timeout_listener += [&calls] {
        ++calls;
    };
    timer.setInterval(1);
    timer.set_start_stop(true);
    EXPECT_TRUE(timer.isActive());
    EXPECT_TRUE(QTest::qWaitFor([&calls] { return calls >= 2; }));
    timer.set_start_stop(false);
    EXPECT_FALSE(timer.isActive());
}

TEST(GTimer, is_a_child_of_its_owner) {
    QObject owner;
    const auto* const timer = new GTimer(&owner);
    EXPECT_EQ(timer->parent(), &owner);
}
