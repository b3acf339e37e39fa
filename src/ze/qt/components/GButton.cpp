#include "ze/qt/components/GButton.h"

#include "ze/log/pp.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/resources.h"

#include <QApplication>
#include <QEvent>

namespace ze::qt {

GButton::GButton(const QString& textOrIcon, const QString& toolTip, const QString& id)
    : StringSetter(static_cast<QPushButton*>(this)) {
    take_icon(textOrIcon, "GButton::GButton, res_prefix not set !");
    if (!is_icon_path(textOrIcon)) {
        setText(textOrIcon);
        set_id(textOrIcon);
    }
    if (!id.isEmpty()) {
        set_id(id);
    }
    if (!toolTip.isEmpty()) {
        setToolTip(toolTip);
    }
    connect_listeners();
}

void GButton::connect_listeners() {
    clicked_listener.owner = this;
    connect(this, &QPushButton::clicked, qApp,
            [this] { clicked_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QPushButton::pressed, qApp,
            [this] { pressed_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QPushButton::released, qApp,
            [this] { released_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QPushButton::toggled, qApp,
            [this](bool checked) { toggled_listener.fire_event(checked, FIRE_DIRECT); });
}

void GButton::take_icon(const QString& path, const char* errorText) {
    if (path.startsWith(u'^') && !has_res_prefix()) {
        pp_error(errorText);
        return;
    }
    set_icon(this, path);
}

void GButton::set_icon_res(const QString& path) {
    take_icon(path, "GButton::set_icon_res, prefix not set !");
}

QString GButton::get_icon_res() const {
    return property("sIcon").toString();
}

void GButton::adapt_size_to_font(int margin) {
    if (!text().isEmpty()) {
        setMaximumWidth(fontMetrics().horizontalAdvance(text()) + 2 * margin);
        adjustSize();
    }
}

void GButton::set_text_toolTip(const QString& text, const QString& toolTip) {
    if (accessibleName() == this->toolTip()) {
        setAccessibleName(QString());  // an icon's; a text is a name of its own
    }
    setText(text);
    setToolTip(toolTip);
}

void GButton::set_checked(bool value, bool notify) {
    if (notify) {
        setChecked(value);
        return;
    }
    const StopListenerTemporary stop(toggled_listener);
    setChecked(value);
}

bool GButton::event(QEvent* ev) {
    // A button that shows only an icon has no other name for those who can not see it.
    if (ev->type() == QEvent::ToolTipChange && text().isEmpty()) {
        setAccessibleName(toolTip());
    }
    return QPushButton::event(ev);
}

}  // namespace ze::qt
