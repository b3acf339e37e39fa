// Certificates as a host may bring them, for tests: of any kind of key, good at any time.
#pragma once

#include <chrono>
#include <fstream>
#include <memory>
#include <string>

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

namespace host {

using Key = std::shared_ptr<EVP_PKEY>;
using Cert = std::shared_ptr<X509>;

/// "RSA", or the name of an elliptic curve.
inline Key make_key(const std::string& kind) {
    return {kind == "RSA" ? EVP_RSA_gen(2048) : EVP_EC_gen(kind.c_str()), &EVP_PKEY_free};
}

struct Dates {
    std::chrono::seconds from = -std::chrono::hours(24);
    std::chrono::seconds until = std::chrono::hours(24 * 90);  ///< both from now on
};

/// Signs itself where no issuer is given.
inline Cert make_cert(const Key& key, const Dates& dates = {}, const Key& issuer = nullptr) {
    Cert cert(X509_new(), &X509_free);
    X509_set_version(cert.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(cert.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(cert.get()), dates.from.count());
    X509_gmtime_adj(X509_getm_notAfter(cert.get()), dates.until.count());
    X509_set_pubkey(cert.get(), key.get());
    X509_sign(cert.get(), (issuer ? issuer : key).get(), EVP_sha256());
    return cert;
}

inline std::string text_of(BIO* bio) {
    char* text = nullptr;
    const long size = BIO_get_mem_data(bio, &text);
    std::string pem(text, static_cast<std::size_t>(size));
    BIO_free(bio);
    return pem;
}

inline std::string pem_of(const Cert& cert) {
    BIO* bio = BIO_new(BIO_s_mem());
    PEM_write_bio_X509(bio, cert.get());
    return text_of(bio);
}

/// Encrypted where there is a password, in the form that OpenSSL writes today or in its old one.
inline std::string pem_of(const Key& key, const std::string& password = "", bool flagOld = false) {
    BIO* bio = BIO_new(BIO_s_mem());
    const EVP_CIPHER* cipher = password.empty() ? nullptr : EVP_aes_128_cbc();
    const auto* word = reinterpret_cast<const unsigned char*>(password.data());
    const int size = static_cast<int>(password.size());
    if (flagOld) {
        PEM_write_bio_PrivateKey_traditional(bio, key.get(), cipher, word, size, nullptr, nullptr);
    } else {
        PEM_write_bio_PrivateKey(bio, key.get(), cipher, word, size, nullptr, nullptr);
    }
    return text_of(bio);
}

}  // namespace host
