// Finds widgets by their own type. QObject::findChild asks for a Q_OBJECT in the class it looks
// for, which the thin classes of the framework do without.
#pragma once

#include <QObject>

#include <vector>

namespace test {

/// What is a `T` among all that stands below `parent`, in the order of findChildren.
template <typename T>
[[nodiscard]] std::vector<T*> children_of(const QObject& parent) {
    std::vector<T*> found;
    for (QObject* const child : parent.findChildren<QObject*>()) {
        if (auto* const wanted = dynamic_cast<T*>(child)) {
            found.push_back(wanted);
        }
    }
    return found;
}

/// The first of children_of, null where there is none.
template <typename T>
[[nodiscard]] T* child_of(const QObject& parent) {
    const auto found = children_of<T>(parent);
    return found.empty() ? nullptr : found.front();
}

}  // namespace test
