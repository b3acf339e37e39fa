#include "ze/log/exits.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/tools/format.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QLineEdit>
#include <QTimer>
#include <QVariant>

#include <chrono>
#include <cstdarg>

namespace ze::qt {

namespace {

constexpr const char* PATH = "src/ze/qt/guitools/GGui_looks";
constexpr const char* STYLE_BEFORE_FLASH = "styleBeforeFlash";

void check_widget(const QWidget* widget, int line) {
    if (widget == nullptr) {
        nullPointerHandling(PATH, line, QStringLiteral("widget == NULL"));
    }
}

bool is_button(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) != nullptr;
}

bool is_input(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
}

void set_role(QWidget* widget, QPalette::ColorRole role, const QColor& color) {
    QPalette palette = widget->palette();
    palette.setColor(role, color);
    widget->setPalette(palette);
}

void end_flash(QWidget* w) {
    w->setStyleSheet(w->property(STYLE_BEFORE_FLASH).toString());
    w->setProperty(STYLE_BEFORE_FLASH, QVariant());
}

}  // namespace

void flash(QWidget* w, const QColor& color, unsigned long long milliseconds) {
    check_widget(w, __LINE__);
    if (has_property(w, STYLE_BEFORE_FLASH)) {
        return;
    }
    w->setProperty(STYLE_BEFORE_FLASH, w->styleSheet());
    QTimer::singleShot(
        0, w, [w, color] { set_xstyle(w, "background-color: %s;", qPrintable(color.name())); });
    QTimer::singleShot(std::chrono::milliseconds(milliseconds), w, [w] { end_flash(w); });
}

void set_xstyle(QWidget* w, const char* format, ...) {
    check_widget(w, __LINE__);
    std::va_list args;
    va_start(args, format);
    const QString piece = QString::vasprintf(format, args);
    va_end(args);
    w->setStyleSheet(w->styleSheet() + piece);
}

void set_margin_horz(QAbstractButton* bt, unsigned int margin) {
    if (bt == nullptr) {
        nullPointerHandling(PATH, __LINE__, QStringLiteral("bt == NULL"));
    }
    bt->setMaximumWidth(bt->fontMetrics().horizontalAdvance(bt->text()) + static_cast<int>(margin));
}

void set_border(QWidget* widget, QColor color, unsigned int width, const QString& selector) {
    check_widget(widget, __LINE__);
    const QString border =
        str::qprintF("border-color:$; border-width:$; border-style:solid;", color.name(), width);
    widget->setStyleSheet(selector.isEmpty() ? border : str::qprintF("$ { $ }", selector, border));
}

void set_background(QWidget* widget, QColor color) {
    check_widget(widget, __LINE__);
    widget->setAutoFillBackground(true);
    set_role(widget,
             is_input(widget)    ? QPalette::Base
             : is_button(widget) ? QPalette::Button
                                 : QPalette::Window,
             color);
}

void set_text_color(QWidget* widget, QColor color) {
    check_widget(widget, __LINE__);
    set_role(widget,
             is_input(widget)    ? QPalette::Text
             : is_button(widget) ? QPalette::ButtonText
                                 : QPalette::WindowText,
             color);
}

}  // namespace ze::qt
