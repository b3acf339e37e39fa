// The asynchronous operations of TlsStream.
#pragma once

#include "TlsStream.h"

#include <utility>

#include <boost/asio/buffer.hpp>

namespace relay {

struct TlsStream::HandshakeOperation {
    TlsStream& stream;
    OneByOne& turns;
    enum class Next { WAIT, TURN, STEP } next = Next::WAIT;

    template <class Self>
    void operator()(Self& self, error_code ec = {}) {
        Step step = Step::NEEDS_INPUT;
        if (next == Next::TURN && !ec) {
            next = Next::STEP;
            take_turn(self);
            return;
        }
        if (next == Next::STEP) {
            step = stream.handshake(ec);
        }
        next = Next::TURN;
        if (step == Step::DONE || ec) {
            self.complete(ec);
        } else {
            stream.wait(step, std::move(self));
        }
    }

    // A std::function can be copied; an operation can not.
    template <class Self>
    void take_turn(Self& self) {
        turns.add([kept = std::make_shared<Self>(std::move(self))] { (*kept)(); });
    }
};

template <class Buffer>
struct TlsStream::ReadOperation {
    TlsStream& stream;
    Buffer buffer;
    bool flagStarted = false;

    template <class Self>
    void operator()(Self& self, error_code ec = {}) {
        if (!std::exchange(flagStarted, true)) {
            start(self);
            return;
        }
        std::size_t count = 0;
        const Step step = ec ? Step::DONE : stream.read(buffer.data(), buffer.size(), count, ec);
        if (step == Step::DONE) {
            self.complete(ec, count);
        } else {
            stream.end_turn();
            stream.wait(step, std::move(self));
        }
    }

    // With nothing in OpenSSL's buffer a read would only ask the kernel in vain.
    template <class Self>
    void start(Self& self) {
        if (buffer.size() == 0 || SSL_has_pending(stream.ssl_) == 1) {
            net::post(stream.get_executor(), std::move(self));
        } else {
            stream.end_turn();
            stream.wait(Step::NEEDS_INPUT, std::move(self));
        }
    }
};

template <class Handler>
void TlsStream::wait(Step step, Handler&& handler) {
    socket_.async_wait(step == Step::NEEDS_ROOM ? Socket::wait_write : Socket::wait_read,
                       std::forward<Handler>(handler));
}

template <class Token>
auto TlsStream::async_handshake(OneByOne& turns, Token&& token) {
    return net::async_compose<Token, void(error_code)>(HandshakeOperation{*this, turns}, token,
                                                       socket_);
}

template <class Buffers, class Token>
auto TlsStream::async_read_some(const Buffers& buffers, Token&& token) {
    net::mutable_buffer first;
    for (auto it = net::buffer_sequence_begin(buffers);
         it != net::buffer_sequence_end(buffers) && first.size() == 0; ++it) {
        first = *it;
    }
    return net::async_compose<Token, void(error_code, std::size_t)>(
        ReadOperation<net::mutable_buffer>{*this, first}, token, socket_);
}

template <class Buffers, class Token>
auto TlsStream::async_write_some(const Buffers& buffers, Token&& token) {
    std::size_t size = 0;
    for (auto it = net::buffer_sequence_begin(buffers); it != net::buffer_sequence_end(buffers);
         ++it) {
        const net::const_buffer part = *it;
        collect({static_cast<const char*>(part.data()), part.size()});
        size += part.size();
    }
    return net::async_initiate<Token, void(error_code, std::size_t)>(
        [](auto&& handler, executor_type executor, std::size_t count) {
            net::post(executor, [done = std::forward<decltype(handler)>(handler), count]() mutable {
                done(error_code(), count);
            });
        },
        token, get_executor(), size);
}

}  // namespace relay
