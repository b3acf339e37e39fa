#include "descriptors.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

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

void hold_standard_descriptors() noexcept {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            static_cast<void>(open("/dev/null", O_RDWR));  // takes the lowest number that is free
        }
    }
}

}  // namespace relay
