// A word of bits that threads can wait on. Every operation may be called from any thread. A waiter
// sees the word, not its history: a bit that is set and cleared again before it looks is missed.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace ze {

/// Whom a change wakes: all waiters with 0, one of them with any other value.
enum NOTIFY : unsigned {
    NOTIFY_ALL = 0,
    NOTIFY_ONE = 1,
};

class GAtomicBitsWatcher {
public:
    explicit GAtomicBitsWatcher(unsigned initial) noexcept : flags(initial) {}

    [[nodiscard]] unsigned get_flags() const noexcept { return flags; }

    /// Sets or clears the bits of the mask and wakes all waiters, changed or not.
    void set_flag(unsigned mask, bool on);
    void set_notify_flag(unsigned mask, NOTIFY notify, bool on);

    /// Stores the whole word. With `only_on_change` nobody is woken for the value that it had.
    void set_all_flags(unsigned value, NOTIFY notify, bool only_on_change);

    /// Makes a stopped watcher run again and stores 0, as `set_all_flags` does.
    void reset(NOTIFY notify, bool only_on_change);

    /// Sets or clears the bit of the number modulo 32; wakes waiters only when the word changed.
    void set_bit_number(unsigned bit, bool on, NOTIFY notify);

    /// True when any bit of the mask is set.
    [[nodiscard]] bool is_flag(unsigned mask) const noexcept { return (flags & mask) != 0; }
    [[nodiscard]] bool is_zero() const noexcept { return flags == 0; }

    /// Blocks until the word differs from what it was at the call, or until `stop`.
    void wait_stateChange();

    /// Blocks until any bit of the mask is set, or until `stop`.
    void wait_until_bit_is_set(unsigned mask);

    /// False after `stop`, until `reset`.
    [[nodiscard]] bool is_running() const noexcept { return (stopped & 1u) == 0; }

    /// Ends the waits of those whom it wakes, and every later wait at once.
    void stop(NOTIFY notify);

private:
    unsigned exchange_bits(unsigned mask, bool on) noexcept;
    void wake(NOTIFY notify);

    std::atomic<unsigned> flags;
    std::atomic<unsigned> stopped = 0;
    std::mutex mutex;
    std::condition_variable condition;
};

}  // namespace ze
