#include "ze/net/GPong.h"

#include "ze/net/json_text.h"

#include <gtest/gtest.h>

namespace {

using ze::net::GPong;

TEST(GPong, a_fresh_one_writes_the_envelope) {
    EXPECT_EQ(test::wire_text(GPong()),
              R"({"from":"","ident":0,"subType":"","to":"","type":"PONG"})");
}

TEST(GPong, shows_its_own_word_whatever_came_in) {
    EXPECT_EQ(test::read<GPong>(R"({"type":"X","subType":"s","from":"g:a","to":"+","ident":3})")
                  .to_string()
                  .toStdString(),
              "PONG, from:'g:a', to:'+'");
}

}  // namespace
