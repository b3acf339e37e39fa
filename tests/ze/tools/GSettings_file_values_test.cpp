// What becomes of the values in the file that GSettings keeps: none can do harm, and none that
// cannot is lost.
#include "ze/store/GType.h"
#include "ze/tools/GSettings.h"
#include "ze/tools/GSettingsFileTest.h"

#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QImage>
#include <QLineF>
#include <QLocale>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace test;
using ze::store::GType;

const QByteArray STRINGS = R"(Variant(\0\0\0\v\xff\xff\xff\xff))";

TEST_F(GSettingsFileTest, with_a_value_that_could_harm_loses_only_that_and_is_copied) {
    const std::vector<Broken> rows = {
        {"four billion strings", "@" + STRINGS},
        {"four billion strings of a moment", R"(@DateTime(\0\0\0\v\0\xff\xff\xff\xff))"},
        {"lists without end",
         "@Variant(" + QByteArray(R"(\0\0\0\t\0\0\0\x1)").repeated(200000) + ")"},
        {"four billion strings in a map",
         R"(@Variant(\0\0\0\b\0\0\0\x1\0\0\0\x2\0\x61\0\0\0\v\xff\xff\xff\xff))"},
        {"a picture", R"(@Variant(\0\0\0\x41\0\0\0\x1))"},
        {"a number that begins like that of a colour", R"(@Variant(\0\0\0\x43f\0\0\0\x1))"},
        {"a type of a plugin", R"(@Variant(\0\0\0\x7f\0\0\0\x6QPolygonF\0))"},
        {"too short for a number", R"(@Variant(\0\0\0))"},
        {"behind another value", "1, @" + STRINGS},
        {"behind a text with a comma", "\"a, b\", @" + STRINGS},
        {"behind a blank that is skipped", "1,\t@" + STRINGS},
        {"in quotes", "\"@" + STRINGS + '"'},
        {"before a blank that is cut off", "@" + STRINGS + "  "},
        {"parted by quotes", "\"@Vari\" ant" + STRINGS.mid(7)},
        {"a hexadecimal letter", R"(@Va\x72)" + STRINGS.mid(3)},
        {"a hexadecimal letter of many digits", R"(@Va\x7000000000072)" + STRINGS.mid(3)},
        {"an octal letter", R"(\100)" + STRINGS},
        {"a letter that is skipped", R"(@V\qariant)" + STRINGS.mid(7)},
        {"a mark that the decoder drops", QByteArray("\\x40\xEF\xBB\xBF") + STRINGS},
        {"half a letter that the decoder drops", QByteArray("@Variant\xEF\\x28") + STRINGS.mid(8)},
        {"behind a key with an escaped sign", "\\=x=@" + STRINGS},
        {"behind a comment", "1;\nx=@" + STRINGS},
    };
    for (const Broken& row : rows) {
        const QByteArray content = VERSION + "[ui]\ntheme=" + row.content + "\nlast=7\n";
        QFile::remove(kept_path());
        write_file(content, EVERYBODY);
        const SettingsStore store;
        EXPECT_FALSE(store.value(QStringLiteral("ui/x")).isValid()) << row.name;
        EXPECT_EQ(store.get_theme(), 1u) << row.name;
        EXPECT_EQ(store.get_config_version(), 110u) << row.name;
        EXPECT_EQ(store.value(QStringLiteral("ui/last")).toInt(), 7) << row.name;
        EXPECT_EQ(mode(), 0600u) << row.name;
        EXPECT_EQ(read_file(kept_path()), content) << row.name;
        EXPECT_EQ(mode(kept_path()), 0600u) << row.name;
    }
}

TEST_F(GSettingsFileTest, in_which_a_value_that_could_harm_may_span_lines_is_kept_aside_whole) {
    const std::vector<Broken> rows = {
        {"a line that goes on", "theme=@Vari\\\r\nant" + STRINGS.mid(7)},
        {"an open quotation", "x=\"\ny=\"a, @" + STRINGS + ", \"\nz=\""},
        {"a line end of old", "x=\"a\ry=b, @" + STRINGS + "\""},
    };
    for (const Broken& row : rows) {
        const QByteArray content = VERSION + "[ui]\n" + row.content + "\n";
        QFile::remove(kept_path());
        write_file(content, EVERYBODY);
        const SettingsStore store;
        EXPECT_EQ(store.allKeys(), QStringList()) << row.name;
        EXPECT_EQ(read_file(kept_path()), content) << row.name;
        EXPECT_EQ(mode(kept_path()), 0600u) << row.name;
    }
}

