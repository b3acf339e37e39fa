#include "ze/qt/GLogView.h"

#include "ze/qt/ProbeWindow.h"

#include "support/LogCapture.h"
#include "support/contrast.h"

#include <QScrollBar>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace {

using ze::qt::GLogView;
using Lines = std::vector<std::string>;

class LogView : public testing::Test {
protected:
    LogView() {
        view.resize(200, 100);
        log.ignore("Listener::~Listener@");
    }

    test::LogCapture log;
    GLogView view;
};

/// Background of the line and colour of its text, such as "#000000 on #ffffff".
QString colors_of(const QTextBlock& block) {
    const QTextCharFormat text = block.begin().fragment().charFormat();
    return text.foreground().color().name() + QStringLiteral(" on ") +
           block.blockFormat().background().color().name();
}

TEST_F(LogView, it_only_shows) {
    EXPECT_TRUE(view.isReadOnly());
    EXPECT_FALSE(view.document()->isUndoRedoEnabled());
    EXPECT_EQ(view.lineWrapMode(), QPlainTextEdit::NoWrap);
    EXPECT_EQ(view.maximumBlockCount(), 20000);
    EXPECT_FALSE(view.is_auto_scroll_left());
}

TEST_F(LogView, the_first_line_goes_into_the_first_block) {
    view.append_line(QStringLiteral("first"), 3);
    EXPECT_EQ(view.toPlainText(), QStringLiteral("first"));
    view.append_line(QStringLiteral("second"), 3);
    EXPECT_EQ(view.toPlainText(), QStringLiteral("first\nsecond"));
}

TEST_F(LogView, a_line_goes_to_the_end_wherever_the_cursor_stands) {
    view.append_line(QStringLiteral("first"), 3);
    view.append_line(QStringLiteral("second"), 3);
    view.moveCursor(QTextCursor::Start);
    view.append_line(QStringLiteral("third"), 3);
    EXPECT_EQ(view.toPlainText(), QStringLiteral("first\nsecond\nthird"));
}

TEST_F(LogView, after_a_clear_no_empty_line_stands_above_the_next) {
    view.append_line(QStringLiteral("first"), 3);
    view.setPlainText(QString());
    view.append_line(QStringLiteral("second"), 3);
    EXPECT_EQ(view.toPlainText(), QStringLiteral("second"));
}

TEST_F(LogView, each_level_has_its_colours_in_each_mode) {
    struct Row {
        unsigned mode;
        int level;
        const char* colors;
    };
    const Row rows[] = {
        {0, 0, "#000000 on #ff7f7f"}, {0, 1, "#000000 on #ffffcc"}, {0, 2, "#000000 on #ccffcc"},
        {0, 3, "#000000 on #e6e6e6"}, {0, 4, "#00007f on #e6e6e6"}, {1, 0, "#ffffff on #7f0000"},
        {1, 1, "#ffff00 on #000000"}, {1, 2, "#7fff7f on #000000"}, {1, 3, "#c0c0c0 on #000000"},
        {1, 4, "#7f7f00 on #000000"}, {2, 0, "#000000 on #ff7f7f"}, {2, 1, "#000000 on #192819"},
        {2, 2, "#7f7f00 on #192819"}, {2, 3, "#c8c8c8 on #192819"}, {2, 4, "#7f7f00 on #192819"},
        {3, 0, "#ffffff on #000000"}, {3, 3, "#ffffff on #000000"}, {0, 5, "#ffffff on #000000"},
    };
    for (const Row& row : rows) {
        view.adapt_to_settings(row.mode);
        view.append_line(QStringLiteral("text"), row.level);
        EXPECT_EQ(colors_of(view.document()->lastBlock()), QLatin1String(row.colors))
            << "mode " << row.mode << ", level " << row.level;
    }
}

TEST_F(LogView, lines_can_be_read_in_each_mode) {
    Lines weak;
    for (unsigned mode = 0; mode <= 2; ++mode) {
        view.adapt_to_settings(mode);
        for (int level = 0; level <= 4; ++level) {
            view.append_line(QStringLiteral("text"), level);
            const QTextBlock block = view.document()->lastBlock();
            const QColor text = block.begin().fragment().charFormat().foreground().color();
            if (test::contrast(text, block.blockFormat().background().color()) < test::READABLE) {
                weak.push_back("mode " + std::to_string(mode) + ", level " + std::to_string(level));
            }
        }
    }
    // What the colours of the green mode make weak: a warning is black on dark green, 1.4 to 1, an
    // information and a trace line are olive, 3.7 to 1.
    EXPECT_EQ(weak, (Lines{"mode 2, level 1", "mode 2, level 2", "mode 2, level 4"}));
}

