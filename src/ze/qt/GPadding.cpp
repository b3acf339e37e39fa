#include "ze/qt/GPadding.h"

#include "ze/log/exits.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/tools/format.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionFrame>

namespace ze::qt {

namespace {

QRect contents_of(const QWidget* widget) {
    if (qobject_cast<const QAbstractButton*>(widget) != nullptr) {
        QStyleOptionButton option;
        option.initFrom(widget);
        return widget->style()->subElementRect(QStyle::SE_PushButtonContents, &option, widget);
    }
    if (qobject_cast<const QLineEdit*>(widget) != nullptr) {
        QStyleOptionFrame option;
        option.initFrom(widget);
        option.lineWidth =
            widget->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, widget);
        return widget->style()->subElementRect(QStyle::SE_LineEditContents, &option, widget);
    }
    return widget->contentsRect();
}

}  // namespace

void GPadding::from_QWidget(const QWidget* widget) {
    if (widget == nullptr) {
        return;
    }
    const QRect inner = contents_of(widget);
    left = inner.x();
    right = widget->width() - inner.x() - inner.width();
    top = inner.y();
    bottom = widget->height() - inner.y() - inner.height();
}

void GPadding::set_padding(QWidget* widget) const {
    if (widget == nullptr) {
        nullPointerHandling("src/ze/qt/GPadding", __LINE__, QStringLiteral("widget == NULL"));
    }
    if (auto* const button = qobject_cast<QAbstractButton*>(widget)) {
        button->setMaximumWidth(button->fontMetrics().horizontalAdvance(button->text()) + left +
                                right);
        return;
    }
    widget->setStyleSheet(str::qprintF(
        "$ { padding-left: $px; padding-right: $px; padding-top: $px; padding-bottom: $px; };",
        widget->metaObject()->className(), left, right, top, bottom));
}

std::string GPadding::to_string() const {
    return str::xprintF(0, "$,$,$,$", left, right, top, bottom);
}

}  // namespace ze::qt
