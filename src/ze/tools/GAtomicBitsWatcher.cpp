#include "ze/tools/GAtomicBitsWatcher.h"

#include "ze/log/pp.h"

namespace ze {

unsigned GAtomicBitsWatcher::exchange_bits(unsigned mask, bool on) noexcept {
    return on ? flags.fetch_or(mask) : flags.fetch_and(~mask);
}

void GAtomicBitsWatcher::wake(NOTIFY notify) {
    // The words are changed without the mutex. Taking it once in between waits for those who have
    // tested them and are about to sleep, so that the wake-up is not lost on them.
    { const std::lock_guard lock(mutex); }
    if (notify == NOTIFY_ALL) {
        condition.notify_all();
    } else {
        condition.notify_one();
    }
}

void GAtomicBitsWatcher::set_flag(unsigned mask, bool on) {
    set_notify_flag(mask, NOTIFY_ALL, on);
}

void GAtomicBitsWatcher::set_notify_flag(unsigned mask, NOTIFY notify, bool on) {
    exchange_bits(mask, on);
    wake(notify);
}

void GAtomicBitsWatcher::set_all_flags(unsigned value, NOTIFY notify, bool only_on_change) {
    const unsigned previous = flags.exchange(value);
    if (only_on_change && previous == value) {
        return;
    }
    if (only_on_change && notify != NOTIFY_ALL) {
        pp("AtomicBitsWatcher::set_min_max - notify ONE");
    }
    wake(notify);
}

void GAtomicBitsWatcher::reset(NOTIFY notify, bool only_on_change) {
    stopped = 0;
    set_all_flags(0, notify, only_on_change);
}

void GAtomicBitsWatcher::set_bit_number(unsigned bit, bool on, NOTIFY notify) {
    const unsigned mask = 1u << (bit % 32);
    const bool was_on = (exchange_bits(mask, on) & mask) != 0;
    if (was_on != on) {
        wake(notify);
    }
}

void GAtomicBitsWatcher::wait_stateChange() {
    std::unique_lock lock(mutex);
    const unsigned remembered = flags;
    condition.wait(lock, [this, remembered] { return !is_running() || flags != remembered; });
}

void GAtomicBitsWatcher::wait_until_bit_is_set(unsigned mask) {
    std::unique_lock lock(mutex);
    condition.wait(lock, [this, mask] { return !is_running() || is_flag(mask); });
}

void GAtomicBitsWatcher::stop(NOTIFY notify) {
    stopped = 1;
    wake(notify);
}

}  // namespace ze
