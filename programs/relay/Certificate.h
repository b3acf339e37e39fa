// The relay's TLS: a certificate of the host's, or one that signs itself and is made at the first
// start.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include <openssl/ssl.h>

namespace relay {

struct CertificateFiles {
    std::string cert;             ///< PEM, the whole chain
    std::string key;              ///< PEM
    bool flagSelfSigned = false;  ///< the relay makes both where they are missing or run out
};

class TlsContext {
public:
    /// Reads the files; what is wrong, or an empty text. A fault leaves the former context in use.
    [[nodiscard]] std::string load(const CertificateFiles& files);

    /// What load() would find wrong, or an empty text. Makes nothing.
    [[nodiscard]] static std::string check(const CertificateFiles& files);

    /// Null before the first load().
    [[nodiscard]] SSL_CTX* get() const noexcept { return context_.get(); }

private:
    struct Free {
        void operator()(SSL_CTX* context) const noexcept { SSL_CTX_free(context); }
    };
    std::unique_ptr<SSL_CTX, Free> context_;
};

/// How long a certificate of the relay's own is good.
inline constexpr std::chrono::hours OWN_VALIDITY{10 * 365 * 24};

/// Makes a key that only its owner can read, and a certificate for it that signs itself; what is
/// wrong, or an empty text.
[[nodiscard]] std::string make_self_signed(const CertificateFiles& files,
                                           std::chrono::seconds validity = OWN_VALIDITY);

}  // namespace relay
