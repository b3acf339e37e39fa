// TLS on a socket's descriptor, as the stream that the WebSocket runs over. OpenSSL reads and
// writes the descriptor itself and gives its buffers back while the connection is idle. Output is
// collected and leaves with flush() or when a record is full, in as few records as can be; a write
// is done when it is collected.
#pragma once

#include "OneByOne.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <boost/asio/compose.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/core/role.hpp>
#include <openssl/ssl.h>

namespace relay {

namespace net = boost::asio;
using boost::beast::error_code;

class TlsStream {
public:
    using executor_type = net::io_context::executor_type;
    using Socket = net::basic_stream_socket<net::ip::tcp, executor_type>;

    class Watcher {
    public:
        virtual ~Watcher() = default;
        /// Bytes came off the wire, TLS included.
        virtual void on_bytes(std::size_t count) = 0;
        /// All that has come was read; the stream waits for more.
        virtual void on_turn_end() = 0;
    };

    /// `queuedTotal` counts what is queued in all streams, and outlives them.
    TlsStream(Socket socket, SSL_CTX* context, std::uint64_t& queuedTotal);
    ~TlsStream();
    TlsStream(const TlsStream&) = delete;
    TlsStream& operator=(const TlsStream&) = delete;

    /// Both belong to the owner of the stream: `owner` keeps it alive while it waits to write.
    void watch(Watcher& watcher, std::weak_ptr<void> owner);

    [[nodiscard]] executor_type get_executor() noexcept { return socket_.get_executor(); }
    /// Collected and not yet taken by the kernel.
    [[nodiscard]] std::size_t queued() const noexcept { return output_.size() - written_; }

    /// Each step of it takes its turn among `turns`, which outlive the stream.
    template <class Token>
    auto async_handshake(OneByOne& turns, Token&& token);
    template <class Buffers, class Token>
    auto async_read_some(const Buffers& buffers, Token&& token);
    template <class Buffers, class Token>
    auto async_write_some(const Buffers& buffers, Token&& token);

    void collect(std::string_view bytes);
    /// Writes as much as the kernel takes; the rest follows when it takes more.
    void flush();

    /// Says no more: what is collected still goes out, then the end of TLS and of the connection.
    void finish();
    /// Takes at most about this much more off the wire, so that a client that is on its way out
    /// costs little.
    void limit_input(std::size_t bytes) noexcept { inputLeft_ = bytes; }
    void close() noexcept;

    /// From now on nothing secret comes: what was read may stay in OpenSSL's buffer.
    void stop_wiping() noexcept { SSL_clear_options(ssl_, SSL_OP_CLEANSE_PLAINTEXT); }

private:
    enum class Step { DONE, NEEDS_INPUT, NEEDS_ROOM };
    struct HandshakeOperation;
    template <class Buffer>
    struct ReadOperation;

    Step handshake(error_code& ec);
    Step read(void* data, std::size_t size, std::size_t& count, error_code& ec);
    Step step_of(int result, error_code& ec) noexcept;
    static long on_bio(BIO* bio, int operation, const char* data, std::size_t size, int, long,
                       int result, std::size_t* count);
    static void on_tls_event(const SSL* ssl, int where, int value);
    void bound_chatter(Step& step, error_code& ec) noexcept;
    template <class Handler>
    void wait(Step step, Handler&& handler);
    void end_turn();
    void report_input();
    void write_records(std::size_t least);
    bool write_record();
    void wait_for_room(Step step);
    void drop_written();
    void break_off() noexcept;
    void say_goodbye() noexcept;

    Socket socket_;
    SSL* ssl_;
    std::uint64_t& queuedTotal_;
    Watcher* watcher_ = nullptr;
    std::weak_ptr<void> owner_;
    std::string output_;
    std::size_t written_ = 0;  ///< of output_
    std::uint64_t inputSeen_ = 0;
    int chatter_ = 0;  ///< events of TLS since its handshake
    std::size_t inputLeft_ = static_cast<std::size_t>(-1);
    bool flagWaitsForRoom_ = false;
    bool flagFinishing_ = false;
    bool flagBroken_ = false;
};

/// The end of a WebSocket, as Beast asks for it.
template <class Handler>
void async_teardown(boost::beast::role_type, TlsStream& stream, Handler&& handler) {
    stream.finish();
    net::post(stream.get_executor(),
              [done = std::forward<Handler>(handler)]() mutable { done(error_code()); });
}

/// The end without a goodbye, as Beast asks for it.
inline void beast_close_socket(TlsStream& stream) noexcept {
    stream.close();
}

}  // namespace relay

#include "TlsStream_inline.h"
