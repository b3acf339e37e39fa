// A line edit that reports through listeners and reads its text as a number.
#pragma once

#include "ze/qt/ColorSetter.h"
#include "ze/qt/StringSetter.h"
#include "ze/tools/Listener.h"

#include <QLineEdit>

namespace ze::qt {

/// Where the text cursor was and where it is, counted in characters.
struct CursorPos {
    int posOld = 0;
    int posNew = 0;
};

class GLineEdit : public QLineEdit, public StringSetter<QLineEdit>, public ColorSetter {
public:
    Listener<NO_PAYLOAD> editing_finished_signal;
    Listener<NO_PAYLOAD> input_rejected_signal;
    Listener<NO_PAYLOAD> return_pressed_signal;
    Listener<NO_PAYLOAD> selection_changed_signal;
    Listener<QString> editing_finished_listener;  ///< these four carry the text
    Listener<QString> return_pressed_listener;
    Listener<QString> text_changed_listener;  ///< by the user or by the program
    Listener<QString> text_edited_listener;   ///< by the user only
    Listener<CursorPos> cursor_position_listener;

    explicit GLineEdit(const QString& text = {}, const QString& toolTip = {});

    /// The trimmed text as a number in base 10; `def` when it is none or does not fit.
    [[nodiscard]] int get_parsed_int(int def) const;
    [[nodiscard]] long long get_parsed_long(long long def) const;
    [[nodiscard]] double get_parsed_double(double def) const;

private:
    void connect_signals();
    void connect_texts();
};

}  // namespace ze::qt
