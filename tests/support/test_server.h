// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vemo::test {

// What a server says to a request, to the byte.
struct Reply {
    std::string bytes;                   // status line, headers and body
    std::size_t chunk = 0;               // bytes sent at a time, 0 for all at once
    std::chrono::milliseconds pause{0};  // between chunks
    bool hangs = false;                  // the connection then stays open
};

// 200 with the body, and its length.
Reply ok(const std::string& body, const std::string& headers = "");
Reply status(int code, const std::string& headers = "");

// A web server on the loopback interface, on a thread of its own.
class TestServer {
public:
    enum class Scheme { http, https };

    explicit TestServer(Scheme scheme = Scheme::http);
    ~TestServer();

    // What requests for a path (with its query) are answered with, one after the other; the last reply is repeated.
    void on(const std::string& path, std::vector<Reply> replies);
    // The same, in turn and without end.
    void alternate(const std::string& path, std::vector<Reply> replies);
    std::string url(const std::string& path = "") const;
    // Of an HTTPS server: the file of the certificate that vouches for it.
    const std::filesystem::path& certificate() const;
    // The paths asked for so far.
    std::vector<std::string> requests() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace vemo::test
