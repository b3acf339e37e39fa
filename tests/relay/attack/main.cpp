// Attacks a relay on this machine with what no good client sends, over many connections at once and
// as fast as the line takes it. What the first connections send is made beforehand: "ready" is said
// then, and a line of input awaited. A connection that the relay closes is opened again.

#include "RecordWriter.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <barrier>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <functional>
#include <iostream>
#include <map>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Type = RecordWriter::Type;

constexpr std::size_t FIRST_FLOOD = 1 << 20;  ///< bytes for one connection
constexpr std::size_t FLOOD = 128 << 10;      ///< of one that is opened again, so that it is soon
constexpr std::size_t RECORD = 16384;
constexpr int ADDRESSES = 200;  ///< of the loopback network, so that no limit of one address holds

enum class Stage { TLS, OPEN, MEMBER };

struct Plan {
    std::uint16_t port;
    std::string flood;
    int version;
    Stage stage;
    int lines;
    std::chrono::milliseconds time;
};

/// Where those wait who are ready.
struct Start {
    explicit Start(int lines) : ready(lines + 1), go(lines + 1) {}
    std::barrier<> ready;
    std::barrier<> go;
    Clock::time_point end;
};

struct Count {
    std::atomic<std::uint64_t> connections{0};
    std::atomic<std::uint64_t> bytes{0};
};

