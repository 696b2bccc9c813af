// SPDX-License-Identifier: MIT
// The client against a server on the loopback interface.

#include "platform/http_client.h"

#include <gtest/gtest.h>

#include <future>

#include "support/test_server.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;

constexpr auto deadline = 60s;  // a wait that takes this long has failed

std::future<HttpResponse> ask(HttpClient& client, const std::string& url) {
    auto promise = std::make_shared<std::promise<HttpResponse>>();
    auto future = promise->get_future();
    client.get(url, [promise](HttpResponse response) { promise->set_value(std::move(response)); });
    return future;
}

HttpResponse get(HttpClient& client, const std::string& url) {
    auto future = ask(client, url);
    if (future.wait_for(deadline) != std::future_status::ready) throw std::runtime_error("no answer");
    return future.get();
}

Reply hanging(const std::string& bytes = "") {
    Reply reply{bytes};
    reply.hangs = true;
    return reply;
}

std::size_t threads() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return static_cast<std::size_t>(std::distance(begin(tasks), end(tasks)));
}

TEST(HttpClient, givesAnswersWhateverTheirStatus) {
    TestServer server;
    server.on("/hello", {ok("hello")});
    server.on("/chunked", {{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n"}});
    server.on("/busy", {status(503)});
    server.on("/moved", {status(302, "Location: /hello\r\n")});
    server.on("/q?a=1&q=S%C3%A3o%20%26%20Co%2Fx", {ok("found")});
    HttpClient client;
    const auto both = [&](const std::string& path) {
        const HttpResponse response = get(client, server.url(path));
        EXPECT_EQ(response.error, "");
        return std::to_string(response.status) + " " + response.body;
    };
    EXPECT_EQ(both("/hello"), "200 hello");
    EXPECT_EQ(both("/chunked"), "200 abcde");
    EXPECT_EQ(both("/busy"), "503 ");
    EXPECT_EQ(both("/moved"), "200 hello");
    EXPECT_EQ(both(HttpClient::withQuery("/q?a=1", "q", "S\xc3\xa3o & Co/x")), "200 found");
}

TEST(HttpClient, failsWhereTheAnswerIsNotWhole) {
    TestServer server;
    const std::vector<std::pair<std::string, Reply>> faults = {
        {"/cut", {"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nabc"}},
        {"/cutchunk", {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n64\r\nabc"}},
        {"/nozip", ok("no zip", "Content-Encoding: gzip\r\n")},
        {"/length", {"HTTP/1.1 200 OK\r\nContent-Length: x\r\n\r\nabc"}},
        {"/silent", hanging()},
        {"/slow", hanging("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nabc")},
        {"/long", ok(std::string(2000, 'x'))},
        {"/endless", {"HTTP/1.1 200 OK\r\n\r\n" + std::string(2000, 'x')}},
        {"/circle", status(302, "Location: /circle\r\n")},
        {"/file", status(302, "Location: file:///etc/hostname\r\n")},
        {"/garbage", {"\x01\x02\x03 garbage\n\n\n"}},
    };
    HttpClient::Limits limits;
    limits.total = 500ms;
    limits.body = 1000;
    HttpClient client(limits);
    for (const auto& [path, fault] : faults) {
        server.on(path, {fault});
        const HttpResponse response = get(client, server.url(path));
        EXPECT_NE(response.error, "") << path;
        EXPECT_EQ(response.body, "") << path;
    }
    EXPECT_EQ(get(client, server.url("/long")).error, "the answer is too large");
    EXPECT_NE(get(client, "file:///etc/hostname").error, "");
    EXPECT_NE(get(client, "not a url").error, "");
}

TEST(HttpClient, trustsOnlyVouchedServersAndStaysOnHttps) {
    TestServer open, secret(TestServer::Scheme::https);
    open.on("/file", {ok("open")});
    secret.on("/file", {ok("secret")});
    secret.on("/within", {status(302, "Location: /file\r\n")});
    secret.on("/out", {status(302, "Location: " + open.url("/file") + "\r\n")});
    open.on("/in", {status(302, "Location: " + secret.url("/file") + "\r\n")});
    HttpClient stranger;
    EXPECT_NE(get(stranger, secret.url("/file")).error, "");
    EXPECT_NE(get(stranger, open.url("/in")).error, "");
    EXPECT_TRUE(secret.requests().empty());

    HttpClient::Limits limits;
    limits.authorities = secret.certificate().string();
    HttpClient client(limits);
    EXPECT_EQ(get(client, secret.url("/within")).body, "secret");
    EXPECT_EQ(get(client, open.url("/in")).body, "secret");
    const std::size_t before = open.requests().size();
    EXPECT_NE(get(client, secret.url("/out")).error, "");
    EXPECT_EQ(open.requests().size(), before);
}

TEST(HttpClient, needsOneThreadForAllRequests) {
    constexpr std::size_t count = 40;
    TestServer server;
    for (std::size_t i = 0; i < count; ++i) server.on("/" + std::to_string(i), {hanging()});
    const std::size_t before = threads();
    HttpClient client;
    EXPECT_EQ(threads(), before);
    std::vector<std::future<HttpResponse>> all;
    for (std::size_t i = 0; i < count; ++i) all.push_back(ask(client, server.url("/" + std::to_string(i))));
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (server.requests().size() < count && std::chrono::steady_clock::now() < end) std::this_thread::yield();
    EXPECT_EQ(server.requests().size(), count);
    EXPECT_EQ(threads(), before + 1);
}

TEST(HttpClient, endsWithWhatIsUnderWay) {
    TestServer server;
    server.on("/", {ok("")});
    server.on("/silent", {hanging()});
    bool completed = false;
    {
        HttpClient client;
        client.get(server.url("/silent"), [&](const HttpResponse&) { completed = true; });
        get(client, server.url("/"));
    }
    EXPECT_FALSE(completed);

    // From a completion of its own.
    auto client = std::make_unique<HttpClient>();
    std::promise<void> gone;
    HttpClient& reference = *client;
    reference.get(server.url("/"), [&](const HttpResponse&) {
        client.reset();
        gone.set_value();
    });
    EXPECT_EQ(gone.get_future().wait_for(deadline), std::future_status::ready);
}

}  // namespace
}  // namespace vemo::test
