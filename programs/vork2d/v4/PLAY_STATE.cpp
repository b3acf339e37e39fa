#include "PLAY_STATE.h"

#include <array>
#include <utility>

namespace vork2d::v4::PLAY_STATE {

namespace {

constexpr std::array<std::pair<Type, const char*>, 3> WORDS{{
    {CONNECTED1, "CONNECTED1"},
    {CONNECTED2, "CONNECTED2"},
    {RUN, "RUN"},
}};

}  // namespace

std::string to_string(unsigned state) {
    std::string text;
    for (const auto& [bit, word] : WORDS) {
        if ((state & bit) != 0) {
            text += text.empty() ? "" : " | ";
            text += word;
        }
    }
    return text;
}

}  // namespace vork2d::v4::PLAY_STATE
