// SPDX-License-Identifier: MIT
#include "lsp/client.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "support/command.h"

namespace vemo::test {

using namespace std::chrono_literals;

namespace {

constexpr auto deadline = 60s;  // an answer that takes this long does not come

}  // namespace

Json rangeOf(std::size_t startLine, std::size_t start, std::size_t endLine, std::size_t end) {
    return {{"start", {{"line", startLine}, {"character", start}}}, {"end", {{"line", endLine}, {"character", end}}}};
}

Json documentNamed(const std::string& uri) {
    return {{"uri", uri}};
}

LspClient::LspClient(const Options& options) : options_(options) {
    signal(SIGPIPE, SIG_IGN);
    int in[2], out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
    std::vector<std::string> words{vemoCommand(), "lsp"};
    words.insert(words.end(), options_.arguments.begin(), options_.arguments.end());
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    process_ = fork();
    if (process_ == 0) {
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        setenv("XDG_CONFIG_HOME", options_.configuration.c_str(), 1);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    input_ = in[1];
    output_ = out[0];
}

LspClient::~LspClient() {
    closeInput();
    if (!status_) {
        kill(process_, SIGKILL);
        status();
    }
    ::close(output_);
}

Json LspClient::initialize() {
    Json capabilities = options_.capabilities;
    capabilities["general"]["positionEncodings"] =
        options_.utf8 ? Json::array({"utf-8", "utf-16"}) : Json::array({"utf-16"});
    Json result = request("initialize", {{"processId", nullptr},
                                         {"rootUri", nullptr},
                                         {"capabilities", capabilities},
                                         {"initializationOptions", options_.initialization}});
    notify("initialized", Json::object());
    return result;
}

std::string LspClient::framed(const std::string& message) {
    return "Content-Length: " + std::to_string(message.size()) + "\r\n\r\n" + message;
}

void LspClient::sendBytes(std::string_view bytes) {
    while (!bytes.empty()) {
        // What the server says meanwhile is read, so that neither waits for the other.
        pollfd events[] = {{input_, POLLOUT, 0}, {output_, POLLIN, 0}};
        fcntl(input_, F_SETFL, O_NONBLOCK);
        poll(events, 2, -1);
        if ((events[1].revents & POLLIN) != 0) {
            if (auto message = read(0ms)) messages_.push_back(std::move(*message));
        }
        if ((events[0].revents & (POLLOUT | POLLERR)) == 0) continue;
        const ssize_t count = ::write(input_, bytes.data(), bytes.size());
        if (count < 0 && errno == EAGAIN) continue;
        if (count < 0) return;  // it has ended
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void LspClient::send(const Json& message) {
    sendBytes(framed(message.dump()));
}

void LspClient::notify(const std::string& method, const Json& params) {
    send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

int LspClient::ask(const std::string& method, const Json& params) {
    send({{"jsonrpc", "2.0"}, {"id", ++lastId_}, {"method", method}, {"params", params}});
    return lastId_;
}

std::optional<std::string> LspClient::takeFrame() {
    const std::size_t end = received_.find("\r\n\r\n", consumed_);
    if (end == received_.npos) return std::nullopt;
    constexpr std::string_view name = "Content-Length: ";
    if (received_.compare(consumed_, name.size(), name) != 0)
        throw std::runtime_error("no protocol: " + received_.substr(consumed_, 200));
    const std::size_t length = std::stoul(received_.substr(consumed_ + name.size(), 20));
    if (received_.size() - end - 4 < length) return std::nullopt;
    std::string message = received_.substr(end + 4, length);
    consumed_ = end + 4 + length;
    if (consumed_ == received_.size() || consumed_ > (1u << 20)) {
        received_.erase(0, consumed_);
        consumed_ = 0;
    }
    return message;
}

std::optional<Json> LspClient::read(std::chrono::milliseconds atMost) {
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (true) {
        if (auto message = takeFrame()) return Json::parse(*message);
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd event{output_, POLLIN, 0};
        if (poll(&event, 1, std::max<int>(0, static_cast<int>(left.count()))) <= 0) return std::nullopt;
        char buffer[1 << 16];
        const ssize_t count = ::read(output_, buffer, sizeof buffer);
        if (count <= 0) return std::nullopt;
        received_.append(buffer, static_cast<std::size_t>(count));
    }
}

Json LspClient::response(int id) {
    const auto isAnswer = [&](const Json& message) {
        return !message.contains("method") && message.contains("id") && message["id"] == id;
    };
    for (auto known = messages_.begin(); known != messages_.end(); ++known) {
        if (!isAnswer(*known)) continue;
        Json answer = std::move(*known);
        messages_.erase(known);
        return answer;
    }
    while (auto message = read(deadline)) {
        if (isAnswer(*message)) return *message;
        messages_.push_back(std::move(*message));
    }
    throw std::runtime_error("no answer to request " + std::to_string(id));
}

Json LspClient::request(const std::string& method, const Json& params) {
    Json answer = response(ask(method, params));
    if (!answer.contains("result")) throw std::runtime_error(method + ": " + answer.dump());
    return answer["result"];
}

std::optional<Json> LspClient::next(std::chrono::milliseconds atMost) {
    if (messages_.empty()) return read(atMost);
    Json message = std::move(messages_.front());
    messages_.pop_front();
    return message;
}

std::optional<Json> LspClient::nextOf(const std::string& method, std::chrono::milliseconds atMost) {
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        auto message = next(std::max(left, 0ms));
        if (!message || (message->contains("method") && (*message)["method"] == method)) return message;
    }
}

void LspClient::open(const std::string& uri, const std::string& text, int version) {
    notify("textDocument/didOpen",
           {{"textDocument", {{"uri", uri}, {"languageId", "vemo"}, {"version", version}, {"text", text}}}});
}

void LspClient::change(const std::string& uri, const Json& changes, int version) {
    notify("textDocument/didChange",
           {{"textDocument", {{"uri", uri}, {"version", version}}}, {"contentChanges", changes}});
}

Json LspClient::hints(const std::string& uri, std::size_t lines) {
    return request("textDocument/inlayHint",
                   {{"textDocument", documentNamed(uri)}, {"range", rangeOf(0, 0, lines, 0)}});
}

void LspClient::closeInput() {
    if (input_ >= 0) ::close(input_);
    input_ = -1;
}

int LspClient::status() {
    if (!status_) {
        int status = 0;
        waitpid(process_, &status, 0);
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return *status_;
}

}  // namespace vemo::test
