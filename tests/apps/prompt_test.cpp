// SPDX-License-Identifier: MIT
// The prompt as a person meets it, on a terminal. VEMO_COMMAND names the command.

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds patience(30);  // a failure takes as long; nothing else does

// The command on a terminal of its own, in a folder of its own.
class Prompt {
public:
    explicit Prompt(const std::filesystem::path& folder) {
        const std::string command = vemoCommand();
        winsize size{24, 100, 0, 0};
        process_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (process_ < 0) throw std::system_error(errno, std::generic_category(), "no terminal");
        if (process_ > 0) return;
        setenv("HOME", folder.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
        setenv("XDG_STATE_HOME", (folder / "state").c_str(), 1);
        setenv("TERM", "xterm", 1);
        setenv("LC_ALL", "C.UTF-8", 1);
        if (chdir(folder.c_str()) == 0)
            execl(command.c_str(), command.c_str(), "--locale", "en_US", "--language", "en", "--color", "never",
                  nullptr);
        _exit(127);
    }
    ~Prompt() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        close(terminal_);
    }

    void type(std::string_view keys) {
        ASSERT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }

    // True once the text came, after what was seen before.
    bool shows(std::string_view text) {
        const auto deadline = Clock::now() + patience;
        for (;;) {
            const std::size_t found = screen_.find(text, seen_);
            if (found != std::string::npos) {
                seen_ = found + text.size();
                return true;
            }
            if (!readSome(deadline)) return false;
        }
    }

    // The exit status, or -1.
    int ends() {
        const auto deadline = Clock::now() + patience;
        while (readSome(deadline)) {
        }
        int status = 0;
        if (Clock::now() >= deadline || waitpid(process_, &status, 0) != process_) return -1;
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string rest() const { return screen_.substr(seen_); }

private:
    bool readSome(Clock::time_point deadline) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd descriptor{terminal_, POLLIN, 0};
        if (left <= 0 || poll(&descriptor, 1, static_cast<int>(left)) <= 0) return false;
        char buffer[4096];
        const ssize_t count = read(terminal_, buffer, sizeof buffer);
        if (count <= 0) return false;
        screen_.append(buffer, static_cast<std::size_t>(count));
        return true;
    }

    int terminal_ = -1;
    pid_t process_ = -1;
    std::string screen_;
    std::size_t seen_ = 0;
};

#define ASSERT_SHOWN(prompt, text) ASSERT_TRUE((prompt).shows(text)) << (prompt).rest()

class PromptTest : public testing::Test {
protected:
    const TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path();
};

TEST_F(PromptTest, calculatesLinesAsOneDocument) {
    Prompt prompt(folder);
    ASSERT_SHOWN(prompt, "> ");
    prompt.type("hourly rate = $40\r");
    ASSERT_SHOWN(prompt, "= $40\r\n");
    prompt.type("12 * hourly rate\r");
    ASSERT_SHOWN(prompt, "= $480\r\n");
    prompt.type(
        "\r5 \xc2\xb0"
        "C in \xc2\xb0"
        "F // \xe6\xb0\x97\xe6\xb8\xa9\r");
    ASSERT_SHOWN(prompt,
                 "= 41 \xc2\xb0"
                 "F\r\n");
    prompt.type("sum\r");
    ASSERT_SHOWN(prompt,
                 "= 41 \xc2\xb0"
                 "F\r\n");  // of the lines after the empty one
    prompt.type(":save notes.txt\r");
    ASSERT_SHOWN(prompt, "saved notes.txt\r\n");
    prompt.type(":save no/such/folder\r");
    ASSERT_SHOWN(prompt, "cannot write no/such/folder\r\n");
    prompt.type(":nonsense\r");
    ASSERT_SHOWN(prompt, "no such command");
    prompt.type(":help\r");
    ASSERT_SHOWN(prompt, ":save FILE");
    prompt.type(":quit\r");
    EXPECT_EQ(prompt.ends(), 0);
    std::ifstream file(folder / "notes.txt");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}),
              "hourly rate = $40\n12 * hourly rate\n\n5 \xc2\xb0"
              "C in \xc2\xb0"
              "F // \xe6\xb0\x97\xe6\xb8\xa9\nsum\n");
}

TEST_F(PromptTest, completesWords) {
    Prompt prompt(folder);
    ASSERT_SHOWN(prompt, "> ");
    prompt.type("2 celsi\t in fahrenh\t\r");
    ASSERT_SHOWN(prompt,
                 "= 35.6 \xc2\xb0"
                 "F\r\n");
    prompt.type("hourly rate = 40\r");
    ASSERT_SHOWN(prompt, "= 40\r\n");
    prompt.type("2 * hour\t");
    ASSERT_SHOWN(prompt, "hourly rate  hour  hours  \r\n");
    prompt.type("ly \t\r");  // over the blank of a name of two words
    ASSERT_SHOWN(prompt, "= 80\r\n");
    prompt.type("3Millil\tre\t");  // what all have in common, then what there is
    ASSERT_SHOWN(prompt, "millilitre  millilitres  \r\n");
    prompt.type("\r");
    ASSERT_SHOWN(prompt, "= 3 ml\r\n");
    prompt.type("qqq\t");
    ASSERT_SHOWN(prompt, "\a");
}

TEST_F(PromptTest, clearsTheLineAndEnds) {
    Prompt prompt(folder);
    ASSERT_SHOWN(prompt, "> ");
    prompt.type("1 + 999");
    ASSERT_SHOWN(prompt, "999");
    prompt.type("\x03");
    ASSERT_SHOWN(prompt, "> ");
    prompt.type("2 + 3\r");
    ASSERT_SHOWN(prompt, "= 5\r\n");
    ASSERT_SHOWN(prompt, "> ");
    prompt.type("\x04");
    EXPECT_EQ(prompt.ends(), 0);
}

TEST_F(PromptTest, remembersLinesUntilTheNextTime) {
    {
        Prompt prompt(folder);
        ASSERT_SHOWN(prompt, "> ");
        prompt.type("\xc3\xa9t\xc3\xa9 = 6 * 7\r");
        ASSERT_SHOWN(prompt, "= 42\r\n");
        ASSERT_SHOWN(prompt, "> ");  // control characters mean something else to the terminal between the lines
        prompt.type("\x04");
        EXPECT_EQ(prompt.ends(), 0);
    }
    EXPECT_TRUE(std::filesystem::exists(folder / "state" / "vemo" / "history"));
    Prompt prompt(folder);
    ASSERT_SHOWN(prompt, "> ");
    prompt.type("\x10\x10");  // there is but one
    ASSERT_SHOWN(prompt, "6 * 7");
    prompt.type(" + 1\r");
    ASSERT_SHOWN(prompt, "= 43\r\n");
}

TEST_F(PromptTest, keepsTheLinesOfSeveralPrompts) {
    Prompt one(folder), two(folder);
    ASSERT_SHOWN(one, "> ");
    ASSERT_SHOWN(two, "> ");
    one.type("1 + 10\r");
    ASSERT_SHOWN(one, "= 11\r\n");
    two.type("2 + 20\r");
    ASSERT_SHOWN(two, "= 22\r\n");
    one.type("3 + 30\r");
    ASSERT_SHOWN(one, "= 33\r\n");
    Prompt later(folder);
    ASSERT_SHOWN(later, "> ");
    later.type("\x10\x10");
    ASSERT_SHOWN(later, "2 + 20");
    later.type("\x10");
    ASSERT_SHOWN(later, "1 + 10");
}

}  // namespace
}  // namespace vemo::test
