#include "ze/net/GErrorMsg.h"

#include "ze/net/json_text.h"

#include <gtest/gtest.h>

namespace {

using ze::net::GErrorMsg;

TEST(GErrorMsg, a_fresh_one_writes_all_keys) {
    EXPECT_EQ(test::wire_text(GErrorMsg()),
              R"({"code":0,"from":"","ident":0,"subType":"","text":"","to":"","type":"ERROR"})");
}

TEST(GErrorMsg, reads_the_code_as_a_whole_number_or_as_0) {
    for (const auto& [json, expected] : {std::pair(R"({"code":404})", 404),
                                         {R"({"code":-1})", -1},
                                         {R"({"code":4.5})", 0},
                                         {R"({"code":"404"})", 0},
                                         {R"({"code":1e100})", 0},
                                         {R"({"code":null})", 0},
                                         {"{}", 0}}) {
        EXPECT_EQ(test::read<GErrorMsg>(json).code, expected) << json;
    }
}

TEST(GErrorMsg, shows_code_and_text) {
    EXPECT_EQ(
        test::read<GErrorMsg>(
            R"({"type":"ERROR","subType":"s","from":"*","to":"g:a","code":3,"text":"no","ident":2})")
            .to_string()
            .toStdString(),
        "ERROR/s, from:'*', to:'g:a', code:3, text:'no'");
}

}  // namespace
