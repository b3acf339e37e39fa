#include "ze/tools/Listener.h"

#include "ze/log/pp.h"
#include "ze/tools/rnd.h"

namespace ze {

std::string BaseListener::fresh_key() {
    return rnd::next_string(8, true, 1);
}

void BaseListener::report_duplicate_key() {
    pp("Listener::append '$' already appended!");
}

void BaseListener::report_end() const {
    log::log_string(log::DEBUG, str::xprintF(0, "Listener::~Listener@$", name));
}

}  // namespace ze
