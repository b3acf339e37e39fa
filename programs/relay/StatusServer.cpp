#include "StatusServer.h"

#include "Metrics.h"
#include "address.h"

#include <memory>
#include <utility>

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

namespace relay {

namespace net = boost::asio;
namespace http = boost::beast::http;
using boost::system::error_code;
using net::ip::tcp;

namespace {

constexpr std::chrono::seconds CLIENT_TIME{5};
// Out of descriptors, most likely.
constexpr std::chrono::milliseconds ACCEPT_PAUSE{100};
constexpr std::uint32_t MAX_HEADER = 4096;

}  // namespace

/// One request and its answer.
class StatusServer::Client : public std::enable_shared_from_this<Client> {
public:
    Client(const Metrics& metrics, tcp::socket socket)
        : metrics_(metrics), socket_(std::move(socket)), timer_(socket_.get_executor()) {}

    void start() {
        parser_.header_limit(MAX_HEADER);
        timer_.expires_after(CLIENT_TIME);
        timer_.async_wait([weak = weak_from_this()](error_code ec) {
            const auto self = weak.lock();
            if (self && !ec) {
                self->socket_.close(ec);
            }
        });
        http::async_read_header(socket_, buffer_, parser_,
                                [self = shared_from_this()](error_code ec, std::size_t) {
                                    if (!ec) {
                                        self->answer();
                                    }
                                });
    }

private:
    void answer() {
        const auto& request = parser_.get();
        const bool flagRead =
            request.method() == http::verb::get || request.method() == http::verb::head;
        response_.result(http::status::ok);
        response_.set(http::field::content_type, "text/plain; version=0.0.4");
        if (!flagRead) {
            response_.result(http::status::method_not_allowed);
        } else if (request.target() == "/health") {
            response_.body() = "ok\n";
        } else if (request.target() == "/metrics") {
            response_.body() = metrics_.to_prometheus();
        } else {
            response_.result(http::status::not_found);
        }
        response_.keep_alive(false);
        response_.prepare_payload();
        if (request.method() == http::verb::head) {
            response_.body().clear();
        }
        http::async_write(socket_, response_, [self = shared_from_this()](error_code, std::size_t) {
            error_code ignored;
            self->socket_.shutdown(tcp::socket::shutdown_send, ignored);
        });
    }

    const Metrics& metrics_;
    tcp::socket socket_;
    net::steady_timer timer_;
    boost::beast::flat_buffer buffer_;
    http::request_parser<http::empty_body> parser_;
    http::response<http::string_body> response_;
};

StatusServer::StatusServer(net::io_context& context, const Metrics& metrics)
    : acceptor_(context), metrics_(metrics), pause_(context) {}

std::string StatusServer::start(const std::string& address) {
    std::string fault;
    const tcp::endpoint endpoint = resolve_loopback(address, fault);
    if (fault.empty()) {
        fault = listen_on(acceptor_, endpoint);
    }
    if (fault.empty()) {
        accept();
    }
    return fault;
}

std::string StatusServer::address() const {
    error_code ec;
    return host_port(acceptor_.local_endpoint(ec));
}

void StatusServer::accept() {
    acceptor_.async_accept([this](error_code ec, tcp::socket socket) {
        if (ec == net::error::operation_aborted) {
            return;
        }
        if (!ec) {
            std::make_shared<Client>(metrics_, std::move(socket))->start();
            accept();
            return;
        }
        pause_.expires_after(ACCEPT_PAUSE);
        pause_.async_wait([this](error_code waited) {
            if (!waited) {
                accept();
            }
        });
    });
}

}  // namespace relay
