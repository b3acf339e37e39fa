#include "ze/qt/components/GButton.h"

#include "ze/qt/resources.h"

#include "support/LogCapture.h"

#include <QPixmap>
#include <QTemporaryDir>
#include <QTest>

#include <string>
#include <vector>

using ze::qt::GButton;

namespace {

class GButtonTest : public testing::Test {
protected:
    GButtonTest() { log.ignore("Listener::~Listener"); }
    ~GButtonTest() override { ze::qt::set_res_prefix(QString()); }

    test::LogCapture log;
};

}  // namespace

TEST_F(GButtonTest, a_plain_text_is_the_id_too_until_an_id_is_given) {
    const GButton plain(QStringLiteral("start"));
    const GButton named(QStringLiteral("start"), QString(), QStringLiteral("btStart"));
    EXPECT_EQ(plain.text(), QStringLiteral("start"));
    EXPECT_EQ(plain.objectName(), QStringLiteral("start"));
    EXPECT_EQ(named.text(), QStringLiteral("start"));
    EXPECT_EQ(named.objectName(), QStringLiteral("btStart"));
}

TEST_F(GButtonTest, a_caret_takes_the_icon_below_the_prefix) {
    const QTemporaryDir dir;
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    ASSERT_TRUE(pixmap.save(dir.filePath(QStringLiteral("copy.png"))));
    ze::qt::set_res_prefix(dir.path());
    const GButton button(QStringLiteral("^copy.png"), QStringLiteral("copy"),
                         QStringLiteral("btCopy"));
    EXPECT_EQ(button.get_icon_res(), dir.filePath(QStringLiteral("copy.png")));
    EXPECT_FALSE(button.icon().isNull());
    EXPECT_EQ(button.text(), QString());
    EXPECT_EQ(button.objectName(), QStringLiteral("btCopy"));
}

TEST_F(GButtonTest, a_caret_without_a_prefix_gives_neither_icon_nor_text) {
    log.expect_error("GButton::GButton, res_prefix not set !");
    const GButton button(QStringLiteral("^icons/copy.png"));
    EXPECT_TRUE(button.icon().isNull());
    EXPECT_EQ(button.text(), QString());
    EXPECT_EQ(button.objectName(), QString());
}

TEST_F(GButtonTest, a_path_is_an_icon_as_it_stands) {
    const GButton resource(QStringLiteral(":/icons/copy.png"));
    const GButton file(QStringLiteral("/icons/copy.png"));
    EXPECT_EQ(resource.get_icon_res(), QStringLiteral(":/icons/copy.png"));
    EXPECT_EQ(file.get_icon_res(), QStringLiteral("/icons/copy.png"));
}

TEST_F(GButtonTest, set_icon_res_stores_the_path_and_drops_a_text) {
    GButton button(QStringLiteral("start"));
    button.set_icon_res(QStringLiteral(":/icons/copy.png"));
    button.set_icon_res(QStringLiteral("copy"));
    EXPECT_EQ(button.property("sIcon").toString(), QStringLiteral(":/icons/copy.png"));
    EXPECT_EQ(button.text(), QStringLiteral("start"));
    log.expect_error("GButton::set_icon_res, prefix not set !");
    button.set_icon_res(QStringLiteral("^icons/delete.png"));
    EXPECT_EQ(button.get_icon_res(), QStringLiteral(":/icons/copy.png"));
}

TEST_F(GButtonTest, an_empty_first_argument_leaves_the_button_blank) {
    const GButton button((QString()));
    EXPECT_EQ(button.text(), QString());
    EXPECT_EQ(button.get_icon_res(), QString());
}

