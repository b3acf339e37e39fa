#include "Name.h"

#include "code_points.h"
#include "utf8.h"

namespace relay {

namespace {

constexpr int MAX_MARKS = 4;  ///< in a row, as in a Burmese syllable of two vowels and a tone

// Two names must not look like one, nor reach over the lines beside them. The comma and the blank
// separate the names in the list of members.
bool has_refused_character(std::string_view name) noexcept {
    int marks = MAX_MARKS;  // a mark needs a letter of its own part to stand on
    while (!name.empty()) {
        const char32_t point = take_code_point(name);
        if (is_stacking_mark(point)) {
            ++marks;
        } else {
            marks = point == ':' ? MAX_MARKS : 0;
        }
        if (marks > MAX_MARKS || is_refused_in_name(point)) {
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
