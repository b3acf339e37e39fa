#include "ServerProcess.h"

#include <ctime>
#include <fstream>
#include <string>

namespace load {

double processor_seconds(pid_t process) {
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) {
        return 0;
    }
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::size_t resident_bytes(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    constexpr std::size_t KIB = 1024;
    std::string word;
    std::size_t count = 0;
    while (status >> word) {
        if (word == "VmRSS:" && status >> count) {
            return count * KIB;
        }
    }
    return 0;
}

}  // namespace load
