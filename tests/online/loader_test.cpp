// SPDX-License-Identifier: MIT
// Files fetched from a server on the loopback interface, and what happens when that goes wrong.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <random>

#include "online/periodic_file_loader.h"
#include "online/rates_file.h"
#include "platform/file_io.h"
#include "support/temporary_folder.h"
#include "support/test_server.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr auto deadline = 60s;
const std::string path = "/rates/currency.json";
const std::string good = R"({"rates":{"EUR":0.5}})";
const std::string better = R"({"rates":{"EUR":0.6}})";
// gzip of `good`
const std::string zipped(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\xab\x56\x2a\x4a\x2c\x49\x2d\x56\xb2\xaa\x56\x72\x0d\x0d\x52"
    "\xb2\x32\xd0\x33\xad\xad\x05\x00\x90\x9b\xaa\xe7\x15\x00\x00\x00",
    41);

std::string problemOf(std::string_view bytes) {
    const auto parsed = parseRates(bytes);
    return parsed ? "" : parsed.failure().message;
}

HttpClient::Limits shortLimits() {
    HttpClient::Limits limits;
    limits.total = 500ms;
    limits.body = 1 << 20;
    return limits;
}

class Loader : public testing::Test {
protected:
    void start(const std::string& url) {
        loader->start(
            url,
            [this](const std::string* bytes) {
                handled.push_back(bytes ? *bytes : "nothing");
                loop->stop();
            },
            3600s);
    }

    // Runs the loop until a message of the log ends the download.
    void awaitEnd() {
        while (!ended && std::chrono::steady_clock::now() < end) loop->runFor(10ms);
        ended = false;
    }
    void awaitHandled(std::size_t count) {
        while (handled.size() < count && std::chrono::steady_clock::now() < end) loop->runFor(10ms);
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.push_back(entry.path().filename().string());
        return names;
    }
    std::string copy(const std::string& url) const {
        return readFileAtMost(PeriodicFileLoader::cacheFile(folder.path(), url), 1 << 20).value_or("none");
    }

    TemporaryFolder folder;
    TestServer server;
    std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    std::vector<std::string> handled;
    std::vector<std::string> failures;
    bool ended = false;
    std::chrono::steady_clock::time_point end = std::chrono::steady_clock::now() + deadline;
    SchedulerThreads scheduler{loop};
    HttpClient client{shortLimits()};
    std::shared_ptr<PeriodicFileLoader> loader = std::make_shared<PeriodicFileLoader>(
        scheduler, client, folder.path(), problemOf, [this](std::string_view message) {
            if (message.starts_with("Failed")) failures.emplace_back(message);
            if (message.starts_with("Failed") || message.starts_with("Download finished")) ended = true;
        });
};

TEST_F(Loader, namesTheCopyForItsUrl) {
    // printf 'https://rates.example.com/rates/currency.json' | sha1sum
    EXPECT_EQ(PeriodicFileLoader::cacheFile("/c", "https://rates.example.com/rates/currency.json"),
              "/c/9b5acef10913f282315e4fc28c7ef232122a1f6b-currency.json");
    EXPECT_EQ(PeriodicFileLoader::cacheFile("/c", "https://a/rates?x=/y").filename().string().substr(40), "-rates");
}

TEST_F(Loader, handsOnTheCopyAndThenTheDownload) {
    server.on(path, {ok(good), ok(better)});
    start(server.url(path));
    awaitHandled(2);
    // The first reading may come so late that it finds the download.
    EXPECT_THAT(handled, ElementsAre(AnyOf("nothing", good), good));
    handled.clear();
    start(server.url(path));
    awaitHandled(2);
    EXPECT_THAT(handled, ElementsAre(AnyOf(good, better), better));
    EXPECT_THAT(files(), SizeIs(1));
    // Another URL with the same file name has a copy of its own.
    TestServer other;
    EXPECT_NE(PeriodicFileLoader::cacheFile("/c", other.url(path)),
              PeriodicFileLoader::cacheFile("/c", server.url(path)));
}

TEST_F(Loader, understandsCompressedAndSlowAnswers) {
    server.on(path, {ok(zipped, "Content-Encoding: gzip\r\n")});
    start(server.url(path));
    awaitHandled(2);
    EXPECT_EQ(handled.back(), good);
    Reply slow = ok(better);
    slow.chunk = 20;
    slow.pause = 1ms;
    server.on(path, {slow});
    loader->download();
    awaitHandled(3);
    EXPECT_EQ(handled.back(), better);
}

TEST_F(Loader, keepsTheCopyWhateverGoesWrong) {
    const std::string url = server.url(path);
    server.on(path, {ok(good)});
    start(url);
    awaitEnd();
    awaitHandled(2);
    Reply cut = ok(better);
    cut.bytes.resize(cut.bytes.size() - 5);
    Reply tooShort = {"HTTP/1.1 200 OK\r\nContent-Length: 10\r\nConnection: close\r\n\r\n" + better};
    Reply hanging = ok(better);
    hanging.bytes.resize(hanging.bytes.size() - 5);
    hanging.hangs = true;
    Reply endless{"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n{\"rates\":{" + std::string(3 << 20, ' ')};
    Reply noBody = {"HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"};
    const std::vector<std::pair<const char*, Reply>> faults{
        {"busy", status(503)},
        {"no content", status(204)},
        {"not found", status(404)},
        {"a loop", status(302, "Location: " + path + "\r\n")},
        {"another protocol", status(302, "Location: file:///etc/hostname\r\n")},
        {"cut off", cut},
        {"shorter than it is", tooShort},
        {"stalled", hanging},
        {"too large", endless},
        {"empty", noBody},
        {"garbage", ok("garbage")},
        {"other JSON", ok("{}")},
        {"not HTTP", {"garbage\r\n\r\n"}},
        {"broken compression", ok("garbage", "Content-Encoding: gzip\r\n")},
    };
    for (const auto& [what, reply] : faults) {
        SCOPED_TRACE(what);
        server.on(path, {reply});
        handled.clear();
        failures.clear();
        loader->download();
        awaitEnd();
        loop->poll();
        EXPECT_THAT(failures, ElementsAre(HasSubstr("Failed to download " + url + ", error:")));
        EXPECT_TRUE(handled.empty());
        EXPECT_EQ(copy(url), good);
        EXPECT_THAT(files(), SizeIs(1));
    }
    // Then all is well again.
    server.on(path, {ok(better)});
    loader->download();
    awaitHandled(1);
    EXPECT_EQ(copy(url), better);
}

