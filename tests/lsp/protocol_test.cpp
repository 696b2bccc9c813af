// SPDX-License-Identifier: MIT
// How the server behaves towards clients that do well, and those that don't.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "lsp/client.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;

std::string labels(const Json& hints) {
    std::string all;
    for (const Json& hint : hints)
        all += std::to_string(hint["position"]["line"].get<int>()) + ":" + hint["label"].get<std::string>() + ";";
    return all;
}

int errorOf(const Json& answer) {
    return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
}

// Of the next message that tells one.
int nextError(LspClient& client) {
    while (const auto message = client.next(30s))
        if (const int code = errorOf(*message); code != 0) return code;
    return 0;
}

TEST(LspProtocol, keepsTheOrderOfALife) {
    LspClient client;
    EXPECT_EQ(errorOf(client.response(client.ask("textDocument/hover", Json::object()))), -32002);
    client.notify("textDocument/didOpen", Json::object());  // nothing comes of it
    const Json told = client.initialize();
    EXPECT_EQ(told["capabilities"]["positionEncoding"], "utf-16");
    EXPECT_EQ(told["capabilities"]["textDocumentSync"]["change"], 2);
    EXPECT_EQ(errorOf(client.response(client.ask("initialize", Json::object()))), -32600);
    EXPECT_EQ(errorOf(client.response(client.ask("no/such", Json::object()))), -32601);
    EXPECT_EQ(
        errorOf(client.response(client.ask("textDocument/hover", {{"textDocument", documentNamed("file:///x")}}))),
        -32602);
    client.notify("$/nothing", Json::object());
    client.open(someUri, "1 + 1");
    EXPECT_EQ(labels(client.hints(someUri)), "0:2;");
    EXPECT_TRUE(client.request("shutdown", nullptr).is_null());
    EXPECT_EQ(errorOf(client.response(client.ask("textDocument/inlayHint", Json::object()))), -32600);
    client.notify("exit", nullptr);
    EXPECT_EQ(client.status(), 0);
}

TEST(LspProtocol, endsWithoutAGoodbye) {
    LspClient hasty;
    hasty.initialize();
    hasty.notify("exit", nullptr);
    EXPECT_EQ(hasty.status(), 1);
    LspClient gone;
    gone.initialize();
    gone.open(someUri, "1");
    gone.closeInput();
    EXPECT_EQ(gone.status(), 1);
    LspClient silent;
    silent.closeInput();
    EXPECT_EQ(silent.status(), 1);
}

TEST(LspProtocol, endsWithTheProcessThatItWasStartedFor) {
    const pid_t parent = fork();
    if (parent == 0) {
        pause();
        _exit(0);
    }
    LspClient client;
    client.request("initialize", {{"processId", parent}, {"capabilities", Json::object()}});
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    EXPECT_EQ(client.status(), 1);
}

TEST(LspProtocol, goesOnAfterWhatIsNoMessage) {
    LspClient client;
    client.initialize();
    const std::pair<std::string, int> broken[] = {
        {LspClient::framed("{\"jsonrpc\": oops"), -32700},
        {LspClient::framed("\"\xff\xfe\""), -32700},
        {LspClient::framed("[]"), -32600},
        {LspClient::framed("{\"id\":1}"), -32600},
        {LspClient::framed("{\"id\":[1],\"method\":\"shutdown\"}"), -32600},
        {LspClient::framed(std::string(100000, '[')), -32600},
        {"GET / HTTP/1.1\r\n\r\n", -32700},
        {"Content-Length: many\r\n\r\n", -32700},
        {"Content-Length: -1\r\n\r\n", -32700},
        {std::string(100000, 'x') + "\n", -32700},
    };
    for (const auto& [bytes, code] : broken) {
        client.sendBytes(bytes);
        EXPECT_EQ(nextError(client), code) << bytes.substr(0, 40);
        EXPECT_EQ(errorOf(client.response(client.ask("no/such", Json::object()))), -32601) << bytes.substr(0, 40);
    }
    for (const Json& params : {Json(), Json::array(), Json{{"textDocument", {{"uri", 1}}}}}) {
        client.notify("textDocument/didOpen", params);
        client.notify("textDocument/didChange", params);
        EXPECT_EQ(errorOf(client.response(client.ask("textDocument/inlayHint", params))), -32602);
    }
}

