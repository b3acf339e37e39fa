// A mouse event in the formatter, where no header but the formatter's own is included.
#include "ze/tools/format.h"

#include <gtest/gtest.h>

class QMouseEvent;

namespace {

TEST(mouse_format, prints_a_mouse_event_without_the_header_of_its_text) {
    QMouseEvent* const none = nullptr;
    const QMouseEvent* const none_to_read = nullptr;
    EXPECT_EQ(ze::str::xprintF(0, "$,$", none, none_to_read), "nullptr,nullptr");
}

}  // namespace
