#include "descriptors.h"

#include <sys/resource.h>

namespace relay {

// Each connection is a descriptor, and the usual soft limit is only 1,024.
void raise_descriptor_limit() noexcept {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

std::optional<std::size_t> descriptor_limit() noexcept {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return std::nullopt;
    }
    return limit.rlim_cur;
}

}  // namespace relay
