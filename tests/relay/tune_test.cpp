#include "tune.h"

#include <gtest/gtest.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {

namespace net = boost::asio;
using relay::TlsStream;

int option(TlsStream::Socket& socket, int level, int name) {
    int value = -1;
    socklen_t size = sizeof value;
    EXPECT_EQ(getsockopt(socket.native_handle(), level, name, &value, &size), 0);
    return value;
}

TEST(Tune, the_kernel_sends_at_once_holds_little_and_gives_up_in_time) {
    net::io_context context;
    net::ip::tcp::acceptor acceptor(context, {net::ip::address_v4::loopback(), 0});
    net::ip::tcp::socket client(context);
    client.connect(acceptor.local_endpoint());
    TlsStream::Socket accepted(context.get_executor());
    acceptor.accept(accepted);
    relay::tune(accepted);
    EXPECT_NE(option(accepted, IPPROTO_TCP, TCP_NODELAY), 0);
    EXPECT_EQ(option(accepted, IPPROTO_TCP, TCP_USER_TIMEOUT), 30000);
    constexpr int DOUBLED = 2 * 64 * 1024;  // Linux gives twice what it is asked for
    EXPECT_EQ(option(accepted, SOL_SOCKET, SO_SNDBUF), DOUBLED);
    EXPECT_EQ(option(accepted, SOL_SOCKET, SO_RCVBUF), DOUBLED);
}

}  // namespace
