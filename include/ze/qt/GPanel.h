// A frame that generates its children, lays them out and passes layout events down. Screens are
// built of panels, in code; a panel whose layout was never set holds nothing.
#pragma once

#include "ze/qt/ColorSetter.h"
#include "ze/qt/GLAYOUT.h"
#include "ze/qt/Generator.h"
#include "ze/qt/LayoutEvent.h"
#include "ze/qt/Layouter.h"
#include "ze/tools/Listener.h"

#include <QFrame>

#include <vector>

class QLayout;
class QMouseEvent;
class QStackedLayout;

namespace ze::qt {

class GButton;
class GCheckBox;
class GComboBox;
class GLabel;

class GPanel : public Generator, public QFrame, public Layouter, public ColorSetter {
public:
    /// A panel without a layout; set_layout() comes first.
    GPanel();
    explicit GPanel(GLAYOUT kind);

    /// Adds the widget to the layout and makes it this panel's child. A widget that is already in
    /// the layout stays where it is.
    QWidget* add_widget(QWidget* child) override;
    ~GPanel() override = default;
    Q_DISABLE_COPY_MOVE(GPanel)

    /// For a derived panel: builds its contents.
    virtual void ini() {}
    /// For a derived panel: brings its contents up to date.
    virtual void refresh() {}

    /// Fires on show and hide with the new state, and once more after set_visible().
    Listener<bool> visible_listener;
    /// Fires after the event has reached every child.
    Listener<LayoutEvent*> layout_listener;
    /// The mouse events of this panel; each fires after the frame has handled the event.
    Listener<QMouseEvent*> mouse_press_listener;
    Listener<QMouseEvent*> mouse_release_listener;
    Listener<QMouseEvent*> mouse_move_listener;

    /// Hands the event to the children that lay out, in order, then to layout_listener. Without a
    /// layout nothing happens.
    void do_layout(LayoutEvent& event) override;

    /// Makes the panel's layout. A panel that has one already keeps it and leaves a line in the
    /// log.
    void set_layout(GLAYOUT kind);
    [[nodiscard]] bool is_layout(GLAYOUT kind) const noexcept { return layoutKind == kind; }
    [[nodiscard]] GLAYOUT get_layout() const noexcept { return layoutKind; }

    /// Takes the widget out of the layout and leaves it without a parent, or deletes it later.
    void remove_widget(QWidget* child, bool andDelete);
    /// Whether a direct item of the layout holds the widget.
    [[nodiscard]] bool containsWidget(QWidget* child) const;

    /// The widgets of the layout's direct items that are of the kind; returns their number.
    std::size_t get_layouter(std::vector<Layouter*>& found) const;
    std::size_t get_widgets(std::vector<QWidget*>& found) const;
    std::size_t get_panels(std::vector<GPanel*>& found) const;

    /// Deletes the widgets and keeps the layout.
    void clear();
    /// Deletes widgets and nested layouts and makes an empty layout of the same kind, margins and
    /// spacing.
    void clear_grok();
    /// Deletes what the layout holds, nested layouts too; null does nothing.
    static void clearLayout(QLayout* layout);

    /// A label; a width above 0 is its minimum in pixels.
    GLabel* gen_label(const QString& text, int minWidth = 0);
    /// Empty labels that grow in both directions, up, and across.
    QWidget* gen_spacer();
    QWidget* gen_spacer_vert();
    QWidget* gen_spacer_horz();
    /// A child panel. A margin of 0 or more, in pixels, goes to all four sides; below 0 the style's
    /// stay.
    GPanel* gen_pan_vert(int margin = -1);
    GPanel* gen_pan_horz(int margin = -1);
    GPanel* gen_pan_flow(int margin = -1);
    GPanel* gen_pan_stacked(int margin = -1);
    GCheckBox* gen_checkBox(const QString& text, bool checked, QString tip = {});
    /// A button that holds the place of a part of the screen that is not made yet.
    GButton* gen_placeholder(const QString& text, bool growH, bool growV);
    /// A horizontal line, its height in pixels. The name selects the line in its style sheet; an
    /// empty one becomes a random name.
    GLabel* gen_horz_line_str(int height, const QString& color, const QString& name = {});
    GLabel* gen_horz_line(int height, const QColor& color);
    /// The world's languages: the name as text, the code as user data.
    GComboBox* gen_combobox_world_lang();

    /// Pages of a stacked panel. On a panel of another kind they leave an error in the log.
    void show_stacked_widget(QWidget* child);
    [[nodiscard]] QWidget* current_stacked_widget() const;
    [[nodiscard]] GPanel* current_stacked_panel() const;

    /// Sets the text of the tab that this panel is, in the nearest tab widget above it.
    void set_tab_title(const QString& title);

    /// Contents margins and spacing of the layout, in pixels.
    void set_margins(const QMargins& margins);
    void set_margins(int margin);
    [[nodiscard]] QMargins get_margins() const;
    void set_spacing(int spacing);
    [[nodiscard]] int get_spacing() const;

    void set_sunken_border();
    void set_background_color(QColor color);
    void set_visible(bool visible);
    /// False is no reset: it leaves the size policy as it is.
    void set_growable(bool growable);
    void set_growable_horizontal();
    void set_growable_vertical();

    /// Whether the log of this panel's main window shows; false without such a window.
    [[nodiscard]] bool is_logger_visible() const;
    [[nodiscard]] bool is_name(const QString& name) const;
    /// "GPanel@" and the object name; "GPanel" without one.
    [[nodiscard]] QString to_string() const;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    GPanel* gen_panel(GLAYOUT kind, int margin);
    [[nodiscard]] QStackedLayout* stacked_layout(const char* complaint) const;

    QLayout* lay = nullptr;
    GLAYOUT layoutKind = GLAYOUT::VERTICAL;
};

}  // namespace ze::qt
