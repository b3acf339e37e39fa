// The files of a certificate and its key, and the pair that the relay makes for itself.
#pragma once

#include <chrono>
#include <string>

namespace relay {

struct CertificateFiles {
    std::string cert;             ///< PEM, the whole chain
    std::string key;              ///< PEM
    bool flagSelfSigned = false;  ///< the relay makes both where they are missing or run out
};

/// How long a certificate of the relay's own is good: more than 825 days count as careless.
inline constexpr std::chrono::hours OWN_VALIDITY{800 * 24};

/// Makes a key that only its owner can read, and a certificate for it that signs itself; what is
/// wrong, or an empty text. A fault leaves the former files as they are.
[[nodiscard]] std::string make_self_signed(const CertificateFiles& files,
                                           std::chrono::seconds validity = OWN_VALIDITY);

}  // namespace relay
