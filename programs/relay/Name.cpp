#include "Name.h"

#include "utf8.h"

#include <array>

namespace relay {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Control characters, blanks and marks that show nothing: two names must not look like one. The
// comma and the blank separate the names in the list of members.
constexpr std::array<Range, 23> REFUSED = {
    {{0x00, 0x20},       {',', ','},         {0x7F, 0xA0},      {0xAD, 0xAD},     {0x34F, 0x34F},
     {0x61C, 0x61C},     {0x115F, 0x1160},   {0x1680, 0x1680},  {0x17B4, 0x17B5}, {0x180B, 0x180F},
     {0x2000, 0x200F},   {0x2028, 0x202F},   {0x205F, 0x206F},  {0x2800, 0x2800}, {0x3000, 0x3000},
     {0x3164, 0x3164},   {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF},  {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFFB},
     {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF}}};

bool is_refused(char32_t point) noexcept {
    for (const Range& range : REFUSED) {
        if (point >= range.first && point <= range.last) {
            return true;
        }
    }
    return false;
}

bool has_refused_character(std::string_view name) noexcept {
    while (!name.empty()) {
        if (is_refused(take_code_point(name))) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<Reason> name_fault(std::string_view name) noexcept {
    if (name.empty()) {
        return Reason::NAME_EMPTY;
    }
    if (name.find(':') == std::string_view::npos) {
        return Reason::NAME_WITHOUT_COLON;
    }
    if (group_of(name).empty() || user_of(name).empty()) {
        return Reason::NAME_EMPTY;
    }
    if (count_code_points(name) > NAME_MAX_CHARACTERS) {
        return Reason::NAME_TOO_LONG;
    }
    if (has_refused_character(name)) {
        return Reason::NAME_BAD_CHARACTER;
    }
    return std::nullopt;
}

std::string_view group_of(std::string_view name) noexcept {
    return name.substr(0, name.find(':'));
}

std::string_view user_of(std::string_view name) noexcept {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(colon + 1);
}

}  // namespace relay
