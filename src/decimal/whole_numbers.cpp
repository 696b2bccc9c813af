// SPDX-License-Identifier: MIT
#include "decimal/whole_numbers.h"

#include "decimal/decimal_rounding.h"

namespace vemo {

namespace {

using Integer = boost::multiprecision::cpp_int;

constexpr std::size_t mostBits = 600;  // 10^165 has 549

bool isAtMost(const DecimalNumber& a, const DecimalNumber& b) {
    return DecimalNumber::compare(a, b).value_or(1) <= 0;
}

}  // namespace

std::optional<DecimalNumber> nearlyWhole(const DecimalNumber& number) {
    if (number.exponent() >= 0) return number;
    static const DecimalNumber least = DecimalNumber::fromParts(0, 1, -30, false);
    static const DecimalNumber most = DecimalNumber::fromParts(0, 1, -6, false);
    const DecimalNumber nearest = number.round(0);
    const DecimalNumber distance = number.subtracting(nearest).abs();
    const bool near = isAtMost(distance, least) ||
                      (isAtMost(distance, most) && isAtMost(distance, number.abs().multiplyingByPowerOf10(-36)));
    return near ? std::optional(nearest) : std::nullopt;
}

DecimalNumber wholeNumber(const DecimalNumber& number) {
    if (const auto whole = nearlyWhole(number)) return *whole;
    return number.rounding({number.isNegative() ? RoundingMode::up : RoundingMode::down, 0});
}

std::u16string digitsInBase(const DecimalNumber& whole, unsigned bitsPerDigit) {
    auto rest = widened<Integer>(mantissaOf(whole));
    if (whole.exponent() > 0) rest *= boost::multiprecision::pow(Integer(10), static_cast<unsigned>(whole.exponent()));
    std::u16string digits;
    do {
        digits += u"0123456789abcdef"[static_cast<unsigned>(rest & ((1u << bitsPerDigit) - 1))];
        rest >>= bitsPerDigit;
    } while (rest != 0);
    return {digits.rbegin(), digits.rend()};
}

DecimalNumber numberFromDigits(std::u16string_view digits, unsigned bitsPerDigit) {
    const std::size_t first = digits.find_first_not_of(u'0');
    if (first == digits.npos) return {};
    digits.remove_prefix(first);
    if (digits.size() * bitsPerDigit > mostBits) return DecimalNumber::notANumberValue();
    Integer value = 0;
    for (const char16_t c : digits) {
        const unsigned digit = c <= u'9' ? c - u'0' : (c | 0x20u) - u'a' + 10u;
        value = (value << bitsPerDigit) | digit;
    }
    return DecimalNumber::parse(value.str());
}

std::optional<std::uint64_t> bitsOf(const DecimalNumber& number) {
    static const DecimalNumber most = DecimalNumber::fromUInt64(UINT64_MAX);
    const DecimalNumber whole = wholeNumber(number);
    const DecimalNumber magnitude = whole.abs();
    if (!isAtMost(magnitude, most)) return std::nullopt;
    const std::uint64_t bits = magnitude.toUInt64();
    return whole.isNegative() ? 0 - bits : bits;
}

}  // namespace vemo
