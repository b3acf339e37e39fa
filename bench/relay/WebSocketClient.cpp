#include "WebSocketClient.h"

#include <array>
#include <cerrno>
#include <utility>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace load {

namespace {

constexpr std::string_view REQUEST =
    "GET /ws/chat?sessid=play HTTP/1.1\r\nHost: relay\r\nUpgrade: websocket\r\n"
    "Connection: Upgrade\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
    "Sec-WebSocket-Version: 13\r\n\r\n";
constexpr std::size_t MEDIUM = 126;
constexpr unsigned char TEXT = 0x81;
constexpr unsigned char CLOSE = 0x88;
constexpr unsigned char MASKED = 0x80;
constexpr std::array<char, 4> MASK = {0x11, 0x22, 0x33, 0x44};

}  // namespace

WebSocketClient::~WebSocketClient() {
    close();
}

WebSocketClient::WebSocketClient(WebSocketClient&& other) noexcept
    : index(other.index),
      socket_(std::exchange(other.socket_, -1)),
      ssl_(std::exchange(other.ssl_, nullptr)),
      input_(std::move(other.input_)),
      output_(std::move(other.output_)) {}

bool WebSocketClient::open(SSL_CTX* context, std::uint16_t port, const std::string& login) {
    if (!connect_to(port)) {
        return false;
    }
    ssl_ = SSL_new(context);
    SSL_set_fd(ssl_, socket_);
    if (SSL_connect(ssl_) != 1 || !upgrade()) {
        return false;
    }
    add(login);
    bool flagWelcome = false;
    const OnText onText = [&flagWelcome](WebSocketClient&, std::string_view text) {
        flagWelcome = flagWelcome || text.find("welcome") != std::string_view::npos;
    };
    if (!flush()) {
        return false;
    }
    while (!flagWelcome) {
        if (!fill()) {
            return false;
        }
        take_frames(onText);
    }
    fcntl(socket_, F_SETFL, O_NONBLOCK);
    return true;
}

void WebSocketClient::close() noexcept {
    SSL_free(std::exchange(ssl_, nullptr));
    if (socket_ >= 0) {
        ::close(std::exchange(socket_, -1));
    }
}

bool WebSocketClient::connect_to(std::uint16_t port) {
    socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int yes = 1;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    return connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

bool WebSocketClient::upgrade() {
    SSL_write(ssl_, REQUEST.data(), static_cast<int>(REQUEST.size()));
    std::size_t end = std::string::npos;
    while ((end = input_.find("\r\n\r\n")) == std::string::npos) {
        if (!fill()) {
            return false;
        }
    }
    const bool flagOpen = input_.compare(0, 12, "HTTP/1.1 101") == 0;
    input_.erase(0, end + 4);
    return flagOpen;
}

void WebSocketClient::add(std::string_view text) {
    output_ += static_cast<char>(TEXT);
    if (text.size() < MEDIUM) {
        output_ += static_cast<char>(MASKED | text.size());
    } else {
        output_ += static_cast<char>(MASKED | MEDIUM);
        output_ += static_cast<char>(text.size() >> 8U);
        output_ += static_cast<char>(text.size() & 0xFFU);
    }
    output_.append(MASK.data(), MASK.size());
    const std::size_t start = output_.size();
    output_ += text;
    for (std::size_t i = 0; i < text.size(); ++i) {
        output_[start + i] = static_cast<char>(output_[start + i] ^ MASK[i % MASK.size()]);
    }
}

bool WebSocketClient::flush() {
    while (!output_.empty()) {
        std::size_t count = 0;
        const int result = SSL_write_ex(ssl_, output_.data(), output_.size(), &count);
        if (result != 1) {
            const int why = SSL_get_error(ssl_, result);
            return why == SSL_ERROR_WANT_WRITE || why == SSL_ERROR_WANT_READ;
        }
        output_.erase(0, count);
    }
    return true;
}

/// Reads once; false when nothing came.
bool WebSocketClient::fill() {
    std::array<char, 16384> buffer;
    std::size_t count = 0;
    if (SSL_read_ex(ssl_, buffer.data(), buffer.size(), &count) != 1) {
        return false;
    }
    input_.append(buffer.data(), count);
    return true;
}

bool WebSocketClient::read(const OnText& onText) {
    while (fill()) {
        take_frames(onText);
    }
    return SSL_get_error(ssl_, 0) == SSL_ERROR_WANT_READ && socket_ >= 0;
}

void WebSocketClient::take_frames(const OnText& onText) {
    std::size_t at = 0;
    while (input_.size() - at >= 2) {
        const auto opcode = static_cast<unsigned char>(input_[at]);
        std::size_t size = static_cast<unsigned char>(input_[at + 1]);
        std::size_t head = 2;
        if (size == MEDIUM) {
            if (input_.size() - at < 4) {
                break;
            }
            size = static_cast<std::size_t>(static_cast<unsigned char>(input_[at + 2])) << 8U |
                   static_cast<unsigned char>(input_[at + 3]);
            head = 4;
        }
        if (input_.size() - at < head + size) {
            break;
        }
        if (opcode == TEXT) {
            onText(*this, std::string_view(input_).substr(at + head, size));
        } else if (opcode == CLOSE) {
            shutdown(socket_, SHUT_RDWR);
        }
        at += head + size;
    }
    input_.erase(0, at);
}

}  // namespace load