TEST_F(LogView, its_background_is_that_of_a_debug_line) {
    const std::pair<unsigned, const char*> rows[] = {
        {0, "#e6e6e6"}, {1, "#000000"}, {2, "#192819"}, {3, "#e6e6e6"}};
    for (const auto& [mode, color] : rows) {
        view.adapt_to_settings(mode);
        EXPECT_EQ(view.palette().color(QPalette::Base).name(), QLatin1String(color)) << mode;
    }
}

TEST_F(LogView, lines_that_stand_already_keep_their_colours) {
    view.append_line(QStringLiteral("text"), 3);
    view.adapt_to_settings(1);
    EXPECT_EQ(colors_of(view.document()->firstBlock()), QStringLiteral("#000000 on #e6e6e6"));
}

TEST_F(LogView, without_auto_scroll_a_long_line_leaves_the_horizontal_position) {
    view.show();
    view.append_line(QString(500, u'x'), 3);
    QScrollBar* bar = view.horizontalScrollBar();
    ASSERT_GT(bar->maximum(), 100);
    bar->setValue(50);
    view.append_line(QString(600, u'y'), 3);
    EXPECT_EQ(bar->value(), 50);
}

TEST_F(LogView, with_auto_scroll_a_new_line_scrolls_left) {
    view.show();
    view.set_auto_scroll_left(true);
    view.append_line(QString(500, u'x'), 3);
    view.horizontalScrollBar()->setValue(50);
    view.append_line(QStringLiteral("short"), 3);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);
}

TEST_F(LogView, it_follows_the_newest_line) {
    view.show();
    for (int i = 0; i < 100; ++i) {
        view.append_line(QString::number(i), 3);
    }
    EXPECT_TRUE(view.viewport()->rect().contains(view.cursorRect()));
    EXPECT_EQ(view.textCursor().block(), view.document()->lastBlock());
}

TEST_F(LogView, many_lines_at_once_look_like_each_alone) {
    const GLogView::Line lines[] = {{QStringLiteral("first"), 0}, {QStringLiteral("second"), 3}};
    view.append_lines(lines);
    view.append_lines({});
    EXPECT_EQ(view.toPlainText(), QStringLiteral("first\nsecond"));
    EXPECT_EQ(colors_of(view.document()->firstBlock()), QStringLiteral("#000000 on #ff7f7f"));
    EXPECT_EQ(colors_of(view.document()->lastBlock()), QStringLiteral("#000000 on #e6e6e6"));
    EXPECT_EQ(view.textCursor().block(), view.document()->lastBlock());
}

TEST_F(LogView, of_too_many_lines_at_once_the_newest_stay) {
    std::vector<GLogView::Line> lines;
    for (int i = 0; i < 20001; ++i) {
        lines.push_back({QString::number(i), 3});
    }
    view.append_line(QStringLiteral("before"), 3);
    view.append_lines(lines);
    EXPECT_EQ(view.blockCount(), 20000);
    EXPECT_EQ(view.document()->firstBlock().text(), QStringLiteral("1"));
    EXPECT_EQ(view.document()->lastBlock().text(), QStringLiteral("20000"));
}

TEST_F(LogView, the_oldest_lines_go_first) {
    for (int i = 0; i < 20001; ++i) {
        view.append_line(QString::number(i), 3);
    }
    EXPECT_EQ(view.blockCount(), 20000);
    EXPECT_EQ(view.document()->firstBlock().text(), QStringLiteral("1"));
    EXPECT_EQ(view.document()->lastBlock().text(), QStringLiteral("20000"));
}

TEST_F(LogView, of_a_long_line_it_shows_the_head) {
    view.append_line(QString(5000, u'x'), 3);
    EXPECT_EQ(view.toPlainText(), QString(4000, u'x'));
}

TEST_F(LogView, no_character_is_cut_in_two) {
    const QString face = QStringLiteral("\U0001F600");  // two units of UTF-16
    view.append_line(QString(3999, u'x') + face, 3);
    EXPECT_EQ(view.toPlainText(), QString(3999, u'x'));
    view.setPlainText(QString());
    view.append_line(QString(3998, u'x') + face, 3);
    EXPECT_EQ(view.toPlainText(), QString(3998, u'x') + face);
}

TEST_F(LogView, a_double_click_is_logged_and_selects_nothing) {
    view.append_line(QStringLiteral("a word"), 3);
    view.show();
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_FALSE(view.textCursor().hasSelection());
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines_with_level()[0].rfind("DEB GLogView::mouseDoubleClickEvent, e:", 0), 0U)
        << log.lines()[0];
}

}  // namespace
