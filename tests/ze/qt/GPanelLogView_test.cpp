#include "ze/qt/GPanelLogView.h"

#include "ze/log/pp.h"
#include "ze/qt/GLogView.h"
#include "ze/qt/ProbeWindow.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/themes.h"

#include "support/LogCapture.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QFontInfo>
#include <QRegularExpression>
#include <QTextBlock>

#include <algorithm>
#include <thread>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using ze::log::LogConfig;

class LogPanel : public testing::Test {
protected:
    LogPanel() {
        log.ignore("Listener::~Listener@");
        panel.set_enabled(true);
    }

    [[nodiscard]] QStringList lines() const {
        return panel.get_view()->toPlainText().split(u'\n', Qt::SkipEmptyParts);
    }

    test::LogCapture log{ze::log::TRACE};
    GPanelLogView panel;
};

TEST_F(LogPanel, it_can_start_in_the_font_of_a_configuration) {
    LogConfig config;
    config.logControl.set_bit(ze::log::ENABLED, true);
    config.fontSize = 17;
    const GPanelLogView fresh(config);
    EXPECT_EQ(fresh.get_view()->font().pointSize(), 17);
    EXPECT_EQ(fresh.get_view()->font().family(), themes::get_mono_font().family());
    EXPECT_FALSE(fresh.is_enabled()) << "without a parent it would show as a window";
    config.fontSize = 2000;
    EXPECT_EQ(GPanelLogView(config).get_view()->font().pointSize(), 10);
}

TEST_F(LogPanel, it_starts_with_the_defaults_and_disabled) {
    const GPanelLogView fresh;
    EXPECT_EQ(fresh.config.to_string(), LogConfig().to_string());
    EXPECT_FALSE(fresh.is_enabled());
    EXPECT_EQ(fresh.objectName(), QStringLiteral("panLog"));
    EXPECT_EQ(fresh.minimumHeight(), 50);
    EXPECT_EQ(fresh.get_margins(), QMargins());
    EXPECT_EQ(fresh.get_view()->font().family(), themes::get_mono_font().family());
    for (const QWidget* grown :
         {static_cast<const QWidget*>(&fresh), static_cast<const QWidget*>(fresh.get_view())}) {
        const QSizePolicy policy = grown->sizePolicy();
        EXPECT_EQ(policy.horizontalPolicy(), QSizePolicy::Expanding);
        EXPECT_EQ(policy.verticalPolicy(), QSizePolicy::MinimumExpanding);
        EXPECT_EQ(policy.horizontalStretch(), 1);
        EXPECT_EQ(policy.verticalStretch(), 1);
    }
}

