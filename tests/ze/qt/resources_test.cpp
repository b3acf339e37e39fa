#include "ze/qt/resources.h"

#include "support/LogCapture.h"
#include "support/QtPrinters.h"

#include <QPixmap>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using Lines = std::vector<std::string>;

/// A resource prefix for the life of a test.
class WithPrefix {
public:
    explicit WithPrefix(const char* prefix) : before(get_res_prefix()) {
        set_res_prefix(QString::fromUtf8(prefix));
    }
    WithPrefix(const WithPrefix&) = delete;
    WithPrefix& operator=(const WithPrefix&) = delete;
    ~WithPrefix() { set_res_prefix(before); }

private:
    QString before;
};

TEST(Resources, a_path_with_a_caret_lies_below_the_prefix) {
    const WithPrefix prefix(":/wb/shared-res");
    test::LogCapture log;
    EXPECT_EQ(get_res_path(QStringLiteral("^icons/copy.svg")),
              QStringLiteral(":/wb/shared-res/icons/copy.svg"));
    EXPECT_EQ(log.lines(), Lines());
}

TEST(Resources, a_path_with_a_caret_and_no_prefix_begins_with_a_slash) {
    const WithPrefix prefix("");
    test::LogCapture log;
    EXPECT_EQ(get_res_path(QStringLiteral("^icons/x.svg")), QStringLiteral("/icons/x.svg"));
    EXPECT_EQ(log.lines(), Lines());
}

TEST(Resources, a_plain_path_is_returned_unchanged_with_a_warning) {
    const WithPrefix prefix(":/wb/shared-res");
    test::LogCapture log;
    EXPECT_EQ(get_res_path(QStringLiteral("icons/x.svg")), QStringLiteral("icons/x.svg"));
    EXPECT_EQ(log.lines_with_level(), Lines{"WRN get_res_path <<<icons/x.svg>>>"});
}

TEST(Resources, an_empty_prefix_is_no_prefix) {
    const WithPrefix prefix("");
    EXPECT_FALSE(has_res_prefix());
    set_res_prefix(QStringLiteral(":/x"));
    EXPECT_TRUE(has_res_prefix());
    EXPECT_EQ(get_res_prefix(), QStringLiteral(":/x"));
}

TEST(Resources, the_end_of_the_prefix_is_matched) {
    struct Row {
        const char* name;
        const char* prefix;
        const char* text;
        bool matches;
    };
    const Row rows[] = {
        {"the last folder", ":/wb/shared-res", "shared-res", true},
        {"a part of the last folder", ":/wb/shared-res", "res", true},
        {"the whole prefix", ":/wb/shared-res", ":/wb/shared-res", true},
        {"another folder", ":/wb/shared-res", "wb", false},
        {"an empty text", ":/wb/shared-res", "", false},
        {"an empty prefix", "", "shared-res", false},
        {"both empty", "", "", false},
    };
    for (const Row& row : rows) {
        const WithPrefix prefix(row.prefix);
        EXPECT_EQ(match_end_of_prefix(QString::fromUtf8(row.text)), row.matches) << row.name;
    }
}

TEST(Resources, a_missing_resource_leaves_a_line_and_an_embedded_one_none) {
    test::LogCapture log;
    EXPECT_TRUE(does_res_exist(QStringLiteral(":/wb/shared-res/fonts/SourceCodePro-Regular.ttf")));
    EXPECT_FALSE(does_res_exist(QStringLiteral(":/no/such.svg")));
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB resource does not exist: :/no/such.svg"});
}

TEST(Resources, an_embedded_icon_is_made_once) {
    const QString path = QStringLiteral(":/wb/shared-res/icons/copy.svg");
    EXPECT_EQ(get_icon(path).cacheKey(), get_icon(path).cacheKey());
    EXPECT_NE(get_icon(path).cacheKey(),
              get_icon(QStringLiteral(":/wb/shared-res/icons/delete.svg")).cacheKey());
    EXPECT_FALSE(get_icon(path).pixmap(16).isNull());
}

TEST(Resources, an_icon_on_disk_is_read_each_time) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("icon.png"));
    for (const Qt::GlobalColor color : {Qt::red, Qt::blue}) {
        QPixmap picture(16, 16);
        picture.fill(color);
        ASSERT_TRUE(picture.save(path));
        EXPECT_EQ(get_icon(path).pixmap(16).toImage().pixelColor(8, 8), QColor(color));
    }
}

TEST(Resources, a_missing_icon_draws_nothing) {
    EXPECT_TRUE(get_icon(QStringLiteral(":/no/such.png")).pixmap(16).isNull());
}

TEST(Resources, svg_icons_can_be_drawn_here) {
    test::LogCapture log;
    EXPECT_TRUE(check_svg_support());
    EXPECT_EQ(log.lines(), Lines());
}

}  // namespace