TEST_F(Loader, survivesAServerThatIsGoneAndAFolderThatCannotBeWritten) {
    std::string url;
    {
        TestServer gone;
        url = gone.url(path);
    }
    start(url);
    awaitEnd();
    EXPECT_THAT(failures, SizeIs(1));
    failures.clear();
    std::ofstream(folder.path() / "file") << "x";
    std::string received;
    auto blocked = std::make_shared<PeriodicFileLoader>(scheduler, client, folder.path() / "file", problemOf,
                                                        [this](std::string_view message) {
                                                            if (message.starts_with("The copy"))
                                                                failures.emplace_back(message);
                                                        });
    server.on(path, {ok(good)});
    blocked->start(
        server.url(path), [&](const std::string* bytes) { received = bytes ? *bytes : received; }, 3600s);
    while (received.empty() && std::chrono::steady_clock::now() < end) loop->runFor(10ms);
    EXPECT_THAT(failures, ElementsAre(HasSubstr("The copy can't be written")));
    EXPECT_EQ(received, good);  // used all the same
    received.clear();
    auto homeless = std::make_shared<PeriodicFileLoader>(scheduler, client, "", problemOf, nullptr);
    homeless->start(
        server.url(path), [&](const std::string* bytes) { received = bytes ? *bytes : received; }, 3600s);
    while (received.empty() && std::chrono::steady_clock::now() < end) loop->runFor(10ms);
    EXPECT_EQ(received, good);
}

TEST_F(Loader, isSilentOnceItIsStopped) {
    server.on(path, {ok(good)});
    start(server.url(path));
    loader->stop();
    loop->runFor(50ms);
    loader->download();
    loader->loadCached();
    loop->runFor(50ms);
    EXPECT_TRUE(handled.empty());
}

// A redirect from HTTPS would need a certificate; the rule is the client's own, whatever the server.
TEST_F(Loader, followsARedirectToAnotherAddress) {
    TestServer other;
    other.on("/there", {ok(good)});
    server.on(path, {status(301, "Location: " + other.url("/there") + "\r\n")});
    start(server.url(path));
    awaitHandled(2);
    EXPECT_EQ(handled.back(), good);
}

TEST(FileReplacement, removesWhatKilledProcessesLeft) {
    TemporaryFolder folder;
    const auto file = folder.path() / "rates.json";
    const auto left = folder.path() / "rates.json.part-Ab12Cd";
    const auto held = folder.path() / "rates.json.part-Xy12Zz";
    for (const auto& each : {file, left, held, folder.path() / "rates.json.part-of-it"}) std::ofstream(each) << "x";
    const int writer = open(held.c_str(), O_RDWR);
    ASSERT_EQ(flock(writer, LOCK_EX), 0);
    removeLeftovers(file);
    EXPECT_FALSE(std::filesystem::exists(left));
    for (const auto& each : {file, held, folder.path() / "rates.json.part-of-it"})
        EXPECT_TRUE(std::filesystem::exists(each));
    close(writer);
    removeLeftovers(file);
    EXPECT_FALSE(std::filesystem::exists(held));
}

// A process that fetches without end is killed at random moments; what it leaves must always be one of the files.
TEST(FileReplacement, leavesAWholeFileWheneverTheProcessIsKilled) {
    TemporaryFolder folder;
    TestServer server;
    const std::string padding(200'000, ' ');
    const std::string first = R"({"rates":{"EUR":0.5}})" + padding;
    const std::string second = R"({"rates":{"EUR":0.6}})" + padding;
    server.alternate(path, {ok(first), ok(second)});
    const auto file = PeriodicFileLoader::cacheFile(folder.path(), server.url(path));
    std::mt19937 random(7);
    constexpr int kills = 100;
    for (int i = 0; i < kills; ++i) {
        int dots[2];
        ASSERT_EQ(pipe2(dots, O_CLOEXEC), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            dup2(dots[1], STDOUT_FILENO);
            execl(VEMO_FETCH_PROGRAM, "fetch", server.url(path).c_str(), folder.path().c_str(), nullptr);
            _exit(127);
        }
        close(dots[1]);
        // Once it is in full swing, or has failed.
        char dot = 0;
        const bool started = read(dots[0], &dot, 1) == 1;
        usleep(std::uniform_int_distribution<useconds_t>(0, 30'000)(random));
        kill(child, SIGKILL);
        int state = 0;
        waitpid(child, &state, 0);
        close(dots[0]);
        ASSERT_TRUE(started);
        const auto bytes = readFileAtMost(file, 1 << 20);
        ASSERT_TRUE(bytes && (*bytes == first || *bytes == second)) << "after kill " << i;
    }
    EXPECT_GT(server.requests().size(), 2u * kills);
}

}  // namespace
}  // namespace vemo::test
