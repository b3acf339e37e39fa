#include "Validity.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using relay::Validity;

constexpr Validity::Time DAY = std::chrono::sys_days(std::chrono::year(2026) / 11 / 20);

struct Row {
    Validity validity;
    const char* fault;
    const char* warning;
};

TEST(Validity, says_what_is_wrong_and_from_14_days_before_the_end_what_will_be) {
    const Row rows[] = {
        {{DAY - 24h, DAY + 14 * 24h + 1s}, "", ""},
        {{DAY - 24h, DAY + 14 * 24h}, "", "ends on 2026-12-04 00:00 UTC"},
        {{DAY - 24h, DAY}, "", "ends on 2026-11-20 00:00 UTC"},
        {{DAY - 24h, DAY - 1s}, "ended on 2026-11-19 23:59 UTC", "ended on 2026-11-19 23:59 UTC"},
        {{DAY, DAY + 1000 * 24h}, "", ""},
        {{DAY + 1s, DAY + 1000 * 24h},
         "is not good before 2026-11-20 00:00 UTC",
         "is not good before 2026-11-20 00:00 UTC"},
        {{DAY, std::chrono::sys_days(std::chrono::year(9999) / 12 / 31)}, "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.validity.fault(DAY), row.fault);
        EXPECT_EQ(row.validity.warning(DAY), row.warning);
    }
}

}  // namespace
