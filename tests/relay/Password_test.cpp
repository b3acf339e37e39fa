#include "Password.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Password, only_the_same_text_matches) {
    const relay::Password password("secret");
    EXPECT_TRUE(password.matches("secret"));
    for (const char* other : {"", "secre", "secrets", "Secret", "secret "}) {
        EXPECT_FALSE(password.matches(other)) << other;
    }
}

TEST(Password, the_same_text_leaves_another_digest_each_time) {
    const relay::Password one("secret");
    const relay::Password two("secret");
    EXPECT_NE(std::memcmp(&one, &two, sizeof one), 0);
}

TEST(Password, a_long_text_matches_to_its_last_character) {
    const relay::Password password(std::string(10000, 'x'));
    EXPECT_TRUE(password.matches(std::string(10000, 'x')));
    EXPECT_FALSE(password.matches(std::string(9999, 'x') + "y"));
}

}  // namespace
