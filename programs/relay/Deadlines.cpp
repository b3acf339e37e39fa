#include "Deadlines.h"

#include <algorithm>

namespace relay {

void Deadlines::set(Member& member, TimePoint due) {
    clear(member);
    member.due_ = due;
    member.flagSet_ = true;
    entries_.emplace(due, &member);
    if (due < armed_) {
        arm(due);
    }
}

void Deadlines::clear(Member& member) noexcept {
    if (member.flagSet_) {
        entries_.erase({member.due_, &member});
        member.flagSet_ = false;
    }
}

void Deadlines::arm(TimePoint due) {
    armed_ = due;
    timer_.expires_at(due);
    timer_.async_wait([this](const boost::system::error_code& ec) {
        if (!ec) {
            fire();
        }
    });
}

void Deadlines::fire() {
    const TimePoint now = Clock::now();
    armed_ = TimePoint::max();
    while (!entries_.empty() && entries_.begin()->first <= now) {
        Member& member = *entries_.begin()->second;
        clear(member);
        member.on_deadline(now);
    }
    if (!entries_.empty()) {
        arm(std::max(entries_.begin()->first, now + GRID));
    }
}

}  // namespace relay
