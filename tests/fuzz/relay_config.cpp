// The input is a configuration file of the relay. Any bytes give settings within their bounds and
// at most one fault a line, and what was read without a fault is printed so that it reads back the
// same.

#include "relay/Options.h"
#include "relay/settings.h"
#include "support/check.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace {

void check_faults(const std::vector<std::string>& faults, std::string_view text) {
    FUZZ_CHECK(faults.size() <=
               static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    for (const std::string& fault : faults) {
        FUZZ_CHECK(fault.starts_with("line "));
        FUZZ_CHECK(std::none_of(fault.begin(), fault.end(),
                                [](char letter) { return letter >= 0 && letter < ' '; }));
    }
}

void check_bounds(const relay::Options& options) {
    for (const relay::Setting& setting : relay::settings()) {
        if (!std::holds_alternative<relay::TextMember>(setting.member)) {
            const std::uint64_t number = std::stoull(setting.value(options));
            FUZZ_CHECK(number >= setting.least && number <= setting.most);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    relay::Options options;
    check_faults(relay::read_config(text, options), text);
    check_bounds(options);

    const std::string printed = relay::to_config(options);
    relay::Options back;
    FUZZ_CHECK(relay::read_config(printed, back).empty());
    FUZZ_CHECK(relay::to_config(back) == printed);
    return 0;
}
