// A client of the relay for load: TLS and frames with as little of its own cost as possible. It
// trusts any certificate and checks nothing of what the relay sends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <openssl/ssl.h>

namespace load {

class WebSocketClient {
public:
    using OnText = std::function<void(WebSocketClient& client, std::string_view text)>;

    WebSocketClient() = default;
    ~WebSocketClient();
    WebSocketClient(WebSocketClient&& other) noexcept;
    WebSocketClient& operator=(WebSocketClient&&) = delete;

    /// Connects to 127.0.0.1, opens the WebSocket and logs in; waits for the welcome.
    /// False if any of it fails.
    [[nodiscard]] bool open(SSL_CTX* context, std::uint16_t port, const std::string& login);
    void close() noexcept;

    /// Collects one text frame; flush() sends what is collected in one record.
    void add(std::string_view text);
    /// What add() has collected, as it goes out.
    [[nodiscard]] const std::string& collected() const noexcept { return output_; }
    /// Takes frames that were collected before.
    void add_collected(std::string_view frames) { output_ += frames; }
    /// False when the line is gone.
    [[nodiscard]] bool flush();
    /// Reads what is there. False when the line is gone.
    [[nodiscard]] bool read(const OnText& onText);

    [[nodiscard]] int descriptor() const noexcept { return socket_; }
    [[nodiscard]] bool wants_room() const noexcept { return !output_.empty(); }

    std::size_t index = 0;  ///< the owner's number for it

private:
    bool connect_to(std::uint16_t port);
    bool upgrade();
    bool fill();
    void take_frames(const OnText& onText);

    int socket_ = -1;
    SSL* ssl_ = nullptr;
    std::string input_;
    std::string output_;
};

}  // namespace load
