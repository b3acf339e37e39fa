#include "TlsStream.h"

#include "TlsContext.h"

#include <array>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
namespace net = boost::asio;
using boost::beast::error_code;
using relay::TlsStream;

constexpr std::size_t RECORD = 16384;

/// A stream of the relay's and a client of OpenSSL's, in one thread.
struct TlsStreamTest : ::testing::Test {
    TlsStreamTest() {
        const relay::CertificateFiles files{folder / "c.pem", folder / "k.pem", true};
        EXPECT_EQ(tls.load(files), "");
        net::ip::tcp::acceptor acceptor(context, {net::ip::address_v4::loopback(), 0});
        socket.connect(acceptor.local_endpoint());
        TlsStream::Socket accepted(context.get_executor());
        acceptor.accept(accepted);
        descriptor = accepted.native_handle();
        accepted.set_option(net::ip::tcp::no_delay(true));
        socket.non_blocking(true);
        stream = std::make_unique<TlsStream>(std::move(accepted), tls.get(), queuedTotal);
        ssl = SSL_new(clientContext);
        SSL_set_fd(ssl, socket.native_handle());
        shake_hands();
    }
    ~TlsStreamTest() override {
        SSL_free(ssl);
        SSL_CTX_free(clientContext);
        fs::remove_all(folder);
    }

    void shake_hands() {
        bool flagOpen = false;
        stream->async_handshake(turns, [&flagOpen](error_code ec) { flagOpen = !ec; });
        for (int i = 0; i < 1000 && !(SSL_connect(ssl) == 1 && flagOpen); ++i) {
            context.run_one_for(std::chrono::milliseconds(10));
        }
        ASSERT_TRUE(flagOpen);
    }

    /// What the client can read now.
    std::size_t read_all() {
        std::size_t total = 0;
        std::array<char, RECORD> part{};
        for (int count = 0; (count = SSL_read(ssl, part.data(), RECORD)) > 0;) {
            total += static_cast<std::size_t>(count);
        }
        return total;
    }

    void update_key() {
        EXPECT_EQ(SSL_key_update(ssl, SSL_KEY_UPDATE_NOT_REQUESTED), 1);
        EXPECT_EQ(SSL_do_handshake(ssl), 1);
    }

    /// Begins a read of the stream and runs the loop until `done`, or for 10 s.
    template <class Done>
    void read_until(Done done) {
        stream->async_read_some(net::buffer(data), [this](error_code ec, std::size_t count) {
            result = ec;
            got = count;
        });
        context.restart();
        for (int i = 0; i < 1000 && !done(); ++i) {
            context.run_one_for(std::chrono::milliseconds(10));
        }
    }

    const fs::path folder =
        fs::temp_directory_path() / ("relay_tls_stream." + std::to_string(getpid()));
    relay::TlsContext tls;
    std::uint64_t queuedTotal = 0;
    net::io_context context;
    relay::OneByOne turns{context};
    net::ip::tcp::socket socket{context};  ///< of the client
    SSL_CTX* clientContext = SSL_CTX_new(TLS_client_method());
    SSL* ssl = nullptr;
    std::unique_ptr<TlsStream> stream;
    int descriptor = -1;  ///< of the stream
    std::array<char, 100> data{};
    error_code result;    ///< of the read
    std::size_t got = 0;  ///< by it
};

TEST_F(TlsStreamTest, full_records_leave_before_the_flush) {
    const std::string part(100, 'x');
    for (std::size_t sent = 0; sent < 2 * RECORD + 1000; sent += part.size()) {
        stream->collect(part);
        EXPECT_LT(stream->queued(), RECORD);
    }
    EXPECT_EQ(read_all(), 2 * RECORD);
    stream->flush();
    EXPECT_GE(read_all(), 1000U);
}

TEST_F(TlsStreamTest, less_than_a_record_waits_for_the_flush) {
    stream->collect(std::string(RECORD - 1, 'x'));
    EXPECT_EQ(read_all(), 0U);
    stream->flush();
    EXPECT_EQ(read_all(), RECORD - 1);
}

TEST_F(TlsStreamTest, what_waits_is_counted_until_it_has_left_or_is_given_up) {
    stream->collect("abc");
    EXPECT_EQ(queuedTotal, 3U);
    stream->flush();
    EXPECT_EQ(queuedTotal, 0U);
    const std::string record(RECORD, 'x');
    while (stream->queued() < 10 * RECORD) {  // until the kernel takes no more
        stream->collect(record);
    }
    EXPECT_EQ(queuedTotal, stream->queued());
    stream->close();
    EXPECT_EQ(queuedTotal, 0U);
}

TEST_F(TlsStreamTest, a_stream_that_ends_takes_what_waits_off_the_count) {
    stream->collect("abc");
    stream.reset();
    EXPECT_EQ(queuedTotal, 0U);
}

TEST_F(TlsStreamTest, a_few_key_updates_are_taken_and_many_end_the_stream) {
    for (int i = 0; i < 4; ++i) {
        update_key();
    }
    ASSERT_EQ(SSL_write(ssl, "hello", 5), 5);
    read_until([this] { return got > 0; });
    EXPECT_EQ(got, 5U);
    for (int i = 0; i < 100; ++i) {
        update_key();
    }
    read_until([this] { return bool(result); });
    EXPECT_EQ(result, boost::system::errc::protocol_error);
}

TEST_F(TlsStreamTest, records_without_data_count_as_bytes_off_the_wire) {
    struct : TlsStream::Watcher {
        void on_bytes(std::size_t count) override { bytes += count; }
        void on_turn_end() override {}
        std::size_t bytes = 0;
    } watcher;
    stream->watch(watcher, {});
    update_key();
    read_until([&watcher] { return watcher.bytes > 0; });
    constexpr std::size_t KEY_UPDATE = 5 + 5 + 1 + 16;  // head, message, type, tag
    EXPECT_EQ(watcher.bytes, KEY_UPDATE);
    EXPECT_FALSE(result);
}

// The next client may get the number of the descriptor before the read is run.
TEST_F(TlsStreamTest, a_read_on_its_way_does_not_touch_the_descriptor_after_the_close) {
    ASSERT_EQ(SSL_write(ssl, "hello", 5), 5);
    constexpr std::array<char, 4> HALF_RECORD = {0x17, 3, 3, 0};
    ASSERT_EQ(send(socket.native_handle(), HALF_RECORD.data(), HALF_RECORD.size(), 0), 4);
    read_until([this] { return got > 0; });
    ASSERT_GT(got, 0U);
    // The half of a record is in OpenSSL's buffer: this read goes ahead without a wait.
    stream->async_read_some(net::buffer(data), [this](error_code ec, std::size_t) { result = ec; });
    std::array<int, 2> other{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, other.data()), 0);
    stream->close();
    ASSERT_EQ(dup2(other[0], descriptor), descriptor);
    ASSERT_EQ(write(other[1], "theirs", 6), 6);
    context.restart();
    context.run();
    EXPECT_EQ(result, net::error::operation_aborted);
    EXPECT_EQ(read(descriptor, data.data(), data.size()), 6);
    close(other[0]);
    close(other[1]);
    close(descriptor);
}

}  // namespace
