// SPDX-License-Identifier: MIT
// The commands of the manual page, and the files of the examples for other programs, do what they say.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

const std::string examples = VEMO_TEST_DATA_DIR "/../examples";

// A line of the page as a reader sees it.
std::string shown(std::string line) {
    const std::pair<const char*, const char*> escapes[] = {
        {"\\&", ""},     {"\\-", "-"},    {"\\(aq", "'"},  {"\\(ha", "^"},  {"\\(ti", "~"},          {"\\(ga", "`"},
        {"\\[de]", "°"}, {"\\[Eu]", "€"}, {"\\[Ye]", "¥"}, {"\\[Po]", "£"}, {"\\[u202F]", "\u202f"}, {"\\e", "\\"},
    };
    for (std::size_t at = line.find('\\'); at != line.npos; at = line.find('\\', at)) {
        bool known = false;
        for (const auto& [escape, text] : escapes) {
            if (line.compare(at, std::string(escape).size(), escape) != 0) continue;
            line.replace(at, std::string(escape).size(), text);
            at += std::string(text).size();
            known = true;
            break;
        }
        EXPECT_TRUE(known) << line;
        if (!known) break;
    }
    return line;
}

// As typed in the folder of the examples, with the streams together.
Outcome typed(const std::string& line, const std::string& folder = examples) {
    return runShell("exec 2>&1; cd '" + folder + "'; export XDG_CONFIG_HOME=/nonexistent LC_ALL=C.UTF-8; vemo() { '" +
                    vemoCommand() + "' --locale en_US --language en --timezone UTC \"$@\"; }; " + line);
}

TEST(Manual, examplesGiveWhatThePageSays) {
    std::ifstream page(VEMO_TEST_DATA_DIR "/../docs/vemo.1");
    std::string command, expected;
    int count = 0;
    const auto check = [&] {
        if (command.empty()) return;
        ++count;
        EXPECT_EQ(typed(command).output, expected) << command;
        command.clear();
        expected.clear();
    };
    bool example = false;
    for (std::string line; std::getline(page, line);) {
        if (line == ".EX" || line == ".EE") {
            check();
            example = line == ".EX";
        } else if (example && line.starts_with("$ ")) {
            check();
            command = shown(line.substr(2));
        } else if (example) {
            expected += shown(line) + "\n";
        }
    }
    EXPECT_GE(count, 30);
}

TEST(Manual, isWellFormed) {
    if (runShell("command -v groff >/dev/null 2>&1").status != 0) GTEST_SKIP() << "no groff";
    for (const std::string page : {VEMO_TEST_DATA_DIR "/../docs/vemo.1", VEMO_LANGUAGE_PAGE})
        EXPECT_EQ(runShell("groff -k -man -Tutf8 -ww -z '" + page + "' 2>&1").output, "") << page;
}

// The command as programs call it, under its name.
class ForPrograms : public testing::Test {
protected:
    ForPrograms() {
        std::ofstream(folder + "/vemo") << "#!/bin/sh\nexec '" << vemoCommand()
                                        << "' --locale en_US --language en --timezone UTC \"$@\"\n";
        runShell("chmod +x '" + folder + "/vemo'");
    }
    Outcome run(const std::string& line) const {
        return runShell("exec 2>&1; cd '" + folder + "'; export PATH='" + folder +
                        "':$PATH XDG_CONFIG_HOME=/nonexistent LC_ALL=C.UTF-8; " + line);
    }

    const TemporaryFolder temporary;
    const std::string folder = temporary.path().string();
};

TEST_F(ForPrograms, aScheduledJobKeepsATable) {
    std::ofstream(folder + "/budget.vemo") << "rent: $1,200\ngym: $480 / 12\n";
    const std::string job = "sh '" + examples + "/programs/nightly.sh' budget.vemo table.csv";
    EXPECT_EQ(run(job + " && cat table.csv").output,
              "line,result,number,unit,remark\n\"rent: $1,200\",\"$1,200\",1200,USD,\ngym: $480 / 12,$40,40,USD,\n");
    // A document that is gone leaves the table of yesterday.
    EXPECT_NE(run("rm budget.vemo; " + job).status, 0);
    EXPECT_EQ(run("wc -l <table.csv").output, "3\n");
}

TEST_F(ForPrograms, aMakefileReadsWhatItNeeds) {
    if (runShell("command -v make >/dev/null 2>&1").status != 0) GTEST_SKIP() << "no make";
    std::ofstream(folder + "/size.vemo") << "width = 5 inch in cm\nheight = 2 * width\n";
    const Outcome made = run("make -s -f '" + examples + "/programs/Makefile' page.css && cat page.css");
    EXPECT_EQ(made.output, ".page { width: 12.7cm; height: 25.4cm }\n");
    EXPECT_EQ(made.status, 0);
}

TEST_F(ForPrograms, aScriptGoesOnWithAResult) {
    const std::string script = "sh '" + examples + "/programs/paper.sh' ";
    EXPECT_EQ(run(script + "'20 cm'").output, "20 cm, or 2362 dots of a printer\n");
    EXPECT_EQ(run(script + "'10 kg'").status, 1);
}

TEST_F(ForPrograms, aLauncherShowsAnAnswerOrNothing) {
    const std::string launcher = "sh '" + examples + "/programs/launcher.sh' ";
    EXPECT_EQ(run(launcher + "'5 inch in cm'").output, "12.7 cm\n");
    EXPECT_EQ(run(launcher + "'-5 + 3'").output, "-2\n");
    EXPECT_EQ(run(launcher + "'10 / 0'").output, "division by zero\n");
    EXPECT_EQ(run(launcher + "'firefox'").output, "");
    EXPECT_EQ(run(launcher + "'firefox'").status, 1);
}

}  // namespace
}  // namespace vemo::test
