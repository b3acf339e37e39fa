// A word of bits under its number of bits; exactly as large as the word, so that it can stand in
// stored structures.
#pragma once

#include <concepts>
#include <limits>

namespace ze {

template <std::unsigned_integral T>
class GBits {
public:
    GBits() = default;
    explicit constexpr GBits(T value) noexcept : word(value) {}

    /// Bit 0 is the lowest; a number outside the word reads as not set.
    [[nodiscard]] constexpr bool is_bit(unsigned number) const noexcept {
        return is_inside(number) && ((word >> number) & T{1}) != 0;
    }
    /// A number outside the word changes nothing.
    constexpr void set_bit(unsigned number, bool on = true) noexcept {
        if (is_inside(number)) {
            const T mask = static_cast<T>(T{1} << number);
            word = static_cast<T>(on ? word | mask : word & ~mask);
        }
    }

    /// True if at least one bit of the mask is set.
    [[nodiscard]] constexpr bool is_any(T mask) const noexcept { return (word & mask) != 0; }
    [[nodiscard]] constexpr bool is_zero() const noexcept { return word == 0; }

    [[nodiscard]] constexpr T value() const noexcept { return word; }
    constexpr void set_value(T value) noexcept { word = value; }

    [[nodiscard]] constexpr bool operator==(const GBits&) const noexcept = default;

private:
    static constexpr bool is_inside(unsigned number) noexcept {
        return number < static_cast<unsigned>(std::numeric_limits<T>::digits);
    }

    T word = 0;
};

}  // namespace ze
