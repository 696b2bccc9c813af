// SPDX-License-Identifier: MIT
#include "support/test_server.h"

#include <asio.hpp>
#include <map>
#include <mutex>
#include <thread>

namespace vemo::test {

using asio::ip::tcp;

Reply ok(const std::string& body, const std::string& headers) {
    return {"HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n" + headers + "\r\n" + body};
}

Reply status(int code, const std::string& headers) {
    return {"HTTP/1.1 " + std::to_string(code) + " Status\r\nContent-Length: 0\r\nConnection: close\r\n" + headers + "\r\n"};
}

namespace {

class Connection : public std::enable_shared_from_this<Connection> {
public:
    using Answer = std::function<Reply(const std::string& path)>;

    Connection(tcp::socket socket, Answer answer)
        : socket_(std::move(socket)), timer_(socket_.get_executor()), answer_(std::move(answer)) {}

    void start() {
        asio::async_read_until(socket_, asio::dynamic_buffer(request_), "\r\n\r\n", [self = shared_from_this()](auto error, auto) {
            if (error) return;
            const std::string& line = self->request_;
            const std::size_t path = line.find(' ') + 1;
            self->reply_ = self->answer_(line.substr(path, line.find(' ', path) - path));
            self->send();
        });
    }

private:
    void send() {
        const std::size_t left = reply_.bytes.size() - sent_;
        if (left == 0) return end();
        const std::size_t count = reply_.chunk == 0 ? left : std::min(left, reply_.chunk);
        asio::async_write(socket_, asio::buffer(reply_.bytes.data() + sent_, count), [self = shared_from_this(), count](auto error, auto) {
            if (error) return;
            self->sent_ += count;
            self->timer_.expires_after(self->reply_.pause);
            self->timer_.async_wait([self](auto) { self->send(); });
        });
    }

    void end() {
        if (!reply_.hangs) return;
        timer_.expires_after(std::chrono::hours(1));
        timer_.async_wait([self = shared_from_this()](auto) {});
    }

    tcp::socket socket_;
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
    std::map<std::string, std::vector<Reply>> replies;
    std::vector<std::string> requests;
    std::thread thread;

    Reply answer(const std::string& path) {
        const std::lock_guard lock(mutex);
        requests.push_back(path);
        const auto found = replies.find(path);
        if (found == replies.end()) return status(404);
        Reply reply = found->second.front();
        if (found->second.size() > 1) found->second.erase(found->second.begin());
        return reply;
    }

    void accept() {
        acceptor.async_accept([this](auto error, tcp::socket socket) {
            if (error) return;
            std::make_shared<Connection>(std::move(socket), [this](const std::string& path) { return answer(path); })->start();
            accept();
        });
    }
};

TestServer::TestServer() : state_(std::make_unique<State>()) {
    state_->accept();
    state_->thread = std::thread([this] { state_->context.run(); });
}

TestServer::~TestServer() {
    state_->context.stop();
    state_->thread.join();
}

void TestServer::on(const std::string& path, std::vector<Reply> replies) {
    const std::lock_guard lock(state_->mutex);
    state_->replies[path] = std::move(replies);
}

std::string TestServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(state_->acceptor.local_endpoint().port()) + path;
}

std::vector<std::string> TestServer::requests() const {
    const std::lock_guard lock(state_->mutex);
    return state_->requests;
}

}  // namespace vemo::test
