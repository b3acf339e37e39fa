#include "ze/log/LogConfig.h"

#include <array>
#include <cstddef>
#include <type_traits>

#include <gtest/gtest.h>

namespace ze::log {

TEST(LogConfig, is_a_plain_structure_of_twenty_bytes) {
    EXPECT_EQ(sizeof(LogConfig), 20U);
    EXPECT_TRUE(std::is_trivially_copyable_v<LogConfig>);
    const std::array offsets = {offsetof(LogConfig, digits), offsetof(LogConfig, logLevel),
                                offsetof(LogConfig, logControl), offsetof(LogConfig, fontSize),
                                offsetof(LogConfig, autoScrollHorz)};
    EXPECT_EQ(offsets, (std::array<std::size_t, 5>{0, 4, 8, 12, 16}));
}

TEST(LogConfig, starts_disabled_with_the_defaults) {
    const LogConfig config;
    EXPECT_EQ(config.to_string(),
              "LogConfig, DISABLED,  DEB, logControl:0, digits:6, autoScrollHorz:false");
    EXPECT_EQ(config.fontSize, 10U);
}

TEST(LogConfig, ini_asks_for_all_columns_and_leaves_the_appender_disabled) {
    LogConfig config;
    config.ini();
    EXPECT_EQ(config.to_string(),
              "LogConfig, DISABLED,  DEB, logControl:990, digits:6, autoScrollHorz:false");
}

TEST(LogConfig, ini_mobile_enables_with_the_number_alone) {
    LogConfig config;
    config.ini_mobile();
    config.digits = 3;
    config.logLevel = 5;
    config.autoScrollHorz = true;
    EXPECT_TRUE(config.is_enabled());
    EXPECT_EQ(config.to_string(), "LogConfig, , logControl:1048640, digits:3, autoScrollHorz:true");
}

TEST(LogConfig, show_tells_only_whether_any_control_bit_is_set) {
    LogConfig config;
    testing::internal::CaptureStdout();
    config.show();
    config.ini();
    config.autoScrollHorz = true;
    config.show();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "LogConfig:\n   logControl:0\n   digits:6\n   logLevel:3\n   fontSize:10\n"
              "   autoScrollHorz:0\n"
              "LogConfig:\n   logControl:1\n   digits:6\n   logLevel:3\n   fontSize:10\n"
              "   autoScrollHorz:1\n");
}

TEST(LogConfig, settings_and_the_temporary_scope_change_nothing) {
    LogConfig config;
    config.ini();
    config.write_to_settings();
    config.read_from_settings();
    const LogConfigTemp copied(config);
    const LogConfigTemp leveled(4, true);
    EXPECT_EQ(config.logControl.value(), 990U);
}

TEST(has_trailler_bits, any_column_counts_and_nothing_else) {
    for (unsigned number = 0; number < 32; ++number) {
        GBits<unsigned> bits;
        bits.set_bit(number);
        EXPECT_EQ(has_trailler_bits(bits), number >= COLUMN_NUMBER && number <= COLUMN_THREAD)
            << number;
    }
}

}  // namespace ze::log
