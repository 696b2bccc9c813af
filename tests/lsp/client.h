// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <deque>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vemo::test {

using Json = nlohmann::json;

// An editor without a window: `vemo lsp` as a process with pipes, and what it says.
class LspClient {
public:
    struct Options {
        std::vector<std::string> arguments{"--now", "2026-11-24T13:00:00Z", "--locale", "en_US", "--timezone", "UTC"};
        Json initialization = nullptr;
        Json capabilities = Json::object();
        bool utf8 = false;
        std::string configuration = "/nonexistent";  // the folder of configuration files
    };

    // Starts the server; `open` says hello, too.
    explicit LspClient(const Options& options);
    LspClient() : LspClient(Options()) {}
    ~LspClient();
    LspClient(const LspClient&) = delete;
    LspClient& operator=(const LspClient&) = delete;

    Json initialize();

    void sendBytes(std::string_view bytes);
    void send(const Json& message);
    void notify(const std::string& method, const Json& params);
    // The id of the request, whose answer `response` waits for.
    int ask(const std::string& method, const Json& params);
    Json response(int id);  // the whole message
    // The result; a failure is thrown.
    Json request(const std::string& method, const Json& params);
    // The next message of the server that is none of the answers waited for; nothing when none comes in that time.
    std::optional<Json> next(std::chrono::milliseconds atMost);
    // The next one of that method; others before it are dropped.
    std::optional<Json> nextOf(const std::string& method, std::chrono::milliseconds atMost);

    void open(const std::string& uri, const std::string& text, int version = 1);
    void change(const std::string& uri, const Json& changes, int version);
    Json hints(const std::string& uri, std::size_t lines = 1000000);

    void closeInput();
    // The exit status, waited for; -1 when the process was killed.
    int status();
    pid_t process() const { return process_; }

    static std::string framed(const std::string& message);

private:
    std::optional<Json> read(std::chrono::milliseconds atMost);
    std::optional<std::string> takeFrame();

    Options options_;
    pid_t process_ = 0;
    int input_ = -1, output_ = -1;
    std::string received_;
    std::size_t consumed_ = 0;
    std::deque<Json> messages_;
    int lastId_ = 0;
    std::optional<int> status_;
};

Json rangeOf(std::size_t startLine, std::size_t start, std::size_t endLine, std::size_t end);
Json documentNamed(const std::string& uri);

inline const std::string someUri = "file:///notes/a.vemo";

}  // namespace vemo::test
