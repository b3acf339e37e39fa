#include "ze/qt/components/GMenu.h"

#include "ze/qt/components/GAction.h"

#include <QCursor>
#include <QLabel>
#include <QWidgetAction>

namespace ze::qt {

GMenu::GMenu(QWidget* parent) : QMenu(parent) {}

GMenu::GMenu(const QString& title, QWidget* parent) : QMenu(title, parent) {}

GMenu* GMenu::gen_menu(QWidget* parent, unsigned width) {
    auto* const menu = new GMenu(parent);
    if (parent != nullptr) {
        menu->setFont(parent->font());
    }
    menu->setStyleSheet(
        QStringLiteral("QMenu::separator { height: 1px; background: #707070; margin: 6px 10px; }"));
    menu->set_width(width);
    return menu;
}

GMenu* GMenu::gen_sub_menu(const QString& title, unsigned width) {
    auto* const menu = new GMenu(title, this);
    menu->setFont(font());
    menu->set_width(width);
    addMenu(menu);
    return menu;
}

GAction* GMenu::gen_action(const QString& text, bool checkable, bool checked, bool enabled,
                           unsigned /*delay*/) {
    auto* const action = new GAction(parent(), text);
    // It belongs to the menu's parent: without this a menu that is made anew each time would leave
    // it there.
    connect(this, &QObject::destroyed, action, &QObject::deleteLater);
    action->setCheckable(checkable);
    action->setChecked(checkable && checked);
    addAction(action);
    action->setEnabled(enabled);
    return action;
}

QWidgetAction* GMenu::gen_label(const QString& text) {
    auto* const label = new QLabel(text);
    label->setStyleSheet(
        QStringLiteral("QLabel{    color: yellow;    background: #303030;    padding: 6px 12px;}"));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* const action = new QWidgetAction(this);
    action->setDefaultWidget(label);
    addAction(action);
    return action;
}

void GMenu::set_width(unsigned /*width*/) {}

void GMenu::show_at_mouse_pos(int dy) {
    popup(QCursor::pos() + QPoint(0, dy));
}

}  // namespace ze::qt
