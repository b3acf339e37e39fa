// A group's password as the relay keeps it: a salt and a digest, in memory only.
#pragma once

#include <array>
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

    [[nodiscard]] static Digest digest(const Salt& salt, std::string_view text) noexcept;

    Salt salt_{};
    Digest digest_{};
};

}  // namespace relay
