// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "terminal.h"
#include "vemo/engine.h"

namespace vemo::cli {

// What scripts have said since the last call, one text for each line that made them, in the order of the lines.
using TakeLogs = std::function<std::vector<std::string>()>;

// Reads lines from the terminal and shows each one's result; together they are one document. Ends at the end of the
// input or at ":quit", with the exit status. What is posted to the loop, the engine's executor, runs between the lines.
// `settings` holds what every calculation begins with.
int runPrompt(VemoEngine& engine, RunLoop& loop, const Context& settings, const Layout& layout, TakeLogs takeLogs);

}  // namespace vemo::cli
