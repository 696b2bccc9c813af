// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "base/text.h"
#include "platform/locale_info.h"
#include "vemo/number_parsers.h"

namespace vemo {

// A decimal literal in a line: with its sign, if any, and without.
struct DecimalLiteral {
    TextRange whole;
    TextRange digits;
};

// All decimal literals of a line, as this expression finds them (free spacing):
//     (?:[+-][\s]*)? (\.? \d+ [\s\d\._,]*) (?<!\s|,|\.)
std::vector<DecimalLiteral> decimalLiterals(std::u16string_view text);
// The end of a literal, or of those of its digits that belong to the word they begin in: "A6 12,40", "iPhone15 799".
// "EUR12 000", "R5 000" and "3x5 000" are amounts.
std::size_t endInWord(std::u16string_view text, const DecimalLiteral& literal);

}  // namespace vemo
