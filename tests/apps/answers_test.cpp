// SPDX-License-Identifier: MIT
// Answers for other programs: results alone, tables, the exit status, and output that goes nowhere.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

class Answers : public testing::Test {
protected:
    // A line of the shell, in which "vemo" is the command, with what goes to either stream.
    Outcome shell(const std::string& line) const {
        return runShell("exec 2>&1; cd '" + folder.string() +
                        "'; export XDG_CONFIG_HOME=/nonexistent LC_ALL=C.UTF-8; vemo() { '" + vemoCommand() +
                        "' --locale en_US --language en --timezone UTC \"$@\"; }; " + line);
    }
    std::string says(const std::string& line) const { return shell(line).output; }
    int status(const std::string& line) const { return shell(line).status; }
    void write(const std::string& name, const std::string& text) const { std::ofstream(folder / name) << text; }

    const TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path();
};

TEST_F(Answers, calculatesAnArgumentThatNamesNoFile) {
    EXPECT_EQ(says("vemo '5 inch in cm'"), "5 inch in cm  12.7 cm\n");
    EXPECT_EQ(says("vemo 5 inch in cm"), "5 inch in cm  12.7 cm\n");
    EXPECT_EQ(says("vemo '-5 + 3'; vemo -r -e -7; vemo -r '(2) (3)'"), "-5 + 3  -2\n-7\n6\n");
    write("2", "7 * 6\n");
    EXPECT_EQ(says("vemo 2; vemo -r ./2"), "7 * 6  42\n42\n");
    for (const std::string name : {"budgt.vemo", "report-2024.txt", "./12", "'hello there'"}) {
        const Outcome outcome = shell("vemo " + name);
        EXPECT_EQ(outcome.status, 2) << name;
        EXPECT_NE(outcome.output.find(": cannot be read\n"), std::string::npos) << outcome.output;
    }
    EXPECT_EQ(shell("vemo -e 1 2").status, 2);
}

TEST_F(Answers, printsResultsAlone) {
    EXPECT_EQ(says("echo \"$(vemo -r '5 inch in cm')\""), "12.7 cm\n");
    write("a.vemo", "# list\n2 + 3\nwords\n1/3\n");
    EXPECT_EQ(says("vemo -r a.vemo"), "5\n0.33\n");
    EXPECT_EQ(says("vemo -r 10/0"), "vemo:1:1: division by zero\n");
    EXPECT_EQ(says("vemo -q -r -e 10/0 -e 1+1; echo $?"), "2\n1\n");
    EXPECT_EQ(status("vemo 10/0"), 1);
    EXPECT_EQ(status("vemo -e 10/0"), 0);
}

TEST_F(Answers, writesPlainNumbers) {
    EXPECT_EQ(says("vemo -r --plain --locale de_DE -e '-1234567,5' -e '12 km' -e '20%'"), "-1234567.5\n12 km\n20 %\n");
    EXPECT_EQ(says("vemo -r --plain -e 1/3 -e 2/3 -e 5/4"),
              "0.3333333333333333333333333333333333\n0.6666666666666666666666666666666667\n1.25\n");
    EXPECT_EQ(says("vemo -r --plain --precision 3 -e 2/3"), "0.667\n");
    EXPECT_EQ(says("vemo -q -r --plain -e '$1,200' -e '0xff'"), "1200 USD\n255\n");
    EXPECT_EQ(says("vemo -r --plain --now 2026-11-24T12:00:00Z -e tomorrow -e 'time in Tokyo'"),
              "2026-11-25T12:00:00Z\n2026-11-24T12:00:00Z\n");
}

TEST_F(Answers, labelsTheTotalOfADocument) {
    write("a.vemo", "5\n10/0\n6\n");
    EXPECT_NE(says("vemo -q a.vemo").find("\ntotal of some lines  11\n"), std::string::npos);
    write("none.vemo", "10/0\nln 0\n");
    EXPECT_NE(says("vemo -q none.vemo").find("\nno total: a line has no result\n"), std::string::npos);
    EXPECT_EQ(says("printf '5\\n6\\n' | vemo"), "5       5\n6       6\n---------\ntotal  11\n");
    EXPECT_EQ(says("vemo -e 5 -e 6"), "5  5\n6  6\n");
    write("dates.vemo", "5 kg\ntoday\n3 kg\n");
    EXPECT_NE(says("vemo -q dates.vemo").find("total of some lines"), std::string::npos);
}

// Another reader of such files takes every cell as it was meant.
TEST_F(Answers, writesTablesThatOthersRead) {
    write("a.vemo", "say \"12\", then 3\n=5 | 1\n\t<b>2</b> & 3\n-5\n1234.5\n");
    const std::string reader =
        " | python3 -c 'import csv, json, sys; print(json.dumps(list(csv.reader(sys.stdin, "
        "**json.loads(sys.argv[1])))))' ";
    const auto csv = nlohmann::json::parse(says("vemo -q --format csv a.vemo" + reader + "'{}'"));
    EXPECT_EQ(csv[0], (nlohmann::json{"line", "result", "number", "unit", "remark"}));
    ASSERT_EQ(csv.size(), 6u);
    for (const auto& row : csv) EXPECT_EQ(row.size(), 5u) << row;
    EXPECT_EQ(csv[1][0], "say \"12\", then 3");
    EXPECT_EQ(csv[2][0], "'=5 | 1");
    EXPECT_EQ(csv[4][0], "-5");
    EXPECT_EQ(csv[5][1], "1,234.5");
    EXPECT_EQ(csv[5][2], "1234.5");
    const auto tsv =
        nlohmann::json::parse(says("vemo -q --format tsv a.vemo" + reader + R"('{"delimiter": "\t", "quoting": 3}')"));
    EXPECT_EQ(tsv[1][0], csv[1][0]);
    EXPECT_EQ(tsv[2][0], csv[2][0]);
    const std::string html = says("vemo --format html a.vemo");
    EXPECT_NE(html.find("&lt;b&gt;2&lt;/b&gt; &amp; 3"), std::string::npos);
    EXPECT_EQ(html.find("<b>"), std::string::npos);
    EXPECT_EQ(html.find("http"), std::string::npos);
    EXPECT_NE(says("vemo --format markdown a.vemo").find("| =5 \\| 1 |"), std::string::npos);
    EXPECT_EQ(nlohmann::json::parse(says("vemo --format json a.vemo")),
              nlohmann::json::parse(says("vemo --json a.vemo")));
}

