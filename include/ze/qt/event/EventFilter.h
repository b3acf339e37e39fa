// The one filter that sees every event of the application: it feeds the touch automaton, gives
// menus, lists and tool tips the colours of their window, and can print events while somebody hunts
// a problem. It never consumes an event.
#pragma once

#include "ze/qt/event/GTouchAutomat.h"

#include <QEvent>
#include <QObject>
#include <QString>

#include <set>

namespace ze::qt {

class EventFilter : public QObject {
public:
    explicit EventFilter(QObject* parent);

    [[nodiscard]] event::GTouchAutomat& get_touch_automat() noexcept { return automat; }

    /// While the set of types is not empty, only events of these types are printed.
    void add_filter(QEvent::Type type);
    void remove_filter(QEvent::Type type);

    /// While the set of objects is not empty, only events of these objects are printed.
    void add_object_filter(const QObject* obj);
    void remove_object_filter(const QObject* obj);

    /// While the set of names is not empty, only events of objects with these names are printed.
    void add_object_name_filter(const QString& name);
    void remove_object_name_filter(const QString& name);

    /// Adds the types that tell what a user does and what a window goes through: keys, buttons,
    /// wheel, touch, focus, show, hide, resize and close. Moves of the mouse and repaints are left
    /// out.
    void gen_common_filter();

    /// Prints each event that passes the filters on the standard output.
    void set_dump_events(bool flag) noexcept { flagDump = flag; }
    [[nodiscard]] bool is_dump_events() const noexcept { return flagDump; }

    bool eventFilter(QObject* obj, QEvent* ev) override;

private:
    [[nodiscard]] bool is_dumped(const QObject* obj, const QEvent* ev) const;

    event::GTouchAutomat automat;
    bool flagDump{false};
    std::set<QEvent::Type> types;
    std::set<const QObject*> objects;
    std::set<QString> names;
};

}  // namespace ze::qt
