#include "Password.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

namespace relay {

Password::Password(std::string_view text) noexcept {
    if (RAND_bytes(salt_.data(), static_cast<int>(salt_.size())) == 1) {
        digest_ = digest(salt_, text);
    }
}

bool Password::matches(std::string_view text) const noexcept {
    const std::optional<Digest> other = digest(salt_, text);
    return digest_ && other && CRYPTO_memcmp(digest_->data(), other->data(), other->size()) == 0;
}

std::optional<Password::Digest> Password::digest(const Salt& salt, std::string_view text) noexcept {
    Digest result{};
    const unsigned char* made = HMAC(EVP_sha256(), salt.data(), static_cast<int>(salt.size()),
                                     reinterpret_cast<const unsigned char*>(text.data()),
                                     text.size(), result.data(), nullptr);
    return made ? std::optional(result) : std::nullopt;
}

}  // namespace relay
