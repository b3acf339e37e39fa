#include "ze/tools/Listener.h"

#include "ze/log/pp.h"

#include "support/LogCapture.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QObject>
#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

namespace ze {
namespace {

using Lines = std::vector<std::string>;

struct CountedCopies {
    explicit CountedCopies(int& copies) : count(&copies) {}
    CountedCopies(const CountedCopies& other) : count(other.count) { ++*count; }
    CountedCopies(CountedCopies&&) noexcept = default;
    CountedCopies& operator=(const CountedCopies&) = delete;
    ~CountedCopies() = default;

    int* count;
};

// What a button is to the window that it stands in.
class Part : public QObject {
public:
    explicit Part(QObject* parent = nullptr) : QObject(parent) { listener.owner = this; }

    Listener<NO_PAYLOAD> listener;
};

class Whole : public Part {
public:
    void on_event() { ++events; }
    void on_other() { events += 100; }

    int events = 0;
};

class Stranger : public QObject {
public:
    void on_event() {}
};

// An application object for queued events, which are delivered by hand.
class Application {
public:
    static void deliver() { QCoreApplication::sendPostedEvents(); }

private:
    int argc = 1;
    std::array<char, 5> name = {'t', 'e', 's', 't', '\0'};
    std::array<char*, 2> argv = {name.data(), nullptr};
    QCoreApplication app{argc, argv.data()};
};

}  // namespace

TEST(Listener, calls_every_callback_once_with_the_payload) {
    Listener<QString> listener;
    std::multiset<QString> seen;
    listener.append("a", [&seen](const QString& text) { seen.insert(text + u'a'); });
    listener.append("b", [&seen](const QString& text) { seen.insert(text + u'b'); });
    listener += [&seen](const QString& text) {
        seen.insert(text + u'c');
    };
    listener.fire_event(QStringLiteral("x"), FIRE_DIRECT);
    EXPECT_EQ(seen,
              (std::multiset{QStringLiteral("xa"), QStringLiteral("xb"), QStringLiteral("xc")}));
}

TEST(Listener, fires_directly_unless_told_otherwise) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    listener += [&calls] {
        ++calls;
    };
    listener.fire_event(NO_PAYLOAD{});
    EXPECT_EQ(calls, 1);
}

TEST(Listener, an_empty_table_does_nothing_in_any_mode_and_copies_no_payload) {
    const Application application;
    Listener<CountedCopies> listener;
    QObject owner;
    listener.owner = &owner;
    int copies = 0;
    const CountedCopies payload(copies);
    for (const FIRE_EVENT mode : {FIRE_DIRECT, FIRE_QUEUED, FIRE_NONE}) {
        listener.fire_event(payload, mode);
        Application::deliver();
    }
    EXPECT_EQ(copies, 0);
    EXPECT_FALSE(listener.has_listeners());
}

TEST(Listener, a_direct_fire_copies_the_payload_once) {
    Listener<CountedCopies> listener;
    listener += [](const CountedCopies&) {
    };
    listener += [](const CountedCopies&) {
    };
    int copies = 0;
    listener.fire_event(CountedCopies(copies), FIRE_DIRECT);
    EXPECT_EQ(copies, 1);
}

TEST(Listener, a_queued_fire_copies_the_payload_once) {
    const Application application;
    QObject owner;
    Listener<CountedCopies> listener;
    listener.owner = &owner;
    int calls = 0;
    listener += [&calls](const CountedCopies&) {
        ++calls;
    };
    int copies = 0;
    listener.fire_event(CountedCopies(copies), FIRE_QUEUED);
    Application::deliver();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(copies, 1);
}

TEST(Listener, callbacks_see_the_payload_as_it_stood_at_the_fire) {
    Listener<int> listener;
    int source = 1;
    int sum = 0;
    const auto change = [&source, &sum](const int& value) {
        sum += value;
        source = 100;
    };
    listener.append("a", change);
    listener.append("b", change);
    listener.fire_event(source, FIRE_DIRECT);
    EXPECT_EQ(sum, 2);
}

TEST(Listener, fire_none_calls_nothing) {
    Listener<int> listener;
    int calls = 0;
    listener += [&calls](const int&) {
        ++calls;
    };
    listener.fire_event(1, FIRE_NONE);
    EXPECT_EQ(calls, 0);
}

