// SPDX-License-Identifier: MIT
#include "support/test_server.h"

#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <unistd.h>

#include <asio.hpp>
#include <asio/ssl.hpp>
#include <fstream>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace vemo::test {

using asio::ip::tcp;
using TlsSocket = asio::ssl::stream<tcp::socket>;

Reply ok(const std::string& body, const std::string& headers) {
    return {"HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n" +
            headers + "\r\n" + body};
}

Reply status(int code, const std::string& headers) {
    return {"HTTP/1.1 " + std::to_string(code) + " Status\r\nContent-Length: 0\r\nConnection: close\r\n" + headers +
            "\r\n"};
}

namespace {

std::string pemOf(auto write) {
    const std::unique_ptr<BIO, int (*)(BIO*)> memory(BIO_new(BIO_s_mem()), BIO_free);
    write(memory.get());
    char* bytes = nullptr;
    const long length = BIO_get_mem_data(memory.get(), &bytes);
    return {bytes, static_cast<std::size_t>(length)};
}

// A key and a certificate for 127.0.0.1 that nobody else vouches for.
struct Identity {
    std::string key, certificate;

    Identity() {
        const std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)> pair(EVP_EC_gen("P-256"), EVP_PKEY_free);
        const std::unique_ptr<X509, void (*)(X509*)> x509(X509_new(), X509_free);
        X509_set_version(x509.get(), 2);
        ASN1_INTEGER_set(X509_get_serialNumber(x509.get()), 1);
        X509_gmtime_adj(X509_getm_notBefore(x509.get()), -3600);
        X509_gmtime_adj(X509_getm_notAfter(x509.get()), 24 * 3600);
        X509_set_pubkey(x509.get(), pair.get());
        X509_NAME* name = X509_get_subject_name(x509.get());
        X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("test"), -1, -1, 0);
        X509_set_issuer_name(x509.get(), name);
        for (const auto& [kind, text] :
             {std::pair(NID_subject_alt_name, "IP:127.0.0.1"), {NID_basic_constraints, "CA:TRUE"}}) {
            X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, text);
            X509_add_ext(x509.get(), extension, -1);
            X509_EXTENSION_free(extension);
        }
        X509_sign(x509.get(), pair.get(), EVP_sha256());
        key =
            pemOf([&](BIO* out) { PEM_write_bio_PrivateKey(out, pair.get(), nullptr, nullptr, 0, nullptr, nullptr); });
        certificate = pemOf([&](BIO* out) { PEM_write_bio_X509(out, x509.get()); });
    }
};

using Answer = std::function<Reply(const std::string& path)>;

template <class Socket>
class Connection : public std::enable_shared_from_this<Connection<Socket>> {
public:
    Connection(Socket socket, Answer answer)
        : socket_(std::move(socket)), timer_(socket_.get_executor()), answer_(std::move(answer)) {}

    void start() {
        if constexpr (std::is_same_v<Socket, TlsSocket>) {
            socket_.async_handshake(asio::ssl::stream_base::server, [self = this->shared_from_this()](auto error) {
                if (!error) self->read();
            });
        } else {
            read();
        }
    }

private:
    void read() {
        asio::async_read_until(socket_, asio::dynamic_buffer(request_), "\r\n\r\n",
                               [self = this->shared_from_this()](auto error, auto) {
                                   if (error) return;
                                   const std::string& line = self->request_;
                                   const std::size_t path = line.find(' ') + 1;
                                   self->reply_ = self->answer_(line.substr(path, line.find(' ', path) - path));
                                   self->send();
                               });
    }

    void send() {
        const std::size_t left = reply_.bytes.size() - sent_;
        if (left == 0) return end();
        const std::size_t count = reply_.chunk == 0 ? left : std::min(left, reply_.chunk);
        asio::async_write(socket_, asio::buffer(reply_.bytes.data() + sent_, count),
                          [self = this->shared_from_this(), count](auto error, auto) {
                              if (error) return;
                              self->sent_ += count;
                              self->timer_.expires_after(self->reply_.pause);
                              self->timer_.async_wait([self](auto) { self->send(); });
                          });
    }

    void end() {
        if (!reply_.hangs) return;
        timer_.expires_after(std::chrono::hours(1));
        timer_.async_wait([self = this->shared_from_this()](auto) {});
    }

    Socket socket_;
    asio::steady_timer timer_;
    Answer answer_;
    std::string request_;
    Reply reply_;
    std::size_t sent_ = 0;
};

}  // namespace

struct TestServer::State {
    asio::io_context context;
    tcp::acceptor acceptor{context, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
    mutable std::mutex mutex;
    struct Replies {
        std::vector<Reply> all;
        bool endless = false;
        std::size_t next = 0;
    };
    std::map<std::string, Replies> replies;
    std::vector<std::string> requests;
    std::optional<asio::ssl::context> tls;
    std::filesystem::path certificate;
    std::thread thread;

    Reply answer(const std::string& path) {
        const std::lock_guard lock(mutex);
        requests.push_back(path);
        const auto found = replies.find(path);
        if (found == replies.end()) return status(404);
        Replies& each = found->second;
        const std::size_t index = each.next++;
        return each.all[each.endless ? index % each.all.size() : std::min(index, each.all.size() - 1)];
    }

    void accept() {
        acceptor.async_accept([this](auto error, tcp::socket socket) {
            if (error) return;
            const Answer reply = [this](const std::string& path) { return answer(path); };
            if (tls)
                std::make_shared<Connection<TlsSocket>>(TlsSocket(std::move(socket), *tls), reply)->start();
            else
                std::make_shared<Connection<tcp::socket>>(std::move(socket), reply)->start();
            accept();
        });
    }
};

TestServer::TestServer(Scheme scheme) : state_(std::make_unique<State>()) {
    ::setenv("no_proxy", "127.0.0.1", 1);
    if (scheme == Scheme::https) {
        const Identity identity;
        state_->tls.emplace(asio::ssl::context::tls_server);
        state_->tls->use_certificate_chain(asio::buffer(identity.certificate));
        state_->tls->use_private_key(asio::buffer(identity.key), asio::ssl::context::pem);
        state_->certificate =
            std::filesystem::temp_directory_path() / ("vemo_certificate_" + std::to_string(::getpid()) + ".pem");
        std::ofstream(state_->certificate) << identity.certificate;
    }
    state_->accept();
    state_->thread = std::thread([this] { state_->context.run(); });
}

TestServer::~TestServer() {
    state_->context.stop();
    state_->thread.join();
    std::error_code error;
    if (state_->tls) std::filesystem::remove(state_->certificate, error);
}

void TestServer::on(const std::string& path, std::vector<Reply> replies) {
    const std::lock_guard lock(state_->mutex);
    state_->replies[path] = {std::move(replies), false, 0};
}

void TestServer::alternate(const std::string& path, std::vector<Reply> replies) {
    const std::lock_guard lock(state_->mutex);
    state_->replies[path] = {std::move(replies), true, 0};
}

std::string TestServer::url(const std::string& path) const {
    return (state_->tls ? "https://127.0.0.1:" : "http://127.0.0.1:") +
           std::to_string(state_->acceptor.local_endpoint().port()) + path;
}

const std::filesystem::path& TestServer::certificate() const {
    return state_->certificate;
}

std::vector<std::string> TestServer::requests() const {
    const std::lock_guard lock(state_->mutex);
    return state_->requests;
}

}  // namespace vemo::test
