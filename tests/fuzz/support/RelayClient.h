// One client's end of a line to the relay: queues what is sent and looks at what comes.
#pragma once

#include "RelayReader.h"

#include <array>
#include <cerrno>
#include <string>
#include <string_view>

#include <sys/socket.h>
#include <unistd.h>

namespace fuzz {

class RelayClient {
public:
    /// Closes the descriptor at its end.
    RelayClient(int descriptor, const relay::Limits& limits)
        : reader_(limits), descriptor_(descriptor) {}
    ~RelayClient() { ::close(descriptor_); }
    RelayClient(const RelayClient&) = delete;
    RelayClient& operator=(const RelayClient&) = delete;

    void send(std::string_view bytes) { output_ += bytes; }
    /// Says no more, but still listens.
    void hang_up() noexcept {
        output_.clear();
        shutdown(descriptor_, SHUT_WR);
    }
    void set_reading(bool flagReading) noexcept {
        flagReading_ = flagReading;
        flagAlwaysRead_ = flagAlwaysRead_ && flagReading;
    }

    /// Writes and reads what can be; how many bytes that was.
    std::size_t exchange() { return write() + (flagReading_ ? read() : 0); }

    [[nodiscard]] bool is_reading() const noexcept { return flagReading_; }
    /// The relay has ended the connection.
    [[nodiscard]] bool is_over() const noexcept { return flagOver_; }
    /// What has come when the relay has no more to do ends with a frame, unless the relay had to
    /// let go of a client that did not read.
    [[nodiscard]] bool has_whole_frames() const noexcept {
        return reader_.is_whole() || !flagReading_ || (flagOver_ && !flagAlwaysRead_);
    }
    [[nodiscard]] const RelayReader& reader() const noexcept { return reader_; }

private:
    std::size_t write() {
        if (output_.empty()) {
            return 0;
        }
        const ssize_t sent =
            ::send(descriptor_, output_.data(), output_.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent < 0 && errno != EAGAIN) {
            output_.clear();
        }
        const auto count = static_cast<std::size_t>(sent < 0 ? 0 : sent);
        output_.erase(0, count);
        return count;
    }

    std::size_t read() {
        std::array<char, 8192> part;
        const ssize_t got = recv(descriptor_, part.data(), part.size(), MSG_DONTWAIT);
        flagOver_ = flagOver_ || got == 0 || (got < 0 && errno != EAGAIN);
        const auto count = static_cast<std::size_t>(got < 0 ? 0 : got);
        reader_.add({part.data(), count});
        return count;
    }

    RelayReader reader_;
    int descriptor_;
    std::string output_;
    bool flagReading_ = true;
    bool flagAlwaysRead_ = true;
    bool flagOver_ = false;
};

}  // namespace fuzz
