// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "vemo/engine.h"

namespace vemo::cli {

// How plain output looks.
struct Layout {
    std::size_t width = 80;  // columns of the terminal
    bool color = false;
    bool shortTexts = false;
    bool remarks = false;  // notes and reasons under their lines
};

// The text of a result, short where one is wanted and there; empty without a result.
std::string resultText(const FormattedValue& value, bool shortTexts);

// Columns that a text takes on a terminal.
std::size_t displayWidth(std::string_view utf8);

// Each line with its result at the right, then the grand total.
void printResult(std::ostream& out, const VemoEngine::Result& result, const Layout& layout);

// Notes and reasons, one a row, as "name:line:column: message"; columns are counted in UTF-16 units from 1.
void printRemarks(std::ostream& out, const VemoEngine::Result& result, std::string_view name);

// One JSON object.
void printJson(std::ostream& out, const VemoEngine::Result& result, std::string_view log);

}  // namespace vemo::cli
