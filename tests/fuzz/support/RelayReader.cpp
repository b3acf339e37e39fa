#include "RelayReader.h"

#include "check.h"
#include "relay/Name.h"
#include "relay/Reason.h"
#include "relay/messages.h"

#include <algorithm>

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/json/parse.hpp>

namespace fuzz {

namespace {

namespace http = boost::beast::http;
namespace json = boost::json;

// Each is the last of its message, and no bit is set that stands for an extension.
constexpr unsigned char TEXT = 0x81;
constexpr unsigned char CLOSE = 0x88;
constexpr unsigned char PONG = 0x8A;
constexpr std::size_t LONGEST_CONTROL = 125;

std::string field(const json::object& message, std::string_view key) {
    const json::value* value = message.if_contains({key.data(), key.size()});
    return value != nullptr && value->is_string()
               ? std::string(value->get_string().c_str(), value->get_string().size())
               : std::string();
}

bool is_known_reason(std::string_view text) {
    for (int i = 0; i < static_cast<int>(relay::Reason::COUNT); ++i) {
        if (relay::info(static_cast<relay::Reason>(i)).text == text) {
            return true;
        }
    }
    return false;
}

}  // namespace

void RelayReader::add(std::string_view bytes) {
    received_ += bytes;
    while (!received_.empty() && (phase_ == Phase::ANSWER ? read_answer() : read_frame())) {
    }
}

bool RelayReader::read_answer() {
    http::response_parser<http::string_body> parser;
    parser.eager(true);
    boost::beast::error_code ec;
    const std::size_t used = parser.put(boost::asio::buffer(received_), ec);
    FUZZ_CHECK(!ec || ec == http::error::need_more);
    if (!parser.is_done()) {
        return false;
    }
    received_.erase(0, used);
    const auto status = parser.get().result();
    FUZZ_CHECK(status == http::status::switching_protocols ||
               http::to_status_class(status) == http::status_class::client_error);
    phase_ = status == http::status::switching_protocols ? Phase::FRAMES : Phase::OVER;
    return true;
}

bool RelayReader::read_frame() {
    FUZZ_CHECK(phase_ == Phase::FRAMES);  // else something follows the last word
    const std::size_t first = number(0, 1);
    FUZZ_CHECK(first == TEXT || first == CLOSE || first == PONG);
    if (received_.size() < 2) {
        return false;
    }
    const std::size_t shortSize = number(1, 1);
    FUZZ_CHECK(shortSize <= 126);  // the mask's bit is above; what takes eight bytes is too long
    const std::size_t header = shortSize == 126 ? 4 : 2;
    if (received_.size() < header) {
        return false;
    }
    const std::size_t size = header == 4 ? number(2, 2) : shortSize;
    FUZZ_CHECK(header == 2 || size > 125);
    FUZZ_CHECK(size <= (first == TEXT ? limits_.frameSize : LONGEST_CONTROL));
    if (received_.size() < header + size) {
        return false;
    }
    const std::string payload = received_.substr(header, size);
    received_.erase(0, header + size);
    if (first == TEXT) {
        on_text(payload);
    } else if (first == CLOSE) {
        on_close(payload);
    }
    return true;
}

// Only a member's frame is addressed to "#" or "*"; what the relay says itself goes to one name.
void RelayReader::on_text(std::string_view text) {
    boost::system::error_code ec;
    const json::value value = json::parse({text.data(), text.size()}, ec);
    FUZZ_CHECK(!ec && value.is_object());
    const json::object& message = value.get_object();
    const std::string type = field(message, "type");
    const std::string subType = field(message, "subType");
    const std::string from = field(message, "from");
    const std::string to = field(message, "to");
    if (to == "#" || to == "*") {
        FUZZ_CHECK(is_friend(from));
        FUZZ_CHECK(!relay::is_of_the_relay_alone(type, subType));
        return;
    }
    if (type == "CHAT" && subType == "welcome") {
        FUZZ_CHECK(name_.empty());
        name_ = to;
    }
    FUZZ_CHECK(to == name_);
    const bool flagOfFriend = type == "CHAT" && (subType == "join" || subType == "bye");
    FUZZ_CHECK(flagOfFriend ? is_friend(from) : from == relay::RELAY_NAME);
}

bool RelayReader::is_friend(std::string_view from) const {
    return !name_.empty() && from != name_ && relay::group_of(from) == relay::group_of(name_);
}

void RelayReader::on_close(std::string_view payload) {
    phase_ = Phase::OVER;
    FUZZ_CHECK(payload.size() >= 2);
    const std::string_view reason = payload.substr(2);
    FUZZ_CHECK(reason.empty() || reason == "The relay is shutting down." ||
               is_known_reason(reason));
}

std::size_t RelayReader::number(std::size_t at, std::size_t bytes) const {
    std::size_t value = 0;
    for (std::size_t i = at; i < at + bytes; ++i) {
        value = value << 8U | static_cast<unsigned char>(received_[i]);
    }
    return value;
}

}  // namespace fuzz
