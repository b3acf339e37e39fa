#include "Certificate.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace relay {

namespace {

namespace fs = std::filesystem;

// Some clocks are a little behind.
constexpr long VALID_BEFORE_SECONDS = 24L * 60 * 60;

using KeyPtr = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using CertPtr = std::unique_ptr<X509, decltype(&X509_free)>;
using BioPtr = std::unique_ptr<BIO, decltype(&BIO_free)>;

void set_serial(X509* cert) {
    std::array<unsigned char, 8> bytes{};
    RAND_bytes(bytes.data(), static_cast<int>(bytes.size()));
    std::uint64_t serial = 0;
    std::memcpy(&serial, bytes.data(), bytes.size());
    ASN1_INTEGER_set_uint64(X509_get_serialNumber(cert), serial >> 1U);
}

std::string host_name() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 && name[0] ? name.data() : "localhost";
}

void set_names(X509* cert) {
    X509_NAME* name = X509_get_subject_name(cert);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>("vork2d-relay"), -1, -1, 0);
    X509_set_issuer_name(cert, name);
    const std::string names = "DNS:" + host_name() + ",DNS:localhost,IP:127.0.0.1,IP:::1";
    if (X509_EXTENSION* extension =
            X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, names.c_str())) {
        X509_add_ext(cert, extension, -1);
        X509_EXTENSION_free(extension);
    }
}

CertPtr make_certificate(EVP_PKEY* key, std::chrono::seconds validity) {
    CertPtr cert(X509_new(), &X509_free);
    X509_set_version(cert.get(), X509_VERSION_3);
    set_serial(cert.get());
    X509_gmtime_adj(X509_getm_notBefore(cert.get()), -VALID_BEFORE_SECONDS);
    X509_gmtime_adj(X509_getm_notAfter(cert.get()), validity.count());
    X509_set_pubkey(cert.get(), key);
    set_names(cert.get());
    if (X509_sign(cert.get(), key, EVP_sha256()) == 0) {
        cert.reset();
    }
    return cert;
}

std::string pem_of(EVP_PKEY* key, X509* cert) {
    const BioPtr memory(BIO_new(BIO_s_mem()), &BIO_free);
    if (key != nullptr) {
        PEM_write_bio_PrivateKey(memory.get(), key, nullptr, nullptr, 0, nullptr, nullptr);
    }
    if (cert != nullptr) {
        PEM_write_bio_X509(memory.get(), cert);
    }
    char* text = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &text);
    return {text, static_cast<std::size_t>(size)};
}

bool write_all(int file, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(file, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return fsync(file) == 0;
}

std::string draft_of(const std::string& path) {
    return path + ".new";
}

std::string write_fault(const std::string& path) {
    return "can not write " + path + ": " + std::strerror(errno);
}

/// Writes beside the file, never readable to others in between; what is wrong, or an empty text.
std::string write_draft(const std::string& path, const std::string& text, mode_t mode) {
    const std::string draft = draft_of(path);
    unlink(draft.c_str());
    const int file =
        open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
    if (file < 0) {
        return write_fault(path);
    }
    std::string fault = write_all(file, text) ? "" : write_fault(path);
    close(file);
    return fault;
}

std::string put_in_place(const std::string& path) {
    return rename(draft_of(path).c_str(), path.c_str()) == 0 ? "" : write_fault(path);
}

}  // namespace

std::string make_self_signed(const CertificateFiles& files, std::chrono::seconds validity) {
    std::error_code ec;
    const fs::path folder = fs::path(files.key).parent_path();
    if (!fs::exists(folder, ec) && fs::create_directories(folder, ec)) {
        fs::permissions(folder, fs::perms::owner_all, ec);
    }
    const KeyPtr key(EVP_EC_gen("P-256"), &EVP_PKEY_free);
    const CertPtr cert = key ? make_certificate(key.get(), validity) : CertPtr(nullptr, &X509_free);
    if (!cert) {
        ERR_clear_error();
        return "can not make a certificate";
    }
    std::string fault = write_draft(files.key, pem_of(key.get(), nullptr), S_IRUSR | S_IWUSR);
    if (fault.empty()) {
        fault = write_draft(files.cert, pem_of(nullptr, cert.get()),
                            S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
    }
    // Both are on the disk before either takes the place of a former one.
    for (const std::string& path : {files.key, files.cert}) {
        if (fault.empty()) {
            fault = put_in_place(path);
        }
        unlink(draft_of(path).c_str());
    }
    return fault;
}

}  // namespace relay
