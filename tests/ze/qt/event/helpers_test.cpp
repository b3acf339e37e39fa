// The questions about modifiers, mouse, wheel and keys.
#include "ze/qt/event/key.h"
#include "ze/qt/event/mod.h"
#include "ze/qt/event/mouse.h"
#include "ze/qt/event/wheel.h"
#include "ze/tools/format.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace ze::qt::event;

namespace {

QMouseEvent mouse_event(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
                        Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return {type, QPointF(10.4, 20.6), QPointF(10.4, 20.6), button, held, modifiers};
}

QWheelEvent wheel_event(QPoint angle) {
    return {QPointF(3, 4), QPointF(3, 4),  QPoint(),          angle,
            Qt::NoButton,  Qt::NoModifier, Qt::NoScrollPhase, false};
}

QKeyEvent key_event(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return {QEvent::KeyPress, key, modifiers};
}

}  // namespace

TEST(mod, each_modifier_is_told_apart) {
    struct Row {
        Qt::KeyboardModifiers modifiers;
        std::vector<bool> altCtrlShiftAny;
        std::string text;
    };
    const std::vector<Row> rows{
        {Qt::NoModifier, {false, false, false, false}, "NONE"},
        {Qt::AltModifier, {true, false, false, true}, "ALT"},
        {Qt::ControlModifier, {false, true, false, true}, "CTRL"},
        {Qt::ShiftModifier, {false, false, true, true}, "SHIFT"},
        {Qt::MetaModifier, {false, false, false, true}, "META"},
        {Qt::KeypadModifier, {false, false, false, false}, "NONE"},
        {Qt::ShiftModifier | Qt::ControlModifier, {false, true, true, true}, "CTRL+SHIFT"},
    };
    for (const Row& row : rows) {
        const QKeyEvent ev = key_event(Qt::Key_A, row.modifiers);
        const std::vector<bool> answers{mod::is_alt(&ev), mod::is_ctrl(&ev), mod::is_shift(&ev),
                                        mod::is_any_meta(&ev)};
        EXPECT_EQ(answers, row.altCtrlShiftAny) << row.text;
        EXPECT_EQ(mod::to_string(&ev), row.text);
    }
}

TEST(mod, null_has_no_modifier) {
    EXPECT_FALSE(mod::is_alt(nullptr) || mod::is_ctrl(nullptr) || mod::is_shift(nullptr) ||
                 mod::is_any_meta(nullptr));
    EXPECT_EQ(mod::to_string(nullptr), "nullptr");
}

TEST(mouse, a_button_counts_when_it_caused_the_event_or_is_held) {
    struct Row {
        const char* name;
        QEvent::Type type;
        Qt::MouseButton button;
        Qt::MouseButtons held;
        std::vector<bool> leftRightMiddleAny;
    };
    const std::vector<Row> rows{
        {"press",
         QEvent::MouseButtonPress,
         Qt::LeftButton,
         Qt::LeftButton,
         {true, false, false, true}},
        {"release",
         QEvent::MouseButtonRelease,
         Qt::LeftButton,
         Qt::NoButton,
         {true, false, false, true}},
        {"drag", QEvent::MouseMove, Qt::NoButton, Qt::RightButton, {false, true, false, true}},
        {"middle", QEvent::MouseMove, Qt::NoButton, Qt::MiddleButton, {false, false, true, true}},
        {"back",
         QEvent::MouseButtonPress,
         Qt::BackButton,
         Qt::BackButton,
         {false, false, false, true}},
        {"move", QEvent::MouseMove, Qt::NoButton, Qt::NoButton, {false, false, false, false}},
    };
    for (const Row& row : rows) {
        const QMouseEvent ev = mouse_event(row.type, row.button, row.held);
        const std::vector<bool> answers{mouse::is_left(&ev), mouse::is_right(&ev),
                                        mouse::is_middle(&ev), mouse::is_any_button(&ev)};
        EXPECT_EQ(answers, row.leftRightMiddleAny) << row.name;
    }
}

TEST(mouse, null_has_no_button) {
    EXPECT_FALSE(mouse::is_left(nullptr) || mouse::is_right(nullptr) || mouse::is_middle(nullptr) ||
                 mouse::is_any_button(nullptr));
}

TEST(mouse, the_formatter_prints_an_event_by_its_text) {
    QMouseEvent press = mouse_event(QEvent::MouseButtonPress, Qt::LeftButton,
                                    Qt::LeftButton | Qt::RightButton, Qt::ControlModifier);
    QMouseEvent* const ev = &press;
    const QMouseEvent* const evConst = &press;
    EXPECT_EQ(ze::str::xprintF(0, "<$>", ev), "<PRESS LEFT RIGHT, pos:10,21, mod:CTRL>");
    EXPECT_EQ(ze::str::xprintF(0, "<$>", evConst), "<PRESS LEFT RIGHT, pos:10,21, mod:CTRL>");
}

