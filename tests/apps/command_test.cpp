// SPDX-License-Identifier: MIT
// The command as a person calls it. VEMO_COMMAND names it.

#include "support/command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

// Standard output and error together.
Outcome run(const std::string& arguments, const std::string& input = "") {
    return runShell("printf '%b' '" + input + "' | env -u NO_COLOR XDG_CONFIG_HOME=/nonexistent LC_ALL=C.UTF-8 '" +
                    vemoCommand() + "' --locale en_US --language en " + arguments + " 2>&1");
}

TEST(Command, printsResultsSideBySideAndTheTotal) {
    const Outcome outcome = run("", "2 + 3\\n1/3 // note\\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "2 + 3           5\n1/3 // note  0.33\n-----------------\ntotal        5.33\n");
    EXPECT_EQ(run("-e '5 kg + 300 g' -e 1+1 --short").output, "5 kg + 300 g  5,300 g\n1+1                 2\n");
    EXPECT_EQ(run("--precision 4 -e 1/3").output, "1/3  0.3333\n");
    EXPECT_EQ(run("", "").output, "");
}

TEST(Command, printsOneJsonObject) {
    const auto document = nlohmann::json::parse(run("--json", "5 inch in cm\\n\\n").output);
    const auto& line = document["lines"][0];
    EXPECT_EQ(line["text"], "5 inch in cm");
    EXPECT_EQ(line["regular"], "12.7 cm");
    EXPECT_EQ(line["short"], "12.7 cm");
    EXPECT_EQ(line["runs"][0], (nlohmann::json{{"type", "num"}, {"text", "5"}}));
    EXPECT_EQ(line["runs"][1], (nlohmann::json{{"text", " "}}));
    EXPECT_EQ(line["tokens"], (nlohmann::json{"in", "inch", "in", "cm"}));
    EXPECT_EQ(line["expressions"], (nlohmann::json{"inch in cm"}));
    EXPECT_FALSE(document["lines"][1].contains("regular"));
    EXPECT_EQ(document["grandTotal"]["regular"], "12.7 cm");
    EXPECT_EQ(document["log"], "");
}

TEST(Command, saysWhatItCannotRead) {
    const Outcome notUtf8 = run("-", "12\\0377");
    EXPECT_EQ(notUtf8.status, 2);
    EXPECT_EQ(notUtf8.output, "vemo: standard input: not UTF-8 at byte 2\n");
    EXPECT_EQ(run("-", "\\0355\\0240\\0200").output, "vemo: standard input: not UTF-8 at byte 0\n");
    const Outcome missing = run("/no/such/file");
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.output.find("/no/such/file"), std::string::npos);
    EXPECT_EQ(run("/").output, "vemo: /: cannot be read\n");
    EXPECT_EQ(run("--rates / -e 1").status, 2);
    EXPECT_EQ(run("--precision x").status, 2);
    EXPECT_EQ(run("--now yesterday").status, 2);
    const Outcome zone = run("--timezone Mars/Olympus -e 1");
    EXPECT_EQ(zone.status, 2);
    EXPECT_EQ(zone.output.substr(0, zone.output.find(';')), "vemo: --timezone: 'Mars/Olympus' is not known");
    EXPECT_EQ(run("--no-such-option").status, 2);
    const Outcome help = run("--help");
    EXPECT_EQ(help.status, 0);
    std::istringstream rows(help.output);
    for (std::string row; std::getline(rows, row);) EXPECT_LE(row.size(), 80u) << row;
    EXPECT_EQ(run("--version").output, "vemo 0.1.0\n");
}

TEST(Command, hasTheTimeAndZoneItIsGiven) {
    const std::string options = "--now 2026-11-24T23:30:00Z --timezone Asia/Tokyo ";
    EXPECT_EQ(run(options + "--short -e 'time in UTC' -e yesterday -e 'tomorrow at noon'").output,
              "time in UTC       11/24/26\nyesterday         11/24/26\ntomorrow at noon  11/26/26\n");
}

TEST(Command, readsRates) {
    const TemporaryFolder temporary;
    const std::string file = (temporary.path() / "vemo_rates.json").string();
    std::ofstream(file) << R"({"base": "USD", "rates": {"EUR": 0.9, "GBP": "x", "JPY": -1}})";
    EXPECT_EQ(run("--rates " + file + " -e '$10 in EUR'").output, "$10 in EUR  €9\n");
    EXPECT_EQ(run("--rates " + file + " -q -e '$10 in JPY'").output, "$10 in JPY\n");
    std::ofstream(file) << "{";
    EXPECT_EQ(run("--rates " + file + " -e 1").status, 2);
    EXPECT_EQ(run("--rates /no/such/file -e 1").output, "vemo: /no/such/file: cannot be read\n");
}

TEST(Command, loadsAndChecksScripts) {
    const TemporaryFolder temporary;
    const std::string folder = (temporary.path() / "vemo_command_scripts").string();
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/a.js") << "vemo.setVariable('seven', 7)\nlog('ready')\nnonsense()";
    EXPECT_EQ(run("--extensions " + folder + " -e 'seven + 1'").output,
              "vemo: a.js: ready\nvemo: a.js: Error on line 3: ReferenceError: Can't find variable: nonsense\nseven + "
              "1  8\n");
    const Outcome failed = run("--check-extensions " + folder);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.output,
              "a.js: failed\n    variable seven\n    | ready\n    | Error on line 3: ReferenceError: Can't find "
              "variable: nonsense\n");
    std::ofstream(folder + "/a.js") << "vemo.addUnit({id: 'lap', phrases: 'lap'})";
    EXPECT_EQ(run("--check-extensions " + folder).output, "a.js: loaded\n    unit lap\n");
    EXPECT_EQ(run("--check-extensions " + folder).status, 0);
    // What functions say while lines are calculated, and why one has no result.
    std::ofstream(folder + "/a.js")
        << "vemo.addFunction({id: 'f', phrases: 'twice'}, x => { log('called'); return 2 * x.decimal; })\n"
           "vemo.addFunction({id: 'g', phrases: 'broken'}, () => { nonsense() })";
    const std::string error = "vemo: Error on line 2: ReferenceError: Can't find variable: nonsense\n";
    EXPECT_EQ(run("--extensions " + folder + " -q -e 'broken 1'").output, "broken 1\n" + error);
    EXPECT_NE(run("--json --extensions " + folder + " -e 'twice 1' 2>/dev/null").output.find("\"log\":\"called\\n\""),
              std::string::npos);
    std::filesystem::remove_all(folder);
    EXPECT_EQ(run("--extensions " + folder + " -e 1").status, 2);
}

TEST(Command, colorsOnlyWhenAsked) {
    EXPECT_EQ(run("-e 5").output, "5  5\n");
    EXPECT_NE(run("--color always -e 5").output.find("\033[36m5\033[0m"), std::string::npos);
    EXPECT_EQ(run("-e '\033[31m1'").output.find('\033'),
              std::string::npos);  // nothing reaches the terminal as an escape
}

TEST(Command, tracesBesideTheJson) {
    EXPECT_NE(run("--debug -e 1+1").output.find("=== Debug for '1+1' ==="), std::string::npos);
    EXPECT_NE(run("--debug --json -e 1+1 2>/dev/null").output.find("{"), std::string::npos);
}

}  // namespace
}  // namespace vemo::test