std::size_t residentMegabytes(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/statm");
    std::size_t total = 0, resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) >> 20;
}

TEST(LspProtocol, refusesWhatIsTooLargeWithBoundedMemory) {
    LspClient client;
    client.initialize();
    const std::size_t before = residentMegabytes(client.process());
    const std::string megabyte(1 << 20, ' ');
    client.sendBytes("Content-Length: 100000000\r\n\r\n");
    for (int i = 0; i < 95; ++i) client.sendBytes(megabyte);
    client.sendBytes(std::string(100000000 - 95 * megabyte.size(), ' '));
    EXPECT_EQ(nextError(client), -32600);
    // Headers without an end.
    for (int i = 0; i < 20; ++i) client.sendBytes(megabyte);
    client.sendBytes("\n");
    EXPECT_EQ(nextError(client), -32700);
    EXPECT_EQ(errorOf(client.response(client.ask("no/such", Json::object()))), -32601);
    EXPECT_LT(residentMegabytes(client.process()), before + 64);
}

TEST(LspProtocol, cancelsAndRefusesWhatWaits) {
    LspClient client;
    client.initialize();
    std::string text;
    for (int i = 0; i < 20000; ++i) text += std::to_string(i) + " * 3 + 1\n";
    client.open(someUri, text);
    const Json params{{"textDocument", documentNamed(someUri)}, {"range", rangeOf(0, 0, 1, 0)}};
    const int cancelled = client.ask("textDocument/inlayHint", params);
    client.notify("$/cancelRequest", {{"id", cancelled}});
    EXPECT_EQ(errorOf(client.response(cancelled)), -32800);
    const int stale = client.ask("textDocument/inlayHint", params);
    client.change(someUri, Json::array({{{"range", rangeOf(0, 0, 0, 1)}, {"text", "7"}}}), 2);
    const int last = client.ask("textDocument/inlayHint", params);
    EXPECT_EQ(errorOf(client.response(stale)), -32801);
    EXPECT_EQ(labels(client.response(last)["result"]), "0:22;");
    const int closing = client.ask("textDocument/inlayHint", params);
    client.notify("textDocument/didClose", {{"textDocument", documentNamed(someUri)}});
    const int code = errorOf(client.response(closing));
    EXPECT_TRUE(code == 0 || code == -32801) << code;
}

TEST(LspProtocol, countsPositionsAsItSays) {
    for (const bool utf8 : {false, true}) {
        LspClient::Options options;
        options.utf8 = utf8;
        LspClient client(options);
        EXPECT_EQ(client.initialize()["capabilities"]["positionEncoding"], utf8 ? "utf-8" : "utf-16");
        client.open(someUri, "ü😀: 1 + 1");
        EXPECT_EQ(client.hints(someUri)[0]["position"]["character"], utf8 ? 13 : 10);
        client.change(someUri, Json::array({{{"range", rangeOf(0, utf8 ? 8 : 5, 0, utf8 ? 9 : 6)}, {"text", "5"}}}), 2);
        EXPECT_EQ(labels(client.hints(someUri)), "0:6;");
        // Past the end of a line, and of the document.
        client.change(someUri,
                      Json::array({{{"range", rangeOf(0, 999, 0, 9999)}, {"text", " + 2"}},
                                   {{"range", rangeOf(77, 3, 99, 0)}, {"text", "\n3"}}}),
                      3);
        EXPECT_EQ(labels(client.hints(someUri)), "0:8;1:3;");
        EXPECT_EQ(client.request("textDocument/hover", {{"textDocument", documentNamed(someUri)},
                                                        {"position", {{"line", 50}, {"character", 50}}}}),
                  nullptr);
    }
}

