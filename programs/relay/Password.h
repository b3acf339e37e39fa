// A group's password as the relay keeps it: a salt and a digest, in memory only.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace relay {

class Password {
public:
    explicit Password(std::string_view text) noexcept;

    /// Takes the same time wherever the two differ.
    [[nodiscard]] bool matches(std::string_view text) const noexcept;

private:
    using Salt = std::array<unsigned char, 16>;
    using Digest = std::array<unsigned char, 32>;

    [[nodiscard]] static std::optional<Digest> digest(const Salt& salt,
                                                      std::string_view text) noexcept;

    Salt salt_{};
    std::optional<Digest> digest_;  ///< nothing if it could not be made: then no text matches
};

}  // namespace relay