TEST_F(LogPanel, it_shows_what_is_logged) {
    ze::pp("one");
    ze::pp_warn("two");
    EXPECT_EQ(lines(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(LogPanel, it_filters_further_than_the_global_level) {
    panel.config.logLevel = ze::log::WARN;
    ze::pp_info("too low");
    ze::pp_warn("high enough");
    EXPECT_EQ(lines(), QStringList{QStringLiteral("high enough")});
}

TEST_F(LogPanel, a_disabled_panel_hides_and_takes_no_line) {
    panel.show();
    panel.set_enabled(false);
    ze::pp("lost");
    EXPECT_FALSE(panel.isVisible());
    EXPECT_EQ(lines(), QStringList());
    panel.set_enabled(true);
    EXPECT_TRUE(panel.isVisible());
}

TEST_F(LogPanel, columns_stand_before_the_text_with_one_blank) {
    struct Row {
        const char* name;
        std::vector<unsigned> bits;
        const char* pattern;
    };
    using namespace ze::log;
    const Row rows[] = {
        {"none", {}, "^text$"},
        {"number", {COLUMN_NUMBER}, R"(^\[\d{6}\] text$)"},
        {"level", {COLUMN_LEVEL}, R"(^\[WRN\] text$)"},
        {"time", {COLUMN_TIME}, R"(^\[\S+,\d{3}\] text$)"},
        {"time in micro seconds",
         {COLUMN_TIME, MICRO_SECONDS},
         R"(^\[\S+,\d{3}[.,]?\d{3}\] text$)"},
        {"time of day", {COLUMN_TIME, ABSOLUTE_TIME}, R"(^\[\d\d:\d\d:\d\d,\d{3}\] text$)"},
        {"thread", {COLUMN_THREAD}, R"(^\[\d{4}\] text$)"},
        {"number and level", {COLUMN_NUMBER, COLUMN_LEVEL}, R"(^\[\d{6}\] \[WRN\] text$)"},
    };
    for (const Row& row : rows) {
        panel.clear();
        panel.config = LogConfig();
        panel.set_enabled(true);
        for (const unsigned bit : row.bits) {
            panel.config.logControl.set_bit(bit, true);
        }
        ze::pp_warn("text");
        EXPECT_TRUE(lines().size() == 1 &&
                    QRegularExpression(QLatin1String(row.pattern)).match(lines()[0]).hasMatch())
            << row.name << ": " << lines().join(u'|').toStdString();
    }
}

TEST_F(LogPanel, a_null_text_shows_as_a_word_and_utf_8_as_its_characters) {
    panel.log_string(1, ze::log::INFO, nullptr);
    panel.log_string(2, ze::log::INFO, "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(lines(), (QStringList{QStringLiteral("nullptr"), QStringLiteral("\u00e4\u20ac")}));
}

TEST_F(LogPanel, after_remove_appender_no_line_comes) {
    panel.remove_appender();
    ze::pp("lost");
    EXPECT_EQ(lines(), QStringList());
}

TEST_F(LogPanel, the_font_size_goes_to_the_configuration_and_the_view) {
    panel.set_font_size(15);
    EXPECT_EQ(panel.get_font_size(), 15);
    EXPECT_EQ(panel.config.fontSize, 15U);
    EXPECT_EQ(panel.get_view()->font().pointSize(), 15);
    panel.set_font_size(0);
    EXPECT_GT(panel.get_view()->font().pointSize(), 0);
}

TEST_F(LogPanel, auto_scroll_passes_to_the_view) {
    panel.set_auto_scroll_left(true);
    EXPECT_TRUE(panel.is_auto_scroll_left());
    EXPECT_TRUE(panel.get_view()->is_auto_scroll_left());
    EXPECT_TRUE(panel.config.autoScrollHorz);
}

TEST_F(LogPanel, its_text_can_be_cleared_and_copied) {
    ze::pp("one");
    ze::pp("two");
    panel.copy_to_clipboard();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("one\ntwo"));
    panel.clear();
    EXPECT_EQ(panel.get_view()->toPlainText(), QString());
}

TEST_F(LogPanel, a_stored_configuration_takes_effect) {
    LogConfig stored;
    stored.fontSize = 14;
    stored.autoScrollHorz = true;
    stored.logLevel = ze::log::ERROR;
    panel.apply_config(stored);
    EXPECT_EQ(panel.get_view()->font().pointSize(), 14);
    EXPECT_TRUE(panel.is_auto_scroll_left());
    EXPECT_FALSE(panel.is_enabled());
    EXPECT_EQ(panel.config.logLevel, static_cast<unsigned>(ze::log::ERROR));
}

TEST_F(LogPanel, the_smallest_and_the_largest_stored_font_size_are_taken) {
    for (const int size : {6, 28}) {
        LogConfig stored;
        stored.fontSize = static_cast<std::uint32_t>(size);
        panel.apply_config(stored);
        EXPECT_EQ(panel.get_view()->font().pointSize(), size);
    }
}

// --- other threads -------------------------------------------------------------------------------

TEST_F(LogPanel, a_line_of_another_thread_shows_when_the_event_loop_runs) {
    std::thread([] { ze::pp("from afar"); }).join();
    EXPECT_EQ(lines(), QStringList());
    EXPECT_TRUE(test::wait_for([this] { return lines().size() == 1; }));
    EXPECT_EQ(lines(), QStringList{QStringLiteral("from afar")});
}

TEST_F(LogPanel, lines_on_their_way_are_dropped_with_the_panel) {
    panel.config.logLevel = ze::log::INFO;
    {
        GPanelLogView other;
        other.set_enabled(true);
        std::thread([] { ze::pp_info("too late"); }).join();
    }
    test::turn_event_loop();
    EXPECT_EQ(lines(), QStringList{QStringLiteral("too late")});
}

TEST_F(LogPanel, a_burst_of_another_thread_arrives_in_order_and_the_newest_stay) {
    constexpr int BURST = 30000;
    constexpr int KEPT = 20000;
    std::thread worker([] {
        for (int i = 0; i < BURST; ++i) {
            ze::pp(std::to_string(i));
        }
    });
    const QString last = QString::number(BURST - 1);
    EXPECT_TRUE(test::wait_for(
        [this, &last] { return panel.get_view()->document()->lastBlock().text() == last; }));
    worker.join();
    QStringList expected;
    for (int i = BURST - KEPT; i < BURST; ++i) {
        expected.append(QString::number(i));
    }
    EXPECT_EQ(lines(), expected);
}

TEST_F(LogPanel, two_threads_share_the_panel_and_each_keeps_its_order) {
    constexpr int EACH = 500;
    const auto write = [](const char* name) {
        for (int i = 0; i < EACH; ++i) {
            ze::pp(name + std::to_string(i));
        }
    };
    std::thread a(write, "a");
    std::thread b(write, "b");
    EXPECT_TRUE(test::wait_for([this] { return lines().size() == 2 * EACH; }));
    a.join();
    b.join();
    for (const QChar name : {u'a', u'b'}) {
        QStringList own = lines().filter(QRegularExpression(u'^' + QString(name)));
        for (int i = 0; i < EACH && i < own.size(); ++i) {
            ASSERT_EQ(own[i], name + QString::number(i));
        }
    }
}

TEST_F(LogPanel, its_configuration_may_change_while_another_thread_logs) {
    constexpr int LINES = 500;
    std::thread worker([] {
        for (int i = 0; i < LINES; ++i) {
            ze::pp("line");
        }
    });
    LogConfig changed = panel.config;
    for (int i = 0; i < LINES; ++i) {
        changed.logControl.set_bit(ze::log::COLUMN_LEVEL, i % 2 == 0);
        panel.set_config(changed);
        panel.set_enabled(true);
    }
    worker.join();
    EXPECT_TRUE(test::wait_for([this] { return lines().size() == LINES; }));
}

TEST_F(LogPanel, a_key_pressed_behind_a_burst_is_answered_in_time) {
    constexpr int BURST = 30000;
    constexpr int ANSWER_MS = 3000;
    panel.set_enabled(false);
    bool answered = false;
    test::ProbeWindow window;
    window.setup();
    window.gen_action(QStringLiteral("F9"))->triggered_signal += [&answered] {
        answered = true;
    };
    window.on_logger();
    ASSERT_TRUE(window.show_active());
    std::thread([] {
        for (int i = 0; i < BURST; ++i) {
            ze::pp("line");
        }
    }).join();
    invoke_later([&window] { QTest::keyClick(&window, Qt::Key_F9); });  // queued behind the lines
    QElapsedTimer waited;
    waited.start();
    EXPECT_TRUE(test::wait_for([&answered] { return answered; }));
    EXPECT_LT(waited.elapsed(), ANSWER_MS);
    EXPECT_EQ(window.get_panel_log_view()->get_view()->blockCount(), 20000);
}

}  // namespace
