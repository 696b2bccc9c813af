// SPDX-License-Identifier: MIT
// The prompt as a person meets it, on a terminal. VEMO_COMMAND names the command.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "support/command.h"
#include "support/temporary_folder.h"
#include "support/terminal.h"

namespace vemo::test {
namespace {

// On the screen, at last.
#define ASSERT_BECOMES(prompt, wanted) \
    ASSERT_TRUE((prompt).becomes([&](const Screen& screen) { return wanted; })) << (prompt).screen().text()
#define ASSERT_SHOWN(prompt, wanted) ASSERT_BECOMES(prompt, screen.text().find(wanted) != std::string::npos)

constexpr const char* up = "\033[A";
constexpr const char* left = "\033[D";

class PromptTest : public testing::Test {
protected:
    struct Look {
        std::string terminal = "xterm", color = "never";
        std::size_t rows = 60, columns = 100;
    };

    // With more arguments.
    Terminal::Start start(const std::vector<std::string>& arguments, const Look& look) const {
        Terminal::Start start;
        start.arguments = {vemoCommand(), "--locale", "en_US", "--language", "en", "--color", look.color};
        start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
        start.environment = {{"HOME", folder.string()},
                             {"XDG_CONFIG_HOME", (folder / "config").string()},
                             {"XDG_STATE_HOME", (folder / "state").string()},
                             {"TERM", look.terminal},
                             {"LC_ALL", "C.UTF-8"}};
        start.folder = folder.string();
        start.rows = look.rows;
        start.columns = look.columns;
        return start;
    }
    Terminal::Start start(const std::vector<std::string>& arguments = {}) const { return start(arguments, Look()); }

