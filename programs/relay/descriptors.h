// The files and sockets that the process has open, and how many these may be.
#pragma once

#include <cstddef>
#include <optional>

namespace relay {

/// Raises the limit as far as the system lets this process.
void raise_descriptor_limit() noexcept;

/// The limit as it stands; nothing where the system does not tell.
[[nodiscard]] std::optional<std::size_t> descriptor_limit() noexcept;

/// Opens /dev/null for each of the three standard descriptors that is closed: else the next
/// connection would take its number, and the log would go to a client.
void hold_standard_descriptors() noexcept;

}  // namespace relay