TEST_F(GButtonTest, with_only_an_icon_has_its_tool_tip_as_accessible_name) {
    GButton icon(QStringLiteral(":/icons/copy.png"), QStringLiteral("copy to clipboard"));
    const GButton text(QStringLiteral("copy"), QStringLiteral("copy to clipboard"));
    EXPECT_EQ(icon.toolTip(), QStringLiteral("copy to clipboard"));
    EXPECT_EQ(icon.accessibleName(), QStringLiteral("copy to clipboard"));
    EXPECT_EQ(text.accessibleName(), QString());
    icon.setToolTip(QStringLiteral("clear"));
    EXPECT_EQ(icon.accessibleName(), QStringLiteral("clear"));
}

TEST_F(GButtonTest, the_accessible_name_of_an_icon_goes_when_a_text_comes) {
    GButton button(QStringLiteral(":/icons/copy.png"), QStringLiteral("copy to clipboard"));
    button.set_text_toolTip(QStringLiteral("stop"), QStringLiteral("ends the rally"));
    EXPECT_EQ(button.accessibleName(), QString());
    button.set_text_toolTip(QString(), QStringLiteral("copy"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("copy"));
    button.setAccessibleName(QStringLiteral("copy all"));
    button.set_text_toolTip(QStringLiteral("copy"), QStringLiteral("to the clipboard"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("copy all"));
}

TEST_F(GButtonTest, a_click_fires_pressed_released_and_clicked) {
    GButton button(QStringLiteral("start"));
    std::vector<std::string> calls;
    button.pressed_listener += [&calls] {
        calls.emplace_back("pressed");
    };
    button.released_listener += [&calls] {
        calls.emplace_back("released");
    };
    button.clicked_listener += [&calls] {
        calls.emplace_back("clicked");
    };
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(calls, (std::vector<std::string>{"pressed", "released", "clicked"}));
}

TEST_F(GButtonTest, its_click_listener_finds_members_of_its_parents) {
    struct Panel : QWidget {
        void on_start() { ++starts; }
        int starts = 0;
    };
    Panel panel;
    auto* const button = new GButton(QStringLiteral("start"));
    button->setParent(&panel);
    button->clicked_listener = &Panel::on_start;
    button->click();
    EXPECT_EQ(panel.starts, 1);
}

TEST_F(GButtonTest, set_checked_tells_the_listener_only_when_asked_to) {
    GButton button(QStringLiteral("sound"));
    button.setCheckable(true);
    std::vector<bool> toggles;
    button.toggled_listener += [&toggles](const bool& on) {
        toggles.push_back(on);
    };
    button.set_checked(true, false);
    EXPECT_TRUE(button.isChecked());
    EXPECT_EQ(toggles, std::vector<bool>{});
    button.set_checked(false, true);
    EXPECT_FALSE(button.isChecked());
    EXPECT_EQ(toggles, std::vector<bool>{false});
}

TEST_F(GButtonTest, adapts_its_size_to_its_text) {
    GButton button(QStringLiteral("start"));
    button.resize(500, 5);
    button.adapt_size_to_font(7);
    EXPECT_EQ(button.height(), button.sizeHint().height());
    EXPECT_EQ(button.maximumWidth(),
              button.fontMetrics().horizontalAdvance(QStringLiteral("start")) + 14);
    GButton icon(QStringLiteral(":/icons/copy.png"));
    icon.resize(500, 5);
    icon.adapt_size_to_font(7);
    EXPECT_EQ(icon.maximumWidth(), QWIDGETSIZE_MAX);
    EXPECT_EQ(icon.size(), QSize(500, 5));
}

TEST_F(GButtonTest, text_and_tool_tip_are_set_together_or_by_the_formatter) {
    GButton button(QStringLiteral("start"));
    button.set_text_toolTip(QStringLiteral("stop"), QStringLiteral("ends the rally"));
    EXPECT_EQ(button.text(), QStringLiteral("stop"));
    EXPECT_EQ(button.toolTip(), QStringLiteral("ends the rally"));
    button.set_string("$ of $", 2, 3);
    EXPECT_EQ(button.text(), QStringLiteral("2 of 3"));
}
