// Loads a relay on this machine and prints what it took, as one line of JSON.

#include "ServerProcess.h"
#include "WebSocketClient.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <openssl/ssl.h>
#include <sys/epoll.h>
#include <sys/resource.h>

namespace load {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::nanoseconds;

/// What the command line asks for.
struct Plan {
    std::string mode;
    std::uint16_t port = 0;
    pid_t server = 0;
    std::size_t count = 0;  ///< pairs, or idle clients
    double seconds = 0;
    std::size_t rate = 60;           ///< messages a second from each client, in open loop
    std::size_t idle = 0;            ///< clients that only stand by
    std::string disturber = "none";  ///< "slow": a friend that never reads; "flood"
};

std::string name_of(std::size_t index) {
    return "g" + std::to_string(index / 2) + (index % 2 == 0 ? ":a" : ":b");
}

std::string login(const std::string& name) {
    return R"({"from":")" + name +
           R"(","ident":0,"pw":"pw","subType":"login","to":"+","type":"LOGIN"})";
}

/// A paddle message as the game sends it, with its number and its time due.
std::string paddle(const std::string& name, std::uint64_t number, std::int64_t due) {
    return R"({"from":")" + name + R"(","game":"vork","ident":0,"payload":{"cmd":"setPos","n":)" +
           std::to_string(number) +
           R"(,"object":"paddle","pos":"-380,123.457","side":"LEFT","t":)" + std::to_string(due) +
           R"(},"subType":"","to":"#","type":"PLAY"})";
}

/// The number behind a key that this program has written.
std::uint64_t number_behind(std::string_view text, std::string_view key) {
    const std::size_t at = text.find(key);
    return at == std::string_view::npos ? 0
                                        : std::strtoull(text.data() + at + key.size(), nullptr, 10);
}

std::int64_t since_start() {
    static const Clock::time_point START = Clock::now();
    return nanoseconds(Clock::now() - START).count();
}

constexpr std::int64_t MILLISECOND = 1000000;
constexpr int FLOOD = 40;   // messages a millisecond
constexpr int TRICKLE = 2;  // messages a millisecond

class Load {
public:
    explicit Load(const Plan& plan) : plan_(plan), context_(SSL_CTX_new(TLS_client_method())) {
        SSL_CTX_set_mode(context_, SSL_MODE_ENABLE_PARTIAL_WRITE |
                                       SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER |
                                       SSL_MODE_RELEASE_BUFFERS);
        SSL_CTX_set_read_ahead(context_, 1);
    }
    ~Load() {
        clients_.clear();
        SSL_CTX_free(context_);
    }
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    int run() {
        const std::size_t before = resident_bytes(plan_.server);
        const bool flagIdle = plan_.mode == "idle";
        if (!connect_all(flagIdle ? plan_.count : 2 * plan_.count, flagIdle ? 2 : 1)) {
            return EXIT_FAILURE;
        }
        const std::size_t playing = clients_.size();
        if (!connect_all(plan_.idle, 2)) {
            return EXIT_FAILURE;
        }
        if (flagIdle) {
            stand_by(before);
        } else {
            play(playing);
        }
        return lost_ == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    }

private:
    bool connect_all(std::size_t count, std::size_t step) {
        // Idle clients are alone in their groups: each takes every second name.
        const std::size_t offset = clients_.size() + (clients_.size() % 2);
        for (std::size_t i = 0; i < count; ++i) {
            auto client = std::make_unique<WebSocketClient>();
            client->index = clients_.size();
            names_.push_back(name_of(offset + step * i));
            if (!client->open(context_, plan_.port, login(names_.back()))) {
                std::fprintf(stderr, "client %zu can not log in\n", i);
                return false;
            }
            watch(*client);
            clients_.push_back(std::move(client));
        }
        received_.resize(clients_.size());
        credit_.resize(clients_.size());
        return true;
    }

    void watch(WebSocketClient& client) {
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.ptr = &client;
        epoll_ctl(epoll_, EPOLL_CTL_ADD, client.descriptor(), &event);
    }

    void stand_by(std::size_t before) {
        const std::size_t after = resident_bytes(plan_.server);
        const double cpu = processor_seconds(plan_.server);
        const auto until = Clock::now() + std::chrono::duration<double>(plan_.seconds);
        while (Clock::now() < until) {
            poll(100);
        }
        const double used = processor_seconds(plan_.server) - cpu;
        std::printf(
            "{\"base_mb\":%.2f,\"kb_per_client\":%.2f,\"cpu_ms_per_s\":%.3f,\"lost\":%zu}\n",
            static_cast<double>(before) / 1e6,
            static_cast<double>(after - before) / 1e3 / static_cast<double>(plan_.count),
            used * 1e3 / plan_.seconds, lost_);
    }

