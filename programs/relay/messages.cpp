#include "messages.h"

namespace relay {

namespace {

std::string envelope(std::string_view type, std::string_view subType, std::string_view from,
                     std::string_view to) {
    std::string json = R"({"type":)" + json_string(type);
    json += R"(,"subType":)" + json_string(subType);
    json += R"(,"from":)" + json_string(from);
    json += R"(,"to":)" + json_string(to);
    json += R"(,"ident":0)";
    return json;
}

void append_escaped(std::string& json, char character) {
    static constexpr std::string_view DIGITS = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(character);
    json += "\\u00";
    json += DIGITS[code >> 4U];
    json += DIGITS[code & 0xFU];
}

}  // namespace

std::string ping_message(std::string_view to) {
    return envelope("PING", "", RELAY_NAME, to) + "}";
}

std::string error_message(std::string_view to, const ReasonInfo& reason) {
    return envelope("ERROR", "", RELAY_NAME, to) + R"(,"code":)" + std::to_string(reason.code) +
           R"(,"text":)" + json_string(reason.text) + "}";
}

std::string chat_message(std::string_view subType, std::string_view from, std::string_view to,
                         std::string_view text, std::string_view extraData) {
    return envelope("CHAT", subType, from, to) + R"(,"text":)" + json_string(text) +
           R"(,"extraData":)" + json_string(extraData) + "}";
}

bool is_of_the_relay_alone(std::string_view type, std::string_view subType) noexcept {
    if (type == "CHAT") {
        return subType == "welcome" || subType == "join" || subType == "bye";
    }
    return type == "PING" || type == "ERROR" || type == "ADMIN";
}

std::string json_string(std::string_view text) {
    std::string json = "\"";
    for (const char character : text) {
        if (static_cast<unsigned char>(character) < 0x20U || character == 0x7F) {
            append_escaped(json, character);
            continue;
        }
        if (character == '"' || character == '\\') {
            json += '\\';
        }
        json += character;
    }
    return json + "\"";
}

}  // namespace relay
