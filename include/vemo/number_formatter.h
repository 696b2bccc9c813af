// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vemo/decimal_number.h"

namespace vemo {

// Numbers as a locale writes them, all 38 digits exact. Not synchronised: formatters are built at first
// use and kept.
class VemoEngineNumberFormatter {
public:
    enum class NumeralSystem { binary, octal, decimal, hexadecimal, scientific };

    // ICU identifiers of how numbers are written and of the language beside them.
    VemoEngineNumberFormatter(std::string_view locale, std::string_view language);
    ~VemoEngineNumberFormatter();

    // Fraction digits from 0 to 999, halves rounded away from zero; the integer systems drop the fraction, unless the
    // number is whole but for rounding. Nothing for not-a-number.
    std::optional<std::u16string> stringFrom(const DecimalNumber& decimal, NumeralSystem system, int maxFraction,
                                             int minFraction) const;

    // True when the language puts what is counted in the singular.
    bool isSingular(const DecimalNumber& count) const;

private:
    struct Formatters;
    std::unique_ptr<Formatters> formatters_;
};

}  // namespace vemo
