// A menu that generates its entries. Entries live as long as their menu.
#pragma once

#include <QMenu>

class QWidgetAction;

namespace ze::qt {

class GAction;

class GMenu : public QMenu {
public:
    explicit GMenu(QWidget* parent = nullptr);
    explicit GMenu(const QString& title, QWidget* parent = nullptr);

    /// A menu on `parent` with its font. The width has no effect.
    [[nodiscard]] static GMenu* gen_menu(QWidget* parent, unsigned width);

    /// Adds a menu with this menu's font below this one. The width has no effect.
    GMenu* gen_sub_menu(const QString& title, unsigned width);

    /// Adds an action; `checked` counts only with `checkable`. The delay has no effect: the action
    /// tells its listeners at once.
    GAction* gen_action(const QString& text, bool checkable, bool checked, bool enabled,
                        unsigned delay);

    /// Adds a heading that cannot be chosen.
    QWidgetAction* gen_label(const QString& text);

    QAction* gen_separator() { return addSeparator(); }

    /// Has no effect: a menu is as wide as its entries.
    void set_width(unsigned width);

    /// Pops the menu up at the mouse pointer, `dy` pixels below it.
    void show_at_mouse_pos(int dy);
};

}  // namespace ze::qt
