// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "prompt/completer.h"
#include "prompt/session.h"

namespace vemo::cli {

// A command of the prompt, such as ":edit 3".
struct Command {
    enum class Takes { nothing, file, kind, setting };  // what can be completed

    std::string_view name;
    std::string_view arguments;  // as the help shows them
    std::string_view help;
    Takes takes = Takes::nothing;
    void (*run)(Session& session, const std::string& argument) = nullptr;
};

const std::vector<Command>& commands();

// Runs a line that begins with a colon, in which a command may be cut short.
void runCommand(Session& session, std::string_view line);

// The command that is meant by a word of its own, such as "quit"; empty: none.
std::string_view commandOfWord(std::string_view word);

// What is known of a command while it is typed: its arguments and what it does; empty: nothing.
std::string commandHint(std::string_view line);
Completer::Answer completeCommand(std::u16string_view text);

}  // namespace vemo::cli