TEST(LspProtocol, takesSettingsFromTheClientAtAnyTime) {
    const TemporaryFolder folder;
    const std::string rates = (folder.path() / "rates.json").string();
    std::ofstream(rates) << R"({"rates": {"EUR": 0.5}})";
    LspClient::Options options;
    options.initialization = {{"precision", 4}, {"locale", "de_DE"}, {"language", "de"}};
    options.capabilities["workspace"]["inlayHint"]["refreshSupport"] = true;
    LspClient client(options);
    client.initialize();
    client.open(someUri, "10/3\n6 Fuß in cm\n20 EUR in USD");
    EXPECT_EQ(labels(client.hints(someUri)), "0:3,3333;1:182,88 cm;");
    client.notify("workspace/didChangeConfiguration", {{"settings", {{"vemo", {{"precision", 1}}}}}});
    EXPECT_TRUE(client.nextOf("workspace/inlayHint/refresh", 30s));
    EXPECT_EQ(labels(client.hints(someUri)), "0:3,3;1:182,9 cm;");
    client.notify("workspace/didChangeConfiguration",
                  {{"settings", {{"vemo", {{"locale", "en_US"}, {"rates", rates}}}}}});
    EXPECT_TRUE(client.nextOf("workspace/inlayHint/refresh", 30s));
    EXPECT_EQ(labels(client.hints(someUri)), "0:3.3333;1:182.88 cm;2:40 $;");
    // What is no use is said, and left out.
    client.notify("workspace/didChangeConfiguration", {{"settings", {{"precision", "many"}, {"locale", "en_US"}}}});
    const auto complaint = client.nextOf("window/logMessage", 30s);
    ASSERT_TRUE(complaint);
    EXPECT_THAT((*complaint)["params"]["message"].get<std::string>(), testing::HasSubstr("'precision' takes a number"));
}

TEST(LspProtocol, readsTheFileThatTheCommandReads) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "vemo");
    std::ofstream(folder.path() / "vemo" / "config.toml") << "precision = 5\n";
    LspClient::Options options;
    options.configuration = folder.path().string();
    LspClient client(options);
    client.initialize();
    client.open(someUri, "10/3");
    EXPECT_EQ(labels(client.hints(someUri)), "0:3.33333;");
}

TEST(LspProtocol, asksForTheConfigurationWhereTheClientTellsIt) {
    LspClient::Options options;
    options.capabilities["workspace"]["configuration"] = true;
    LspClient client(options);
    client.initialize();
    const auto question = client.nextOf("workspace/configuration", 30s);
    ASSERT_TRUE(question);
    client.send({{"jsonrpc", "2.0"}, {"id", (*question)["id"]}, {"result", Json::array({{{"precision", 0}}})}});
    client.open(someUri, "10/3");
    EXPECT_EQ(labels(client.hints(someUri)), "0:3;");
}

// The clock goes on from where it was set, so the minute turns soon.
TEST(LspProtocol, asksForARefreshOnceWhenAResultChanges) {
    for (const bool offered : {true, false}) {
        LspClient::Options options;
        options.arguments = {"--now", "2026-11-24T12:59:58.5Z", "--timezone", "UTC", "--locale", "en_US"};
        options.capabilities["workspace"]["inlayHint"]["refreshSupport"] = offered;
        LspClient client(options);
        client.initialize();
        client.open(someUri, "time\n1 + 1");
        client.open("file:///other", "2 + 2");
        client.open("file:///third", "time");
        const std::string before = labels(client.hints(someUri));
        EXPECT_EQ(client.nextOf("workspace/inlayHint/refresh", offered ? 30s : 3s).has_value(), offered);
        EXPECT_NE(labels(client.hints(someUri)), before);
        EXPECT_FALSE(client.nextOf("workspace/inlayHint/refresh", 100ms));
    }
    LspClient::Options options;
    options.arguments[1] = "2026-11-24T12:59:58.5Z";
    options.capabilities["workspace"]["inlayHint"]["refreshSupport"] = true;
    LspClient unconcerned(options);
    unconcerned.initialize();
    unconcerned.open(someUri, "1 + 1");
    unconcerned.hints(someUri);
    EXPECT_FALSE(unconcerned.nextOf("workspace/inlayHint/refresh", 3s));
}

