#include "ze/store/GDelimiter.h"

#include <QByteArray>

#include <gtest/gtest.h>

namespace {

using ze::GDelimiter;

TEST(GDelimiter, ascii_table_is_these_bytes) {
    EXPECT_EQ(
        QByteArray(GDelimiter::pDelimASCII).toHex(' ').toStdString(),
        "20 09 7b 2c 3b 3a 2e 2f 7d 28 29 5b 5d 40 5c 2b 2d 2a 2f 25 5e 23 21 3f 3c 3e 7c 26 7e 3d "
        "22 27 60");
}

TEST(GDelimiter, sentence_table_is_these_bytes) {
    EXPECT_STREQ(GDelimiter::pDelimASCII_Sentence, ".!?");
}

TEST(GDelimiter, chinese_table_holds_these_characters_in_order) {
    const char16_t expected[] =
        u"\u3002\uFF01\uFF0E\uFF0C\uFF1F\uFF1A\u2026\uFF08\uFF09\u9AD8\u201D\u300A"
        u"\u300B\u201C\u3000";

    EXPECT_EQ(GDelimiter::sDelimChinese(), QString::fromUtf16(expected));
}

TEST(GDelimiter, chinese_array_holds_one_character_in_each_string) {
    QString joined;
    for (const char* character : GDelimiter::arDelimChinese) {
        EXPECT_EQ(QString::fromUtf8(character).size(), 1);
        joined += QString::fromUtf8(character);
    }

    EXPECT_EQ(joined, GDelimiter::sDelimChinese());
}

TEST(GDelimiter, joined_tables_are_ascii_then_chinese) {
    EXPECT_EQ(GDelimiter::sDelimAscii(), QString::fromLatin1(GDelimiter::pDelimASCII));
    EXPECT_EQ(GDelimiter::sDelimAscii_Sentence(), QStringLiteral(".!?"));
    EXPECT_EQ(GDelimiter::sDelimAll(), GDelimiter::sDelimAscii() + GDelimiter::sDelimChinese());
    EXPECT_EQ(GDelimiter::sDelimAll_Sentence(),
              QStringLiteral(".!?") + GDelimiter::sDelimChinese());
}

}  // namespace
