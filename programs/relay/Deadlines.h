// When somebody has to be looked at next, for any number of them with one timer. Late by up to
// GRID, so that many that are due at nearly the same time cost one wake-up.
#pragma once

#include "Limits.h"

#include <set>
#include <utility>

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

namespace relay {

class Deadlines {
public:
    static constexpr std::chrono::milliseconds GRID{100};

    class Member {
    public:
        virtual ~Member() = default;
        virtual void on_deadline(TimePoint now) = 0;

    private:
        friend class Deadlines;
        TimePoint due_;
        bool flagSet_ = false;
    };

    explicit Deadlines(boost::asio::io_context& context) : timer_(context) {}

    /// Takes the place of the member's former deadline. The member calls clear() before it ends.
    void set(Member& member, TimePoint due);
    void clear(Member& member) noexcept;

private:
    using Entry = std::pair<TimePoint, Member*>;

    void arm(TimePoint due);
    void fire();

    boost::asio::steady_timer timer_;
    std::set<Entry> entries_;
    TimePoint armed_ = TimePoint::max();
};

}  // namespace relay
