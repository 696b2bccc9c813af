// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "lsp/server.h"

namespace vemo::lsp {

// A line's result for people, as Markdown: full text, exact value, reading, and the rates that it was calculated with.
// Empty for a line without a result.
std::string lineDescription(Server& server, const OpenDocument& document, std::size_t line);

// Full text and exact value alone, which cost next to nothing.
std::string shortDescription(const OpenDocument& document, std::size_t line);

}  // namespace vemo::lsp
