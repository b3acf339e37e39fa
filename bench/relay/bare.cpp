// The limit to measure against: epoll and OpenSSL with as little as can be between them. It pairs
// by the group in the login and forwards; it checks nothing and is fit for no other use.

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <openssl/evp.h>
#include <openssl/sha.h>
#include <openssl/ssl.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

struct Client {
    int socket = -1;
    SSL* ssl = nullptr;
    Client* friendClient = nullptr;
    std::string group;
    std::string input;
    std::string output;
    bool flagOpen = false;
};

std::map<std::string, Client*> waiting;
std::vector<Client*> touched;

std::string accept_key(const std::string& key) {
    const std::string text = key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11";
    std::array<unsigned char, SHA_DIGEST_LENGTH> digest{};
    SHA1(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest.data());
    std::array<unsigned char, 64> base64{};
    EVP_EncodeBlock(base64.data(), digest.data(), static_cast<int>(digest.size()));
    return reinterpret_cast<const char*>(base64.data());
}

void send(Client& client, std::string_view bytes) {
    if (client.output.empty()) {
        touched.push_back(&client);
    }
    client.output += bytes;
}

void send_text(Client& client, std::string_view text) {
    std::string head = "\x81";
    if (text.size() < 126) {
        head += static_cast<char>(text.size());
    } else {
        head += static_cast<char>(126);
        head += static_cast<char>(text.size() >> 8U);
        head += static_cast<char>(text.size() & 0xFFU);
    }
    send(client, head);
    send(client, text);
}

bool upgrade(Client& client) {
    const std::size_t end = client.input.find("\r\n\r\n");
    if (end == std::string::npos) {
        return false;
    }
    const std::string_view name = "Sec-WebSocket-Key: ";
    const std::size_t at = client.input.find(name) + name.size();
    const std::string key = client.input.substr(at, client.input.find("\r\n", at) - at);
    send(client,
         "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
         "Sec-WebSocket-Accept: " +
             accept_key(key) + "\r\n\r\n");
    client.input.erase(0, end + 4);
    return client.flagOpen = true;
}

void log_in(Client& client, std::string_view text) {
    const std::size_t at = text.find(R"("from":")") + 8;
    client.group = text.substr(at, text.find(':', at) - at);
    Client*& other = waiting[client.group];
    if (other != nullptr) {
        client.friendClient = other;
        other->friendClient = &client;
    }
    other = &client;
    send_text(client, R"({"type":"CHAT","subType":"welcome"})");
}

void take_frames(Client& client) {
    std::size_t at = 0;
    auto byte = [&client](std::size_t i) {
        return static_cast<unsigned char>(client.input[i]);
    };
    while (client.input.size() - at >= 8) {
        std::size_t size = byte(at + 1) & 0x7FU;
        std::size_t head = 6;
        if (size == 126) {
            size = static_cast<std::size_t>(byte(at + 2)) << 8U | byte(at + 3);
            head = 8;
        }
        if (client.input.size() - at < head + size) {
            break;
        }
        for (std::size_t i = 0; i < size; ++i) {
            client.input[at + head + i] =
                static_cast<char>(byte(at + head + i) ^ byte(at + head - 4 + i % 4));
        }
        const std::string_view text = std::string_view(client.input).substr(at + head, size);
        if (client.group.empty()) {
            log_in(client, text);
        } else if (client.friendClient != nullptr) {
            send_text(*client.friendClient, text);
        }
        at += head + size;
    }
    client.input.erase(0, at);
}

void end(Client& client) {
    if (client.friendClient != nullptr) {
        client.friendClient->friendClient = nullptr;
    }
    if (waiting[client.group] == &client) {
        waiting.erase(client.group);
    }
    std::erase(touched, &client);
    SSL_free(client.ssl);
    close(client.socket);
    delete &client;  // its epoll entry was the only owner
}

void read(Client& client) {
    std::array<char, 16384> buffer;
    std::size_t count = 0;
    while (SSL_read_ex(client.ssl, buffer.data(), buffer.size(), &count) == 1) {
        client.input.append(buffer.data(), count);
        if (client.flagOpen || upgrade(client)) {
            take_frames(client);
        }
        if (SSL_has_pending(client.ssl) == 0) {
            return;
        }
    }
    if (SSL_get_error(client.ssl, 0) != SSL_ERROR_WANT_READ) {
        end(client);
    }
}

void flush_touched() {
    for (Client* client : touched) {
        std::size_t count = 0;
        while (!client->output.empty() && SSL_write_ex(client->ssl, client->output.data(),
                                                       client->output.size(), &count) == 1) {
            client->output.erase(0, count);
        }
    }
    std::erase_if(touched, [](const Client* client) { return client->output.empty(); });
}

int listen_on_free_port() {
    const int acceptor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    bind(acceptor, reinterpret_cast<sockaddr*>(&address), size);
    listen(acceptor, 4096);
    getsockname(acceptor, reinterpret_cast<sockaddr*>(&address), &size);
    std::printf("wss://127.0.0.1:%d/\n", ntohs(address.sin_port));
    std::fflush(stdout);
    return acceptor;
}

SSL_CTX* load_context(const char* cert, const char* key) {
    SSL_CTX* context = SSL_CTX_new(TLS_server_method());
    SSL_CTX_use_certificate_chain_file(context, cert);
    SSL_CTX_use_PrivateKey_file(context, key, SSL_FILETYPE_PEM);
    SSL_CTX_set_ciphersuites(context, "TLS_AES_128_GCM_SHA256");
    SSL_CTX_set_num_tickets(context, 0);
    SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
    SSL_CTX_set_read_ahead(context, 1);
    SSL_CTX_set_mode(context, SSL_MODE_RELEASE_BUFFERS | SSL_MODE_ENABLE_PARTIAL_WRITE |
                                  SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
    return context;
}

void accept_all(int acceptor, int epoll, SSL_CTX* context) {
    int socket = -1;
    while ((socket = accept4(acceptor, nullptr, nullptr, SOCK_NONBLOCK)) >= 0) {
        const int yes = 1;
        setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
        auto* client = new Client;  // ended by end()
        client->socket = socket;
        client->ssl = SSL_new(context);
        SSL_set_fd(client->ssl, socket);
        SSL_set_accept_state(client->ssl);
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.ptr = client;
        epoll_ctl(epoll, EPOLL_CTL_ADD, socket, &event);
    }
}

}  // namespace

int main(int count, char** values) {
    if (count != 3) {
        std::fputs("usage: relay_bare CERT KEY\n", stderr);
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    SSL_CTX* context = load_context(values[1], values[2]);
    const int acceptor = listen_on_free_port();
    const int epoll = epoll_create1(EPOLL_CLOEXEC);
    epoll_event event{};
    event.events = EPOLLIN;
    epoll_ctl(epoll, EPOLL_CTL_ADD, acceptor, &event);
    for (;;) {
        std::array<epoll_event, 256> events;
        const int ready = epoll_wait(epoll, events.data(), events.size(), touched.empty() ? -1 : 1);
        for (int i = 0; i < ready; ++i) {
            auto* client = static_cast<Client*>(events[static_cast<std::size_t>(i)].data.ptr);
            client != nullptr ? read(*client) : accept_all(acceptor, epoll, context);
        }
        flush_touched();
    }
}
