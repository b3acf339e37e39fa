// How a widget takes part in the room of its layout. The templates return their argument, so that
// they can stand inside a call chain.
#pragma once

#include "ze/log/exits.h"

#include <QSizePolicy>
#include <QString>

namespace ze::qt {

namespace detail {

template <class T>
T* set_growth(T* qwt, QSizePolicy::Policy vertical, int stretchHorz, int stretchVert) {
    if (qwt == nullptr) {
        nullPointerHandling("include/ze/qt/inline/GGui_inline", __LINE__,
                            QStringLiteral("qwt == NULL"));
    }
    QSizePolicy policy(QSizePolicy::Expanding, vertical);
    policy.setHorizontalStretch(stretchHorz);
    policy.setVerticalStretch(stretchVert);
    qwt->setSizePolicy(policy);
    return qwt;
}

}  // namespace detail

/// Takes the room that is left across, and upward at least what it needs.
template <class T>
T* set_growable(T* qwt) {
    return detail::set_growth(qwt, QSizePolicy::MinimumExpanding, 1, 1);
}

/// Takes the room that is left across and keeps its height.
template <class T>
T* set_growable_horizontal(T* qwt) {
    return detail::set_growth(qwt, QSizePolicy::Fixed, 1, 0);
}

/// Takes the room upward before others do; across it stays willing to grow.
template <class T>
T* set_growable_vertical(T* qwt) {
    return detail::set_growth(qwt, QSizePolicy::Minimum, 0, 1);
}

}  // namespace ze::qt
