// The input is what four clients put on their lines to the relay, from the request on (TLS is off)
// to broken frames, and when they stop reading, wait or go. Whatever they do, each of them gets
// whole frames that make sense, nobody speaks in the relay's place, and at the end nothing is left.
//
// Each line of the input is a step: a digit for the client, a letter, and what belongs to it; a
// backslash takes the byte behind it as it is, a line feed too. For the letters see FRAMES,
// bytes_of() and act().

#include "relay/Hub.h"
#include "relay/messages.h"
#include "support/RelayClient.h"
#include "support/SmallRelay.h"
#include "support/check.h"
#include "support/hand_clock.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace {

using fuzz::RelayClient;

constexpr int MAX_STEPS = 200;
constexpr std::size_t MAX_NUMBER = 60000;      ///< of milliseconds or bytes
constexpr std::size_t LONGEST_MESSAGE = 4096;  ///< twice what the relay takes
constexpr const char* ADDRESS = "192.0.2.1";
constexpr unsigned char TEXT = 0x81;

struct FrameLetter {
    char letter;
    unsigned char first;  ///< byte of the frame
};
constexpr FrameLetter FRAMES[] = {
    {'t', TEXT},  // a whole text
    {'T', 0x01},  // the first part of a text
    {'C', 0x00},  // one more part
    {'c', 0x80},  // the last part
    {'b', 0x82},  // binary
    {'i', 0x89},  // ping
    {'p', 0x8A},  // pong
    {'x', 0x88},  // close
};
constexpr std::string_view UPGRADE =
    "GET /ws/chat?sessid=play HTTP/1.1\r\nHost: relay\r\n"
    "Upgrade: websocket\r\nConnection: Upgrade\r\n"
    "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
    "Sec-WebSocket-Version: 13\r\n\r\n";

struct Step {
    std::size_t client;
    char what;
    std::string rest;
};

/// Takes the next step off the script; nothing at its end.
std::optional<Step> take_step(std::string_view& script) {
    if (script.size() < 2) {
        return std::nullopt;
    }
    Step step{static_cast<unsigned char>(script[0]) % 4U, script[1], {}};
    script.remove_prefix(2);
    while (!script.empty()) {
        char next = script[0];
        script.remove_prefix(1);
        if (next == '\n') {
            break;
        }
        if (next == '\\' && !script.empty()) {
            next = script[0];
            script.remove_prefix(1);
        }
        step.rest += next;
    }
    return step;
}

std::size_t number(std::string_view text) {
    std::size_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return std::min(value, MAX_NUMBER);
}

/// A frame as a client has to send it: with the shortest form of its size, and masked.
std::string frame(unsigned char first, std::string_view payload) {
    constexpr std::string_view MASK = "mask";
    constexpr unsigned char MASKED = 0x80;
    std::string bytes(1, static_cast<char>(first));
    const std::size_t size = payload.size();
    if (size <= 125) {
        bytes += static_cast<char>(MASKED | size);
    } else {
        bytes += static_cast<char>(MASKED | 126U);
        bytes += static_cast<char>(size >> 8U);
        bytes += static_cast<char>(size & 0xFFU);
    }
    bytes += MASK;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(payload[i] ^ MASK[i % MASK.size()]);
    }
    return bytes;
}

std::string text(std::string_view payload) {
    return frame(TEXT, payload);
}

/// Of "NAME PASSWORD".
std::string login(std::string_view words) {
    const std::size_t blank = words.find(' ');
    const std::string_view password = blank == words.npos ? "" : words.substr(blank + 1);
    return text(R"({"type":"LOGIN","to":"+","from":)" + relay::json_string(words.substr(0, blank)) +
                R"(,"pw":)" + relay::json_string(password) + "}");
}

/// From the client to its friend, with these fields beside.
std::string message(const RelayClient& client, std::string_view fields) {
    return text(R"({"from":)" + relay::json_string(client.reader().name()) + R"(,"to":"#")" +
                (fields.empty() ? "" : ",") + std::string(fields) + "}");
}

std::string long_message(const RelayClient& client, std::size_t size) {
    return message(client, R"("type":"PLAY","data":")" +
                               std::string(std::min(size, LONGEST_MESSAGE), 'x') + '"');
}

/// What the client puts on its line; nothing for a step of another kind.
std::string bytes_of(const RelayClient& client, const Step& step) {
    for (const auto& [letter, first] : FRAMES) {
        if (letter == step.what) {
            return frame(first, step.rest);
        }
    }
    switch (step.what) {
        case 'r':  // raw
            return step.rest;
        case 'u':
            return std::string(UPGRADE);
        case 'l':
            return login(step.rest);
        case 'm':
            return message(client, step.rest);
        case 'f':  // fills its friend's line
            return long_message(client, number(step.rest));
        default:
            return {};
    }
}

/// Four clients and their relay.
class Scene {
public:
    void play(std::string_view script) {
        for (int i = 0; i < MAX_STEPS; ++i) {
            const std::optional<Step> step = take_step(script);
            if (!step) {
                break;
            }
            act(*step);
            settle();
        }
        end();
    }

private:
    void act(const Step& step) {
        switch (step.what) {
            case 'o':
                clients_[step.client] =
                    std::make_unique<RelayClient>(relay_.connect(ADDRESS), relay_.limits());
                break;
            case 'w':
                relay_.pass(std::chrono::milliseconds(number(step.rest)));
                break;
            case 'q':
                relay_.stop();
                break;
            default:
                if (clients_[step.client]) {
                    act(clients_[step.client], step);
                }
        }
    }

    static void act(std::unique_ptr<RelayClient>& client, const Step& step) {
        switch (step.what) {
            case 'k':
                client.reset();
                break;
            case 'h':
                client->hang_up();
                break;
            case 's':
                client->set_reading(!client->is_reading());
                break;
            default:
                client->send(bytes_of(*client, step));
        }
    }

    /// Until nobody has anything to say any more.
    void settle() {
        std::size_t count = 0;
        do {
            count = relay_.poll();
            relay_.check_queues();
            for (const auto& client : clients_) {
                count += client ? client->exchange() : 0;
            }
        } while (count > 0);
        for (const auto& client : clients_) {
            FUZZ_CHECK(!client || client->has_whole_frames());
        }
        const bool flagAllRead =
            std::all_of(clients_.begin(), clients_.end(),
                        [](const auto& client) { return !client || client->is_reading(); });
        FUZZ_CHECK(!flagAllRead || relay_.queued() == 0);
    }

    void end() {
        for (const auto& client : clients_) {
            if (client) {
                client->set_reading(true);
                client->hang_up();
            }
        }
        settle();
        relay_.pass(std::chrono::seconds(3));  // longer than anybody may take over going
        settle();
        for (const auto& client : clients_) {
            FUZZ_CHECK(!client || client->is_over());
        }
        relay_.check_nobody_is_left(ADDRESS);
    }

    fuzz::SmallRelay relay_;
    std::array<std::unique_ptr<RelayClient>, 4> clients_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::now = relay::TimePoint(std::chrono::hours(1));
    Scene().play({reinterpret_cast<const char*>(data), size});
    return 0;
}
