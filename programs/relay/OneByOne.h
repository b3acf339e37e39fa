// Runs expensive work one piece in each round of the event loop, first come first served: all else
// that is ready is served in between.
#pragma once

#include <deque>
#include <functional>

#include <boost/asio/io_context.hpp>

namespace relay {

class OneByOne {
public:
    using Work = std::function<void()>;

    explicit OneByOne(boost::asio::io_context& context) : executor_(context.get_executor()) {}

    /// Never runs it at once.
    void add(Work work);

private:
    void schedule();
    void run_next();

    boost::asio::io_context::executor_type executor_;
    std::deque<Work> waiting_;
};

}  // namespace relay
