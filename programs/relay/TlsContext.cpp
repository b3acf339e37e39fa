#include "TlsContext.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <unistd.h>

namespace relay {

namespace fs = std::filesystem;

namespace {

// A certificate of our own is made anew so long before it runs out.
constexpr std::chrono::days RENEW_BEFORE{30};

template <auto function>
struct Freer {
    template <class Object>
    void operator()(Object* object) const noexcept {
        function(object);
    }
};
using Bio = std::unique_ptr<BIO, Freer<BIO_free>>;
using Key = std::unique_ptr<EVP_PKEY, Freer<EVP_PKEY_free>>;
using Context = std::unique_ptr<SSL_CTX, Freer<SSL_CTX_free>>;
using Side = std::unique_ptr<SSL, Freer<SSL_free>>;

std::string last_error() {
    char text[256];
    ERR_error_string_n(ERR_get_error(), text, sizeof text);
    ERR_clear_error();
    return text;
}

/// Why one of the files can not be opened, or an empty text. One that is not there is no fault.
std::string open_fault(const CertificateFiles& files) {
    for (const std::string& path : {files.cert, files.key}) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file >= 0) {
            close(file);
        } else if (errno != ENOENT && errno != ENOTDIR) {
            return "can not open " + path + ": " + std::strerror(errno);
        }
    }
    return {};
}

/// What keeps files from being made in this folder, itself made if need be, or an empty text. Only
/// a trial tells: rights do not show that a file system is read-only, full or none at all.
std::string folder_fault(const fs::path& folder) {
    std::error_code ec;
    std::vector<fs::path> missing;
    // A link that leads nowhere is there all the same, and not ours to remove.
    for (fs::path part = folder; !part.empty() && !fs::exists(fs::symlink_status(part, ec));
         part = part.parent_path()) {
        missing.push_back(part);
    }
    fs::create_directories(folder, ec);
    std::string trial = (folder / "trial.XXXXXX").string();
    const int file = ec ? -1 : mkostemp(trial.data(), O_CLOEXEC);
    const std::string why = ec ? ec.message() : std::strerror(errno);
    if (file >= 0) {
        close(file);
        unlink(trial.c_str());
    }
    for (const fs::path& part : missing) {
        fs::remove(part, ec);
    }
    return file >= 0 ? "" : "can not write into " + folder.string() + ": " + why;
}

void configure(SSL_CTX* context) {
    SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
    // Wiping covers the whole buffer each time it is given back, a tenth of what a message costs:
    // a connection does without as soon as its login is read.
    SSL_CTX_set_options(
        context, SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_COMPRESSION | SSL_OP_IGNORE_UNEXPECTED_EOF |
                     SSL_OP_CIPHER_SERVER_PREFERENCE | SSL_OP_NO_TICKET | SSL_OP_CLEANSE_PLAINTEXT);
    // AES-128 first: as safe here, and the fastest on nearly every machine. In TLS 1.2 as in 1.3
    // who gets at the key later can not read what was recorded before, and no padding is guessed.
    SSL_CTX_set_cipher_list(context, "ECDHE+AESGCM+AES128:ECDHE+AESGCM+AES256:ECDHE+CHACHA20");
    SSL_CTX_set_ciphersuites(
        context, "TLS_AES_128_GCM_SHA256:TLS_AES_256_GCM_SHA384:TLS_CHACHA20_POLY1305_SHA256");
    // A player connects once: sessions to resume would only take memory, and tickets would hang on
    // one key for as long as the relay runs.
    SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
    SSL_CTX_set_num_tickets(context, 0);
    SSL_CTX_set_mode(context, SSL_MODE_RELEASE_BUFFERS | SSL_MODE_ENABLE_PARTIAL_WRITE |
                                  SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
    // Or a read goes on for as long as KeyUpdates come, and nobody else is served.
    SSL_CTX_clear_mode(context, SSL_MODE_AUTO_RETRY);
    SSL_CTX_set_read_ahead(context, 1);
}

/// Nobody is asked for a password: there may be no terminal, and players would wait meanwhile.
int refuse_password(char*, int, int, void* flagAsked) {
    if (flagAsked != nullptr) {
        *static_cast<bool*>(flagAsked) = true;
    }
    return -1;
}

std::string use_key(SSL_CTX* context, const CertificateFiles& files) {
    const std::string fault = "can not use the key " + files.key + ": ";
    const Bio file(BIO_new_file(files.key.c_str(), "r"));
    bool flagEncrypted = false;
    const Key key(
        file ? PEM_read_bio_PrivateKey(file.get(), nullptr, refuse_password, &flagEncrypted)
             : nullptr);
    if (flagEncrypted) {
        ERR_clear_error();
        return fault + "it is encrypted, and nobody is asked for its password";
    }
    if (!key) {
        return fault + last_error();
    }
    // Asked of the certificate itself: OpenSSL keeps one key for each kind, and takes an EC key
    // beside an RSA certificate without a word.
    if (X509_check_private_key(SSL_CTX_get0_certificate(context), key.get()) != 1) {
        ERR_clear_error();
        return fault + "it does not belong to the certificate " + files.cert;
    }
    return SSL_CTX_use_PrivateKey(context, key.get()) == 1 ? "" : fault + last_error();
}

/// Whether a client that asks for nothing special gets through the handshake.
bool serves_clients(SSL_CTX* context) {
    constexpr int TURNS = 100;  // far more than a handshake takes with the longest chain
    const Context clientContext(SSL_CTX_new(TLS_client_method()));
    const Side client(SSL_new(clientContext.get()));
    const Side server(SSL_new(context));
    BIO* clientEnd = nullptr;
    BIO* serverEnd = nullptr;
    if (BIO_new_bio_pair(&clientEnd, 0, &serverEnd, 0) != 1) {
        return false;
    }
    SSL_set_bio(client.get(), clientEnd, clientEnd);
    SSL_set_bio(server.get(), serverEnd, serverEnd);
    SSL_set_connect_state(client.get());
    SSL_set_accept_state(server.get());
    bool flagThrough = false;
    for (int turn = 0; turn < TURNS && !flagThrough; ++turn) {
        const bool flagClient = SSL_do_handshake(client.get()) == 1;
        flagThrough = SSL_do_handshake(server.get()) == 1 && flagClient;
    }
    ERR_clear_error();
    return flagThrough;
}

Validity::Time time_of(const ASN1_TIME* time) {
    std::tm utc{};
    return ASN1_TIME_to_tm(time, &utc) == 1 ? Validity::Time(std::chrono::seconds(timegm(&utc)))
                                            : Validity::Time();
}

}  // namespace

