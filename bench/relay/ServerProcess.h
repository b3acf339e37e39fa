// What the server under load has used so far, seen from outside.
#pragma once

#include <cstddef>

#include <sys/types.h>

namespace load {

/// Processor time of all its threads, in seconds.
[[nodiscard]] double processor_seconds(pid_t process);

/// Memory that it holds now, in bytes, code and libraries included.
[[nodiscard]] std::size_t resident_bytes(pid_t process);

}  // namespace load