TEST_F(GSettingsFileTest, with_harm_that_cannot_be_replaced_for_want_of_room_is_kept_aside_whole) {
    const QByteArray content = "[ui]\ntheme=@" + STRINGS + "\n" + QByteArray(200, ';') + "\n";
    write_file(content, EVERYBODY);
    const FullDisk disk(100);
    const SettingsStore store;
    EXPECT_EQ(store.allKeys(), QStringList());
    EXPECT_EQ(read_file(kept_path()), content);
}

struct Value {
    const char* name;
    QVariant value;
};

std::vector<Value> values_of_every_kind() {
    const QDate date(2024, 2, 29);
    const GType pod{99, QByteArray("\0\"\\;,)\xff", 7)};
    const QVariantMap map{{QStringLiteral("pod"), QVariant::fromValue(pod)},
                          {QStringLiteral("font"), QFont(QStringLiteral("Sans"), 12)},
                          {QStringLiteral("list"), QVariantList{1, QStringLiteral("a, b")}},
                          {QStringLiteral("ünd"), QVariant()}};
    return {
        {"colour", QColor(1, 2, 3)},
        {"white", QColor(255, 255, 255)},
        {"float", 0.1f},
        {"long", QVariant::fromValue(-7L)},
        {"short", QVariant::fromValue(static_cast<unsigned short>(65535))},
        {"date", date},
        {"time", QTime(1, 2, 3)},
        {"moment", QDateTime(date, QTime(1, 2, 3)).toUTC()},
        {"point", QPointF(1, 2)},
        {"size", QSizeF(1, 2)},
        {"rectangle", QRectF(1, 2, 3, 4)},
        {"line", QLineF(1, 2, 3, 4)},
        {"structure", QVariant::fromValue(pod)},
        {"font", QFont(QStringLiteral("Sans"), 12)},
        {"map", map},
        {"hash", QVariantHash{{QStringLiteral("a"), QStringLiteral("\"1\";\n")}}},
        {"list of one", QVariantList{map}},
        {"list", QVariantList{map, QStringLiteral("@x"), 1, QVariant::fromValue(pod)}},
        {"strings in a map",
         QVariantMap{{QStringLiteral("a"), QStringList{QStringLiteral("b"), QString()}}}},
        {"identity", QUuid(QStringLiteral("{67c8770b-44f1-410a-ab9a-f9b5446f13ee}"))},
        {"character", QChar(u'\u2126')},
        {"address", QUrl(QStringLiteral("wss://localhost:8888/ws"))},
        {"language", QLocale(QLocale::German, QLocale::Austria)},
        {"text with the word", QStringLiteral("x@Variant(y")},
        {"text with the word and an end", QStringLiteral("x@Variant(y)")},
        {"text that is the word", QStringLiteral("@DateTime(")},
        {"text that reads like a value", QStringLiteral("@Variant(abcdefgh)")},
        {"text that reads like a bad value", QString::fromLatin1("@Variant(\0\0\0\v\xff)", 14)},
        {"text behind a foreign letter", QStringLiteral("ö@Variant(y)")},
        {"text behind a blank", QStringLiteral(" @Variant(y)")},
        {"text behind a mark", QStringLiteral("\"; @Variant(y)")},
        {"texts", QStringList{QStringLiteral("a"), QStringLiteral("@Variant(y)")}},
        {"bytes", QByteArray("@Variant(\0\0\0\v\xff\n)", 15)},
    };
}

TEST_F(GSettingsFileTest, gives_back_every_value_and_stays_as_it_is) {
    const std::vector<Value> values = values_of_every_kind();
    {
        SettingsStore store;
        for (const auto& [name, value] : values) {
            store.set(QStringLiteral("group/") + QLatin1String(name), value, nullptr);
        }
    }
    const QByteArray written = read_file();
    const SettingsStore store;
    EXPECT_EQ(read_file(), written);
    EXPECT_FALSE(QFile::exists(kept_path()));
    for (const auto& [name, value] : values) {
        EXPECT_EQ(store.value(QStringLiteral("group/") + QLatin1String(name)), value) << name;
    }
}

TEST_F(GSettingsFileTest, loses_only_a_value_of_a_type_that_is_not_known_to_be_harmless) {
    {
        SettingsStore store;
        store.set(QStringLiteral("picture"), QImage(2, 2, QImage::Format_RGB32), nullptr);
        store.set(KEY, QColor(1, 2, 3), nullptr);
    }
    const SettingsStore store;
    EXPECT_EQ(store.allKeys(), QStringList{KEY});
    EXPECT_EQ(store.get_color(KEY, Qt::blue, nullptr), QColor(1, 2, 3));
    EXPECT_TRUE(QFile::exists(kept_path()));
}

}  // namespace