TEST(mouse, the_formatter_prints_null_as_nullptr) {
    QMouseEvent* const ev = nullptr;
    EXPECT_EQ(ze::str::xprintF(0, "<$>", ev), "<nullptr>");
}

TEST(mouse, text_names_the_type) {
    const QMouseEvent release =
        mouse_event(QEvent::MouseButtonRelease, Qt::MiddleButton, Qt::NoButton);
    const QMouseEvent twice =
        mouse_event(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
    const QMouseEvent move = mouse_event(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(mouse::to_string(&release), "RELEASE MIDDLE, pos:10,21, mod:NONE");
    EXPECT_EQ(mouse::to_string(&twice), "DOUBLE_CLICK LEFT, pos:10,21, mod:NONE");
    EXPECT_EQ(mouse::to_string(&move), "MOVE, pos:10,21, mod:NONE");
}

TEST(wheel, only_a_turn_away_from_the_user_is_forward) {
    const QWheelEvent away = wheel_event({0, 120});
    const QWheelEvent towards = wheel_event({0, -120});
    const QWheelEvent sideways = wheel_event({120, 0});
    EXPECT_TRUE(wheel::is_forward(&away));
    EXPECT_FALSE(wheel::is_forward(&towards));
    EXPECT_FALSE(wheel::is_forward(&sideways));
    EXPECT_FALSE(wheel::is_forward(nullptr));
}

TEST(wheel, text_tells_turn_and_place) {
    const QWheelEvent ev = wheel_event({0, -120});
    EXPECT_EQ(wheel::to_string(&ev), "WHEEL angle:0,-120, pos:3,4, mod:NONE");
    EXPECT_EQ(wheel::to_string(nullptr), "nullptr");
}

TEST(key, each_question_has_its_key) {
    using Question = bool (*)(const QKeyEvent*) noexcept;
    struct Row {
        Question ask;
        int key;
    };
    for (const Row& row :
         {Row{&key::is_up, Qt::Key_Up}, Row{&key::is_down, Qt::Key_Down},
          Row{&key::is_left, Qt::Key_Left}, Row{&key::is_right, Qt::Key_Right},
          Row{&key::is_space, Qt::Key_Space}, Row{&key::is_mod_key, Qt::Key_Shift},
          Row{&key::is_mod_key, Qt::Key_Control}, Row{&key::is_mod_key, Qt::Key_Alt},
          Row{&key::is_mod_key, Qt::Key_AltGr}, Row{&key::is_mod_key, Qt::Key_Meta}}) {
        const QKeyEvent asked = key_event(row.key);
        const QKeyEvent other = key_event(Qt::Key_A, Qt::ShiftModifier);
        EXPECT_TRUE(row.ask(&asked)) << row.key;
        EXPECT_FALSE(row.ask(&other)) << row.key;
        EXPECT_FALSE(row.ask(nullptr)) << row.key;
    }
}

TEST(key, held_modifiers_are_told_apart) {
    const QKeyEvent ctrl = key_event(Qt::Key_Up, Qt::ControlModifier);
    const QKeyEvent rest =
        key_event(Qt::Key_Up, Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier);
    EXPECT_TRUE(key::is_mod_ctrl(&ctrl));
    EXPECT_FALSE(key::is_mod_shift(&ctrl) || key::is_mod_alt(&ctrl) || key::is_mod_meta(&ctrl));
    EXPECT_TRUE(key::is_mod_shift(&rest) && key::is_mod_alt(&rest) && key::is_mod_meta(&rest));
    EXPECT_FALSE(key::is_mod_ctrl(&rest));
    EXPECT_FALSE(key::is_mod_meta(nullptr));
}

TEST(key, text_is_the_portable_sequence) {
    const QKeyEvent up = key_event(Qt::Key_Up, Qt::ControlModifier | Qt::KeypadModifier);
    const QKeyEvent alone = key_event(Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(key::to_string(&up), "Ctrl+Up");
    EXPECT_EQ(key::to_string(&alone), "CTRL");
    EXPECT_EQ(key::to_string(nullptr), "nullptr");
}

TEST(key, a_lone_modifier_makes_no_sequence) {
    const QKeyEvent alone = key_event(Qt::Key_Control, Qt::ControlModifier);
    const QKeyEvent up = key_event(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_TRUE(key::to_key_sequence(&alone).isEmpty());
    EXPECT_TRUE(key::to_key_sequence(nullptr).isEmpty());
    EXPECT_EQ(key::to_key_sequence(&up), QKeySequence(Qt::CTRL | Qt::Key_Up));
}
