#include "RecordWriter.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <vector>

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/kdf.h>
#include <openssl/params.h>

namespace {

constexpr std::size_t TAG = 16;
constexpr std::string_view VERSION = "\x03\x03";
// The one that was told last; each thread shakes one hand at a time.
thread_local std::string lastSecret;

void require(bool flagGood, const char* what) {
    if (!flagGood) {
        std::cerr << "RecordWriter: " << what << '\n';
        std::exit(2);
    }
}

void append_number(std::string& out, std::uint64_t number, int bytes) {
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
        out += static_cast<char>((number >> static_cast<unsigned>(shift)) & 0xFFU);
    }
}

void keep_secret(const SSL*, const char* line) {
    constexpr std::string_view LABEL = "CLIENT_TRAFFIC_SECRET_0 ";
    const std::string_view text = line;
    if (text.substr(0, LABEL.size()) == LABEL) {
        lastSecret = text.substr(text.rfind(' ') + 1);
    }
}

/// HKDF-Expand-Label of RFC 8446, 7.1, without context and for at most one block.
void expand(const unsigned char* secret, std::size_t secretSize, std::string_view label,
            unsigned char* out, std::size_t size) {
    std::string info;
    append_number(info, size, 2);
    append_number(info, 6 + label.size(), 1);
    info.append("tls13 ").append(label);
    info.append({'\0', '\x01'});
    std::array<unsigned char, EVP_MAX_MD_SIZE> block{};
    HMAC(EVP_sha256(), secret, static_cast<int>(secretSize),
         reinterpret_cast<const unsigned char*>(info.data()), info.size(), block.data(), nullptr);
    std::memcpy(out, block.data(), size);
}

/// The PRF of RFC 5246, 5.
std::vector<unsigned char> prf(const std::vector<unsigned char>& secret, std::string seed,
                               std::size_t size) {
    EVP_KDF* kdf = EVP_KDF_fetch(nullptr, "TLS1-PRF", nullptr);
    EVP_KDF_CTX* context = EVP_KDF_CTX_new(kdf);
    char digest[] = "SHA256";
    std::array params = {
        OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest, 0),
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_SECRET,
                                          const_cast<unsigned char*>(secret.data()), secret.size()),
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_SEED, seed.data(), seed.size()),
        OSSL_PARAM_construct_end()};
    std::vector<unsigned char> out(size);
    require(EVP_KDF_derive(context, out.data(), size, params.data()) == 1, "no key block");
    EVP_KDF_CTX_free(context);
    EVP_KDF_free(kdf);
    return out;
}

}  // namespace

void RecordWriter::prepare(SSL_CTX* context) {
    SSL_CTX_set_keylog_callback(context, keep_secret);
}

RecordWriter::RecordWriter(SSL* ssl)
    : cipher_(EVP_CIPHER_CTX_new()), flagTls13_(SSL_version(ssl) == TLS1_3_VERSION) {
    require(EVP_EncryptInit_ex(cipher_, EVP_aes_128_gcm(), nullptr, nullptr, nullptr) == 1,
            "no cipher");
    if (!flagTls13_) {
        begin_tls12(ssl);
        return;
    }
    require(lastSecret.size() == 2 * SECRET, "no traffic secret");
    Secret secret{};
    for (std::size_t i = 0; i < SECRET; ++i) {
        secret[i] = static_cast<unsigned char>(std::stoi(lastSecret.substr(2 * i, 2), nullptr, 16));
    }
    use_secret(secret);
}

RecordWriter::~RecordWriter() {
    EVP_CIPHER_CTX_free(cipher_);
}

void RecordWriter::begin_tls12(SSL* ssl) {
    std::vector<unsigned char> master(SSL_MAX_MASTER_KEY_LENGTH);
    master.resize(SSL_SESSION_get_master_key(SSL_get_session(ssl), master.data(), master.size()));
    std::array<char, SSL3_RANDOM_SIZE> random{};
    std::string seed = "key expansion";
    SSL_get_server_random(ssl, reinterpret_cast<unsigned char*>(random.data()), random.size());
    seed.append(random.data(), random.size());
    SSL_get_client_random(ssl, reinterpret_cast<unsigned char*>(random.data()), random.size());
    seed.append(random.data(), random.size());
    constexpr std::size_t SALT = 4;
    const std::vector<unsigned char> keys = prf(master, seed, 2 * KEY + 2 * SALT);
    set_key(keys.data());
    std::copy_n(keys.data() + 2 * KEY, SALT, base_.data());
    number_ = 1;  // the first was the handshake's last
}

void RecordWriter::use_secret(const Secret& secret) {
    secret_ = secret;
    std::array<unsigned char, KEY> key{};
    expand(secret.data(), SECRET, "key", key.data(), KEY);
    expand(secret.data(), SECRET, "iv", base_.data(), NONCE);
    set_key(key.data());
    number_ = 0;
}

void RecordWriter::set_key(const unsigned char* key) {
    EVP_EncryptInit_ex(cipher_, nullptr, nullptr, key, nullptr);
}

void RecordWriter::append(std::string& out, Type type, std::string_view content) {
    std::string additional;
    if (flagTls13_) {
        const std::string plain = std::string(content) + static_cast<char>(type);
        additional += static_cast<char>(Type::DATA);
        additional += VERSION;
        append_number(additional, plain.size() + TAG, 2);
        out += additional;
        seal(out, additional, plain);
        return;
    }
    out += static_cast<char>(type);
    out += VERSION;
    append_number(out, sizeof number_ + content.size() + TAG, 2);
    append_number(out, number_, sizeof number_);
    append_number(additional, number_, sizeof number_);
    additional += static_cast<char>(type);
    additional += VERSION;
    append_number(additional, content.size(), 2);
    seal(out, additional, content);
}

void RecordWriter::append_key_update(std::string& out, bool flagAnswer) {
    append(out, Type::HANDSHAKE, {flagAnswer ? "\x18\0\0\x01\x01" : "\x18\0\0\x01\0", 5});
    Secret next{};
    expand(secret_.data(), SECRET, "traffic upd", next.data(), SECRET);
    use_secret(next);
}

// In TLS 1.2 the bytes of the nonce that hold the number are zero in the base.
void RecordWriter::seal(std::string& out, std::string_view additional, std::string_view plain) {
    std::array<unsigned char, NONCE> nonce = base_;
    for (std::size_t i = 0; i < sizeof number_; ++i) {
        nonce[NONCE - 1 - i] ^= static_cast<unsigned char>(number_ >> (8 * i));
    }
    ++number_;
    const auto bytes = [](std::string_view text) {
        return reinterpret_cast<const unsigned char*>(text.data());
    };
    const std::size_t at = out.size();
    out.resize(at + plain.size() + TAG);
    auto* const place = reinterpret_cast<unsigned char*>(out.data() + at);
    int size = 0;
    EVP_EncryptInit_ex(cipher_, nullptr, nullptr, nullptr, nonce.data());
    EVP_EncryptUpdate(cipher_, nullptr, &size, bytes(additional),
                      static_cast<int>(additional.size()));
    EVP_EncryptUpdate(cipher_, place, &size, bytes(plain), static_cast<int>(plain.size()));
    EVP_EncryptFinal_ex(cipher_, place + plain.size(), &size);
    EVP_CIPHER_CTX_ctrl(cipher_, EVP_CTRL_GCM_GET_TAG, TAG, place + plain.size());
}
