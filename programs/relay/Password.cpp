#include "Password.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

namespace relay {

// Without random bytes there is no handshake, and so nobody whose password could come here.
Password::Password(std::string_view text) noexcept {
    RAND_bytes(salt_.data(), static_cast<int>(salt_.size()));
    digest_ = digest(salt_, text);
}

bool Password::matches(std::string_view text) const noexcept {
    const Digest other = digest(salt_, text);
    return CRYPTO_memcmp(digest_.data(), other.data(), digest_.size()) == 0;
}

Password::Digest Password::digest(const Salt& salt, std::string_view text) noexcept {
    Digest result{};
    HMAC(EVP_sha256(), salt.data(), static_cast<int>(salt.size()),
         reinterpret_cast<const unsigned char*>(text.data()), text.size(), result.data(), nullptr);
    return result;
}

}  // namespace relay
