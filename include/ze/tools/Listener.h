// The observer member of the framework: callbacks under string keys, run by fire_event.
// It is not a signal: it has no lock, belongs to one thread, and no single callback can be taken
// away again.
#pragma once

#include "ze/tools/Callback.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>

#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace ze {

/// The tag of events that carry no value.
struct NO_PAYLOAD {};

enum FIRE_EVENT : unsigned {
    FIRE_DIRECT = 0,  ///< callbacks run now, on the caller's stack
    FIRE_QUEUED = 1,  ///< callbacks run later, on the application object's thread
    FIRE_NONE = 2,    ///< nothing is called; for setters that change state silently
};

class Nameable {
public:
    virtual ~Nameable() = default;

    std::string name;  ///< shows in the line that the destructor logs
};

class BaseListener : public Nameable {
public:
    BaseListener() = default;
    BaseListener(const BaseListener&) = delete;
    BaseListener& operator=(const BaseListener&) = delete;

    /// Lets every callback run, or none; they stay registered.
    virtual void enable_all_listener(bool on) = 0;

    /// Not owned. Binding a member function and queued firing need it, nothing else does.
    QObject* owner = nullptr;

protected:
    static std::string fresh_key();
    static void report_duplicate_key();
    void report_end() const;
};

/// One callback. A Listener<NO_PAYLOAD> uses the plain form, every other one the form with the
/// payload.
template <typename T>
struct ListenerItem {
    ze::Callback<const T&> callback_payload;
    std::string name;
    bool enabled = true;
    ze::Callback<> callback_plain;
};

template <typename T>
class Listener : public BaseListener {
    static constexpr bool IS_PLAIN = std::is_same_v<T, NO_PAYLOAD>;

public:
    using Callback = std::conditional_t<IS_PLAIN, ze::Callback<>, ze::Callback<const T&>>;

    Listener() = default;
    ~Listener() override { report_end(); }

    /// Adds a callback and gives back its key. A key that is there already gets the new callback,
    /// enabled, and is logged.
    std::string append(const std::string& key, Callback fn) {
        if (table.contains(key)) {
            report_duplicate_key();
        }
        insert(key, std::move(fn));
        return key;
    }

    /// Removes all callbacks, then adds this one. Not allowed while this listener fires.
    std::string set(const std::string& key, Callback fn) {
        table.clear();
        insert(key, std::move(fn));
        return key;
    }

    /// `append` under a fresh random key.
    std::string operator+=(Callback fn) { return append(fresh_key(), std::move(fn)); }

    /// `set` under a fresh random key.
    std::string operator=(Callback fn) { return set(fresh_key(), std::move(fn)); }

    /// Binds a member function of the owner, or of the nearest of its parents that is an `Owner`,
    /// then as `set`. Without such an object nothing changes and the result is empty.
    template <typename Owner>
    std::string operator=(void (Owner::*member)()) requires IS_PLAIN {
        for (QObject* object = owner; object != nullptr; object = object->parent()) {
            if (auto* const target = dynamic_cast<Owner*>(object)) {
                return *this = Callback([target, member] { (target->*member)(); });
            }
        }
        return {};
    }

    /// Calls every enabled callback once, in no order that a caller may depend on. The payload is
    /// copied once, each callback before it runs. A queued fire without an owner is lost; with one,
    /// this listener has to outlive the fire.
    void fire_event(const T& payload, FIRE_EVENT mode = FIRE_DIRECT) {
        if (mode == FIRE_NONE || table.empty()) {
            return;
        }
        auto notification = [this, payload = T(payload)] {
            notify(payload);
        };
        if (mode == FIRE_DIRECT) {
            notification();
        } else if (owner != nullptr && QCoreApplication::instance() != nullptr) {
            QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(notification),
                                      Qt::QueuedConnection);
        }
    }

    void enable_all_listener(bool on) override {
        for (auto& [key, item] : table) {
            item.enabled = on;
        }
    }

    [[nodiscard]] bool has_listeners() const noexcept { return !table.empty(); }

private:
    /// Marks the time of a walk over the table, also when a callback throws.
    class Walk {
    public:
        explicit Walk(Listener& walked) noexcept : listener(walked) { ++listener.walks; }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk() {
            if (--listener.walks == 0 && listener.table.max_load_factor() != LOAD_FACTOR) {
                listener.table.max_load_factor(LOAD_FACTOR);
            }
        }

    private:
        Listener& listener;
    };

    // A rehash would pull the table from under a walk: a callback that appends while the listener
    // fires makes the buckets longer instead, until the outermost walk has ended.
    static constexpr float LOAD_FACTOR = 1.0F;
    static constexpr float LOAD_FACTOR_OF_WALK = 1e6F;

    void insert(const std::string& key, Callback fn) {
        if (walks > 0) {
            table.max_load_factor(LOAD_FACTOR_OF_WALK);
        }
        ListenerItem<T> item;
        item.name = key;
        if constexpr (IS_PLAIN) {
            item.callback_plain = std::move(fn);
        } else {
            item.callback_payload = std::move(fn);
        }
        table.insert_or_assign(key, std::move(item));
    }

    void notify(const T& payload) {
        const Walk walk(*this);
        for (const auto& [key, item] : table) {
            if (item.enabled) {
                // The copy is what runs: the callback may replace itself in the table meanwhile.
                if constexpr (IS_PLAIN) {
                    item.callback_plain.run_copy();
                } else {
                    item.callback_payload.run_copy(payload);
                }
            }
        }
    }

    std::unordered_map<std::string, ListenerItem<T>> table;
    int walks = 0;
};

/// Silences a listener for a scope. The end enables every callback, whatever its state was before.
class StopListenerTemporary {
public:
    explicit StopListenerTemporary(BaseListener& silenced) : listener(silenced) {
        listener.enable_all_listener(false);
    }
    StopListenerTemporary(const StopListenerTemporary&) = delete;
    StopListenerTemporary& operator=(const StopListenerTemporary&) = delete;
    ~StopListenerTemporary() { listener.enable_all_listener(true); }

private:
    BaseListener& listener;
};

}  // namespace ze
