// SPDX-License-Identifier: MIT
// The command with servers that answer, fail or are slow.

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>

#include "support/command.h"
#include "support/temporary_folder.h"
#include "support/test_server.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;

class OnlineCommand : public testing::Test {
protected:
    Outcome run(const std::string& arguments, const std::string& settings = "") const {
        return runShell("exec 2>&1; " + settings + " XDG_CONFIG_HOME=/nonexistent XDG_CACHE_HOME='" +
                        temporary.path().string() + "' LC_ALL=C.UTF-8 no_proxy=127.0.0.1,localhost '" + vemoCommand() +
                        "' --locale en_US --language en " + arguments);
    }

    const TemporaryFolder temporary;
    TestServer server;
    const std::string rates = "--rates " + server.url("/rates.json") + " ";
};

TEST_F(OnlineCommand, usesTheCopyWhenNothingIsToBeFetched) {
    server.on("/rates.json", {ok(R"({"rates":{"EUR":0.5}})")});
    EXPECT_EQ(run(rates + "--offline -q -r '$10 in EUR'").status, 1);
    EXPECT_TRUE(server.requests().empty());
    EXPECT_EQ(run(rates + "-r '$10 in EUR'").output, "€5\n");
    EXPECT_EQ(server.requests().size(), 1u);
    EXPECT_EQ(run(rates + "--offline -r '$10 in EUR'").output, "€5\n");
    EXPECT_EQ(server.requests().size(), 1u);
}

TEST_F(OnlineCommand, tellsWhatFailed) {
    server.on("/rates.json", {status(500)});
    const std::string said = run(rates + "-r 1+1").output;
    EXPECT_NE(said.find("2\nvemo: no rates came from " + server.url("/rates.json") + ": HTTP status 500\n"), said.npos)
        << said;
    const auto document = nlohmann::json::parse(run(rates + "--json 1+1 2>/dev/null").output);
    ASSERT_EQ(document["problems"].size(), 1u);
    EXPECT_NE(document["problems"][0].get<std::string>().find("HTTP status 500"), std::string::npos);
    EXPECT_FALSE(nlohmann::json::parse(run("--json 1+1").output).contains("problems"));
    EXPECT_NE(run("-e '$10 in EUR'").output.find("vemo: money needs exchange rates"), std::string::npos);
    server.on("/zone?q=Atlantis", {status(500)});
    const std::string place = run("--places " + server.url("/zone") + " 'time in Atlantis'").output;
    EXPECT_NE(place.find("vemo: the service for places answered with status 500\n"), place.npos) << place;
    server.on("/rates.json", {ok(R"({"rates":{"EUR":0.5}})")});
    std::ofstream(temporary.path() / "file") << "in the way";
    const std::string kept =
        runShell("exec 2>&1; XDG_CONFIG_HOME=/nonexistent XDG_CACHE_HOME='" + (temporary.path() / "file").string() +
                 "' LC_ALL=C.UTF-8 '" + vemoCommand() + "' --locale en_US " + rates + "-r '$10 in EUR'")
            .output;
    EXPECT_NE(kept.find("€5\nvemo: no copy can be kept of "), kept.npos) << kept;
}

// The call does not wait for the server, and yet the next one has its rates.
TEST_F(OnlineCommand, leavesASlowServersRatesForTheNextCall) {
    Reply slow = ok(R"({"rates":{"EUR":0.5}})");
    slow.chunk = 1;
    slow.pause = 100ms;
    server.on("/rates.json", {slow});
    const Outcome hurried = run(rates + "-r '$10 in EUR'", "VEMO_WAIT=0");
    EXPECT_EQ(hurried.status, 1);
    EXPECT_NE(hurried.output.find("no rates came in time"), std::string::npos) << hurried.output;
    const Outcome late = run(rates + "-q -r '$10 in EUR'");
    EXPECT_EQ(late.status, 1);  // after five seconds
    for (int i = 0; i < 3000 && run(rates + "--offline -q -r '$10 in EUR'").output != "€5\n"; ++i) {
    }
    EXPECT_EQ(run(rates + "--offline -q -r '$10 in EUR'").output, "€5\n");
}

}  // namespace
}  // namespace vemo::test
