#include "ze/net/GPing.h"

#include "ze/net/json_text.h"

#include <gtest/gtest.h>

namespace {

using ze::net::GPing;

TEST(GPing, a_fresh_one_writes_the_envelope) {
    EXPECT_EQ(test::wire_text(GPing()),
              R"({"from":"","ident":0,"subType":"","to":"","type":"PING"})");
}

TEST(GPing, shows_its_own_word_whatever_came_in) {
    EXPECT_EQ(test::read<GPing>(R"({"type":"X","subType":"s","from":"g:a","to":"+","ident":3})")
                  .to_string()
                  .toStdString(),
              "PING, from:'g:a', to:'+'");
}

}  // namespace
