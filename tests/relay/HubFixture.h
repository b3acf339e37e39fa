// A hub with clients made of records: what each was sent, and how it was closed.
#pragma once

#include "Addresses.h"
#include "Hub.h"
#include "Log.h"
#include "Metrics.h"
#include "messages.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace relay_test {

class FakeClient : public relay::Peer {
public:
    FakeClient(relay::Hub& hub, const relay::Limits& limits, std::string address,
               relay::TimePoint now)
        : session(*this, std::move(address), limits, now), hub_(hub) {}
    ~FakeClient() override { hub_.leave(session, "gone"); }

    void send(std::string_view frame) override { received.emplace_back(frame); }
    void flush() override { flushed = received.size(); }
    [[nodiscard]] std::size_t queued() const noexcept override { return queuedBytes; }
    void close(relay::CloseCode code, std::string_view reason) override {
        closed = std::to_string(static_cast<int>(code)) + " " + std::string(reason);
    }

    /// What came since the last call.
    [[nodiscard]] std::vector<std::string> take() { return std::exchange(received, {}); }

    std::vector<std::string> received;
    std::string closed;       ///< close code and reason, empty while open
    std::size_t flushed = 0;  ///< of `received`
    std::size_t queuedBytes = 0;
    relay::Session session;

private:
    relay::Hub& hub_;
};

struct HubFixture {
    /// An open connection that has not logged in.
    std::unique_ptr<FakeClient> connect(const std::string& address = "192.0.2.1") {
        return std::make_unique<FakeClient>(hub, limits, address, now);
    }

    void send(FakeClient& client, const std::string& frame) {
        hub.on_frame(client.session, frame, now);
    }

    static std::string login(const std::string& name, const std::string& pw) {
        return R"({"type":"LOGIN","subType":"login","from":)" + relay::json_string(name) +
               R"(,"to":"+","ident":0,"pw":)" + relay::json_string(pw) + "}";
    }

    static std::string play(const std::string& from, const std::string& to, int number = 0) {
        return R"({"from":)" + relay::json_string(from) + R"(,"game":"vork","ident":0,)" +
               R"("payload":{"n":)" + std::to_string(number) + R"(},"subType":"","to":)" +
               relay::json_string(to) + R"(,"type":"PLAY"})";
    }

    static std::string chat(const std::string& from, const std::string& text) {
        return R"({"type":"CHAT","subType":"text","from":)" + relay::json_string(from) +
               R"(,"to":"#","text":)" + relay::json_string(text) + "}";
    }

    /// A message of a client to its friend, with the words of its envelope as they are given.
    static std::string word(const std::string& type, const std::string& subType,
                            const std::string& from, const std::string& to = "#") {
        return R"({"type":)" + relay::json_string(type) + R"(,"subType":)" +
               relay::json_string(subType) + R"(,"from":)" + relay::json_string(from) +
               R"(,"to":)" + relay::json_string(to) + R"(,"text":"bye","extraData":"g:a, g:b"})";
    }

    /// A client that is in; what it and its friend were told is taken off.
    std::unique_ptr<FakeClient> member(const std::string& name, const std::string& pw = "secret") {
        auto client = connect();
        send(*client, login(name, pw));
        client->received.clear();
        return client;
    }

    void pass(std::chrono::milliseconds time) { now += time; }

    relay::TimePoint now{std::chrono::hours(1)};
    relay::Limits limits;
    relay::Metrics metrics;
    relay::Addresses addresses{limits};
    std::vector<std::string> lines;
    relay::Log log{[this](std::string_view line) {
        lines.emplace_back(line.substr(25));
    }};
    relay::Hub hub{limits, addresses, metrics, log};
};

}  // namespace relay_test
