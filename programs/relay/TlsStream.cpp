#include "TlsStream.h"

#include <algorithm>
#include <cerrno>

#include <boost/asio/error.hpp>
#include <boost/asio/ssl/error.hpp>
#include <openssl/err.h>

namespace relay {

namespace {

constexpr std::size_t RECORD = SSL3_RT_MAX_PLAIN_LENGTH;
// A drained buffer above this goes back to the heap: most connections are idle most of the time.
constexpr std::size_t KEPT_OUTPUT = 512;
// About what one call of OpenSSL takes off the wire, which would go on for as long as records
// without data come.
constexpr std::uint64_t INPUT_AT_ONCE = RECORD;
// A KeyUpdate makes one event, three if it asks for an answer; a renegotiation that is refused one.
// A good client sends a KeyUpdate once in 2^24 records.
constexpr int MAX_CHATTER = 24;

}  // namespace

TlsStream::TlsStream(Socket socket, SSL_CTX* context, std::uint64_t& queuedTotal)
    : socket_(std::move(socket)), ssl_(SSL_new(context)), queuedTotal_(queuedTotal) {
    error_code ignored;
    socket_.non_blocking(true, ignored);
    SSL_set_fd(ssl_, socket_.native_handle());
    SSL_set_accept_state(ssl_);
    SSL_set_app_data(ssl_, this);
    BIO_set_callback_ex(SSL_get_rbio(ssl_), on_bio);
    BIO_set_callback_arg(SSL_get_rbio(ssl_), reinterpret_cast<char*>(this));
}

TlsStream::~TlsStream() {
    break_off();
    SSL_free(ssl_);
}

void TlsStream::watch(Watcher& watcher, std::weak_ptr<void> owner) {
    watcher_ = &watcher;
    owner_ = std::move(owner);
}

TlsStream::Step TlsStream::handshake(error_code& ec) {
    if (inputLeft_ == 0) {
        ec = net::error::operation_aborted;
        return Step::DONE;
    }
    const Step step = step_of(SSL_do_handshake(ssl_), ec);
    if (step == Step::DONE && !ec) {
        SSL_set_info_callback(ssl_, on_tls_event);
    }
    report_input();
    return step;
}

TlsStream::Step TlsStream::read(void* data, std::size_t size, std::size_t& count, error_code& ec) {
    if (inputLeft_ == 0) {
        ec = net::error::operation_aborted;
        return Step::DONE;
    }
    if (size == 0) {
        return Step::DONE;
    }
    Step step = step_of(SSL_read_ex(ssl_, data, size, &count), ec);
    bound_chatter(step, ec);
    report_input();
    return step;
}

/// Tells OpenSSL that there is no more to read when it has had its share; the kernel keeps the
/// rest.
long TlsStream::on_bio(BIO* bio, int operation, const char*, std::size_t, int, long, int result,
                       std::size_t*) {
    const auto* self = reinterpret_cast<const TlsStream*>(BIO_get_callback_arg(bio));
    if (operation != BIO_CB_READ || BIO_number_read(bio) - self->inputSeen_ < INPUT_AT_ONCE) {
        return result;
    }
    BIO_set_retry_read(bio);
    return -1;
}

// Data makes no event.
void TlsStream::on_tls_event(const SSL* ssl, int where, int) {
    if ((where & (SSL_CB_LOOP | SSL_CB_ALERT)) != 0) {
        auto* self = static_cast<TlsStream*>(SSL_get_app_data(ssl));
        if (++self->chatter_ > MAX_CHATTER) {
            // It looks at no record any more.
            SSL_set_shutdown(self->ssl_, SSL_RECEIVED_SHUTDOWN);
        }
    }
}

void TlsStream::bound_chatter(Step& step, error_code& ec) noexcept {
    if (chatter_ > MAX_CHATTER) {
        step = Step::DONE;
        ec = make_error_code(boost::system::errc::protocol_error);
        break_off();
    }
}

TlsStream::Step TlsStream::step_of(int result, error_code& ec) noexcept {
    const int systemError = errno;
    switch (SSL_get_error(ssl_, result)) {
        case SSL_ERROR_NONE:
            return Step::DONE;
        case SSL_ERROR_WANT_READ:
            return Step::NEEDS_INPUT;
        case SSL_ERROR_WANT_WRITE:
            return Step::NEEDS_ROOM;
        case SSL_ERROR_ZERO_RETURN:
            ec = net::error::eof;
            return Step::DONE;
        case SSL_ERROR_SYSCALL:
            ec = error_code(systemError ? systemError : ECONNRESET,
                            net::error::get_system_category());
            break;
        default:
            ec = error_code(static_cast<int>(ERR_get_error()), net::error::get_ssl_category());
    }
    break_off();
    ERR_clear_error();
    return Step::DONE;
}

void TlsStream::end_turn() {
    flush();
    if (watcher_ != nullptr) {
        watcher_->on_turn_end();
    }
}

void TlsStream::report_input() {
    const std::uint64_t total = BIO_number_read(SSL_get_rbio(ssl_));
    const auto count = static_cast<std::size_t>(total - inputSeen_);
    inputSeen_ = total;
    inputLeft_ -= std::min(inputLeft_, count);
    if (watcher_ != nullptr && count > 0) {
        watcher_->on_bytes(count);
    }
}

void TlsStream::collect(std::string_view bytes) {
    if (!flagBroken_ && !flagFinishing_) {
        output_.append(bytes);
        queuedTotal_ += bytes.size();
        // A sender whose input does not run dry for a while must not fill its friend's queue.
        if (queued() >= RECORD) {
            write_records(RECORD);
        }
    }
}

void TlsStream::flush() {
    write_records(1);
    if (flagFinishing_ && output_.empty()) {
        say_goodbye();
    }
}

/// Writes while at least so much is queued.
void TlsStream::write_records(std::size_t least) {
    while (!flagWaitsForRoom_ && queued() >= least && write_record()) {
    }
    drop_written();
}

/// False when the kernel takes no more for now, or never again.
bool TlsStream::write_record() {
    std::size_t count = 0;
    error_code ec;
    const int result =
        SSL_write_ex(ssl_, output_.data() + written_, std::min(queued(), RECORD), &count);
    const Step step = step_of(result, ec);
    written_ += count;
    queuedTotal_ -= count;
    if (step != Step::DONE) {
        wait_for_room(step);
        return false;
    }
    if (ec) {
        // The reader learns of it as of the end of its input.
        socket_.shutdown(Socket::shutdown_both, ec);
        return false;
    }
    return true;
}

void TlsStream::wait_for_room(Step step) {
    flagWaitsForRoom_ = true;
    wait(step, [this, owner = owner_](error_code ec) {
        const std::shared_ptr<void> alive = owner.lock();
        if (alive && !ec) {
            flagWaitsForRoom_ = false;
            flush();
        }
    });
}

void TlsStream::drop_written() {
    if (queued() == 0) {
        output_.clear();
        written_ = 0;
        if (output_.capacity() > KEPT_OUTPUT) {
            std::string().swap(output_);
        }
    } else if (written_ > output_.size() / 2) {
        output_.erase(0, written_);
        written_ = 0;
    }
}

void TlsStream::finish() {
    if (!flagFinishing_) {
        flagFinishing_ = true;
        flush();
    }
}

void TlsStream::say_goodbye() noexcept {
    if (!flagBroken_ && SSL_is_init_finished(ssl_) == 1) {
        SSL_shutdown(ssl_);
        ERR_clear_error();
    }
    break_off();
    error_code ignored;
    socket_.shutdown(Socket::shutdown_send, ignored);
}

/// OpenSSL writes no more.
void TlsStream::break_off() noexcept {
    flagBroken_ = true;
    queuedTotal_ -= queued();
    output_.clear();
    written_ = 0;
}

// OpenSSL still knows the number of the descriptor, which may be another client's a moment later:
// an operation that is already on its way must not use it.
void TlsStream::close() noexcept {
    break_off();
    inputLeft_ = 0;
    error_code ignored;
    socket_.close(ignored);
}

}  // namespace relay