TEST(LspProtocol, readsScriptsAnewWhenTheyChange) {
    const TemporaryFolder folder;
    const auto script = folder.path() / "units.js";
    std::ofstream(script) << "vemo.setVariable('dozen eggs', { double: 12 });";
    LspClient::Options options;
    options.initialization = {{"extensions", folder.path().string()}};
    options.capabilities["workspace"]["inlayHint"]["refreshSupport"] = true;
    options.capabilities["workspace"]["didChangeWatchedFiles"]["dynamicRegistration"] = true;
    LspClient client(options);
    client.initialize();
    const auto watched = client.nextOf("client/registerCapability", 30s);
    ASSERT_TRUE(watched);
    client.open(someUri, "dozen eggs * 2");
    EXPECT_EQ(labels(client.hints(someUri)), "0:24;");
    std::ofstream(script) << "vemo.setVariable('dozen eggs', { double: 13 });";
    client.notify("workspace/didChangeWatchedFiles",
                  {{"changes", Json::array({{{"uri", "file://" + script.string()}, {"type", 2}}})}});
    EXPECT_TRUE(client.nextOf("workspace/inlayHint/refresh", 30s));
    EXPECT_EQ(labels(client.hints(someUri)), "0:26;");
}

TEST(LspProtocol, waitsWithRemarksOnTheLineThatIsTyped) {
    LspClient client;
    client.initialize();
    client.open(someUri, "1\n2");
    client.hints(someUri);
    const auto published = [&](std::chrono::milliseconds atMost) {
        std::string lines;
        const auto told = client.nextOf("textDocument/publishDiagnostics", atMost);
        if (!told) return std::string("none");
        for (const Json& each : (*told)["params"]["diagnostics"])
            lines += std::to_string(each["range"]["start"]["line"].get<int>());
        return lines;
    };
    client.change(someUri, Json::array({{{"range", rangeOf(0, 1, 0, 1)}, {"text", " / 0"}}}), 2);
    client.hints(someUri);
    EXPECT_EQ(published(300ms), "none");
    EXPECT_EQ(published(30s), "0");  // after a second
    client.change(someUri, Json::array({{{"range", rangeOf(1, 1, 1, 1)}, {"text", " / 0"}}}), 3);
    client.hints(someUri);
    EXPECT_EQ(published(300ms), "none");
    client.change(someUri, Json::array({{{"range", rangeOf(0, 0, 0, 1)}, {"text", "7"}}}), 4);
    client.hints(someUri);
    EXPECT_EQ(published(300ms), "1");  // another line is typed now
}

TEST(LspProtocol, givesResultsForAClipboard) {
    LspClient client;
    client.initialize();
    client.open(someUri, "a: 5 inch in cm\n\n3");
    const auto results = [&](const std::string& form) {
        return client.request("workspace/executeCommand",
                              {{"command", "vemo.results"}, {"arguments", {someUri, form}}});
    };
    EXPECT_EQ(results("text"), "a: 5 inch in cm  12.7 cm\n\n3                      3\ntotal            15.7 cm\n");
    EXPECT_EQ(results("csv"), "line,result,number,unit,remark\na: 5 inch in cm,12.7 cm,12.7,cm,\n,,,,\n3,3,3,,\n");
    EXPECT_THAT(results("markdown").get<std::string>(), testing::HasSubstr("12.7 cm |"));
    EXPECT_EQ(errorOf(client.response(client.ask("workspace/executeCommand",
                                                 {{"command", "vemo.results"}, {"arguments", {someUri, "pdf"}}}))),
              -32602);
}

}  // namespace
}  // namespace vemo::test
