// The input is what three clients of the relay do: connect, log in, send good and bad frames, read
// nothing, wait, leave. Whatever they do, a group holds two at most, nobody hears himself, what one
// sends arrives in its order, nobody speaks in the relay's place, and nothing grows without end.

#include "relay/Addresses.h"
#include "relay/Hub.h"
#include "relay/Log.h"
#include "relay/Metrics.h"
#include "relay/messages.h"
#include "support/check.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

constexpr std::array NAMES = {"g:a", "g:b", "g:c", "h:a", "g:a:x", "g", ":", "g:a,b"};
constexpr std::array PASSWORDS = {"", "right", "wrong"};
constexpr std::array ADDRESSEES = {"#", "*", "+", ""};
constexpr std::array<std::pair<const char*, const char*>, 6> RELAYS_OWN = {{{"PING", ""},
                                                                            {"ERROR", ""},
                                                                            {"ADMIN", ""},
                                                                            {"CHAT", "welcome"},
                                                                            {"CHAT", "join"},
                                                                            {"CHAT", "bye"}}};
constexpr std::size_t LAST_WORDS = 1024;  ///< of a refusal: "ERROR" and the line of the chat

relay::Limits small_limits() {
    relay::Limits limits;
    limits.framesPerSecond = 20;
    limits.bytesPerSecond = 4096;
    limits.queuedOutput = 4096;
    limits.failedLogins = 3;
    limits.failedLoginsPerGroup = 2;
    return limits;
}

struct World {
    relay::Limits limits = small_limits();
    relay::Metrics metrics;
    relay::Addresses addresses{limits};
    relay::Log log{[](std::string_view line) {
        FUZZ_CHECK(line.find('\n') == line.npos);
    }};
    relay::Hub hub{limits, addresses, metrics, log};
    relay::TimePoint now{std::chrono::hours(1)};
    std::uint64_t sent = 0;  ///< numbers the play messages of all clients
};

/// One of the three; what it is sent is looked at on its arrival.
class Client final : public relay::Peer {
public:
    Client(World& world, int number)
        : session(*this, std::to_string(number), world.limits, world.now), world_(world) {}
    ~Client() override { world_.hub.leave(session, "gone"); }

    void send(std::string_view frame) override {
        FUZZ_CHECK(closes == 0);
        queued_ += frame.size();
        FUZZ_CHECK(frame.find("forged") == frame.npos);
        constexpr std::string_view MARK = R"("number":)";
        const std::size_t at = frame.find(MARK);
        if (at == frame.npos) {
            return;
        }
        FUZZ_CHECK(frame.find(R"("sender":")" + session.name + '"') == frame.npos);
        const std::uint64_t number = std::stoull(std::string(frame.substr(at + MARK.size())));
        FUZZ_CHECK(number > last_);
        last_ = number;
    }
    void flush() override {}
    [[nodiscard]] std::size_t queued() const noexcept override { return queued_; }
    void close(relay::CloseCode, std::string_view reason) override {
        FUZZ_CHECK(!reason.empty());
        ++closes;
    }
    void read_all() noexcept { queued_ = 0; }

    relay::Session session;
    int closes = 0;

private:
    World& world_;
    std::size_t queued_ = 0;
    std::uint64_t last_ = 0;
};

std::string login(FuzzedDataProvider& input) {
    return R"({"type":"LOGIN","to":"+","from":)" +
           relay::json_string(input.PickValueInArray(NAMES)) + R"(,"pw":)" +
           relay::json_string(input.PickValueInArray(PASSWORDS)) + "}";
}

/// A play message, or at each third time what only the relay may say.
std::string word(World& world, Client& client, FuzzedDataProvider& input) {
    const std::string name = relay::json_string(client.session.name);
    const std::string to = relay::json_string(input.PickValueInArray(ADDRESSEES));
    const std::string number = std::to_string(++world.sent);
    if (world.sent % 3 == 0) {
        const auto& [type, subType] = RELAYS_OWN[world.sent / 3 % RELAYS_OWN.size()];
        return R"({"type":")" + std::string(type) + R"(","subType":")" + subType + R"(","from":)" +
               name + R"(,"to":)" + to + R"(,"text":"forged"})";
    }
    return R"({"type":"PLAY","from":)" + name + R"(,"sender":)" + name + R"(,"to":)" + to +
           R"(,"number":)" + number + "}";
}

void act(World& world, Client& client, FuzzedDataProvider& input) {
    const auto send = [&world, &client](const std::string& frame) {
        world.hub.on_frame(client.session, frame, world.now);
    };
    switch (input.ConsumeIntegralInRange(0, 10)) {
        case 0:
        case 1:
            send(login(input));
            break;
        case 2:
        case 3:
            send(word(world, client, input));
            break;
        case 4: {
            // What the input says in our words would be taken for ours.
            const std::string text = input.ConsumeRandomLengthString(200);
            const bool flagOurs =
                text.find("number") != text.npos || text.find("forged") != text.npos;
            send(flagOurs ? "{}" : text);
            break;
        }
        case 5:
            world.hub.on_control(client.session, world.now);
            break;
        case 6:
            world.hub.on_bytes(client.session, input.ConsumeIntegral<std::uint16_t>(), world.now);
            break;
        case 7:
            world.now += std::chrono::milliseconds(input.ConsumeIntegral<std::uint16_t>());
            world.hub.check(client.session, world.now);
            break;
        case 8:
            world.hub.on_part(client.session, world.now);
            break;
        case 9:
            world.hub.on_bad_frame(client.session, relay::Reason::NOT_TEXT, world.now);
            break;
        default:
            client.read_all();
    }
}

void check(const World& world, const std::array<std::unique_ptr<Client>, 3>& clients) {
    std::size_t members = 0;
    for (const auto& client : clients) {
        FUZZ_CHECK(client->closes <= 1);
        FUZZ_CHECK(client->queued() <= world.limits.queuedOutput + LAST_WORDS);
        const relay::Group* group = client->session.group;
        if (client->session.waitsFor != nullptr) {
            FUZZ_CHECK(group == nullptr && !client->session.flagClosed);
            FUZZ_CHECK(!client->session.waitsFor->is_empty());
        }
        if (group == nullptr) {
            continue;
        }
        ++members;
        FUZZ_CHECK(!client->session.flagClosed);
        FUZZ_CHECK(group->members[0] != group->members[1]);
        FUZZ_CHECK(group->find(client->session.name) == &client->session);
        FUZZ_CHECK(std::count_if(clients.begin(), clients.end(), [group](const auto& other) {
                       return other->session.group == group;
                   }) <= 2);
    }
    FUZZ_CHECK(world.metrics.members == members);
    FUZZ_CHECK(world.hub.count_groups() <= members);
    FUZZ_CHECK(world.addresses.size() <= clients.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    World world;
    std::array<std::unique_ptr<Client>, 3> clients;
    for (int i = 0; i < 3; ++i) {
        clients[static_cast<std::size_t>(i)] = std::make_unique<Client>(world, i);
    }
    while (input.remaining_bytes() > 0) {
        const auto number = input.ConsumeIntegralInRange<std::size_t>(0, 2);
        std::unique_ptr<Client>& client = clients[number];
        if (input.ConsumeIntegralInRange(0, 15) == 0) {
            client.reset();
            client = std::make_unique<Client>(world, static_cast<int>(number));
        }
        act(world, *client, input);
        check(world, clients);
    }
    return 0;
}
