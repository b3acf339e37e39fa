#include "Connection.h"

#include "Log.h"
#include "Metrics.h"

#include <utility>

#include <boost/beast/websocket/error.hpp>
#include <boost/beast/websocket/option.hpp>
#include <openssl/crypto.h>

namespace relay {

namespace websocket = boost::beast::websocket;

namespace {

// How long a client that was told to go may take over it, and how much it may still say.
constexpr std::chrono::seconds LINGER{2};
constexpr std::size_t LINGER_BYTES = 64 << 10;
// One read buffer of this size stays with an idle connection.
constexpr std::size_t KEPT_INPUT = 2048;

constexpr std::size_t DISCARDED_AT_ONCE = 2048;

/// Of the WebSocket, or of what TLS may say beside the data.
bool is_violation(const error_code& ec) noexcept {
    const error_code closed = websocket::error::closed;
    return ec == boost::system::errc::protocol_error ||
           (ec.category() == closed.category() && ec != closed);
}

std::string text_header(std::size_t size) {
    constexpr unsigned char FINAL_TEXT = 0x81;
    constexpr std::size_t SHORT = 125;
    constexpr std::size_t MEDIUM = 0xFFFF;
    std::string header(1, static_cast<char>(FINAL_TEXT));
    const auto append = [&header, size](int bytes) {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
            header += static_cast<char>((size >> static_cast<unsigned>(shift)) & 0xFFU);
        }
    };
    if (size <= SHORT) {
        append(1);
    } else if (size <= MEDIUM) {
        header += 126;
        append(2);
    } else {
        header += 127;
        append(8);
    }
    return header;
}

}  // namespace

Connection::Connection(TlsStream::Socket socket, SSL_CTX* context, Shared& shared,
                       std::string address)
    : shared_(shared),
      session_(*this, std::move(address), shared.limits, Clock::now()),
      socket_(std::move(socket), context, shared.metrics.queuedBytes) {
    socket_.read_message_max(0);  // on_read() counts, so that the client can be told
    buffer_.max_size(shared.limits.frameSize + 1);
    socket_.set_option(websocket::stream_base::timeout{websocket::stream_base::none(),
                                                       websocket::stream_base::none(), false});
    // Beast would tell its name and version here.
    socket_.set_option(websocket::stream_base::decorator([](websocket::response_type& response) {
        response.set(boost::beast::http::field::server, "vork2d-relay");
    }));
}

void Connection::read() {
    const std::size_t room = shared_.limits.frameSize + 1 - buffer_.size();
    socket_.async_read_some(buffer_, room,
                            [self = shared_from_this()](error_code ec, std::size_t count) {
                                self->on_read(ec, count);
                            });
}

void Connection::on_read(error_code ec, std::size_t count) {
    if (ec) {
        on_lost(ec);
        return;
    }
    if (phase_ != Phase::OPEN) {
        return;
    }
    if (socket_.is_message_done() && buffer_.size() <= shared_.limits.frameSize) {
        on_message();
    } else {
        on_part(count);
    }
    if (phase_ == Phase::OPEN) {
        read();
    }
}

// A message that comes in two reads is nothing special; more pieces are its sender's making.
void Connection::on_part(std::size_t count) {
    if (buffer_.size() > shared_.limits.frameSize) {
        shared_.hub.on_bad_frame(session_, Reason::FRAME_SIZE, Clock::now());
    } else if (buffer_.size() > count) {
        shared_.hub.on_part(session_, Clock::now());
    }
}

void Connection::on_message() {
    if (!socket_.got_text()) {
        shared_.hub.on_bad_frame(session_, Reason::NOT_TEXT, Clock::now());
        return;
    }
    const auto bytes = buffer_.cdata();
    const bool flagLogin = !session_.is_member();
    shared_.hub.on_frame(session_, {static_cast<const char*>(bytes.data()), bytes.size()},
                         Clock::now());
    if (flagLogin) {
        // It holds the password, and so does Beast's own read buffer, which nobody can reach: what
        // is there stays until later messages of this client lie over it.
        OPENSSL_cleanse(buffer_.data().data(), buffer_.size());
        tls().stop_wiping();
        schedule_check();
    }
    buffer_.consume(buffer_.size());
    if (buffer_.capacity() > KEPT_INPUT) {
        buffer_.shrink_to_fit();
    }
}

void Connection::on_control() {
    if (phase_ == Phase::OPEN) {
        shared_.hub.on_control(session_, Clock::now());
    }
}

