#include "ze/qt/world_lang.h"

#include "support/QtPrinters.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;

TEST(WorldLang, names_follow_the_standard) {
    const auto& names = get_map_world_lang();
    const std::pair<const char*, const char*> rows[] = {
        {"ab", "Abkhazian"},     {"af", "Afrikaans"},
        {"an", "Aragonese"},     {"nb", "Norwegian Bokmal"},
        {"cu", "Church Slavic"}, {"ii", "Sichuan Yi"},
        {"zu", "Zulu"},
    };
    for (const auto& [code, name] : rows) {
        EXPECT_EQ(names.at(QLatin1String(code)), QLatin1String(name)) << code;
    }
    EXPECT_EQ(names.size(), 183U);
}

TEST(WorldLang, every_code_has_two_lower_case_letters) {
    for (const auto& [code, name] : get_map_world_lang()) {
        const bool wellFormed =
            code.size() == 2 && code[0].isLower() && code[1].isLower() && !name.isEmpty();
        EXPECT_TRUE(wellFormed) << code.toStdString();
    }
}

TEST(WorldLang, the_short_table_is_a_selection_of_the_long_one) {
    const auto& all = get_map_world_lang();
    const auto& twenty = get_map_world_lang_20();
    EXPECT_EQ(twenty.size(), 20U);
    EXPECT_TRUE(std::includes(all.begin(), all.end(), twenty.begin(), twenty.end()));
    for (const char* code : {"pt", "ja", "id", "vi"}) {
        EXPECT_TRUE(twenty.contains(QLatin1String(code))) << code;
    }
}

TEST(WorldLang, the_vector_keeps_its_order_and_holds_the_short_table) {
    const std::vector<WorldLang> vector = create_vector_world_lang_20();
    EXPECT_EQ(vector.front(), WorldLang(QStringLiteral("en"), QStringLiteral("English")));
    EXPECT_EQ(vector, create_vector_world_lang_20());
    const std::map<QString, QString> asMap(vector.begin(), vector.end());
    EXPECT_EQ(asMap, get_map_world_lang_20());
}

TEST(WorldLang, the_tables_are_built_once) {
    EXPECT_EQ(&get_map_world_lang(), &get_map_world_lang());
    EXPECT_EQ(&get_map_world_lang_20(), &get_map_world_lang_20());
}

}  // namespace
