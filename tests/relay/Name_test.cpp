#include "Name.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using relay::Reason;

struct Row {
    const char* title;
    std::string text;
};

TEST(Name, names_of_many_scripts_are_good) {
    const Row rows[] = {
        {"ASCII", "Odo_the-2nd.(x)"},
        {"German", "Jürgen"},
        {"Czech", "Přemysl"},
        {"Turkish", "İbrahim"},
        {"Vietnamese", "NguyễnThịHạnh"},
        {"Vietnamese, decomposed", "Nguye\u0302\u0303n"},
        {"Greek", "Ἀλέξανδρος"},
        {"Russian", "Йосиф"},
        {"Hebrew", "משה"},
        {"Hebrew with points", "מֹשֶׁה"},
        {"Hebrew, a letter with three points", "\u05E9\u05BC\u05C1\u05B8לום"},
        {"Arabic", "محمد"},
        {"Arabic with vowels", "مُحَمَّد"},
        {"Persian", "پژمان"},
        {"Urdu", "ٹیپو"},
        {"Devanagari", "श्रीकृष्ण"},
        {"Devanagari with a dot", "फ़िरोज़"},
        {"Bengali", "রবীন্দ্রনাথ"},
        {"Tamil", "ஸ்ரீதர்"},
        {"Telugu", "కృష్ణ"},
        {"Sinhala", "ශිල්පා"},
        {"Thai", "สมหญิง"},
        {"Thai with a vowel and a tone", "ที่รัก"},
        {"Lao", "ບຸນມີ"},
        {"Burmese", "မျိုးမြင့်"},
        {"Burmese, four marks in a row", "လှို့"},
        {"Khmer", "ស្រីមុំ"},
        {"Tibetan", "བསྟན་འཛིན"},
        {"Tibetan, a tall stack", "བསྒྲུབས"},
        {"Amharic", "አበበ"},
        {"Georgian", "გიორგი"},
        {"Armenian", "Արամ"},
        {"Cherokee", "ᏎᏉᏯ"},
        {"Chinese", "李小龙"},
        {"Chinese beyond the first plane", "𠮷野"},
        {"Japanese", "さくらジョー"},
        {"Japanese, decomposed", "か\u3099"},
        {"Korean", "김민준"},
        {"Korean, decomposed", "\u1100\u1175\u11B7"},
        {"Mongolian", "ᠪᠠᠲᠤ"},
        {"Yoruba", "Ọlá\u0300"},
        {"emoji", "🏓❤🇮🇸👍🏽"},
        {"symbols", "♞½²★"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(relay::name_fault("g:" + row.text), std::nullopt) << row.title;
        EXPECT_EQ(relay::name_fault(row.text + ":a"), std::nullopt) << row.title;
    }
}

TEST(Name, a_name_with_a_character_that_is_not_seen_is_refused) {
    const Row rows[] = {
        {"comma", ","},
        {"blank", " "},
        {"tabulator", "\t"},
        {"zero", std::string(1, '\0')},
        {"C1 control", "\u0085"},
        {"no-break space", "\u00A0"},
        {"soft hyphen", "\u00AD"},
        {"grapheme joiner", "\u034F"},
        {"Arabic letter mark", "\u061C"},
        {"Hangul filler, leading", "\u115F"},
        {"Hangul filler, vowel", "\u1160"},
        {"Ogham space", "\u1680"},
        {"Khmer inherent vowel", "\u17B4"},
        {"Mongolian selector", "\u180B"},
        {"Mongolian vowel separator", "\u180E"},
        {"em space", "\u2003"},
        {"zero-width space", "\u200B"},
        {"zero-width joiner", "\u200D"},
        {"right-to-left mark", "\u200F"},
        {"line separator", "\u2028"},
        {"right-to-left override", "\u202E"},
        {"word joiner", "\u2060"},
        {"invisible times", "\u2062"},
        {"right-to-left isolate", "\u2067"},
        {"empty Braille cell", "\u2800"},
        {"Tifinagh joiner", "\u2D7F"},
        {"ideographic space", "\u3000"},
        {"Hangul filler", "\u3164"},
        {"private use", "\uE000"},
        {"noncharacter in the first plane", "\uFDD0"},
        {"variation selector", "\uFE0F"},
        {"byte order mark", "\uFEFF"},
        {"narrow Hangul filler", "\uFFA0"},
        {"annotation anchor", "\uFFF9"},
        {"object replacement", "\uFFFC"},
        {"noncharacter at the end of the first plane", "\uFFFE"},
        {"Brahmi number joiner", "\U0001107F"},
        {"Egyptian vertical joiner", "\U00013430"},
        {"Egyptian format control", "\U0001343F"},
        {"Egyptian blank", "\U00013441"},
        {"Egyptian half blank", "\U00013442"},
        {"Khitan filler", "\U00016FE4"},
        {"shorthand control", "\U0001BCA0"},
        {"null notehead", "\U0001D159"},
        {"musical control", "\U0001D173"},
        {"noncharacter of a later plane", "\U0001FFFF"},
        {"unassigned", "\U00050000"},
        {"tag", "\U000E0041"},
        {"late variation selector", "\U000E01EF"},
        {"private use of the last plane", "\U0010FFFD"},
        {"last noncharacter", "\U0010FFFF"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(relay::name_fault("g:a" + row.text), Reason::NAME_BAD_CHARACTER) << row.title;
        EXPECT_EQ(relay::name_fault("g" + row.text + ":a"), Reason::NAME_BAD_CHARACTER)
            << row.title;
    }
}

std::string marks(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "\u0301";
    }
    return text;
}

TEST(Name, four_marks_in_a_row_are_good_and_five_are_not) {
    EXPECT_EQ(relay::name_fault("g:a" + marks(4) + "b" + marks(4)), std::nullopt);
    EXPECT_EQ(relay::name_fault("g:a" + marks(5)), Reason::NAME_BAD_CHARACTER);
    EXPECT_EQ(relay::name_fault("g:a" + marks(60)), Reason::NAME_BAD_CHARACTER);
    EXPECT_EQ(relay::name_fault("g:a" + marks(2) + "\u20DD" + marks(2)),
              Reason::NAME_BAD_CHARACTER);
}

TEST(Name, a_mark_without_a_letter_is_refused) {
    EXPECT_EQ(relay::name_fault("\u0301g:a"), Reason::NAME_BAD_CHARACTER);
    EXPECT_EQ(relay::name_fault("g:\u0301a"), Reason::NAME_BAD_CHARACTER);
    EXPECT_EQ(relay::name_fault("g:a:\u0301"), Reason::NAME_BAD_CHARACTER);
}

TEST(Name, the_parts_meet_at_the_first_colon) {
    EXPECT_EQ(relay::group_of("g:a:b"), "g");
    EXPECT_EQ(relay::user_of("g:a:b"), "a:b");
    EXPECT_EQ(relay::group_of("g"), "g");
    EXPECT_EQ(relay::user_of("g"), "");
}

}  // namespace
