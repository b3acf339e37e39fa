#include "ze/tools/Listener.h"

#include "ze/log/pp.h"

#include <random>

namespace ze {

std::string BaseListener::fresh_key() {
    static std::mt19937_64 engine;
    std::string key;
    for (int i = 0; i < 8; ++i) {
        key += static_cast<char>(std::uniform_int_distribution<int>('A', 'Z')(engine));
    }
    return key;
}

void BaseListener::report_duplicate_key() {
    pp("Listener::append '$' already appended!");
}

void BaseListener::report_end() const {
    log::log_string(log::DEBUG, str::xprintF(0, "Listener::~Listener@$", name));
}

}  // namespace ze
