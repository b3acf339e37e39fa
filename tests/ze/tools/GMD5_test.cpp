#include "ze/tools/GMD5.h"

#include <QString>

#include <cstring>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using ze::checksum::GMD5;

QString hex_of(const GMD5& digest) {
    return QString::fromLatin1(digest.get_result().toHex());
}

TEST(GMD5, digests_bytes_as_everybody_does) {
    GMD5 digest;
    EXPECT_EQ(hex_of(digest), QStringLiteral("d41d8cd98f00b204e9800998ecf8427e"));
    digest.add_bytes("ab", 2);
    digest.add_bytes("c", 1);
    digest.add_bytes(nullptr, 0);
    EXPECT_EQ(hex_of(digest), QStringLiteral("900150983cd24fb0d6963f7d28e17f72"));
}

TEST(GMD5, puts_the_number_of_bytes_before_a_text) {
    const QString text = QStringLiteral("Grüße");
    const quint64 size = 7;
    QByteArray bytes(reinterpret_cast<const char*>(&size), sizeof(size));
    bytes += text.toUtf8();
    GMD5 by_text;
    by_text.add_string(text);
    GMD5 by_bytes;
    by_bytes.add_bytes(bytes.constData(), static_cast<unsigned long long>(bytes.size()));
    EXPECT_EQ(by_text.get_result(), by_bytes.get_result());
}

TEST(GMD5, tells_an_empty_text_from_none_and_texts_from_their_sum) {
    GMD5 none;
    GMD5 empty;
    empty.add_string(QString());
    EXPECT_NE(empty.get_result(), none.get_result());
    GMD5 two;
    two.add_string(QStringLiteral("a"));
    two.add_string(QStringLiteral("b"));
    GMD5 one;
    one.add_string(QStringLiteral("ab"));
    EXPECT_NE(two.get_result(), one.get_result());
}

TEST(GMD5, goes_on_after_a_result) {
    GMD5 digest;
    digest.add_bytes("ab", 2);
    EXPECT_EQ(digest.get_result().size(), 16);
    digest.add_bytes("c", 1);
    EXPECT_EQ(digest.get_result_as_string(false),
              QStringLiteral("900150983cd24fb0d6963f7d28e17f72"));
    EXPECT_EQ(digest.get_result_as_string(true),
              QStringLiteral("900150983CD24FB0D6963F7D28E17F72"));
}

struct Row {
    int flags;
    const char* text;
};

TEST(GMD5, writes_a_digest_as_its_flags_ask) {
    const QByteArray digest("\x01\xab\xff", 3);
    for (const Row& row : {Row{0, "01abff"}, Row{1, "01abff"}, Row{2, "01ABFF"},
                           Row{4, "01 ab ff "}, Row{6, "01 AB FF "}}) {
        EXPECT_EQ(GMD5::hash_string(digest, row.flags), QLatin1String(row.text)) << row.flags;
    }
    EXPECT_EQ(GMD5::hash_string({}, 6), QString());
}

TEST(GMD5, writes_upper_case_with_blanks_whatever_the_flag) {
    const QByteArray digest("\x01\xab", 2);
    EXPECT_EQ(GMD5::hash_string_x(digest, false), QStringLiteral("01 AB "));
    EXPECT_EQ(GMD5::hash_string_x(digest, true), QStringLiteral("01 AB "));
}

TEST(GMD5_DeathTest, ends_the_program_for_bytes_at_null) {
    // The text goes to the standard output; a death test looks at the standard error.
    const auto add_null = [] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        GMD5().add_bytes(nullptr, 1);
    };
    EXPECT_EXIT(add_null(), testing::ExitedWithCode(1),
                "^nullptr:bytes == NULL\nsrc/ze/tools/GMD5\nLINE:");
}

}  // namespace
