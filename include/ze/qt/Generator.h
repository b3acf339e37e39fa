// The generating interface of panels: ask it for a child, get the child back ready to be
// configured. It does not own what it makes; that belongs to the parent chain which add_widget puts
// it into.
#pragma once

#include <type_traits>
#include <utility>

class QWidget;

namespace ze::qt {

class Generator {
public:
    /// Takes a widget in as a child and returns it.
    virtual QWidget* add_widget(QWidget* widget) = 0;
    virtual ~Generator() = default;

    /// Makes a `T` from the arguments, adds it and returns it. A widget whose constructor takes a
    /// text but no tool tip, as QLabel's, gets the second text as its tool tip afterwards.
    template <class T, class... Args>
    T* gen(Args&&... args) {
        T* const widget = make<T>(std::forward<Args>(args)...);
        add_widget(widget);
        return widget;
    }

private:
    template <class T, class... Args>
    requires std::is_constructible_v<T, Args...>
    static T* make(Args&&... args) { return new T(std::forward<Args>(args)...); }

    template <class T, class Text, class Tip>
    requires(!std::is_constructible_v<T, Text, Tip>) static T* make(Text&& text, Tip&& toolTip) {
        T* const widget = new T(std::forward<Text>(text));
        widget->setToolTip(std::forward<Tip>(toolTip));
        return widget;
    }
};

}  // namespace ze::qt
