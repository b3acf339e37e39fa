#include "OneByOne.h"

#include <utility>

#include <boost/asio/post.hpp>

namespace relay {

void OneByOne::add(Work work) {
    waiting_.push_back(std::move(work));
    if (waiting_.size() == 1) {
        schedule();
    }
}

void OneByOne::schedule() {
    boost::asio::post(executor_, [this] { run_next(); });
}

void OneByOne::run_next() {
    const Work work = std::move(waiting_.front());
    waiting_.pop_front();
    if (!waiting_.empty()) {
        schedule();
    }
    work();
}

}  // namespace relay
