// SPDX-License-Identifier: MIT
#include "output/fraction_text.h"

#include "base/text.h"

namespace vemo {

std::optional<std::u16string> fractionText(const DecimalNumber& number) {
    constexpr std::int64_t greatestDenominator = 10000;
    constexpr int digits = 30;  // that must agree: quotients are rounded at 38
    const DecimalNumber one = DecimalNumber::fromInt64(1), whole = number.integer();
    const DecimalNumber part = number.subtracting(whole);
    if (part.round(digits).isZero()) return toUtf16(whole.toString());
    // The convergents of its continued fraction, until one is the number.
    DecimalNumber rest = part;
    std::int64_t numerator = 0, denominator = 1, earlierNumerator = 1, earlierDenominator = 0;
    while (!rest.isZero()) {
        const DecimalNumber inverse = one.dividing(rest);
        // What is whole but for rounding is that whole number.
        DecimalNumber term = inverse.round(0);
        if (!inverse.subtracting(term).round(digits / 2).isZero()) term = inverse.integer();
        if (DecimalNumber::compare(term, DecimalNumber::fromInt64(greatestDenominator)).value_or(1) > 0) break;
        const std::int64_t count = term.toInt64();
        const std::int64_t nextNumerator = count * numerator + earlierNumerator;
        const std::int64_t nextDenominator = count * denominator + earlierDenominator;
        if (nextDenominator > greatestDenominator) break;
        earlierNumerator = numerator, earlierDenominator = denominator;
        numerator = nextNumerator, denominator = nextDenominator;
        const DecimalNumber quotient =
            DecimalNumber::fromInt64(numerator).dividing(DecimalNumber::fromInt64(denominator));
        if (quotient.subtracting(part).round(digits).isZero()) {
            // Rounding left it just below the next whole number.
            if (denominator == 1) return toUtf16(whole.adding(one).toString());
            const std::string text = std::to_string(numerator) + "/" + std::to_string(denominator);
            return toUtf16(whole.isZero() ? text : whole.toString() + " " + text);
        }
        rest = inverse.subtracting(term);
    }
    return std::nullopt;
}

}  // namespace vemo
