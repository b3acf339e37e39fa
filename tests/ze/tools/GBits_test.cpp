#include "ze/tools/GBits.h"

#include <gtest/gtest.h>

namespace ze {

TEST(GBits, is_exactly_as_large_as_its_word) {
    EXPECT_EQ(sizeof(GBits<unsigned>), sizeof(unsigned));
    EXPECT_EQ(sizeof(GBits<unsigned char>), 1U);
}

TEST(GBits, bits_go_by_number_from_the_lowest) {
    GBits<unsigned> bits;
    bits.set_bit(0);
    bits.set_bit(31);
    bits.set_bit(20, true);
    bits.set_bit(20, false);
    EXPECT_EQ(bits.value(), 0x80000001U);
    EXPECT_TRUE(bits.is_bit(31));
    EXPECT_FALSE(bits.is_bit(20));
}

TEST(GBits, a_number_outside_the_word_is_never_set) {
    GBits<unsigned char> bits(0xFF);
    bits.set_bit(8, true);
    bits.set_bit(800, false);
    EXPECT_EQ(bits, GBits<unsigned char>(0xFF));
    EXPECT_FALSE(bits.is_bit(8));
}

TEST(GBits, a_mask_asks_for_any_of_its_bits) {
    const GBits<unsigned> bits(0x40);
    EXPECT_TRUE(bits.is_any(0x3C0));
    EXPECT_FALSE(bits.is_any(0x380));
    EXPECT_FALSE(bits.is_zero());
    EXPECT_TRUE(GBits<unsigned>().is_zero());
}

}  // namespace ze
