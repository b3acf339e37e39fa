#include "ze/qt/components/GLineEdit.h"

#include <cmath>

namespace ze::qt {

GLineEdit::GLineEdit(const QString& text, const QString& toolTip)
    : QLineEdit(text), StringSetter(static_cast<QLineEdit*>(this)), ColorSetter(this) {
    setToolTip(toolTip);
    connect_signals();
    connect_texts();
}

void GLineEdit::connect_signals() {
    connect(this, &QLineEdit::editingFinished, this, [this] {
        editing_finished_signal.fire_event({}, FIRE_DIRECT);
        editing_finished_listener.fire_event(text(), FIRE_DIRECT);
    });
    connect(this, &QLineEdit::returnPressed, this, [this] {
        return_pressed_signal.fire_event({}, FIRE_DIRECT);
        return_pressed_listener.fire_event(text(), FIRE_DIRECT);
    });
    connect(this, &QLineEdit::inputRejected, this,
            [this] { input_rejected_signal.fire_event({}, FIRE_DIRECT); });
    connect(this, &QLineEdit::selectionChanged, this,
            [this] { selection_changed_signal.fire_event({}, FIRE_DIRECT); });
}

void GLineEdit::connect_texts() {
    connect(this, &QLineEdit::textChanged, this, [this](const QString& theText) {
        text_changed_listener.fire_event(theText, FIRE_DIRECT);
    });
    connect(this, &QLineEdit::textEdited, this, [this](const QString& theText) {
        text_edited_listener.fire_event(theText, FIRE_DIRECT);
    });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this](int posOld, int posNew) {
        cursor_position_listener.fire_event({posOld, posNew}, FIRE_DIRECT);
    });
}

int GLineEdit::get_parsed_int(int def) const {
    bool ok = false;
    const int value = text().trimmed().toInt(&ok, 10);
    return ok ? value : def;
}

long long GLineEdit::get_parsed_long(long long def) const {
    bool ok = false;
    const long long value = text().trimmed().toLongLong(&ok, 10);
    return ok ? value : def;
}

double GLineEdit::get_parsed_double(double def) const {
    bool ok = false;
    const double value = text().trimmed().toDouble(&ok);
    return ok && std::isfinite(value) ? value : def;  // Qt takes "inf" and "nan" for numbers
}

}  // namespace ze::qt
