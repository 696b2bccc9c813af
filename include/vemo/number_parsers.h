// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vemo/decimal_number.h"

namespace vemo {

// Reads decimal literals as a locale writes them. Safe to use from several threads.
class DecimalParser {
public:
    // An ICU or POSIX identifier such as "de_DE"; one that is unknown follows the root locale.
    explicit DecimalParser(std::string_view locale);
    // A parser of numbers as they are written in the United States.
    static DecimalParser enUSParser() { return DecimalParser("en_US"); }

    // Grouping, spaces and other characters between digits are ignored, digits of any script are read. Where
    // the locale does not group with ".", a text with one is read the English way. Not-a-number when unreadable.
    DecimalNumber decimalNumber(std::u16string_view text) const;

private:
    std::u16string decimalSeparator_;
    bool groupsWithPoint_ = false;
};

// Reads mantissa, "e" and exponent. Safe to use from several threads; the parser of their digits must outlive it.
class ScientificParser {
public:
    explicit ScientificParser(const DecimalParser& decimalParser) : decimalParser_(decimalParser) {}

    // Nothing when a part is unreadable or the exponent is 32767 or more in magnitude.
    std::optional<DecimalNumber> decimalNumber(std::u16string_view text) const;

private:
    const DecimalParser& decimalParser_;
};

}  // namespace vemo
