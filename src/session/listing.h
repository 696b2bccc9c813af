// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "session/rows.h"
#include "vemo/engine.h"

namespace vemo::session {

// How output for people looks.
struct Layout {
    std::optional<std::size_t> width;  // columns of the terminal; nothing: rows may be of any length
    bool color = false;
    bool remarks = false;   // notes and reasons under their lines
    bool total = true;      // the grand total after the lines
    bool numbered = false;  // the lines
    Writing writing;
};

// What turns on the color of runs; empty: nothing.
std::string_view colorOf(RunType type);

// Columns that a text takes on a terminal.
std::size_t displayWidth(std::string_view utf8);

// Each line with its result at the right, then the grand total. `readings` stand under their lines; there may be none.
void printResult(std::ostream& out, const VemoEngine::Result& result, const Layout& layout,
                 const std::vector<std::string>& readings = {});

// The notes and the reason of a line, dim, under it.
void printRemarksOf(std::ostream& out, const VemoEngine::Result::Line& line, const Layout& layout);

// The results alone, one a row.
void printResults(std::ostream& out, const VemoEngine::Result& result, const Writing& writing);

// Notes and reasons, one a row, as "name:line:column: message"; columns are counted in UTF-16 units from 1.
void printRemarks(std::ostream& out, const VemoEngine::Result& result, std::string_view name);

}  // namespace vemo::session
