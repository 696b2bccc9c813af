// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

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

// Mantissa, "e", exponent. Nothing when a part is unreadable or the exponent is 32767 or more in magnitude.
class ScientificParser {
public:
    explicit ScientificParser(const DecimalParser& decimalParser) : decimalParser_(decimalParser) {}
    std::optional<DecimalNumber> decimalNumber(std::u16string_view text) const;

private:
    const DecimalParser& decimalParser_;
};

}  // namespace vemo
