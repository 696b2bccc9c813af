// SPDX-License-Identifier: MIT
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace vemo::test {

// The path of the vemo command, which the environment gives.
inline std::string vemoCommand() {
    const char* command = std::getenv("VEMO_COMMAND");
    if (!command) throw std::runtime_error("VEMO_COMMAND is not set");
    return command;
}

struct Outcome {
    int status = 0;
    std::string output;
};

// Runs a line of the shell.
inline Outcome runShell(const std::string& line) {
    Outcome outcome;
    FILE* pipe = popen(line.c_str(), "r");
    if (!pipe) throw std::runtime_error("no shell");
    std::array<char, 4096> buffer;
    for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        outcome.output.append(buffer.data(), count);
    outcome.status = WEXITSTATUS(pclose(pipe));
    return outcome;
}

}  // namespace vemo::test