void Connection::on_bytes(std::size_t count) {
    shared_.metrics.bytesReceived += count;
    const TimePoint now = Clock::now();
    if (phase_ == Phase::OPEN) {
        shared_.hub.on_bytes(session_, count, now);
    } else if (phase_ == Phase::HANDSHAKE &&
               !session_.bytes.take(static_cast<double>(count), now)) {
        fail_handshake(Reason::BYTE_RATE);
    }
}

void Connection::on_turn_end() {
    shared_.hub.on_turn_end(session_);
}

// The header is written here and not by Beast: a frame from a server is no more than these bytes in
// front of the text, and written this way all frames of one turn share one record. Once Beast has
// written a close frame of its own, none may follow.
void Connection::send(std::string_view frame) {
    if (phase_ == Phase::OPEN && socket_.is_open()) {
        shared_.metrics.bytesSent += frame.size();
        tls().collect(text_header(frame.size()));
        tls().collect(frame);
    }
}

void Connection::flush() {
    tls().flush();
}

std::size_t Connection::queued() const noexcept {
    return socket_.next_layer().queued();
}

void Connection::close(CloseCode code, std::string_view reason) {
    if (phase_ != Phase::OPEN) {
        return;
    }
    linger();
    const websocket::close_reason why(static_cast<websocket::close_code>(code),
                                      boost::beast::string_view(reason.data(), reason.size()));
    socket_.async_close(why, [self = shared_from_this()](error_code ec) { self->on_closed(ec); });
    tls().flush();
}

void Connection::stop(CloseCode code, std::string_view reason) {
    whyLeft_ = "shutdown";
    if (phase_ == Phase::OPEN) {
        close(code, reason);
    } else if (phase_ == Phase::HANDSHAKE) {
        end();
    }
}

void Connection::linger() {
    if (!is_leaving()) {
        shared_.onLeaving();
    }
    phase_ = Phase::CLOSING;
    tls().limit_input(LINGER_BYTES);
    shared_.deadlines.set(*this, Clock::now() + LINGER);
}

// The client left, its line broke, or Beast has refused a frame and has told the client so.
void Connection::on_lost(error_code ec) {
    if (phase_ != Phase::OPEN) {
        return;
    }
    if (!is_violation(ec)) {
        whyLeft_ = ec == error_code(websocket::error::closed) ? "closed" : "lost";
        end();
        return;
    }
    shared_.metrics.refuse(Reason::PROTOCOL);
    shared_.log.event("refused", {{"reason", info(Reason::PROTOCOL).word},
                                  {"detail", ec.message()},
                                  {"name", session_.name},
                                  {"address", session_.address}});
    shared_.hub.leave(session_, info(Reason::PROTOCOL).word);
    linger();
    buffer_.clear();
    discard_input();
}

// A client that has not answered the close frame may still be reading what was told to it.
void Connection::on_closed(error_code ec) {
    if (ec == net::error::operation_aborted && phase_ == Phase::CLOSING) {
        tls().finish();
    } else {
        end();
    }
}

// A socket that is closed with bytes unread resets the line, and the last words could be lost
// with it.
void Connection::discard_input() {
    tls().async_read_some(buffer_.prepare(DISCARDED_AT_ONCE),
                          [self = shared_from_this()](error_code ec, std::size_t) {
                              if (ec == net::error::operation_aborted) {
                                  return;  // says too much: waits unread for its deadline
                              }
                              if (ec || self->phase_ != Phase::CLOSING) {
                                  self->end();
                              } else {
                                  self->discard_input();
                              }
                          });
}

void Connection::schedule_check() {
    if (phase_ == Phase::OPEN) {
        shared_.deadlines.set(*this, shared_.hub.next_check(session_));
    }
}

void Connection::on_deadline(TimePoint now) {
    if (phase_ == Phase::OPEN) {
        shared_.hub.check(session_, now);
        schedule_check();
        return;
    }
    if (phase_ == Phase::HANDSHAKE) {
        on_handshake_deadline();
    } else {
        end();
    }
}

void Connection::end() {
    if (phase_ == Phase::GONE) {
        return;
    }
    shared_.hub.leave(session_, whyLeft_);
    shared_.deadlines.clear(*this);
    tls().finish();
    tls().close();
    const auto self = shared_from_this();
    shared_.onGone(*this);
    phase_ = Phase::GONE;
}

}  // namespace relay
