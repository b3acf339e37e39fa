#include "tune.h"

#include <netinet/tcp.h>
#include <sys/socket.h>

namespace relay {

namespace {

// What the kernel may hold for one connection, so that a slow reader's backlog stays in sight of
// queuedOutput; it doubles the number for its own bookkeeping.
constexpr int KERNEL_BUFFER = 64 << 10;
// Sent data that nobody acknowledges ends the connection after this.
constexpr unsigned ACKNOWLEDGE_MILLIS = 30000;

}  // namespace

void tune(TlsStream::Socket& socket) noexcept {
    error_code ignored;
    socket.set_option(net::ip::tcp::no_delay(true), ignored);
    socket.set_option(net::socket_base::send_buffer_size(KERNEL_BUFFER), ignored);
    socket.set_option(net::socket_base::receive_buffer_size(KERNEL_BUFFER), ignored);
    setsockopt(socket.native_handle(), IPPROTO_TCP, TCP_USER_TIMEOUT, &ACKNOWLEDGE_MILLIS,
               sizeof ACKNOWLEDGE_MILLIS);
}

}  // namespace relay
