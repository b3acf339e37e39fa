// The road of one client: TLS, the upgrade, the WebSocket, the end. It decides nothing about
// groups and messages: that is the hub's.
#pragma once

#include "Deadlines.h"
#include "Hub.h"
#include "TlsStream.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/status.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>

namespace relay {

/// What all connections share. It outlives them.
struct Shared {
    const Limits& limits;
    Hub& hub;
    Deadlines& deadlines;
    OneByOne& turns;  ///< of the steps of handshakes
    Metrics& metrics;
    const Log& log;
    std::function<void(class Connection&)> onHandshakeOver;
    /// A handshake has failed before there were words to tell anything with.
    std::function<void(Reason, const std::string& address)> onDrop;
    /// It took a place among the connections and is only being told to go now.
    std::function<void()> onLeaving;
    std::function<void(class Connection&)> onGone;  ///< its last call: let go of it
};

class Connection final : public std::enable_shared_from_this<Connection>,
                         public Peer,
                         private TlsStream::Watcher,
                         private Deadlines::Member {
public:
    Connection(TlsStream::Socket socket, SSL_CTX* context, Shared& shared, std::string address);

    /// A client that is refused with this as soon as it can be told.
    void refuse_later(Reason reason) noexcept { refusal_ = reason; }
    void start();
    /// Ends it with this close code whatever it is doing.
    void stop(CloseCode code, std::string_view reason);
    /// Ends it at once and without a word.
    void end();

    [[nodiscard]] const std::string& address() const noexcept { return session_.address; }
    [[nodiscard]] bool is_half_open() const noexcept { return phase_ == Phase::HANDSHAKE; }
    /// Told to go, or to be told so as soon as there are words: it takes nobody's place.
    [[nodiscard]] bool is_leaving() const noexcept {
        return refusal_.has_value() || phase_ == Phase::CLOSING;
    }

    void send(std::string_view frame) override;
    void flush() override;
    [[nodiscard]] std::size_t queued() const noexcept override;
    void close(CloseCode code, std::string_view reason) override;

private:
    enum class Phase { HANDSHAKE, OPEN, CLOSING, GONE };
    using WebSocket = boost::beast::websocket::stream<TlsStream, false>;
    using Response = boost::beast::http::response<boost::beast::http::string_body>;

    /// Needed until the upgrade is through.
    struct Upgrade {
        boost::beast::flat_buffer buffer;
        boost::beast::http::request_parser<boost::beast::http::empty_body> parser;
        Response response;
        bool flagRead = false;  ///< the request is here, well or ill
    };

    void read_request();
    void on_request(error_code ec);
    void accept();
    void on_open(error_code ec);
    void fail_handshake(Reason reason);
    void on_handshake_deadline();
    void answer(Reason reason, boost::beast::http::status status, std::string_view text);

    void read();
    void on_read(error_code ec, std::size_t count);
    void on_part(std::size_t count);
    void on_message();
    void on_control();
    void on_lost(error_code ec);
    void on_closed(error_code ec);

    void linger();
    void discard_input();
    void schedule_check();
    void on_bytes(std::size_t count) override;
    void on_turn_end() override;
    void on_deadline(TimePoint now) override;

    [[nodiscard]] TlsStream& tls() noexcept { return socket_.next_layer(); }

    Shared& shared_;
    Session session_;
    WebSocket socket_;
    boost::beast::flat_buffer buffer_;
    std::unique_ptr<Upgrade> upgrade_;
    std::optional<Reason> refusal_;
    std::string_view whyLeft_ = "lost";  ///< for the log, unless the hub knows a reason
    Phase phase_ = Phase::HANDSHAKE;
};

}  // namespace relay
