// The certificate in use: taken up at the start and at a reload, and looked at once a day.
#pragma once

#include "Log.h"
#include "TlsContext.h"

#include <chrono>
#include <string>

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

namespace relay {

class CertificateKeeper {
public:
    using Pause = boost::asio::steady_timer::duration;

    /// `context` and `log` outlive the keeper, which looks again after each `pause`.
    CertificateKeeper(boost::asio::io_context& context, CertificateFiles files, const Log& log,
                      Pause pause = std::chrono::hours(24));

    /// What is wrong, or an empty text. Dates are only warned of: there is no better certificate.
    [[nodiscard]] std::string start();

    /// Takes up what is in the files now, unless something is wrong with it or its dates.
    /// Connections keep the context they began with; only new ones get the new certificate.
    void reload();

    /// Null before start().
    [[nodiscard]] SSL_CTX* get() const noexcept { return tls_.get(); }

private:
    void warn() const;
    void wait();
    void look();

    const CertificateFiles files_;
    const Log& log_;
    const Pause pause_;
    TlsContext tls_;
    boost::asio::steady_timer timer_;
};

}  // namespace relay
