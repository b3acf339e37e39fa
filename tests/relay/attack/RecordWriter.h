// Writes TLS records that no library would send: any type, any content, as many as one likes. It
// takes over a client's sending side when the handshake is through; AES-128-GCM with SHA-256 only.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include <openssl/ssl.h>

class RecordWriter {
public:
    enum class Type : unsigned char { ALERT = 21, HANDSHAKE = 22, DATA = 23 };

    /// Before the handshake, for TLS 1.3, whose secret is told only then.
    static void prepare(SSL_CTX* context);

    /// After the handshake. From now on nothing is sent through `ssl` itself.
    explicit RecordWriter(SSL* ssl);
    ~RecordWriter();
    RecordWriter(const RecordWriter&) = delete;
    RecordWriter& operator=(const RecordWriter&) = delete;

    /// Appends a record with this content, at most 16,384 bytes, to `out`.
    void append(std::string& out, Type type, std::string_view content);
    /// Appends a KeyUpdate of TLS 1.3 and goes on with the next key. `flagAnswer` asks for one
    /// back.
    void append_key_update(std::string& out, bool flagAnswer);

private:
    static constexpr std::size_t KEY = 16;
    static constexpr std::size_t NONCE = 12;
    static constexpr std::size_t SECRET = 32;
    using Secret = std::array<unsigned char, SECRET>;

    void begin_tls12(SSL* ssl);
    void use_secret(const Secret& secret);
    void set_key(const unsigned char* key);
    void seal(std::string& out, std::string_view additional, std::string_view plain);

    EVP_CIPHER_CTX* cipher_;
    Secret secret_{};
    std::array<unsigned char, NONCE> base_{};  ///< of the nonces
    std::uint64_t number_ = 0;                 ///< of the next record
    bool flagTls13_;
};