    void play(std::size_t playing) {
        playing_ = playing;
        const bool flagOpen = plan_.mode == "open";
        const double warm = std::min(1.0, plan_.seconds / 4);
        start_disturber();
        flagOpen ? play_open(warm) : play_saturated(warm);
        latencies_.clear();
        const std::uint64_t taken = taken_;
        const double cpu = processor_seconds(plan_.server);
        const auto started = Clock::now();
        flagOpen ? play_open(plan_.seconds) : play_saturated(plan_.seconds);
        const double used = processor_seconds(plan_.server) - cpu;
        const double took = std::chrono::duration<double>(Clock::now() - started).count();
        const auto count = static_cast<double>(taken_ - taken);
        settle();
        std::printf(
            "{\"messages_per_s\":%.0f,\"cpu_us_per_message\":%.3f,\"p50_us\":%.1f,"
            "\"p99_us\":%.1f,\"sent\":%llu,\"received\":%llu,\"lost\":%zu}\n",
            count / took, used * 1e6 / count, percentile(0.5), percentile(0.99),
            static_cast<unsigned long long>(sent_), static_cast<unsigned long long>(taken_),
            lost_ + static_cast<std::size_t>(sent_ - taken_));
        lost_ += static_cast<std::size_t>(sent_ - taken_);
    }

    // Message number m is due at m intervals and comes from client m modulo their number, whatever
    // the relay does meanwhile; its time counts from when it was due.
    void play_open(double seconds) {
        const double interval = 1e9 / static_cast<double>(plan_.rate * playing_);
        const std::int64_t started = since_start();
        const auto count = static_cast<std::uint64_t>(seconds * 1e9 / interval);
        std::uint64_t m = 0;
        while (m < count) {
            // Reads even when it is late, so that the relay is not blamed for it.
            for (int burst = 0; burst < 16 && m < count; ++burst) {
                const auto due =
                    started + static_cast<std::int64_t>(static_cast<double>(m) * interval);
                if (since_start() < due) {
                    break;
                }
                send(*clients_[m++ % playing_], due);
            }
            poll(0);
            disturb();
        }
    }

    // Each client keeps a window of messages on their way.
    void play_saturated(double seconds) {
        constexpr std::size_t WINDOW = 32;
        if (sent_ == 0) {
            std::fill(credit_.begin(), credit_.end(), WINDOW);
        }
        const auto until = Clock::now() + std::chrono::duration<double>(seconds);
        while (Clock::now() < until) {
            for (std::size_t i = 0; i < playing_; ++i) {
                spend(*clients_[i]);
            }
            poll(1);
        }
    }

    void spend(WebSocketClient& client) {
        std::size_t& credit = credit_[client.index];
        if (credit == 0) {
            return;
        }
        for (; credit > 0; --credit) {
            client.add(paddle(names_[client.index], ++sent_, since_start()));
        }
        count_loss(client.flush());
    }

    void send(WebSocketClient& client, std::int64_t due) {
        client.add(paddle(names_[client.index], ++sent_, due));
        count_loss(client.flush());
    }

    void poll(int millis) {
        epoll_event events[256];
        const int count = epoll_wait(epoll_, events, 256, millis);
        for (int i = 0; i < count; ++i) {
            auto& client = *static_cast<WebSocketClient*>(events[i].data.ptr);
            if (!client.read(onText_) || !client.flush()) {
                epoll_ctl(epoll_, EPOLL_CTL_DEL, client.descriptor(), nullptr);
                count_loss(client.index >= clients_.size());  // a disturber is meant to be closed
            }
        }
    }

