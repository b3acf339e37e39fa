// Takes connections in, keeps them, and lets them go at the end.
#pragma once

#include "Addresses.h"
#include "CertificateKeeper.h"
#include "Connection.h"
#include "Deadlines.h"
#include "Handshakes.h"
#include "Hub.h"
#include "Log.h"
#include "Metrics.h"
#include "OneByOne.h"
#include "Options.h"
#include "ServiceManager.h"
#include "StatusServer.h"
#include "Throttle.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>

namespace relay {

class Server {
public:
    /// All three outlive the server.
    Server(const Options& options, const Log& log, const ServiceManager& manager);

    /// Loads the certificate and listens; what is wrong, or an empty text.
    [[nodiscard]] std::string start();
    /// How a player reaches it, in one line.
    [[nodiscard]] std::string reach() const;
    /// Until a signal ends it.
    void run();

private:
    using Acceptor = net::basic_socket_acceptor<net::ip::tcp, TlsStream::executor_type>;
    using Endpoint = net::ip::tcp::endpoint;

    void announce();
    void feed_watchdog();
    void accept();
    void on_accept(error_code ec, TlsStream::Socket socket);
    void admit(TlsStream::Socket socket, const Endpoint& from);
    [[nodiscard]] std::optional<Reason> drop_reason(const std::string& address) const noexcept;
    [[nodiscard]] std::optional<Reason> refusal(const std::string& address) const noexcept;
    bool let_go(std::optional<Connection*> handshake);
    void drop(Reason reason, const std::string& address);
    void pause_accepting(const error_code& ec);
    void on_handshake_over(Connection& connection);
    void on_gone(Connection& connection);

    void wait_for_signal();
    void shut_down();
    void end_all();

    const Options& options_;
    const Log& log_;
    const ServiceManager& manager_;
    Metrics metrics_;
    Addresses addresses_;
    Hub hub_;
    // Behind what connections use: those that wait in a handler end with it.
    net::io_context context_{1};
    Deadlines deadlines_;
    OneByOne turns_;  ///< of the steps of handshakes
    Shared shared_;
    CertificateKeeper certificate_;
    Acceptor acceptor_;
    net::signal_set signals_;
    net::steady_timer watchdog_;  ///< until it is fed next
    net::steady_timer timer_;     ///< a pause of accepting, later the end of the shutdown
    std::unique_ptr<StatusServer> status_;
    std::unordered_map<Connection*, std::shared_ptr<Connection>> connections_;
    Handshakes<Connection*> handshakes_;  ///< of the connections
    std::size_t staying_ = 0;  ///< connections through their handshake and not on their way out
    std::map<Reason, Throttle> drops_;
    Throttle acceptFailures_;
    bool flagShuttingDown_ = false;
};

}  // namespace relay
