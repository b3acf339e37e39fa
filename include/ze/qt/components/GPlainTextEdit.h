// A text edit without rich text that reports through listeners.
#pragma once

#include "ze/qt/ColorSetter.h"
#include "ze/qt/StringSetter.h"
#include "ze/tools/Listener.h"

#include <QPlainTextEdit>
#include <QRect>

namespace ze::qt {

/// A part of the view that needs a repaint, and by how many pixels it was scrolled.
struct RectUpdate {
    QRect rect;
    int dy = 0;
};

class GPlainTextEdit : public QPlainTextEdit,
                       public StringSetter<QPlainTextEdit>,
                       public ColorSetter {
public:
    Listener<NO_PAYLOAD> text_changed_listener;
    Listener<NO_PAYLOAD> selection_changed_listener;
    Listener<NO_PAYLOAD> cursor_position_listener;
    Listener<bool> copy_available_listener;
    Listener<bool> undo_available_listener;
    Listener<bool> redo_available_listener;
    Listener<RectUpdate> update_request_listener;
    Listener<int> block_count_listener;
    Listener<bool> modification_listener;

    explicit GPlainTextEdit(const QString& text = {}, const QString& toolTip = {});

private:
    void connect_cursor();
    void connect_document();
};

}  // namespace ze::qt
