// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/screen.h"

namespace vemo::test {

// A program on a terminal of its own.
class Terminal {
public:
    struct Start {
        std::vector<std::string> arguments;  // the program first
        std::vector<std::pair<std::string, std::string>> environment;
        std::string folder;
        std::size_t rows = 24, columns = 100;
    };

    explicit Terminal(const Start& start);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void type(std::string_view keys);
    // Empties the screen, too.
    void resize(std::size_t rows, std::size_t columns);
    void send(int signal);
    // True once the screen is like that.
    bool becomes(const std::function<bool(const Screen&)>& wanted);
    // Sees the screen after every byte.
    void watch(std::function<void(const Screen&)> watcher) { watcher_ = std::move(watcher); }
    // The exit status, or minus the signal; -1000 when it does not end.
    int ends();

    const Screen& screen() const { return screen_; }
    // All that was written to it.
    const std::string& output() const { return output_; }
    // True when the terminal hands on lines rather than keys.
    bool editsLines() const;

private:
    using Clock = std::chrono::steady_clock;

    bool readSome(Clock::time_point deadline);

    int terminal_ = -1;
    pid_t process_ = -1;
    Screen screen_;
    std::function<void(const Screen&)> watcher_;
    std::string output_;
};

}  // namespace vemo::test
