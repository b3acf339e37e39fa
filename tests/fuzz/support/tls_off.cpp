// What the relay's TlsStream calls of OpenSSL, without TLS: the bytes of the socket are the data.
// The linker takes what stands in the program before what a shared library has.

#include <algorithm>
#include <cerrno>
#include <string>

#include <openssl/bio.h>
#include <openssl/ssl.h>
#include <sys/socket.h>

struct ssl_st {
    int descriptor = -1;
    BIO* input = nullptr;
    std::string record;     ///< what was read of the socket at once and is not yet taken
    void* owner = nullptr;  ///< the application's
    int error = SSL_ERROR_NONE;
};

namespace {

/// The result of the call and the reason that SSL_get_error() gives for it.
int answer(SSL* ssl, int error) {
    ssl->error = error;
    return error == SSL_ERROR_NONE ? 1 : 0;
}

int read_record(SSL* ssl) {
    ssl->record.resize(SSL3_RT_MAX_PLAIN_LENGTH);
    const int got = BIO_read(ssl->input, ssl->record.data(), SSL3_RT_MAX_PLAIN_LENGTH);
    ssl->record.resize(static_cast<std::size_t>(std::max(got, 0)));
    if (got > 0) {
        return SSL_ERROR_NONE;
    }
    if (BIO_should_retry(ssl->input)) {
        return SSL_ERROR_WANT_READ;
    }
    return got == 0 ? SSL_ERROR_ZERO_RETURN : SSL_ERROR_SYSCALL;
}

}  // namespace

SSL* SSL_new(SSL_CTX*) {
    return new ssl_st;
}

void SSL_free(SSL* ssl) {
    BIO_free(ssl->input);
    delete ssl;
}

int SSL_set_fd(SSL* ssl, int descriptor) {
    ssl->descriptor = descriptor;
    ssl->input = BIO_new_socket(descriptor, BIO_NOCLOSE);
    return 1;
}

BIO* SSL_get_rbio(const SSL* ssl) {
    return ssl->input;
}

int SSL_set_ex_data(SSL* ssl, int, void* data) {
    ssl->owner = data;
    return 1;
}

void* SSL_get_ex_data(const SSL* ssl, int) {
    return ssl->owner;
}

int SSL_do_handshake(SSL* ssl) {
    return answer(ssl, SSL_ERROR_NONE);
}

int SSL_is_init_finished(const SSL*) {
    return 1;
}

int SSL_has_pending(const SSL* ssl) {
    return ssl->record.empty() ? 0 : 1;
}

int SSL_read_ex(SSL* ssl, void* data, std::size_t size, std::size_t* count) {
    *count = 0;
    if (ssl->record.empty()) {
        if (const int error = read_record(ssl); error != SSL_ERROR_NONE) {
            return answer(ssl, error);
        }
    }
    *count = ssl->record.copy(static_cast<char*>(data), size);
    ssl->record.erase(0, *count);
    return answer(ssl, SSL_ERROR_NONE);
}

int SSL_write_ex(SSL* ssl, const void* data, std::size_t size, std::size_t* count) {
    const ssize_t sent = send(ssl->descriptor, data, size, MSG_DONTWAIT | MSG_NOSIGNAL);
    *count = static_cast<std::size_t>(std::max<ssize_t>(sent, 0));
    if (sent >= 0) {
        return answer(ssl, SSL_ERROR_NONE);
    }
    return answer(ssl, errno == EAGAIN ? SSL_ERROR_WANT_WRITE : SSL_ERROR_SYSCALL);
}

int SSL_get_error(const SSL* ssl, int) {
    return ssl->error;
}

int SSL_shutdown(SSL*) {
    return 1;
}

void SSL_set_accept_state(SSL*) {}

void SSL_set_info_callback(SSL*, void (*)(const SSL*, int, int)) {}

void SSL_set_shutdown(SSL*, int) {}

std::uint64_t SSL_clear_options(SSL*, std::uint64_t) {
    return 0;
}