TEST_F(Answers, cutsNoLineForItsWidth) {
    write("a.vemo", "// " + std::string(300, 'x') + "\n2 + 3\n\"" + std::string(150, 'y') + "\" 7\n");
    const std::string output = says("vemo a.vemo");
    EXPECT_NE(output.find("\n2 + 3   5\n"), std::string::npos) << output;
    EXPECT_NE(output.find("y\" 7  7\n"), std::string::npos) << output;
}

TEST_F(Answers, tellsWhenOutputCannotBeWritten) {
    for (const std::string arguments : {"-e 1", "--json -e 1", "--help", "--version", "-r 1"}) {
        const Outcome full = shell("vemo " + arguments + " >/dev/full");
        EXPECT_EQ(full.status, 1) << arguments;
        EXPECT_NE(full.output.find("vemo: standard output: No space left"), std::string::npos) << arguments;
    }
    EXPECT_EQ(status("vemo -e 1 >&-"), 1);
    EXPECT_EQ(says("yes '1 + 1' | head -20000 | vemo | head -1"), "1 + 1       2\n");
    EXPECT_EQ(says("trap '' PIPE; yes '1 + 1' 2>/dev/null | head -20000 | vemo | head -1"), "1 + 1       2\n");
}

TEST_F(Answers, keepsControlCharactersFromTheTerminal) {
    const auto controls = [](const std::string& text) {
        for (const char* control : {"\033", "\a", "\x7f", "\u009b", "\u202e", "\u2066", "\u200f", "\r"})
            if (text.find(control) != text.npos) return true;
        return false;
    };
    write("a.vemo", "\ufeff5 + 5 // \033[31m\a\u009b2J\u202e\u2066\u200f\x7f\r\n");
    for (const std::string format : {"table", "csv", "tsv", "markdown", "html", "json"})
        EXPECT_FALSE(controls(says("vemo --debug --format " + format + " a.vemo"))) << format;
    EXPECT_NE(says("vemo a.vemo").find("5 + 5 // "), std::string::npos);
    EXPECT_EQ(says("vemo a.vemo").find("\ufeff"), std::string::npos);
    EXPECT_EQ(says("vemo --json a.vemo").find("\ufeff"), std::string::npos);
    EXPECT_FALSE(controls(says("vemo \"$(printf './\\033[31m\\302\\233')\"")));
    EXPECT_FALSE(controls(says("vemo \"$(printf -- '--\\033[31m')\"")));
    EXPECT_FALSE(controls(says("vemo --locale \"$(printf '\\033[31m')\" 1")));
    std::filesystem::create_directory(folder / "scripts");
    write("scripts/\033[1m.js", "log('\\u001b[31m\\u202e'); vemo.setVariable('\\u001b[31mx', 1); nonsense('\\u009b')");
    EXPECT_FALSE(controls(says("vemo --extensions scripts 1")));
    EXPECT_FALSE(controls(says("vemo --check-extensions scripts")));
    write("rates.json", R"({"rates": "\u001b[31m"} )"
                        "\033[31m");
    EXPECT_FALSE(controls(says("vemo --rates rates.json 1")));
}

TEST_F(Answers, refusesWhatIsNotKnownWithTheNearest) {
    const std::pair<const char*, const char*> cases[] = {
        {"--locle de 1", "--locale"},         {"--locale de_ED 1", "'de_ED'"},
        {"--language fp 1", "nearest is fr"}, {"--timezone Europe/Berln 1", "Europe/Berlin"},
        {"--format cvs 1", "nearest is csv"}, {"--color alway 1", "nearest is always"},
        {"--places nowhere 1", "is no URL"},  {"--watch", "needs a FILE"},
    };
    for (const auto& [arguments, said] : cases) {
        const Outcome outcome = shell(std::string("vemo ") + arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_NE(outcome.output.find(said), std::string::npos) << outcome.output;
    }
    EXPECT_EQ(
        status("for l in de_AT.UTF-8 en_DE zh-Hant-TW es_419 C POSIX de_DE@euro; do vemo --locale $l 1 || exit; done"),
        0);
}

TEST_F(Answers, showsAFileAnewWhenItIsSaved) {
    write("a.vemo", "1 + 1\n");
    const Outcome outcome = shell(
        "'" + vemoCommand() +
        "' --watch -q -r a.vemo >out & pid=$!\n"
        "until_there() { for i in $(seq 300); do grep -qs \"$1\" out && return; sleep 0.1; done; echo \"no $1\"; }\n"
        "until_there 2; echo '10/0' >a.vemo; sleep 0.3; echo '3 + 4' >new; mv new a.vemo; until_there 7; kill $pid; "
        "cat out");
    EXPECT_EQ(outcome.output.substr(0, 3), "2\n\n") << outcome.output;
    EXPECT_NE(outcome.output.find("7\n"), std::string::npos) << outcome.output;
    EXPECT_EQ(status("vemo --watch missing.vemo"), 2);
}

}  // namespace
}  // namespace vemo::test
