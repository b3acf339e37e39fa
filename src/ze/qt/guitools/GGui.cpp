#include "ze/qt/guitools/GGui.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/resources.h"
#include "ze/tools/format.h"

#include <QApplication>
#include <QClipboard>
#include <QMetaObject>
#include <QRect>
#include <QVariant>
#include <QWidget>

#include <algorithm>

namespace ze::qt {

namespace {

// The window that the dialog belongs to, or any one that is open.
GMainWindow* main_window_of(const QWidget* dialog) {
    if (GMainWindow* const win = get_main_window(dialog->parentWidget())) {
        return win;
    }
    for (QWidget* const top : QApplication::topLevelWidgets()) {
        if (auto* const win = dynamic_cast<GMainWindow*>(top); win != nullptr && win->isVisible()) {
            return win;
        }
    }
    return nullptr;
}

}  // namespace

GMainWindow* get_main_window(const QWidget* w) {
    return w == nullptr ? nullptr : dynamic_cast<GMainWindow*>(w->window());
}

void activate_main_window_later(const QWidget* dialog) {
    if (dialog == nullptr) {
        nullPointerHandling("src/ze/qt/guitools/GGui", __LINE__, QStringLiteral("dialog == NULL"));
    }
    GMainWindow* const win = main_window_of(dialog);
    if (win == nullptr) {
        return;
    }
    const auto activate = [win] {
        if (QApplication::activeWindow() == nullptr && win->isVisible()) {
            win->activateWindow();
        }
    };
    QMetaObject::invokeMethod(win, activate, Qt::QueuedConnection);
}

QPoint get_place_inside(const QRect& area, const QRect& frame) {
    const int lastX = std::max(area.left(), area.right() + 1 - frame.width());
    const int lastY = std::max(area.top(), area.bottom() + 1 - frame.height());
    return {std::clamp(frame.left(), area.left(), lastX),
            std::clamp(frame.top(), area.top(), lastY)};
}

void invoke_later(std::function<void()> fn) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(fn), Qt::QueuedConnection);
}

void toggle_full_screen(QWidget* w, bool flagAnyWidget) {
    if (w == nullptr) {
        pp_error("::toggle_full_screen, w == nullptr");
        return;
    }
    const bool flagFull = w->isFullScreen();
    if (flagAnyWidget) {
        w->setWindowFlag(Qt::Window, !flagFull);
    } else if (!w->isWindow()) {
        pp_error("::toggle_full_screen, w is NOT a Window");
        return;
    }
    if (flagFull) {
        pp("GGui::toggle_full_screen, full => normal");
        w->showNormal();
    } else {
        pp("GGui::toggle_full_screen, normal => full");
        w->showFullScreen();
    }
}

void copy_to_clipboard(const char* text) {
    QApplication::clipboard()->setText(QString::fromUtf8(text));
}

void copy_to_clipboard(const QString& text) {
    copy_to_clipboard(str::to_utf8(text).c_str());
}

bool has_property(const QObject* obj, const char* name) {
    return obj != nullptr && obj->property(name).isValid();
}

bool is_icon_path(const QString& text) {
    return text.startsWith(u'^') || text.startsWith(QStringLiteral(":/")) || text.startsWith(u'/');
}

QString get_icon_path(const QString& path) {
    if (!is_icon_path(path)) {
        return {};
    }
    if (!path.startsWith(u'^')) {
        return path;
    }
    return has_res_prefix() ? get_res_path(path) : QString();
}

}  // namespace ze::qt
