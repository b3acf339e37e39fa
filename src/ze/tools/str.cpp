#include "ze/tools/str.h"

#include <algorithm>
#include <cctype>

namespace ze::str {
namespace {

bool is_space(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::string without_carriage_return(std::string line) {
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

}  // namespace

std::string to_lower(const std::string& text) {
    std::string lower = text;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return lower;
}

std::string trim(const std::string& text) {
    const auto first = std::find_if_not(text.begin(), text.end(), is_space);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), is_space).base();
    return first < last ? std::string(first, last) : std::string();
}

std::string replace_tab(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\t') {
            out += "    ";
        } else {
            out += c;
        }
    }
    return out;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

bool contains(const std::string& text, char part) {
    return text.find(part) != std::string::npos;
}

std::vector<std::string> split_lines(const std::string& text, int max) {
    std::vector<std::string> lines;
    std::string so_far;
    int count = 0;
    for (const char c : text) {
        if (c != '\n') {
            so_far += c;
            continue;
        }
        ++count;
        if (max >= 0 && count >= max) {
            return lines;
        }
        lines.push_back(without_carriage_return(so_far));
    }
    if (!so_far.empty()) {
        lines.push_back(so_far);
    }
    return lines;
}

bool remove_part(std::string& text, const std::string& part) {
    const std::size_t position = text.rfind(part);
    if (position == std::string::npos) {
        return false;
    }
    text.erase(position, part.size());
    return true;
}

void remove_last_chars(std::stringstream& out, unsigned count) {
    std::string text = out.str();
    if (text.size() < count) {
        return;
    }
    text.resize(text.size() - count);
    // Written anew rather than set, so that what follows is appended; into the buffer, since a
    // stream that has been read to its end takes nothing.
    out.str({});
    out.rdbuf()->sputn(text.data(), static_cast<std::streamsize>(text.size()));
}

std::size_t count_chars(std::stringstream& out) {
    return out.view().size();
}

}  // namespace ze::str