/// A connected socket; -1 if the relay does not take it.
int connect_from(int number, std::uint16_t port) {
    const int line = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const timeval limit{1, 0};
    setsockopt(line, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    setsockopt(line, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(0x7F000101U + static_cast<unsigned>(number % ADDRESSES));
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(line, generic, sizeof address) == 0) {
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(port);
        if (connect(line, generic, sizeof address) == 0) {
            return line;
        }
    }
    close(line);
    return -1;
}

/// A masked frame whose mask is zero. `first` is its first byte; the payload is under 64 KiB.
std::string frame(unsigned char first, std::string_view payload) {
    std::string out(1, static_cast<char>(first));
    if (payload.size() < 126) {
        out += static_cast<char>(0x80U | payload.size());
    } else {
        out += '\xFE';
        out += static_cast<char>(payload.size() >> 8U);
        out += static_cast<char>(payload.size());
    }
    return out.append(4, '\0').append(payload);
}

std::string repeat(const std::string& text, std::size_t size) {
    std::string out;
    while (out.size() + text.size() <= size) {
        out += text;
    }
    return out;
}

/// What the attacker sends: a step is appended again and again.
struct Flood {
    std::string first;  ///< data once before
    std::function<void(RecordWriter&, std::string&)> step;
};

void append_data(RecordWriter& writer, std::string& out, std::string_view data) {
    writer.append(out, Type::DATA, data);
}

/// Under the relay's own limits of what may come without data in a row.
Flood without_data(Type type, std::string content, int inRow) {
    return {"", [type, content, inRow](RecordWriter& writer, std::string& out) {
                for (int i = 0; i < inRow; ++i) {
                    writer.append(out, type, content);
                }
                append_data(writer, out, "G");
            }};
}

Flood of_frames(std::string first, const std::string& step) {
    return {std::move(first),
            [step = repeat(step, RECORD)](RecordWriter& writer, std::string& out) {
                append_data(writer, out, step);
            }};
}

Flood of_key_updates(bool flagAnswer) {
    return {"", [flagAnswer](RecordWriter& writer, std::string& out) {
                writer.append_key_update(out, flagAnswer);
            }};
}

Flood flood_of(const std::string& name, const std::string& hello) {
    constexpr unsigned char CONTINUATION = 0, TEXT = 1, PING = 0x89, FINAL = 0x80;
    const std::map<std::string, Flood> floods = {
        {"key-updates", of_key_updates(false)},
        {"answered-key-updates", of_key_updates(true)},
        {"renegotiations",
         {"",
          [hello](RecordWriter& writer, std::string& out) {
              writer.append(out, Type::HANDSHAKE, hello.substr(0, 4));  // the rest is not looked at
          }}},
        {"empty-records", without_data(Type::DATA, "", 31)},
        {"warnings", without_data(Type::ALERT, "\x01\x5A", 4)},
        {"pings", of_frames("", frame(PING, ""))},
        {"texts", of_frames("", frame(FINAL | TEXT, "{}"))},
        {"empty-fragments", of_frames(frame(TEXT, "{"), frame(CONTINUATION, ""))},
    };
    const auto found = floods.find(name);
    if (found == floods.end()) {
        std::cerr << "relay_attack: no flood " << name << '\n';
        std::exit(2);
    }
    return found->second;
}

class Attacker {
public:
    Attacker(const Plan& plan, int number, Start& start, Count& count)
        : plan_(plan),
          number_(number),
          start_(start),
          count_(count),
          context_(SSL_CTX_new(TLS_client_method())) {
        RecordWriter::prepare(context_);
        SSL_CTX_set_min_proto_version(context_, plan.version);
        SSL_CTX_set_max_proto_version(context_, plan.version);
        SSL_CTX_set_ciphersuites(context_, "TLS_AES_128_GCM_SHA256");
        SSL_CTX_set_cipher_list(context_, "ECDHE+AES128+AESGCM");
        SSL_CTX_set_msg_callback(context_, keep_hello);
        SSL_CTX_set_msg_callback_arg(context_, this);
    }
    ~Attacker() { SSL_CTX_free(context_); }
    Attacker(const Attacker&) = delete;
    Attacker& operator=(const Attacker&) = delete;

    void run() {
        run_round(0);
        for (int round = 1; Clock::now() < start_.end; ++round) {
            run_round(round);
        }
    }

private:
    static void keep_hello(int flagSent, int, int type, const void* data, std::size_t size, SSL*,
                           void* self) {
        if (flagSent == 1 && type == SSL3_RT_HANDSHAKE &&
            *static_cast<const unsigned char*>(data) == SSL3_MT_CLIENT_HELLO) {
            static_cast<Attacker*>(self)->hello_.assign(static_cast<const char*>(data), size);
        }
    }

    void run_round(int round) {
        const int line = connect_from(number_ + round * plan_.lines, plan_.port);
        std::string out;
        if (line >= 0) {
            SSL* ssl = SSL_new(context_);
            SSL_set_fd(ssl, line);
            if (SSL_connect(ssl) == 1) {
                ++count_.connections;
                out = prepare(ssl, line, round);
            }
            SSL_free(ssl);
        }
        if (round == 0) {
            start_.ready.arrive_and_wait();
            start_.go.arrive_and_wait();
        }
        send_all(line, out);
        close(line);
    }

    /// What is to be sent; nothing if the relay has closed the line before.
    std::string prepare(SSL* ssl, int line, int round) {
        RecordWriter writer(ssl);
        std::string out;
        if (!enter(writer, line, round)) {
            return out;
        }
        const Flood flood = flood_of(plan_.flood, hello_);
        const std::size_t size = round == 0 ? FIRST_FLOOD : FLOOD;
        if (!flood.first.empty()) {
            append_data(writer, out, flood.first);
        }
        while (out.size() < size) {
            flood.step(writer, out);
        }
        return out;
    }

    /// As far as the plan says. The answers are awaited and not read: they are known.
    bool enter(RecordWriter& writer, int line, int round) {
        if (plan_.stage == Stage::TLS) {
            return true;
        }
        const std::string name =
            "attack" + std::to_string(number_) + "-" + std::to_string(round) + ":a";
        std::string out;
        append_data(writer, out,
                    "GET /ws/chat?sessid=play HTTP/1.1\r\nHost: relay\r\nUpgrade: websocket\r\n"
                    "Connection: Upgrade\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
                    "Sec-WebSocket-Version: 13\r\n\r\n");
        if (!send_all(line, out) || !receive(line, 0)) {
            return false;
        }
        if (plan_.stage == Stage::OPEN) {
            return true;
        }
        out.clear();
        append_data(writer, out,
                    frame(0x81, R"({"type":"LOGIN","to":"+","from":")" + name + R"(","pw":"x"})"));
        return send_all(line, out) && receive(line, 0);
    }

    /// Takes what has come, so that the relay never waits to write.
    static bool receive(int line, int flags) {
        std::array<char, RECORD> data{};
        return recv(line, data.data(), data.size(), flags) > 0;
    }

    bool send_all(int line, std::string_view out) {
        while (!out.empty()) {
            const ssize_t sent = send(line, out.data(), std::min(out.size(), 4 * RECORD), 0);
            if (sent <= 0) {
                return false;
            }
            count_.bytes += static_cast<std::uint64_t>(sent);
            out.remove_prefix(static_cast<std::size_t>(sent));
            while (receive(line, MSG_DONTWAIT)) {
            }
        }
        return true;
    }

    const Plan& plan_;
    const int number_;
    Start& start_;
    Count& count_;
    SSL_CTX* context_;
    std::string hello_;
};

Clock::time_point await_go(const Plan& plan) {
    std::cout << "ready" << std::endl;
    std::cin.get();
    return Clock::now() + plan.time;
}

void run_attackers(const Plan& plan, Count& count) {
    Start start(plan.lines);
    std::vector<std::thread> threads;
    for (int i = 0; i < plan.lines; ++i) {
        threads.emplace_back([&plan, &start, &count, i] { Attacker(plan, i, start, count).run(); });
    }
    start.ready.arrive_and_wait();
    start.end = await_go(plan);
    start.go.arrive_and_wait();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// The first words of a client that says no more.
std::string hello_record() {
    SSL_CTX* context = SSL_CTX_new(TLS_client_method());
    SSL* ssl = SSL_new(context);
    SSL_set_bio(ssl, BIO_new(BIO_s_mem()), BIO_new(BIO_s_mem()));
    SSL_connect(ssl);
    char* data = nullptr;
    const long size = BIO_get_mem_data(SSL_get_wbio(ssl), &data);
    std::string record(data, static_cast<std::size_t>(size));
    SSL_free(ssl);
    SSL_CTX_free(context);
    return record;
}

/// So many hellos at one moment, again and again: each makes the relay sign.
void run_hellos(const Plan& plan, Count& count) {
    const std::string hello = hello_record();
    const Clock::time_point end = await_go(plan);
    for (int round = 0; Clock::now() < end; ++round) {
        std::vector<int> lines;
        for (int i = 0; i < plan.lines; ++i) {
            lines.push_back(connect_from(round * plan.lines + i, plan.port));
        }
        for (const int line : lines) {
            count.bytes += static_cast<std::uint64_t>(
                std::max<ssize_t>(send(line, hello.data(), hello.size(), 0), 0));
        }
        for (const int line : lines) {
            std::array<char, RECORD> answer{};
            if (recv(line, answer.data(), answer.size(), 0) > 0) {
                ++count.connections;
            }
            close(line);
        }
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 7) {
        std::cerr
            << "usage: relay_attack PORT FLOOD|hellos 1.2|1.3 tls|open|member LINES SECONDS\n";
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN);
    // The attackers' processors are elsewhere: here they take what the others leave.
    if (nice(10) == -1) {
        std::cerr << "relay_attack: " << std::strerror(errno) << '\n';
    }
    const std::string stage = argv[4];
    const Plan plan{static_cast<std::uint16_t>(std::stoi(argv[1])),
                    argv[2],
                    std::string(argv[3]) == "1.2" ? TLS1_2_VERSION : TLS1_3_VERSION,
                    stage == "member" ? Stage::MEMBER
                    : stage == "open" ? Stage::OPEN
                                      : Stage::TLS,
                    std::stoi(argv[5]),
                    std::chrono::milliseconds(static_cast<long>(1000 * std::stod(argv[6])))};
    Count count;
    (plan.flood == "hellos" ? run_hellos : run_attackers)(plan, count);
    std::cout << count.connections << ' ' << count.bytes << '\n';
    return 0;
}
