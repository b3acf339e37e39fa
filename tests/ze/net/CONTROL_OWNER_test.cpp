#include "ze/net/CONTROL_OWNER.h"

#include <gtest/gtest.h>

namespace {

TEST(CONTROL_OWNER, owners_have_their_numbers) {
    EXPECT_EQ(ze::net::LOCAL, 0U);
    EXPECT_EQ(ze::net::REMOTE, 1U);
}

}  // namespace