TEST(Listener, fire_none_copies_no_payload) {
    Listener<CountedCopies> listener;
    listener += [](const CountedCopies&) {
    };
    int copies = 0;
    listener.fire_event(CountedCopies(copies), FIRE_NONE);
    EXPECT_EQ(copies, 0);
}

TEST(Listener, modes_have_fixed_numbers) {
    EXPECT_EQ(unsigned{FIRE_DIRECT}, 0U);
    EXPECT_EQ(unsigned{FIRE_QUEUED}, 1U);
    EXPECT_EQ(unsigned{FIRE_NONE}, 2U);
}

TEST(Listener, append_of_a_known_key_keeps_the_second_callback_and_logs_the_fixed_text) {
    test::LogCapture log;
    Listener<int> listener;
    int sum = 0;
    EXPECT_EQ(listener.append("key", [&sum](const int& value) { sum += value; }), "key");
    EXPECT_EQ(listener.append("key", [&sum](const int& value) { sum += 10 * value; }), "key");
    listener.fire_event(2, FIRE_DIRECT);
    EXPECT_EQ(sum, 20);
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB Listener::append '$' already appended!"});
}

TEST(Listener, append_of_a_known_key_enables_the_callback_again) {
    test::LogCapture log;
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    listener.append("key", [] {});
    listener.enable_all_listener(false);
    listener.append("key", [&calls] { ++calls; });
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 1);
}

TEST(Listener, set_removes_what_was_there_and_takes_the_same_key_again_in_silence) {
    test::LogCapture log;
    Listener<int> listener;
    int sum = 0;
    listener.append("other", [&sum](const int&) { sum += 1000; });
    listener.set("key", [&sum](const int&) { sum += 100; });
    EXPECT_EQ(listener.set("key", [&sum](const int& value) { sum += value; }), "key");
    listener.fire_event(1, FIRE_DIRECT);
    EXPECT_EQ(sum, 1);
    EXPECT_EQ(log.lines(), Lines{});
}

TEST(Listener, assignment_leaves_only_the_last_callback_under_a_fresh_key) {
    Listener<NO_PAYLOAD> listener;
    int first = 0;
    int second = 0;
    const std::string key_of_first = (listener = [&first] { ++first; });
    const std::string key_of_second = (listener = [&second] { ++second; });
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
    EXPECT_NE(key_of_first, key_of_second);
}

TEST(Listener, fresh_keys_are_eight_capital_letters) {
    Listener<NO_PAYLOAD> listener;
    const std::string key = (listener += [] {});
    EXPECT_EQ(key.size(), 8U);
    EXPECT_EQ(key.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos);
}

TEST(Listener, an_empty_callback_is_kept_and_not_called) {
    Listener<int> listener;
    listener += std::function<void(const int&)>();
    listener.fire_event(1, FIRE_DIRECT);
    EXPECT_TRUE(listener.has_listeners());
}

TEST(Listener, disabled_callbacks_stay_registered) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    listener += [&calls] {
        ++calls;
    };
    listener.enable_all_listener(false);
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 0);
    listener.enable_all_listener(true);
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 1);
}

TEST(Listener, a_callback_that_disables_the_others_has_the_last_word) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    for (const char* const key : {"a", "b", "c"}) {
        listener.append(key, [&listener, &calls] {
            ++calls;
            listener.enable_all_listener(false);
        });
    }
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 1);
}

TEST(Listener, a_callback_may_fire_the_same_listener) {
    Listener<int> listener;
    std::vector<int> seen;
    listener += [&listener, &seen](const int& value) {
        seen.push_back(value);
        if (value > 0) {
            listener.fire_event(value - 1, FIRE_DIRECT);
        }
    };
    listener.fire_event(3, FIRE_DIRECT);
    EXPECT_EQ(seen, (std::vector{3, 2, 1, 0}));
}

TEST(Listener, a_callback_that_replaces_itself_runs_to_its_end) {
    test::LogCapture log;
    Listener<NO_PAYLOAD> listener;
    std::string seen;
    const std::string text = "captured text that is longer than any small buffer";
    listener.append("key", [&listener, &seen, text] {
        listener.append("key", [&seen] { seen += "!"; });
        seen = text;
    });
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(seen, text + "!");
}

TEST(Listener, each_run_of_a_callback_starts_from_the_state_that_was_registered) {
    Listener<NO_PAYLOAD> listener;
    int last = 0;
    listener += [count = 0, &last]() mutable {
        last = ++count;
    };
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(last, 1);
}

