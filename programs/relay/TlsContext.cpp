#include "Certificate.h"

#include <chrono>
#include <filesystem>

#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <unistd.h>

namespace relay {

namespace fs = std::filesystem;

namespace {

// A certificate of our own is made anew at a start so long before it runs out.
constexpr std::chrono::hours RENEW_BEFORE{24 * 30};

std::string last_error() {
    char text[256];
    ERR_error_string_n(ERR_get_error(), text, sizeof text);
    ERR_clear_error();
    return text;
}

/// Whether the certificate is there and does not run out soon.
bool is_good_for_long(const std::string& path) {
    std::unique_ptr<BIO, decltype(&BIO_free)> file(BIO_new_file(path.c_str(), "r"), &BIO_free);
    if (!file) {
        ERR_clear_error();
        return false;
    }
    std::unique_ptr<X509, decltype(&X509_free)> cert(
        PEM_read_bio_X509(file.get(), nullptr, nullptr, nullptr), &X509_free);
    ERR_clear_error();
    std::time_t until =
        std::chrono::system_clock::to_time_t(std::chrono::system_clock::now() + RENEW_BEFORE);
    return cert && X509_cmp_time(X509_get0_notAfter(cert.get()), &until) > 0;
}

bool has_to_be_made(const CertificateFiles& files) {
    std::error_code ignored;
    return files.flagSelfSigned &&
           (!is_good_for_long(files.cert) || !fs::exists(files.key, ignored));
}

/// What keeps files from being made in this folder, itself made if need be, or an empty text.
std::string folder_fault(const fs::path& folder) {
    std::error_code ec;
    fs::path there = fs::absolute(folder, ec);
    while (!fs::exists(there, ec) && there.has_relative_path()) {
        there = there.parent_path();
    }
    if (fs::is_directory(there, ec) && access(there.c_str(), W_OK | X_OK) == 0) {
        return {};
    }
    return "can not write into " + folder.string();
}

void configure(SSL_CTX* context) {
    SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
    // Wiping covers the whole buffer each time it is given back, a tenth of what a message costs:
    // a connection does without as soon as its login is read.
    SSL_CTX_set_options(
        context, SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_COMPRESSION | SSL_OP_IGNORE_UNEXPECTED_EOF |
                     SSL_OP_CIPHER_SERVER_PREFERENCE | SSL_OP_NO_TICKET | SSL_OP_CLEANSE_PLAINTEXT);
    // AES-128 first: as safe here, and the fastest on nearly every machine.
    SSL_CTX_set_ciphersuites(
        context, "TLS_AES_128_GCM_SHA256:TLS_AES_256_GCM_SHA384:TLS_CHACHA20_POLY1305_SHA256");
    // A player connects once: sessions to resume would only take memory, and tickets would hang on
    // one key for as long as the relay runs.
    SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
    SSL_CTX_set_num_tickets(context, 0);
    SSL_CTX_set_mode(context, SSL_MODE_RELEASE_BUFFERS | SSL_MODE_ENABLE_PARTIAL_WRITE |
                                  SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
    SSL_CTX_set_read_ahead(context, 1);
}

}  // namespace

std::string TlsContext::check(const CertificateFiles& files) {
    if (has_to_be_made(files)) {
        return folder_fault(fs::path(files.key).parent_path());
    }
    TlsContext trial;
    return trial.load(files);
}

std::string TlsContext::load(const CertificateFiles& files) {
    if (has_to_be_made(files)) {
        if (std::string fault = make_self_signed(files); !fault.empty()) {
            return fault;
        }
    }
    std::unique_ptr<SSL_CTX, Free> context(SSL_CTX_new(TLS_server_method()));
    if (!context) {
        return "no TLS: " + last_error();
    }
    configure(context.get());
    if (SSL_CTX_use_certificate_chain_file(context.get(), files.cert.c_str()) != 1) {
        return "can not use the certificate " + files.cert + ": " + last_error();
    }
    if (SSL_CTX_use_PrivateKey_file(context.get(), files.key.c_str(), SSL_FILETYPE_PEM) != 1) {
        return "can not use the key " + files.key + ": " + last_error();
    }
    context_ = std::move(context);
    return {};
}

}  // namespace relay
