// The rules of a login name, group:user.
#pragma once

#include "Reason.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace relay {

inline constexpr std::size_t NAME_MAX_CHARACTERS = 64;

/// The first rule that the name breaks, nothing if it may log in.
[[nodiscard]] std::optional<Reason> name_fault(std::string_view name) noexcept;

/// What stands before the first colon; the whole name if there is none.
[[nodiscard]] std::string_view group_of(std::string_view name) noexcept;

/// What stands behind the first colon; empty if there is none.
[[nodiscard]] std::string_view user_of(std::string_view name) noexcept;

}  // namespace relay