    void take(WebSocketClient& client, std::string_view text) {
        if (text.find(R"("type":"PING")") != std::string_view::npos) {
            client.add(R"({"from":")" + names_[client.index] +
                       R"(","ident":0,"subType":"","to":"+","type":"PONG"})");
            return;
        }
        const std::uint64_t number = number_behind(text, R"("n":)");
        if (number == 0 || client.index >= playing_) {
            return;
        }
        ++taken_;
        count_loss(number > received_[client.index]);
        received_[client.index] = number;
        ++credit_[client.index ^ 1U];
        const auto due = static_cast<std::int64_t>(number_behind(text, R"("t":)"));
        latencies_.push_back(static_cast<double>(since_start() - due) / 1e3);
    }

    /// Waits for what is still on its way.
    void settle() {
        const auto until = Clock::now() + std::chrono::seconds(5);
        while (taken_ < sent_ && Clock::now() < until) {
            poll(10);
        }
    }

    void start_disturber() {
        if (plan_.disturber == "none") {
            return;
        }
        bad_ = std::make_unique<WebSocketClient>();
        bad_->index = clients_.size();
        static_cast<void>(bad_->open(context_, plan_.port, login("bad:a")));
        flood_.clear();
        for (int i = 0; i < (plan_.disturber == "flood" ? FLOOD : TRICKLE); ++i) {
            bad_->add(paddle("bad:a", 1, 0));
        }
        flood_ = bad_->collected();
        if (plan_.disturber == "slow") {
            deaf_ = std::make_unique<WebSocketClient>();
            static_cast<void>(deaf_->open(context_, plan_.port, login("bad:b")));
        }
    }

    // A flood sends 40 times what a player does and comes back a second after it was closed. A
    // sender to a friend that does not read fills that friend's queue within seconds.
    void disturb() {
        if (bad_ == nullptr || since_start() < nextDisturb_) {
            return;
        }
        nextDisturb_ = since_start() + MILLISECOND;
        if (!bad_->wants_room()) {
            bad_->add_collected(flood_);
        }
        if (!bad_->flush() || !bad_->read([](WebSocketClient&, std::string_view) {})) {
            nextDisturb_ = since_start() + 1000 * MILLISECOND;
            deaf_.reset();
            start_disturber();
        }
    }

    void count_loss(bool flagGood) {
        if (!flagGood) {
            ++lost_;
        }
    }

    double percentile(double share) {
        if (latencies_.empty()) {
            return 0;
        }
        const auto at =
            latencies_.begin() +
            static_cast<std::ptrdiff_t>(share * static_cast<double>(latencies_.size() - 1));
        std::nth_element(latencies_.begin(), at, latencies_.end());
        return *at;
    }

    const Plan& plan_;
    SSL_CTX* context_;
    int epoll_ = epoll_create1(EPOLL_CLOEXEC);
    std::vector<std::unique_ptr<WebSocketClient>> clients_;
    std::vector<std::string> names_;
    std::vector<std::uint64_t> received_;  ///< the last number that each has got
    std::vector<std::size_t> credit_;
    std::vector<double> latencies_;  ///< microseconds
    std::unique_ptr<WebSocketClient> bad_;
    std::unique_ptr<WebSocketClient> deaf_;
    std::int64_t nextDisturb_ = 0;
    std::string flood_;  ///< what it sends each millisecond
    std::size_t playing_ = 0;
    std::uint64_t sent_ = 0;
    std::uint64_t taken_ = 0;
    std::size_t lost_ = 0;
    WebSocketClient::OnText onText_ = [this](WebSocketClient& client, std::string_view text) {
        take(client, text);
    };
};

bool read_plan(int count, char** values, Plan& plan) {
    if (count < 6) {
        return false;
    }
    plan.mode = values[1];
    plan.port = static_cast<std::uint16_t>(std::atoi(values[2]));
    plan.server = std::atoi(values[3]);
    plan.count = std::strtoull(values[4], nullptr, 10);
    plan.seconds = std::atof(values[5]);
    for (int i = 6; i + 1 < count; i += 2) {
        if (std::strcmp(values[i], "--rate") == 0) {
            plan.rate = std::strtoull(values[i + 1], nullptr, 10);
        } else if (std::strcmp(values[i], "--idle") == 0) {
            plan.idle = std::strtoull(values[i + 1], nullptr, 10);
        } else if (std::strcmp(values[i], "--disturber") == 0) {
            plan.disturber = values[i + 1];
        }
    }
    return plan.mode == "open" || plan.mode == "saturate" || plan.mode == "idle";
}

}  // namespace

}  // namespace load

int main(int count, char** values) {
    load::Plan plan;
    if (!load::read_plan(count, values, plan)) {
        std::fputs(
            "usage: relay_load open|saturate|idle PORT PID COUNT SECONDS\n"
            "                  [--rate N] [--idle N] [--disturber slow|flood]\n"
            "COUNT pairs play, or COUNT clients stand idle, at the relay with process id PID.\n",
            stderr);
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    return load::Load(plan).run();
}
