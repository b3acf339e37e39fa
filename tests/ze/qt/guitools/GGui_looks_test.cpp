// Growth, padding, colours and style sheets of widgets.
#include "ze/qt/ColorSetter.h"
#include "ze/qt/GPadding.h"
#include "ze/qt/guitools/GGui.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace ze::qt;

namespace {

struct Policy {
    QSizePolicy::Policy horizontal;
    QSizePolicy::Policy vertical;
    int stretchHorizontal;
    int stretchVertical;
    bool operator==(const Policy&) const = default;
};

Policy policy_of(const QWidget& widget) {
    const QSizePolicy p = widget.sizePolicy();
    return {p.horizontalPolicy(), p.verticalPolicy(), p.horizontalStretch(), p.verticalStretch()};
}

// The setter outside of a widget, and what it has saved.
struct OpenSetter : ColorSetter {
    using ColorSetter::ColorSetter;
    using ColorSetter::flagAutoFillSaved;
    using ColorSetter::palSaved;
};

}  // namespace

TEST(growable, each_form_has_its_policy_and_returns_its_argument) {
    QLabel label;
    EXPECT_EQ(set_growable(&label), &label);
    EXPECT_EQ(policy_of(label),
              (Policy{QSizePolicy::Expanding, QSizePolicy::MinimumExpanding, 1, 1}));
    EXPECT_EQ(set_growable_horizontal(&label), &label);
    EXPECT_EQ(policy_of(label), (Policy{QSizePolicy::Expanding, QSizePolicy::Fixed, 1, 0}));
    EXPECT_EQ(set_growable_vertical(&label), &label);
    EXPECT_EQ(policy_of(label), (Policy{QSizePolicy::Expanding, QSizePolicy::Minimum, 0, 1}));
}

TEST(ColorSetter, colours_the_three_background_roles_in_all_groups) {
    QLabel label;
    OpenSetter setter(&label);
    setter.set_bg(Qt::red);
    EXPECT_TRUE(label.autoFillBackground());
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button}) {
            EXPECT_EQ(label.palette().brush(group, role), QBrush(Qt::red)) << group << " " << role;
        }
    }
}

TEST(ColorSetter, keeps_the_looks_from_before_the_first_change) {
    QLabel label;
    const QPalette before = label.palette();
    OpenSetter setter(&label);
    EXPECT_EQ(setter.palSaved, std::nullopt);
    setter.set_bg(Qt::red);
    setter.set_bg(Qt::green);
    EXPECT_EQ(setter.palSaved, before);
    EXPECT_EQ(setter.flagAutoFillSaved, false);
    EXPECT_EQ(label.palette().color(QPalette::Base), QColor(Qt::green));
}

TEST(GPadding, of_a_plain_widget_is_its_contents_margins) {
    QWidget widget;
    widget.resize(100, 50);
    widget.setContentsMargins(1, 2, 3, 4);
    GPadding padding;
    padding.from_QWidget(&widget);
    EXPECT_EQ(padding.to_string(), "1,3,2,4");
}

TEST(GPadding, of_a_button_and_a_line_edit_comes_from_the_style) {
    QPushButton button(QStringLiteral("text"));
    QLineEdit edit;
    for (QWidget* const widget : {static_cast<QWidget*>(&button), static_cast<QWidget*>(&edit)}) {
        widget->resize(100, 50);
        GPadding padding;
        padding.from_QWidget(widget);
        EXPECT_GT(padding.left + padding.top, 0);
        EXPECT_LT(padding.left + padding.right, 100);
        EXPECT_LT(padding.top + padding.bottom, 50);
    }
}

TEST(GPadding, of_null_stays_as_it_was) {
    GPadding padding{1, 2, 3, 4};
    padding.from_QWidget(nullptr);
    EXPECT_EQ(padding.to_string(), "1,2,3,4");
}

TEST(GPadding, makes_a_button_as_wide_as_text_and_padding) {
    QPushButton button(QStringLiteral("text"));
    GPadding{10, 20, 3, 4}.set_padding(&button);
    EXPECT_EQ(button.maximumWidth(),
              button.fontMetrics().horizontalAdvance(QStringLiteral("text")) + 30);
}

TEST(GPadding, gives_any_other_widget_a_style_sheet) {
    QLabel label;
    GPadding{1, 2, 3, 4}.set_padding(&label);
    EXPECT_EQ(label.styleSheet(), QStringLiteral("QLabel { padding-left: 1px; padding-right: 2px; "
                                                 "padding-top: 3px; padding-bottom: 4px; };"));
}

TEST(looks, set_margin_horz_leaves_room_for_text_and_margin) {
    QPushButton button(QStringLiteral("text"));
    set_margin_horz(&button, 12);
    EXPECT_EQ(button.maximumWidth(),
              button.fontMetrics().horizontalAdvance(QStringLiteral("text")) + 12);
}

TEST(looks, set_border_is_a_style_sheet) {
    QLabel label;
    set_border(&label, QColor(255, 0, 0), 2);
    EXPECT_EQ(label.styleSheet(),
              QStringLiteral("border-color:#ff0000; border-width:2; border-style:solid;"));
    set_border(&label, QColor(255, 0, 0), 2, QStringLiteral("QLabel"));
    EXPECT_EQ(
        label.styleSheet(),
        QStringLiteral("QLabel { border-color:#ff0000; border-width:2; border-style:solid; }"));
}

TEST(looks, background_and_text_take_the_role_of_the_kind_of_widget) {
    struct Row {
        QWidget* widget;
        QPalette::ColorRole background;
        QPalette::ColorRole text;
    };
    QLabel label;
    QPushButton button;
    QLineEdit edit;
    for (const Row& row : {Row{&label, QPalette::Window, QPalette::WindowText},
                           Row{&button, QPalette::Button, QPalette::ButtonText},
                           Row{&edit, QPalette::Base, QPalette::Text}}) {
        set_background(row.widget, Qt::green);
        set_text_color(row.widget, Qt::red);
        EXPECT_EQ(row.widget->palette().color(row.background), QColor(Qt::green));
        EXPECT_EQ(row.widget->palette().color(row.text), QColor(Qt::red));
    }
}

TEST(looks, set_xstyle_adds_a_formatted_piece) {
    QLabel label;
    label.setStyleSheet(QStringLiteral("color:red;"));
    set_xstyle(&label, "border-width:%dpx;", 3);
    EXPECT_EQ(label.styleSheet(), QStringLiteral("color:red;border-width:3px;"));
}

TEST(looks, flash_shows_the_colour_and_puts_the_style_sheet_back) {
    QLabel label;
    label.setStyleSheet(QStringLiteral("color:red;"));
    flash(&label, QColor(0, 255, 0), 50);
    flash(&label, QColor(0, 0, 255), 50);
    EXPECT_TRUE(QTest::qWaitFor([&label] {
        return label.styleSheet() == QStringLiteral("color:red;background-color: #00ff00;");
    }));
    EXPECT_TRUE(
        QTest::qWaitFor([&label] { return label.styleSheet() == QStringLiteral("color:red;"); }));
}

TEST(looks, a_flash_after_a_flash_is_shown) {
    QLabel label;
    flash(&label, QColor(0, 255, 0), 1);
    EXPECT_TRUE(QTest::qWaitFor([&label] { return !has_property(&label, "styleBeforeFlash"); }));
    flash(&label, QColor(0, 0, 255), 50);
    EXPECT_TRUE(QTest::qWaitFor(
        [&label] { return label.styleSheet() == QStringLiteral("background-color: #0000ff;"); }));
}
