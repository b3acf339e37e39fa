// The relay's TLS: a certificate of the host's, or one that signs itself and is made at the first
// start.
#pragma once

#include "Certificate.h"
#include "Validity.h"

#include <memory>
#include <string>

#include <openssl/ssl.h>

namespace relay {

class TlsContext {
public:
    /// Reads the files, and makes both of the relay's own where they are missing, of no use, or end
    /// within a month. What is wrong, or an empty text; a fault leaves the former context in use.
    /// The dates of a host's certificate are no fault here: see date_fault().
    [[nodiscard]] std::string load(const CertificateFiles& files);

    /// What load() would find wrong, or a host's dates, or an empty text. Leaves nothing behind.
    [[nodiscard]] static std::string check(const CertificateFiles& files);

    /// Null before the first load().
    [[nodiscard]] SSL_CTX* get() const noexcept { return context_.get(); }

    /// That the certificate in use has ended or is not good yet, or an empty text.
    [[nodiscard]] std::string date_fault(const CertificateFiles& files) const;
    /// Of the certificate in use. This, date_fault() and ends_soon() need a load() that succeeded.
    [[nodiscard]] Validity validity() const;
    /// Whether it is time for the next one, if the relay makes it.
    [[nodiscard]] bool ends_soon() const;

private:
    [[nodiscard]] std::string read(const CertificateFiles& files);

    struct Free {
        void operator()(SSL_CTX* context) const noexcept { SSL_CTX_free(context); }
    };
    std::unique_ptr<SSL_CTX, Free> context_;
};

}  // namespace relay
