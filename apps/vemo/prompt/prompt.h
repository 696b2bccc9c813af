// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "options.h"
#include "session/listing.h"
#include "vemo/engine.h"

namespace vemo::cli {

// What the prompt gets from the command around it.
struct PromptSetting {
    VemoEngine& engine;
    RunLoop& loop;           // the engine's executor: what is posted to it runs between the keys
    const Context& context;  // with which every calculation begins
    session::Layout layout;
    std::function<std::vector<std::string>()> takeProblems;  // with rates and places, since the last call
};

// Reads lines from the terminal and shows each one's result; together they are one document, which begins with those of
// the options' file or expressions. Ends at the end of the input or when it is told to, with the exit status.
int runPrompt(const PromptSetting& setting, const Options& options);

}  // namespace vemo::cli
