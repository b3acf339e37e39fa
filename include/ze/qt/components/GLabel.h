// A label whose mouse events can be watched, also without a held button.
#pragma once

#include "ze/qt/ColorSetter.h"
#include "ze/qt/StringSetter.h"
#include "ze/tools/Listener.h"

#include <QLabel>

namespace ze::qt {

class GLabel : public QLabel, public StringSetter<QLabel>, public ColorSetter {
public:
    Listener<QMouseEvent*> mouse_press_listener;
    Listener<QMouseEvent*> mouse_release_listener;
    Listener<QMouseEvent*> mouse_move_listener;

    explicit GLabel(const QString& text = {}, const QString& toolTip = {});

    /// Turns the label into a horizontal line. The line's style sheet selects by object name: a
    /// label without a name takes `name`, or a random one.
    void set_horz_line(int height, const QString& color, const QString& name = {});

protected:
    void mousePressEvent(QMouseEvent* ev) override;
    void mouseReleaseEvent(QMouseEvent* ev) override;
    void mouseMoveEvent(QMouseEvent* ev) override;
};

}  // namespace ze::qt
