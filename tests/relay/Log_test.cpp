#include "Log.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Log, a_line_has_a_stamp_a_word_and_fields) {
    std::string line;
    const relay::Log log([&line](std::string_view text) { line = text; });
    log.event("login", {{"name", "a\nb"}, {"members", 2}});
    EXPECT_EQ(line.substr(25), R"(login name="a\u000ab" members=2)");
    EXPECT_EQ(line[4], '-');
    EXPECT_EQ(line[10], 'T');
    EXPECT_EQ(line.substr(23, 2), "Z ");
}

}  // namespace
