// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace vemo {

struct HttpResponse {
    long status = 0;    // 0 when the request failed
    std::string body;   // decoded
    std::string error;  // why it failed; empty when an answer came, whatever its status
};

// Gets resources over HTTP and HTTPS, all on one thread of its own that starts with the first request, which also loads
// the library that it uses. Certificates are verified, and a redirect never leads from HTTPS to HTTP.
class HttpClient {
public:
    // Runs on the client's thread, once, unless the client is destroyed first.
    using Completion = std::function<void(HttpResponse)>;

    struct Limits {
        std::chrono::milliseconds connect{10'000};
        std::chrono::milliseconds total{60'000};
        std::size_t body = std::size_t(16) << 20;  // bytes, decoded
        std::string authorities;                   // PEM file of those who vouch for servers; empty: the system's
    };

    HttpClient() : HttpClient(Limits()) {}
    explicit HttpClient(const Limits& limits);
    // Ends what is under way. No completion runs any more, but for the one that is running when this is called from it.
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    // Any thread may call it.
    void get(const std::string& url, Completion completion);
    // `url` with a parameter added, encoded.
    static std::string withQuery(const std::string& url, const std::string& name, const std::string& value);

private:
    struct State;
    std::shared_ptr<State> state_;  // the thread's, too
};

}  // namespace vemo