std::string TlsContext::load(const CertificateFiles& files) {
    if (!files.flagSelfSigned) {
        return read(files);
    }
    // What can not be opened now may be good: it is not replaced.
    if (std::string fault = open_fault(files); !fault.empty()) {
        return fault;
    }
    const std::string fault = read(files);
    if (fault.empty() && !ends_soon()) {
        return {};
    }
    const std::string fresh = make_self_signed(files);
    if (fresh.empty()) {
        return read(files);
    }
    return fault.empty() ? "" : fresh;  // one that ends soon is better than none
}

std::string TlsContext::check(const CertificateFiles& files) {
    TlsContext trial;
    if (!files.flagSelfSigned) {
        const std::string fault = trial.read(files);
        return fault.empty() ? trial.date_fault(files) : fault;
    }
    if (std::string fault = open_fault(files); !fault.empty()) {
        return fault;
    }
    const bool flagKept = trial.read(files).empty() && !trial.ends_soon();
    return flagKept ? "" : folder_fault(fs::path(files.key).parent_path());
}

std::string TlsContext::date_fault(const CertificateFiles& files) const {
    const std::string fault = validity().fault(Validity::now());
    return fault.empty() ? "" : "the certificate " + files.cert + " " + fault;
}

Validity TlsContext::validity() const {
    const X509* cert = SSL_CTX_get0_certificate(context_.get());
    return {time_of(X509_get0_notBefore(cert)), time_of(X509_get0_notAfter(cert))};
}

bool TlsContext::ends_soon() const {
    return validity().until <= Validity::now() + RENEW_BEFORE;
}

std::string TlsContext::read(const CertificateFiles& files) {
    std::unique_ptr<SSL_CTX, Free> context(SSL_CTX_new(TLS_server_method()));
    if (!context) {
        return "no TLS: " + last_error();
    }
    configure(context.get());
    SSL_CTX_set_default_passwd_cb(context.get(), refuse_password);
    if (SSL_CTX_use_certificate_chain_file(context.get(), files.cert.c_str()) != 1) {
        return "can not use the certificate " + files.cert + ": " + last_error();
    }
    if (std::string fault = use_key(context.get(), files); !fault.empty()) {
        return fault;
    }
    if (!serves_clients(context.get())) {
        return "can not use the certificate " + files.cert + ": no handshake succeeds with it";
    }
    context_ = std::move(context);
    return {};
}

}  // namespace relay