TEST(Listener, what_a_callback_throws_leaves_the_fire_and_the_listener_whole) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    listener.append("key", [&calls] {
        if (++calls == 1) {
            throw std::runtime_error("from a callback");
        }
    });
    EXPECT_THROW(listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT), std::runtime_error);
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 2);
}

TEST(Listener, the_end_of_a_listener_is_logged_with_its_name) {
    test::LogCapture log;
    {
        Listener<int> named;
        named.name = "listenerBallHit";
        const Listener<NO_PAYLOAD> nameless;
    }
    EXPECT_EQ(log.lines_with_level(),
              (Lines{"DEB Listener::~Listener@", "DEB Listener::~Listener@listenerBallHit"}));
}

TEST(StopListenerTemporary, silences_for_its_scope_and_then_enables_everything) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    listener += [&calls] {
        ++calls;
    };
    listener.enable_all_listener(false);
    {
        const StopListenerTemporary stop(listener);
        listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
        EXPECT_EQ(calls, 0);
    }
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 1);
}

TEST(StopListenerTemporary, enables_on_an_exception_too) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    listener += [&calls] {
        ++calls;
    };
    try {
        const StopListenerTemporary stop(listener);
        throw std::runtime_error("within the scope");
    } catch (const std::runtime_error&) {
        listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    }
    EXPECT_EQ(calls, 1);
}

TEST(Listener, a_member_function_is_bound_to_the_nearest_ancestor_that_has_it) {
    Whole outer;
    Whole inner;
    inner.setParent(&outer);
    auto* const panel = new QObject(&inner);  // owned by its parent
    auto* const button = new Part(panel);
    EXPECT_EQ((button->listener = &Whole::on_event).size(), 8U);
    button->listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(inner.events, 1);
    EXPECT_EQ(outer.events, 0);
    inner.setParent(nullptr);
}

TEST(Listener, a_member_function_of_the_owner_itself_replaces_what_was_there) {
    Whole whole;
    whole.listener = &Whole::on_other;
    whole.listener = &Whole::on_event;
    whole.listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(whole.events, 1);
}

TEST(Listener, a_member_function_that_no_ancestor_has_changes_nothing) {
    int calls = 0;
    Whole whole;
    whole.listener = [&calls] {
        ++calls;
    };
    EXPECT_EQ((whole.listener = &Stranger::on_event), "");
    whole.listener.owner = nullptr;
    EXPECT_EQ((whole.listener = &Whole::on_event), "");
    whole.listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 1);
}

TEST(Listener, a_queued_fire_runs_after_control_is_back_in_the_event_loop) {
    const Application application;
    QObject owner;
    Listener<QString> listener;
    listener.owner = &owner;
    QString seen;
    listener += [&seen](const QString& text) {
        seen = text;
    };
    QString payload = QStringLiteral("as it stood");
    listener.fire_event(payload, FIRE_QUEUED);
    payload = QStringLiteral("changed");
    EXPECT_EQ(seen, QString());
    Application::deliver();
    EXPECT_EQ(seen, QStringLiteral("as it stood"));
}

TEST(Listener, a_queued_fire_of_another_thread_runs_on_that_of_the_application) {
    const Application application;
    QObject owner;
    Listener<NO_PAYLOAD> listener;
    listener.owner = &owner;
    std::vector<std::thread::id> seen;
    listener += [&seen] {
        seen.push_back(std::this_thread::get_id());
    };
    std::thread([&listener] { listener.fire_event(NO_PAYLOAD{}, FIRE_QUEUED); }).join();
    Application::deliver();
    EXPECT_EQ(seen, std::vector{std::this_thread::get_id()});
}

TEST(Listener, a_queued_fire_without_an_owner_is_lost) {
    const Application application;
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    listener += [&calls] {
        ++calls;
    };
    listener.fire_event(NO_PAYLOAD{}, FIRE_QUEUED);
    Application::deliver();
    EXPECT_EQ(calls, 0);
}

TEST(Listener, a_queued_fire_without_an_application_is_lost) {
    QObject owner;
    Listener<NO_PAYLOAD> listener;
    listener.owner = &owner;
    int calls = 0;
    listener += [&calls] {
        ++calls;
    };
    listener.fire_event(NO_PAYLOAD{}, FIRE_QUEUED);
    EXPECT_EQ(calls, 0);
}

}  // namespace ze
