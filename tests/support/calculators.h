// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/calculator.h"
#include "vemo/engine.h"

namespace vemo::test {

// Nothing that depends on the host: US English, UTC, 24 November 2026, 13:00.
Environment fixedEnvironment();

std::unique_ptr<Calculator> newCalculator(const Environment& environment = fixedEnvironment());

// With blanks in place of the no-break spaces that some versions of ICU put before AM and PM.
std::string plainSpaces(std::string text);

// The regular result texts of a document's lines, "" for a line without one.
std::vector<std::string> results(std::string_view document);
std::vector<std::string> results(std::string_view document, const Environment& environment);
// The result of the document's last line.
std::string result(std::string_view document);

}  // namespace vemo::test
