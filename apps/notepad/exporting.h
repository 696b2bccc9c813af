// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstdint>
#include <string>

#include "vemo/engine.h"

namespace vemo::notepad {

// What a page with its answers can become: the same texts as the command's.
enum class TextFormat : std::uint8_t { plain, markdown, html, csv };

// UTF-8. `title` is that of a web page.
std::string textIn(TextFormat format, const VemoEngine::Result& result, const QString& title);

// Some lines of a result, without a total.
VemoEngine::Result linesOf(const VemoEngine::Result& result, int first, int count);
// The same as they were asked for, in a format.
std::string textOfLinesIn(TextFormat format, const VemoEngine::Result& lines);

}  // namespace vemo::notepad
