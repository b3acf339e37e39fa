#include "ze/net/GAdmin.h"

#include "ze/net/json_text.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

using ze::net::GAdmin;

TEST(GAdmin, a_fresh_one_writes_a_null_payload) {
    EXPECT_EQ(
        test::wire_text(GAdmin()),
        R"({"cmd":"","from":"","ident":0,"payload":null,"subType":"","to":"","type":"ADMIN"})");
}

TEST(GAdmin, takes_any_payload_as_it_stands) {
    for (const char* payload :
         {"null", "true", "1.5", R"("x")", R"([1,[2]])", R"({"a":{"b":1}})"}) {
        const std::string json = std::string(R"({"cmd":"c","from":"","ident":0,"payload":)") +
                                 payload + R"(,"subType":"","to":"","type":"ADMIN"})";
        EXPECT_EQ(test::wire_text(test::read<GAdmin>(json.c_str())), json);
    }
}

TEST(GAdmin, a_missing_payload_goes_out_as_null) {
    EXPECT_EQ(
        test::wire_text(test::read<GAdmin>(R"({"type":"ADMIN","cmd":"c"})")),
        R"({"cmd":"c","from":"","ident":0,"payload":null,"subType":"","to":"","type":"ADMIN"})");
}

TEST(GAdmin, shows_the_subType_if_there_is_one) {
    const struct {
        const char* json;
        const char* expected;
    } rows[] = {
        {R"({"subType":"s","from":"a","to":"b","cmd":"c","payload":{"k":1}})",
         R"(ADMIN/s, from:'a', to:'b', cmd:'c', payload:'{"k":1}')"},
        {R"({"from":"a","to":"b","cmd":"c","payload":{"k":1}})",
         R"(ADMIN, from:'a', to:'b', cmd:'c', payload:'{"k":1}')"},
        {R"({"cmd":"c"})", "ADMIN, from:'', to:'', cmd:'c', payload:''"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(test::read<GAdmin>(row.json).to_string().toStdString(), row.expected);
    }
}

TEST(GAdmin, show_logs_the_indented_text_line_by_line) {
    const GAdmin admin = test::read<GAdmin>(R"({"type":"ADMIN","cmd":"$","payload":[true]})");
    const test::LogCapture log;
    admin.show(2);
    EXPECT_EQ(log.lines_with_level(), (test::Lines{
                                          "DEB   {",
                                          R"(DEB       "cmd": "$",)",
                                          R"(DEB       "from": "",)",
                                          R"(DEB       "ident": 0,)",
                                          R"(DEB       "payload": [)",
                                          "DEB           true",
                                          "DEB       ],",
                                          R"(DEB       "subType": "",)",
                                          R"(DEB       "to": "",)",
                                          R"(DEB       "type": "ADMIN")",
                                          "DEB   }",
                                      }));
}

}  // namespace
