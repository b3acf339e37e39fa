#include "CertificateKeeper.h"

#include <utility>

namespace relay {

CertificateKeeper::CertificateKeeper(boost::asio::io_context& context, CertificateFiles files,
                                     const Log& log, Pause pause)
    : files_(std::move(files)), log_(log), pause_(pause), timer_(context) {}

std::string CertificateKeeper::start() {
    std::string fault = tls_.load(files_);
    if (fault.empty()) {
        warn();
        wait();
    }
    return fault;
}

void CertificateKeeper::reload() {
    TlsContext next;
    std::string fault = next.load(files_);
    if (fault.empty()) {
        fault = next.date_fault(files_);
    }
    if (!fault.empty()) {
        log_.event("reload_failed", {{"detail", fault}});
        return;
    }
    tls_ = std::move(next);
    log_.event("reloaded", {{"cert", files_.cert}});
    warn();
}

void CertificateKeeper::warn() const {
    const std::string warning = tls_.validity().warning(Validity::now());
    if (!warning.empty()) {
        log_.event("certificate_warning", {{"cert", files_.cert}, {"detail", "it " + warning}});
    }
}

void CertificateKeeper::wait() {
    timer_.expires_after(pause_);
    timer_.async_wait([this](const boost::system::error_code& ec) {
        if (!ec) {
            look();
        }
    });
}

void CertificateKeeper::look() {
    if (files_.flagSelfSigned && tls_.ends_soon()) {
        reload();
    } else {
        warn();
    }
    wait();
}

}  // namespace relay
