// SPDX-License-Identifier: MIT
// The command with a configuration file, and with sources of rates and places. VEMO_COMMAND names it.

#include <gtest/gtest.h>

#include <fstream>

#include "support/command.h"
#include "support/temporary_folder.h"
#include "support/test_server.h"

namespace vemo::test {
namespace {

class Configured : public testing::Test {
protected:
    Configured() { std::filesystem::create_directories(folder.path() / "vemo"); }

    void configure(const std::string& toml) { write("config.toml", toml); }
    void write(const std::string& name, const std::string& text) {
        std::ofstream(folder.path() / "vemo" / name) << text;
    }
    std::string path(const std::string& name) const { return (folder.path() / "vemo" / name).string(); }

    // What the command prints, standard error included, and its status when that is not 0.
    std::string run(const std::string& arguments) {
        const Outcome outcome =
            runShell("env -u NO_COLOR LC_ALL=C.UTF-8 LANG=en_US.UTF-8 XDG_CONFIG_HOME=" + folder.path().string() +
                     " XDG_CACHE_HOME=" + (folder.path() / "cache").string() + " '" + vemoCommand() +
                     "' --now 2026-11-24T13:00:00Z " + arguments + " 2>&1 </dev/null");
        return outcome.status == 0 ? outcome.output : outcome.output + "status " + std::to_string(outcome.status);
    }

    TemporaryFolder folder;
};

TEST_F(Configured, takesWhatTheCommandLineLeavesOpen) {
    configure(R"(locale = "de_DE"
language = "en"
timezone = "Asia/Tokyo"
precision = 4
color = "always"
)");
    EXPECT_EQ(run("--color never -e 1/3"), "1/3  0,3333\n");
    EXPECT_EQ(run("--color never --precision 1 --locale en_US -e 1/3"), "1/3  0.3\n");
    EXPECT_NE(run("-e 5").find("\033["), std::string::npos);
    EXPECT_EQ(run("--color never --locale en_GB -e time"), "time  22:00\n");
    configure("");
    EXPECT_EQ(run("--locale en_US --language en -e 1/3"), "1/3  0.33\n");
}

TEST_F(Configured, saysWhereItIsWrong) {
    const std::string file = "vemo: " + path("config.toml");
    const auto problem = [&](const std::string& toml) {
        configure(toml);
        const std::string output = run("-e 1");
        EXPECT_TRUE(output.ends_with("\nstatus 2")) << output;
        EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
        EXPECT_TRUE(output.starts_with(file)) << output;
        return output.substr(file.size(), output.size() - file.size() - std::string("\nstatus 2").size());
    };
    EXPECT_EQ(problem("locale = \"de_DE\"\ncolour = \"auto\"\n"), ":2: there is no key 'colour'; the nearest is color");
    EXPECT_EQ(problem("\n\nprecision = \"4\"\n"), ":3: 'precision' takes a number from 0 to 999");
    EXPECT_EQ(problem("precision = -1"), ":1: 'precision' takes a number from 0 to 999");
    EXPECT_EQ(problem("locale = 5"), ":1: 'locale' takes a text");
    EXPECT_EQ(problem("color = \"blue\""), ":1: 'color' takes auto, always or never");
    EXPECT_EQ(problem("timezone = \"Middle/Earth\""), ":1: 'timezone' takes a time zone such as Europe/Berlin");
    EXPECT_EQ(problem("[rates]\nurl = \"x\""), ":1: 'rates' takes a text");
    EXPECT_TRUE(problem("locale = \"en_US\"\nlanguage = \n").starts_with(":2: "));
    EXPECT_TRUE(problem("locale = \"en_US\"\nlocale = \"de_DE\"\n").starts_with(":2: "));
    EXPECT_TRUE(problem("\xff\xfe").starts_with(":1: "));
    EXPECT_EQ(run("--version").substr(0, 5), "vemo ");  // help is there all the same
}

TEST_F(Configured, findsRatesBesideIt) {
    write("rates.json", R"({"rates": {"EUR": 0.5}})");
    write("coins.json", R"({"rates": {"QQQ": 0.25}})");
    configure("rates = \"rates.json\"\ncoins = \"coins.json\"\nlocale = \"en_US\"\nlanguage = \"en\"\n");
    EXPECT_EQ(run("-e '$10 in EUR'"), "$10 in EUR  \u20ac5\n");
    EXPECT_EQ(run("-e '1 QQQ in USD'"), "1 QQQ in USD  $4\n");
    write("other.json", R"({"rates": {"EUR": 0.8}})");
    EXPECT_EQ(run("--rates " + path("other.json") + " -e '$10 in EUR'"), "$10 in EUR  \u20ac8\n");
    write("coins.json", "{}");
    EXPECT_EQ(run("-e 1"), "vemo: " + path("coins.json") + ": has no object \"rates\"\nstatus 2");
}

TEST_F(Configured, fetchesFromUrlsAndKeepsACopy) {
    std::string configuration = "locale = \"en_US\"\nlanguage = \"en\"\ntimezone = \"UTC\"\n";
    {
        TestServer server;
        server.on("/rates/currency.json", {ok(R"({"rates": {"EUR": 0.5}})")});
        server.on("/coins", {ok(R"({"rates": {"QQQ": 0.25}})")});
        server.on("/timezone?q=Middle%20Earth", {ok("Asia/Tokyo\n")});
        configuration += "rates = \"" + server.url("/rates/currency.json") + "\"\ncoins = \"" + server.url("/coins") +
                         "\"\nplaces = \"" + server.url("/timezone") + "\"\n";
        configure(configuration);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(run("-e '$10 in EUR'"), "$10 in EUR  \u20ac5\n");
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1900));  // waits for no place
        EXPECT_EQ(run("-e '1 QQQ in EUR'"), "1 QQQ in EUR  \u20ac2\n");
        EXPECT_EQ(run("--short -e 'time in Middle Earth'").substr(0, 22), "time in Middle Earth  ");
        EXPECT_NE(run("-e 'time in Middle Earth'").find("10:00"), std::string::npos);
    }
    // The server is gone; what it said is not.
    EXPECT_TRUE(run("-e '$10 in EUR'").starts_with("$10 in EUR  \u20ac5\nvemo: no rates came from "));
}

}  // namespace
}  // namespace vemo::test
