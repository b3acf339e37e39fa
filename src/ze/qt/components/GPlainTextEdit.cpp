#include "ze/qt/components/GPlainTextEdit.h"

namespace ze::qt {

GPlainTextEdit::GPlainTextEdit(const QString& text, const QString& toolTip)
    : QPlainTextEdit(text), StringSetter(static_cast<QPlainTextEdit*>(this)), ColorSetter(this) {
    setToolTip(toolTip);
    connect_cursor();
    connect_document();
}

void GPlainTextEdit::connect_cursor() {
    connect(this, &QPlainTextEdit::selectionChanged, this,
            [this] { selection_changed_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this,
            [this] { cursor_position_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QPlainTextEdit::copyAvailable, this,
            [this](bool flag) { copy_available_listener.fire_event(flag, FIRE_DIRECT); });
    connect(this, &QPlainTextEdit::undoAvailable, this,
            [this](bool flag) { undo_available_listener.fire_event(flag, FIRE_DIRECT); });
    connect(this, &QPlainTextEdit::redoAvailable, this,
            [this](bool flag) { redo_available_listener.fire_event(flag, FIRE_DIRECT); });
}

void GPlainTextEdit::connect_document() {
    connect(this, &QPlainTextEdit::textChanged, this,
            [this] { text_changed_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
        update_request_listener.fire_event({rect, dy}, FIRE_DIRECT);
    });
    connect(this, &QPlainTextEdit::blockCountChanged, this,
            [this](int count) { block_count_listener.fire_event(count, FIRE_DIRECT); });
    connect(this, &QPlainTextEdit::modificationChanged, this,
            [this](bool flag) { modification_listener.fire_event(flag, FIRE_DIRECT); });
}

}  // namespace ze::qt
