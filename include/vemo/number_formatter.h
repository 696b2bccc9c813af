// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vemo/decimal_number.h"

namespace vemo {

// Writes numbers as a locale does, all 38 digits exact. Not synchronised: formatters are built at first use and kept.
class VemoEngineNumberFormatter {
public:
    enum class NumeralSystem { binary, octal, decimal, hexadecimal, scientific };

    // `locale` tells how numbers are written, `language` which of them take the singular. Both are ICU identifiers.
    VemoEngineNumberFormatter(std::string_view locale, std::string_view language);
    ~VemoEngineNumberFormatter();

    // The number in a numeral system, with `minFraction` to `maxFraction` digits after the point (0 to 999), halves
    // rounded away from zero. The binary, octal and hexadecimal systems drop the fraction, but what is whole but for
    // rounding counts as whole. Nothing for not-a-number.
    std::optional<std::u16string> stringFrom(const DecimalNumber& decimal, NumeralSystem system, int maxFraction,
                                             int minFraction) const;

    // True when the language puts what is counted in the singular, as in "1 day".
    bool isSingular(const DecimalNumber& count) const;

private:
    struct Formatters;
    std::unique_ptr<Formatters> formatters_;
};

}  // namespace vemo
