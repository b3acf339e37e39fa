#include "ze/net/GLogin.h"

#include "ze/net/json_text.h"

#include <gtest/gtest.h>

namespace {

using ze::net::GLogin;

TEST(GLogin, a_fresh_one_has_its_words_and_an_empty_password) {
    EXPECT_EQ(test::wire_text(GLogin()),
              R"({"from":"","ident":0,"pw":"","subType":"login","to":"","type":"LOGIN"})");
}

TEST(GLogin, reads_its_keys_and_takes_the_subType_as_it_comes) {
    EXPECT_EQ(test::wire_text(test::read<GLogin>(R"({"type":"LOGIN","from":"g:a","pw":"s"})")),
              R"({"from":"g:a","ident":0,"pw":"s","subType":"","to":"","type":"LOGIN"})");
    EXPECT_EQ(test::read<GLogin>(R"({"type":"LOGIN","pw":5})").pw, QString());
}

TEST(GLogin, shows_the_password_and_never_ident) {
    EXPECT_EQ(test::read<GLogin>(
                  R"({"type":"LOGIN","subType":"login","from":"g:a","to":"+","pw":"s","ident":2})")
                  .to_string()
                  .toStdString(),
              "LOGIN/login, from:'g:a', to:'+', pw:'s'");
}

}  // namespace
