// From the accepted socket to the open WebSocket.

#include "Connection.h"
#include "Log.h"
#include "Metrics.h"

#include <utility>

#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

namespace relay {

namespace http = boost::beast::http;
namespace websocket = boost::beast::websocket;

namespace {

constexpr std::string_view PATH = "/ws/chat";
constexpr std::string_view QUERY = "sessid=play";
constexpr std::uint32_t MAX_HEADER = 8192;

bool is_our_target(std::string_view target) noexcept {
    const std::size_t mark = target.find('?');
    return target.substr(0, mark) == PATH && mark != std::string_view::npos &&
           target.substr(mark + 1) == QUERY;
}

}  // namespace

void Connection::start() {
    tls().watch(*this, weak_from_this());
    socket_.control_callback(
        [this](websocket::frame_type, boost::beast::string_view) { on_control(); });
    shared_.deadlines.set(*this, Clock::now() + shared_.limits.handshake);
    tls().async_handshake(shared_.turns, [self = shared_from_this()](error_code ec) {
        if (ec) {
            self->fail_handshake(Reason::HANDSHAKE_FAILED);
        } else {
            self->read_request();
        }
    });
}

void Connection::fail_handshake(Reason reason) {
    if (phase_ == Phase::HANDSHAKE) {
        shared_.onDrop(reason, session_.address);
        end();
    }
}

// Between TLS and the request there are words.
void Connection::on_handshake_deadline() {
    constexpr Reason REASON = Reason::HANDSHAKE_TIMEOUT;
    if (upgrade_ && !upgrade_->flagRead) {
        answer(REASON, http::status::request_timeout, "The handshake took too long.\n");
        return;
    }
    fail_handshake(REASON);
}

void Connection::read_request() {
    upgrade_ = std::make_unique<Upgrade>();
    upgrade_->parser.header_limit(MAX_HEADER);
    http::async_read_header(
        tls(), upgrade_->buffer, upgrade_->parser,
        [self = shared_from_this()](error_code ec, std::size_t) { self->on_request(ec); });
}

void Connection::on_request(error_code ec) {
    if (phase_ == Phase::CLOSING) {  // it came too late and has its answer
        ec ? end() : discard_input();
    }
    if (phase_ != Phase::HANDSHAKE) {
        return;
    }
    if (ec && ec.category() != http::make_error_code(http::error::bad_method).category()) {
        fail_handshake(Reason::HANDSHAKE_FAILED);
        return;
    }
    constexpr Reason REASON = Reason::BAD_REQUEST;
    upgrade_->flagRead = true;
    const auto& request = upgrade_->parser.get();
    if (ec) {
        answer(REASON, http::status::bad_request, "This is no HTTP request.\n");
    } else if (!is_our_target({request.target().data(), request.target().size()})) {
        answer(REASON, http::status::not_found,
               "Nothing is served here but /ws/chat?sessid=play.\n");
    } else if (!websocket::is_upgrade(request)) {
        answer(REASON, http::status::upgrade_required, "A WebSocket is expected here.\n");
    } else if (upgrade_->buffer.size() > 0) {
        answer(REASON, http::status::bad_request, "Wait for the answer to the upgrade.\n");
    } else {
        accept();
    }
}

void Connection::accept() {
    socket_.async_accept(upgrade_->parser.get(),
                         [self = shared_from_this()](error_code ec) { self->on_open(ec); });
}

void Connection::on_open(error_code ec) {
    upgrade_.reset();
    if (phase_ == Phase::HANDSHAKE && ec) {  // Beast has answered it
        shared_.metrics.refuse(Reason::BAD_REQUEST);
        shared_.log.event("refused", {{"reason", info(Reason::BAD_REQUEST).word},
                                      {"detail", ec.message()},
                                      {"address", session_.address}});
    }
    if (ec || phase_ != Phase::HANDSHAKE) {
        end();
        return;
    }
    shared_.onHandshakeOver(*this);
    phase_ = Phase::OPEN;
    session_.tmEntered = Clock::now();
    schedule_check();
    if (refusal_) {
        shared_.hub.refuse(session_, *refusal_);
        return;
    }
    read();
}

void Connection::answer(Reason reason, http::status status, std::string_view text) {
    shared_.metrics.refuse(reason);
    shared_.log.event("refused", {{"reason", info(reason).word},
                                  {"status", static_cast<std::uint64_t>(status)},
                                  {"address", session_.address}});
    Response& response = upgrade_->response;
    response.result(status);
    response.version(11);
    response.set(http::field::content_type, "text/plain");
    response.set("X-Content-Type-Options", "nosniff");
    response.keep_alive(false);
    if (status == http::status::upgrade_required) {
        response.set(http::field::upgrade, "websocket");
    }
    response.body() = text;
    response.prepare_payload();
    shared_.onHandshakeOver(*this);
    linger();
    http::async_write(
        tls(), response,
        [self = shared_from_this(), flagRead = upgrade_->flagRead](error_code, std::size_t) {
            self->tls().finish();
            if (flagRead) {  // else the request is still being read
                self->discard_input();
            }
        });
}

}  // namespace relay
