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

}  // namespace vemo
