// How many files and sockets the process may have open at once.
#pragma once

#include <cstddef>
#include <optional>

namespace relay {

/// Raises the limit as far as the system lets this process.
void raise_descriptor_limit() noexcept;

/// The limit as it stands; nothing where the system does not tell.
[[nodiscard]] std::optional<std::size_t> descriptor_limit() noexcept;

}  // namespace relay
