// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "platform/locale_info.h"
#include "vemo/decimal_number.h"

namespace vemo {

// Reads decimal literals as the locale writes them.
class DecimalParser {
public:
    explicit DecimalParser(LocaleInfo locale);

    // Grouping, spaces and other characters between digits are ignored, digits of any script are read. Where
    // the locale does not group with ".", a text with one is read the English way. Not-a-number when unreadable.
    DecimalNumber decimalNumber(std::u16string_view text) const;

private:
    LocaleInfo locale_;
};

// A decimal literal in a line: with its sign, if any, and without.
struct DecimalLiteral {
    TextRange whole;
    TextRange digits;
};

// All decimal literals of a line, as this expression finds them (free spacing):
//     (?:[+-][\s]*)? (\.? \d+ [\s\d\._,]*) (?<!\s|,|\.)
std::vector<DecimalLiteral> decimalLiterals(std::u16string_view text);

// Mantissa, "e", exponent. Nothing when a part is unreadable or the exponent is 32767 or more in magnitude.
class ScientificParser {
public:
    explicit ScientificParser(const DecimalParser& decimalParser) : decimalParser_(decimalParser) {}
    std::optional<DecimalNumber> decimalNumber(std::u16string_view text) const;

private:
    const DecimalParser& decimalParser_;
};

}  // namespace vemo
