// SPDX-License-Identifier: MIT
#include <algorithm>
#include <type_traits>

#include "decimal/decimal_rounding.h"

namespace vemo {

namespace {

// A positive number cut to a fixed number of digits, with a bound on what the cuts have taken away.
template <class Mantissa>
struct TruncatedDecimal {
    Mantissa mantissa;
    int exponent = 0;
    bool cut = false;
    double relativeError = 0;  // in units of the mantissa's last digit when it starts with 1
};

// Where a power of a number of more than (or less than) one can only overflow (or underflow) whatever
// the remaining factors are.
constexpr int hopelessExponent = 400;

using UInt1024 = WideInteger<1024>;

template <class Mantissa>
struct Precision;
template <>
struct Precision<UInt256> {
    static constexpr int digits = 75;
    using Product = WideInteger<512>;
};
template <>
struct Precision<UInt1024> {
    static constexpr int digits = 300;
    using Product = WideInteger<2048>;
};

template <class Mantissa>
int topExponent(const TruncatedDecimal<Mantissa>& value) {
    return digitCount(value.mantissa) + value.exponent;
}

template <class Mantissa>
TruncatedDecimal<Mantissa> product(const TruncatedDecimal<Mantissa>& a, const TruncatedDecimal<Mantissa>& b) {
    using Product = typename Precision<Mantissa>::Product;
    TruncatedDecimal<Mantissa> result{Mantissa(), a.exponent + b.exponent, a.cut || b.cut,
                                      a.relativeError + b.relativeError};
    Product exact = Product(a.mantissa) * Product(b.mantissa);
    const int excess = digitCount(exact) - Precision<Mantissa>::digits;
    if (excess > 0) {
        Product quotient;
        Product remainder;
        divide(exact, powerOfTen<Product>(excess), quotient, remainder);
        exact = quotient;
        result.exponent += excess;
        if (!remainder.is_zero()) {
            result.cut = true;
            result.relativeError += 1;
        }
    }
    result.mantissa = static_cast<Mantissa>(exact);
    return result;
}

// The 256-bit coefficient that `rounded` takes, `excess` above the truncated mantissa.
template <class Mantissa>
ExactDecimal<UInt256> roundable(const TruncatedDecimal<Mantissa>& value, UInt128 excess, bool negative) {
    Mantissa mantissa = value.mantissa + widened<Mantissa>(excess);
    Tail tail = value.cut ? Tail::belowHalf : Tail::none;
    int exponent = value.exponent;
    if (const int surplus = digitCount(mantissa) - 76; surplus > 0) {
        Mantissa quotient;
        Mantissa remainder;
        divide(mantissa, powerOfTen<Mantissa>(surplus), quotient, remainder);
        mantissa = quotient;
        exponent += surplus;
        if (!remainder.is_zero()) tail = Tail::belowHalf;
    }
    return {static_cast<UInt256>(mantissa), exponent, negative, tail};
}

// The rounded value; nothing when what was cut off could change it and more digits can be had.
template <class Mantissa>
std::optional<DecimalNumber> settled(const TruncatedDecimal<Mantissa>& value, bool negative, RoundingBehavior behavior,
                                     DecimalStatus* status) {
    const DecimalNumber result = rounded(roundable(value, 0, negative), behavior, status);
    if (!value.cut || std::is_same_v<Mantissa, UInt1024>) return result;
    const auto slack = static_cast<UInt128>(value.relativeError * 10) + 2;
    if (rounded(roundable(value, slack, negative), behavior, nullptr) != result) return std::nullopt;
    return result;
}

DecimalNumber outOfRange(bool tooLarge, bool negative, RoundingBehavior behavior, DecimalStatus* status) {
    const int exponent = tooLarge ? hopelessExponent : -hopelessExponent;
    return rounded(ExactDecimal<UInt128>{1, exponent, negative, Tail::none}, behavior, status);
}

template <class Mantissa>
std::optional<DecimalNumber> tryRaising(const DecimalNumber& base, std::uint64_t power, RoundingBehavior behavior,
                                        DecimalStatus* status) {
    const bool negative = base.isNegative() && (power & 1) != 0;
    const TruncatedDecimal<Mantissa> factor{widened<Mantissa>(mantissaOf(base)), base.exponent(), false, 0};
    TruncatedDecimal<Mantissa> result = factor;
    for (int bit = static_cast<int>(std::bit_width(power)) - 2; bit >= 0; --bit) {
        result = product(result, result);
        if ((power >> bit & 1) != 0) result = product(result, factor);
        const int top = topExponent(result);
        if (std::abs(top) > hopelessExponent) return outOfRange(top > 0, negative, behavior, status);
    }
    return settled(result, negative, behavior, status);
}

// The exact power of a coefficient, when 128 bits hold it.
std::optional<UInt128> smallPower(UInt128 base, std::uint64_t power) {
    UInt128 result = 1;
    for (;; power >>= 1) {
        if ((power & 1) != 0 && __builtin_mul_overflow(result, base, &result)) return std::nullopt;
        if (power <= 1) return result;
        if (__builtin_mul_overflow(base, base, &base)) return std::nullopt;
    }
}

}  // namespace

DecimalNumber DecimalNumber::raising(std::uint64_t power, RoundingBehavior behavior, DecimalStatus* status) const {
    if (notANumber()) return failed(DecimalStatus::exact, status);
    if (power == 0) return rounded(ExactDecimal<UInt128>{1, 0, false, Tail::none}, behavior, status);
    if (isZero()) return rounding(behavior, status);
    // Past this power the exponent alone decides, and multiplying it could not be trusted.
    constexpr std::uint64_t largestSmallPower = 1'000'000;
    const auto scaledPower = static_cast<int>(std::min(power, largestSmallPower));
    if (const auto mantissa = smallPower(mantissaOf(*this), power);
        mantissa && (power <= largestSmallPower || *mantissa == 1)) {
        const bool negative = isNegative() && (power & 1) != 0;
        return rounded(ExactDecimal<UInt128>{*mantissa, exponent() * scaledPower, negative, Tail::none}, behavior,
                       status);
    }
    if (const auto result = tryRaising<UInt256>(*this, power, behavior, status)) return *result;
    // This close to a rounding boundary at 75 digits, the power is far from it at 300.
    return *tryRaising<UInt1024>(*this, power, behavior, status);
}

}  // namespace vemo
