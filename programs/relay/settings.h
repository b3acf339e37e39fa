// The table of all settings: the one place that knows their names, their ranges and their meaning.
#pragma once

#include "Options.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace relay {

using TextMember = std::string Options::*;
using CountMember = std::size_t Limits::*;
using SecondsMember = std::chrono::seconds Limits::*;

struct Setting {
    std::string_view key;  ///< "frame-size" in a file, "--frame-size" as an option
    std::variant<TextMember, CountMember, SecondsMember> member;
    std::string_view help;
    std::uint64_t least = 0;  ///< of a number
    std::uint64_t most = 0;   ///< of a number

    /// "VORK2D_RELAY_FRAME_SIZE"
    [[nodiscard]] std::string variable() const;
    [[nodiscard]] std::string value(const Options& options) const;
    /// What is wrong with the value, or an empty text.
    [[nodiscard]] std::string assign(Options& options, std::string_view value) const;
};

[[nodiscard]] std::span<const Setting> settings() noexcept;

/// Null if there is none of this key.
[[nodiscard]] const Setting* find_setting(std::string_view key) noexcept;

}  // namespace relay