    void write(const std::string& name, const std::string& text) const { std::ofstream(folder / name) << text; }
    std::string contents(const std::string& name) const {
        std::ifstream file(folder / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path();
};

TEST_F(PromptTest, calculatesLinesAsOneDocument) {
    Terminal prompt(start());
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.type("hourly rate = $40\r12 * hourly rate\r");
    ASSERT_SHOWN(prompt, "= $40\n");
    ASSERT_SHOWN(prompt, "= $480\n");
    prompt.type("5 kg + 3 m\r12 * 2\r");
    ASSERT_SHOWN(prompt, "“kg” and “m” do not convert into each other");
    prompt.type("\r5 °C in °F // 気温\r");
    ASSERT_SHOWN(prompt, "= 41 °F\n");
    prompt.type("sum\r# more\r7\rsum\r");
    ASSERT_SHOWN(prompt, "sum\n= 41 °F\n");  // of the lines after the empty one
    ASSERT_SHOWN(prompt, "sum\n= 7\n");      // of those after the header
    prompt.type(":nonsense\r:save notes.txt\r");
    ASSERT_SHOWN(prompt, "there is no :nonsense");
    ASSERT_SHOWN(prompt, "saved notes.txt\n");
    prompt.type("quit\r");
    EXPECT_EQ(prompt.ends(), 0);
    // Neither the line that is an error nor the commands.
    EXPECT_EQ(contents("notes.txt"),
              "hourly rate = $40\n12 * hourly rate\n12 * 2\n\n5 °C in °F // 気温\nsum\n# more\n7\nsum\n");
}

TEST_F(PromptTest, answersWhileALineIsTyped) {
    Terminal prompt(start({}, {"xterm", "always", 24, 100}));
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.type("rate = 40\r3 rate");
    ASSERT_BECOMES(prompt, screen.row(3) == "> 3 rate" && screen.row(4) == "= 120" && screen.isDim(4));
    EXPECT_EQ(prompt.screen().cursorRow(), 3u);
    EXPECT_EQ(prompt.screen().cursorColumn(), 8u);
    // At no moment it is gone.
    bool gone = false;
    prompt.watch([&](const Screen& screen) { gone = gone || !screen.row(4).starts_with("= 1"); });
    prompt.type(" in km");
    ASSERT_BECOMES(prompt, screen.row(3) == "> 3 rate in km" && screen.row(4) == "= 120 km");
    EXPECT_FALSE(gone);
    prompt.watch({});
    prompt.type("\x15(");
    ASSERT_BECOMES(prompt, screen.row(3) == "> (" && screen.row(4).empty());
    // Why there is none, and what was left out, once nobody types.
    prompt.type(
        "\x15"
        "10 / 0");
    ASSERT_BECOMES(prompt, screen.row(3) == "> 10 / 0" && screen.row(4) == "  division by zero");
    prompt.type(
        "\x15"
        "5 + 5\r");
    ASSERT_BECOMES(prompt, screen.row(4) == "= 10" && !screen.isDim(4) && screen.row(5) == ">");
}

// A line that keys change, as an editor is to show it.
struct Edited {
    std::vector<std::string> line{"/", "/"};  // the beginning of a comment, which has no answer
    std::size_t cursor = 2;

    // What was pressed at random; the slashes stay.
    std::string press(std::mt19937& random) {
        const std::vector<std::string> characters{"a", "7", " ", "気", "e\u0301", "é", "日"};
        const auto place = [&] { return line.begin() + static_cast<std::ptrdiff_t>(cursor); };
        switch (const std::size_t key = random() % 24) {
            case 0:
                cursor -= cursor > 0;
                return left;
            case 1:
                cursor += cursor < line.size();
                return "\033[C";
            case 2:
                cursor = 0;
                return "\033[H";
            case 3:
                cursor = line.size();
                return "\x05";
            case 4:
                if (cursor <= 2) return "";
                --cursor;
                line.erase(place());
                return "\x7f";
            default:
                if (cursor < 2) return "";
                line.insert(place(), characters[key % characters.size()]);
                return line[cursor++];
        }
    }

    bool isShown(const Screen& screen, std::size_t columns) const {
        std::vector<std::string> rows{"> "};
        std::size_t column = 2, cursorRow = 0, cursorColumn = 0;
        for (std::size_t i = 0; i <= line.size(); ++i) {
            const std::size_t width = i < line.size() && (line[i] == "気" || line[i] == "日") ? 2 : 1;
            if (column + width > columns) {
                rows.emplace_back();
                column = 0;
            }
            if (i == cursor) {
                cursorRow = rows.size() - 1;
                cursorColumn = column;
            }
            if (i == line.size()) break;
            rows.back() += line[i];
            column += width;
        }
        std::string text;
        for (const std::string& row : rows) text += row.substr(0, row.find_last_not_of(' ') + 1) + "\n";
        while (text.ends_with("\n\n")) text.pop_back();
        return screen.text() == text && screen.cursorRow() == cursorRow && screen.cursorColumn() == cursorColumn;
    }
};

TEST_F(PromptTest, showsWhatWasTypedAndWhere) {
    constexpr std::size_t columns = 20;
    Terminal prompt(start({}, {"xterm", "never", 12, columns}));
    ASSERT_BECOMES(prompt, screen.row(3) == ">");
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        Edited edited;
        prompt.type("\x03\x0c//");
        for (std::size_t burst = 0; burst < 30 && edited.line.size() < 100; ++burst) {
            std::string keys;
            for (std::size_t count = random() % 6; count > 0; --count) keys += edited.press(random);
            prompt.type(keys);
            ASSERT_BECOMES(prompt, edited.isShown(screen, columns));
        }
    }
    prompt.type("\x03\x0c" + std::string(50, '1'));
    ASSERT_BECOMES(prompt, screen.row(2) == std::string(12, '1'));
    prompt.resize(10, 40);
    ASSERT_BECOMES(prompt, screen.row(0) == "> " + std::string(38, '1') && screen.row(1) == std::string(12, '1'));
}

TEST_F(PromptTest, completesWordsInAList) {
    Terminal prompt(start());
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.type("2 celsi\t in fahrenh\t\rhourly rate = 40\r");
    ASSERT_SHOWN(prompt, "= 35.6 °F\n");
    prompt.type("2 * hour\t");
    ASSERT_SHOWN(prompt, "  hourly rate  name\n  hours        unit\n  hour         unit\n");
    prompt.type("ly \t\r");  // over the blank of a name of two words
    ASSERT_SHOWN(prompt, "> 2 * hourly rate\n= 80\n");
    prompt.type("2 * hour\t\t\033[B");  // the second choice
    ASSERT_SHOWN(prompt, "  hourly rate  name\n> hours        unit\n  hour         unit\n");
    prompt.type("\033[Z\r");  // and back to the first
    ASSERT_SHOWN(prompt, "> 2 * hourly rate\n= 80\n");
    prompt.type("time in new yo\t\r");
    ASSERT_SHOWN(prompt, "> time in New York\n= ");
    prompt.type("5 square f\t");  // a unit of two words, the one that people type most
    ASSERT_SHOWN(prompt, "  square feet ");
    prompt.type("\x15");
    std::filesystem::create_directory(folder / "papers");
    write("papers/budget.vemo", "1\n");
    prompt.type(":lo\t pap\tbud\t");
    ASSERT_SHOWN(prompt, "> :load papers/budget.vemo\n");
    prompt.type("\x03:units temp\t");
    ASSERT_SHOWN(prompt, "> :units temperature\n");
    const std::size_t bells = prompt.screen().bells();
    prompt.type("\x03qqq\t");
    ASSERT_BECOMES(prompt, screen.bells() == bells + 1);
}

TEST_F(PromptTest, changesTheDocument) {
    Terminal prompt(start());
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.type("rent = 1200\rfood = 300\rrent + food\rrent = rent * 2\r");
    ASSERT_SHOWN(prompt, "= 2,400\n");
    prompt.type(":vars\r");
    ASSERT_SHOWN(prompt, "  food = 300\n  rent = 2,400\n");
    prompt.type(
        ":edit 2\r\x7f\x7f\x7f"
        "50\r");
    ASSERT_SHOWN(prompt, "2> food = 50\n= 50\n1 line below changed\n");
    prompt.type(":edit 2\r / 0\r");  // an error leaves the line as it was
    ASSERT_SHOWN(prompt, "line 2 stays as it was\n");
    prompt.type(":edit 2\r\x03:delete\r");
    ASSERT_SHOWN(prompt, "line 4 is gone\n");
    prompt.type(":list\r");
    ASSERT_SHOWN(prompt, "1  rent = 1200  1,200\n2  food = 50       50\n3  rent + food  1,250\n");
    prompt.type(":undo\r:undo\r:explain 3\r");
    ASSERT_SHOWN(prompt, "> :explain 3\n1,200 + 300\n");
    prompt.type(":edit 9\r:clear\r:list\r:undo\r");
    ASSERT_SHOWN(prompt, "there are lines 1 to 4\n");
    ASSERT_SHOWN(prompt, "no lines\n");
    ASSERT_SHOWN(prompt, "4 lines, as before\n");
    prompt.type(":set precision 6\r1/3\r:set precision x\r:set precison\r");
    ASSERT_SHOWN(prompt, "= 0.333333\n");
    ASSERT_SHOWN(prompt, "precision is a number of digits");
    ASSERT_SHOWN(prompt, "the nearest is precision");
    prompt.type(":units length\r");
    ASSERT_SHOWN(prompt, "furlong");
    EXPECT_EQ(prompt.screen().text().find("acre"), std::string::npos);
    prompt.type("?\r");
    ASSERT_SHOWN(prompt, ":units [KIND]");
    // A word that has a value is no command.
    prompt.type("help = 3\rhelp\r");
    ASSERT_SHOWN(prompt, "> help\n= 3\n");
}

TEST_F(PromptTest, keepsTheDocumentInAFile) {
    write("mine.vemo", "a = 1\r\nb = 2\r\n");
    write("other.vemo", "x = 5\n");
    std::filesystem::permissions(folder / "mine.vemo", std::filesystem::perms(0640));
    std::filesystem::create_symlink("mine.vemo", folder / "link.vemo");
    Terminal prompt(start({"-i", "link.vemo"}));
    ASSERT_SHOWN(prompt, "link.vemo: 2 lines, total 3; :list shows them\n");
    prompt.type("a + b\r:save\r");  // over its own file without a question
    ASSERT_SHOWN(prompt, "saved link.vemo\n");
    EXPECT_EQ(contents("mine.vemo"), "a = 1\r\nb = 2\r\na + b\r\n");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.vemo"));
    EXPECT_EQ(std::filesystem::status(folder / "mine.vemo").permissions(), std::filesystem::perms(0640));
    prompt.type(":save other.vemo\rn\r");
    ASSERT_SHOWN(prompt, "other.vemo is there already; write over it?\n[y/N] n\nnot saved\n");
    prompt.type(":load ~/other.vemo\r:undo\r:list\r:save\r");
    ASSERT_SHOWN(prompt, "3  a + b");
    ASSERT_SHOWN(prompt, "link.vemo has changed since; write over it?");  // what is there was not read last
    prompt.type("y\r:save ~/new.vemo\r:save /dev/null\ry\r:save no/such/folder\r");
    ASSERT_SHOWN(prompt, "/new.vemo\n");
    ASSERT_SHOWN(prompt, "cannot write /dev/null: it is no file\n");
    ASSERT_SHOWN(prompt, "cannot write no/such/folder: No such file or directory\n");
    EXPECT_EQ(contents("other.vemo"), "x = 5\n");
    EXPECT_EQ(contents("new.vemo"), "a = 1\r\nb = 2\r\na + b\r\n");
    prompt.type(":load nothing.vemo\r7\r\x04");  // what is not saved is asked about
    ASSERT_SHOWN(prompt, "nothing.vemo: cannot be read");
    ASSERT_SHOWN(prompt, "/new.vemo is not saved; save it?\n[y/N]");
    prompt.type("y\r");
    EXPECT_EQ(prompt.ends(), 0);
    EXPECT_EQ(contents("new.vemo"), "a = 1\r\nb = 2\r\na + b\r\n7\r\n");
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        EXPECT_EQ(entry.path().filename().string().find(".vemo."), std::string::npos) << entry.path();

    Terminal fresh(start({"-i", "fresh.vemo"}));
    ASSERT_SHOWN(fresh, "fresh.vemo: a new file");
    fresh.type("1 + 1\r:save\r:quit\r");
    EXPECT_EQ(fresh.ends(), 0);
    EXPECT_EQ(contents("fresh.vemo"), "1 + 1\n");
    EXPECT_EQ(Terminal(start({"-i", "."})).ends(), 2);
    EXPECT_EQ(runShell("'" + vemoCommand() + "' -i 2>/dev/null </dev/null").status, 2);
}

TEST_F(PromptTest, takesPastedLinesAsText) {
    write("kept.vemo", "1\n");
    Terminal prompt(start());
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.type("\033[200~a = 2\r\nb\t= 3 a\r:save kept.vemo\ry\rquit\n\0331\a +\033[201~ 1");
    ASSERT_BECOMES(prompt, screen.text().ends_with("> 1 + 1\n= 2\n"));
    prompt.type("\x15:list\r");
    ASSERT_SHOWN(prompt, "2  b = 3 a  6\n3  :save kept.vemo\n4  y\n5  quit\n");
    EXPECT_EQ(contents("kept.vemo"), "1\n");
}

TEST_F(PromptTest, endsAsItBegan) {
    {
        Terminal prompt(start());
        ASSERT_SHOWN(prompt, "ends\n>");
        prompt.type("1 + 999\x03");
        ASSERT_SHOWN(prompt, "> 1 + 999\n>");
        prompt.type("2 + 3\r\x04");
        ASSERT_SHOWN(prompt, "= 5\n");
        EXPECT_EQ(prompt.ends(), 0);
    }
    Terminal killed(start());
    ASSERT_SHOWN(killed, "ends\n>");
    EXPECT_FALSE(killed.editsLines());
    killed.send(SIGTERM);
    EXPECT_EQ(killed.ends(), -SIGTERM);
    EXPECT_TRUE(killed.editsLines());
}

// As nohup(1) starts it.
TEST_F(PromptTest, leavesSignalsAloneThatItsCallerIgnores) {
    Terminal::Start begun = start();
    begun.arguments.insert(begun.arguments.begin(), {"/bin/sh", "-c", "trap '' HUP; exec \"$0\" \"$@\""});
    Terminal prompt(begun);
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.send(SIGHUP);
    prompt.type("6 * 7\r\x04");
    ASSERT_SHOWN(prompt, "= 42\n");
    EXPECT_EQ(prompt.ends(), 0);
}

TEST_F(PromptTest, remembersLinesUntilTheNextTime) {
    std::filesystem::create_directories(folder / "state" / "vemo");
    write("state/vemo/history", "_HiStOrY_V2_\n1\\040+\\0401\n");  // as it was written once
    {
        Terminal one(start()), two(start());
        ASSERT_SHOWN(one, "ends\n>");
        ASSERT_SHOWN(two, "ends\n>");
        one.type("été = 6 * 7\r");
        ASSERT_SHOWN(one, "= 42\n");
        two.type("2 + 20\r2 + 20\r");
        ASSERT_SHOWN(two, "= 22\n");
        ASSERT_SHOWN(two, "= 22\n");
        one.type("3 + 30\r\x04");
        EXPECT_EQ(one.ends(), 0);
    }
    Terminal prompt(start());
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.type(up);
    ASSERT_BECOMES(prompt, screen.row(1) == "> 3 + 30");
    prompt.type(up);
    ASSERT_BECOMES(prompt, screen.row(1) == "> 2 + 20");
    prompt.type(up);
    ASSERT_BECOMES(prompt, screen.row(1) == "> été = 6 * 7");
    prompt.type(std::string(up) + up + up);
    ASSERT_BECOMES(prompt, screen.row(1) == "> 1 + 1");
    prompt.type(
        "\x12"
        "té");
    ASSERT_BECOMES(prompt, screen.row(1) == "> été = 6 * 7" && screen.row(3) == "search: té");
    prompt.type("\x05 + 1\r");
    ASSERT_SHOWN(prompt, "= 43\n");
    struct stat status {};
    ASSERT_EQ(stat((folder / "state" / "vemo" / "history").c_str(), &status), 0);
    EXPECT_EQ(contents("state/vemo/history"), "1 + 1\nété = 6 * 7\n2 + 20\n3 + 30\nété = 6 * 7 + 1\n");
}

TEST_F(PromptTest, readsLinesWhereTheCursorCannotMove) {
    Terminal prompt(start({}, {"dumb", "auto", 24, 100}));
    ASSERT_SHOWN(prompt, "ends\n>");
    prompt.type("2 + 3\n:edit\n4 km\n:list\n");
    ASSERT_SHOWN(prompt, "= 5\n");
    ASSERT_SHOWN(prompt, "1  4 km  4 km\n");
    prompt.type("\x04");
    EXPECT_EQ(prompt.ends(), 0);
    EXPECT_EQ(prompt.output().find('\033'), std::string::npos);
}

}  // namespace
}  // namespace vemo::test
