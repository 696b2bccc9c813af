// SPDX-License-Identifier: MIT
#include "vemo/decimal_number.h"

#include <algorithm>

#include "decimal/decimal_rounding.h"

namespace vemo {

namespace {

using Narrow = ExactDecimal<UInt128>;
using Wide = ExactDecimal<UInt256>;

constexpr int digitsOf256Bits = 76;  // the sum of any two such
constexpr RoundingBehavior halfToEven{RoundingMode::bankers, RoundingBehavior::noScale};

Narrow exactOf(const DecimalNumber& number) {
    return {mantissaOf(number), number.exponent(), number.isNegative(), Tail::none};
}

// The sum at the smaller of both exponents; `scaled` is the other operand's coefficient at it.
template <class Integer>
ExactDecimal<Integer> sumOf(const Integer& scaled, bool negative, const Integer& other, int exponent,
                            bool otherNegative) {
    if (negative == otherNegative) return {scaled + other, exponent, negative, Tail::none};
    if (scaled >= other) return {scaled - other, exponent, negative, Tail::none};
    return {other - scaled, exponent, otherNegative, Tail::none};
}

DecimalNumber wideSum(const Narrow& larger, const Narrow& smaller, RoundingBehavior behavior, DecimalStatus* status) {
    const int distance = larger.exponent - smaller.exponent;
    const int shift = std::min(distance, digitsOf256Bits - digitCount(larger.coefficient));
    const UInt256 scaled = widened<UInt256>(larger.coefficient) * powerOfTen<UInt256>(shift);
    const int cut = distance - shift;
    if (cut == 0) {
        const auto other = widened<UInt256>(smaller.coefficient);
        return rounded(sumOf(scaled, larger.negative, other, smaller.exponent, smaller.negative), behavior, status);
    }
    // The scaled operand has 76 digits and dwarfs the other, whose digits past its last one only
    // tell on which side of a rounding boundary the result lies.
    UInt128 kept = 0;
    UInt128 lost = smaller.coefficient;
    if (cut <= 38) divide(smaller.coefficient, powerOfTen<UInt128>(cut), kept, lost);
    Wide sum = sumOf(scaled, larger.negative, widened<UInt256>(kept), larger.exponent - shift, smaller.negative);
    if (lost != 0) {
        if (larger.negative != smaller.negative) sum.coefficient -= 1;
        sum.tail = Tail::belowHalf;
    }
    return rounded(sum, behavior, status);
}

DecimalNumber sum(Narrow a, Narrow b, RoundingBehavior behavior, DecimalStatus* status) {
    if (a.coefficient == 0) return rounded(b, behavior, status);
    if (b.coefficient == 0) return rounded(a, behavior, status);
    if (a.exponent < b.exponent) std::swap(a, b);
    const int distance = a.exponent - b.exponent;
    if (distance > DecimalNumber::maxDigits - digitCount(a.coefficient)) return wideSum(a, b, behavior, status);
    const UInt128 scaled = a.coefficient * powerOfTen<UInt128>(distance);
    return rounded(sumOf(scaled, a.negative, b.coefficient, b.exponent, b.negative), behavior, status);
}

// A divisor below 10^19: two machine-sized steps give 38 digits and an exact remainder.
DecimalNumber shortQuotient(const Narrow& a, const Narrow& b, RoundingBehavior behavior, DecimalStatus* status) {
    const bool negative = a.negative != b.negative;
    const UInt128 divisor = b.coefficient;
    UInt128 quotient;
    UInt128 remainder;
    if (highHalf(a.coefficient) == 0) {
        divide(a.coefficient, divisor, quotient, remainder);
        if (remainder == 0) {
            return rounded(Narrow{quotient, a.exponent - b.exponent, negative, Tail::none}, behavior, status);
        }
    }
    const int shift = DecimalNumber::maxDigits - digitCount(a.coefficient);
    divide(a.coefficient * powerOfTen<UInt128>(shift), divisor, quotient, remainder);
    int exponent = a.exponent - b.exponent - shift;
    if (remainder != 0) {
        const int missing = DecimalNumber::maxDigits - digitCount(quotient);
        UInt128 digits;
        divide(remainder * powerOfTen<UInt128>(missing), divisor, digits, remainder);
        quotient = quotient * powerOfTen<UInt128>(missing) + digits;
        exponent -= missing;
    }
    Tail tail = Tail::none;
    if (remainder != 0) {
        const UInt128 twice = remainder * 2;
        tail = twice < divisor ? Tail::belowHalf : twice == divisor ? Tail::half : Tail::aboveHalf;
    }
    return rounded(Narrow{quotient, exponent, negative, tail}, behavior, status);
}

DecimalNumber longQuotient(const Narrow& a, const Narrow& b, RoundingBehavior behavior, DecimalStatus* status) {
    const int shift = 77 - digitCount(a.coefficient);  // 10^77 is below 2^256
    Wide result{0, a.exponent - b.exponent - shift, a.negative != b.negative, Tail::none};
    UInt256 remainder;
    divide(UInt256(widened<UInt256>(a.coefficient) * powerOfTen<UInt256>(shift)), widened<UInt256>(b.coefficient),
           result.coefficient, remainder);
    if (!remainder.is_zero()) result.tail = Tail::belowHalf;
    return rounded(result, behavior, status);
}

DecimalNumber notANumber(DecimalStatus* status) {
    return failed(DecimalStatus::exact, status);
}

// The magnitude without its fraction; nothing when it does not fit 64 bits.
std::optional<std::uint64_t> integralMagnitude(const DecimalNumber& number) {
    UInt128 magnitude = mantissaOf(number);
    const int exponent = number.exponent();
    if (exponent < 0) {
        magnitude = exponent < -38 ? 0 : magnitude / powerOfTen<UInt128>(-exponent);
    } else if (magnitude != 0) {
        if (digitCount(magnitude) + exponent > 20) return std::nullopt;
        magnitude *= powerOfTen<UInt128>(exponent);
    }
    if (highHalf(magnitude) != 0) return std::nullopt;
    return lowHalf(magnitude);
}

}  // namespace

DecimalNumber DecimalNumber::fromInt64(std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return fromParts(0, value < 0 ? 0 - bits : bits, 0, value < 0);
}

DecimalNumber DecimalNumber::fromUInt64(std::uint64_t value) {
    return fromParts(0, value, 0, false);
}

DecimalNumber DecimalNumber::fromParts(std::uint64_t high, std::uint64_t low, int exponent, bool negative) {
    const int bounded = std::clamp(exponent, -1000, 1000);
    return rounded(Narrow{joinHalves(high, low), bounded, negative, Tail::none}, halfToEven, nullptr);
}

std::int64_t DecimalNumber::toInt64() const {
    if (notANumber()) return 0;
    const auto magnitude = integralMagnitude(*this);
    if (isNegative()) {
        if (!magnitude || *magnitude > static_cast<std::uint64_t>(INT64_MAX)) return INT64_MIN;
        return -static_cast<std::int64_t>(*magnitude);
    }
    return !magnitude || *magnitude > static_cast<std::uint64_t>(INT64_MAX) ? INT64_MAX
                                                                            : static_cast<std::int64_t>(*magnitude);
}

std::uint64_t DecimalNumber::toUInt64() const {
    if (notANumber() || isNegative()) return 0;
    return integralMagnitude(*this).value_or(UINT64_MAX);
}

DecimalNumber DecimalNumber::adding(const DecimalNumber& other, RoundingBehavior behavior,
                                    DecimalStatus* status) const {
    if (notANumber() || other.notANumber()) return vemo::notANumber(status);
    return sum(exactOf(*this), exactOf(other), behavior, status);
}

DecimalNumber DecimalNumber::subtracting(const DecimalNumber& other, RoundingBehavior behavior,
                                         DecimalStatus* status) const {
    if (notANumber() || other.notANumber()) return vemo::notANumber(status);
    Narrow subtrahend = exactOf(other);
    subtrahend.negative = !subtrahend.negative;
    return sum(exactOf(*this), subtrahend, behavior, status);
}

DecimalNumber DecimalNumber::multiplying(const DecimalNumber& other, RoundingBehavior behavior,
                                         DecimalStatus* status) const {
    if (notANumber() || other.notANumber()) return vemo::notANumber(status);
    const Narrow a = exactOf(*this);
    const Narrow b = exactOf(other);
    const int exponent = a.exponent + b.exponent;
    const bool negative = a.negative != b.negative;
    if ((high_ == 0 && other.high_ == 0) || digitCount(a.coefficient) + digitCount(b.coefficient) <= maxDigits) {
        return rounded(Narrow{a.coefficient * b.coefficient, exponent, negative, Tail::none}, behavior, status);
    }
    const UInt256 product = widened<UInt256>(a.coefficient) * widened<UInt256>(b.coefficient);
    return rounded(Wide{product, exponent, negative, Tail::none}, behavior, status);
}

DecimalNumber DecimalNumber::dividing(const DecimalNumber& other, RoundingBehavior behavior,
                                      DecimalStatus* status) const {
    if (notANumber() || other.notANumber()) return vemo::notANumber(status);
    if (other.isZero()) return failed(DecimalStatus::divideByZero, status);
    const Narrow a = exactOf(*this);
    const Narrow b = exactOf(other);
    if (a.coefficient == 0) return rounded(a, behavior, status);
    if (b.coefficient < powerOfTen<UInt128>(19)) return shortQuotient(a, b, behavior, status);
    return longQuotient(a, b, behavior, status);
}

DecimalNumber DecimalNumber::multiplyingByPowerOf10(int power, RoundingBehavior behavior, DecimalStatus* status) const {
    if (notANumber()) return vemo::notANumber(status);
    Narrow result = exactOf(*this);
    result.exponent += std::clamp(power, -1000, 1000);
    return rounded(result, behavior, status);
}

DecimalNumber DecimalNumber::rounding(RoundingBehavior behavior, DecimalStatus* status) const {
    if (notANumber()) return vemo::notANumber(status);
    return rounded(exactOf(*this), behavior, status);
}

DecimalNumber DecimalNumber::negative() const {
    return multiplying(fromInt64(-1));
}

DecimalNumber DecimalNumber::abs() const {
    return isNegative() ? DecimalNumber().subtracting(*this) : *this;
}

DecimalNumber DecimalNumber::round(std::int16_t scale) const {
    return rounding({RoundingMode::plain, scale});
}

DecimalNumber DecimalNumber::integer() const {
    return rounding({RoundingMode::down, 0});
}

DecimalNumber DecimalNumber::fraction() const {
    return subtracting(integer());
}

int DecimalNumber::fractionDigitsCount() const {
    return std::max(0, -int{exponent_});
}

std::optional<int> DecimalNumber::compare(const DecimalNumber& a, const DecimalNumber& b) {
    if (a.notANumber() || b.notANumber()) return std::nullopt;
    const auto sign = [](const DecimalNumber& number) { return number.isZero() ? 0 : number.isNegative() ? -1 : 1; };
    if (sign(a) != sign(b)) return sign(a) < sign(b) ? -1 : 1;
    UInt128 left = mantissaOf(a);
    UInt128 right = mantissaOf(b);
    if (a.exponent_ != b.exponent_) {
        const int leftTop = digitCount(left) + a.exponent_;
        const int rightTop = digitCount(right) + b.exponent_;
        if (leftTop != rightTop) return leftTop < rightTop ? -sign(a) : sign(a);
        // As many digits before the point: aligned, both keep within 38 digits.
        if (a.exponent_ > b.exponent_) {
            left *= powerOfTen<UInt128>(a.exponent_ - b.exponent_);
        } else {
            right *= powerOfTen<UInt128>(b.exponent_ - a.exponent_);
        }
    }
    return left == right ? 0 : left < right ? -sign(a) : sign(a);
}

std::size_t DecimalNumber::hash() const {
    std::uint64_t mixed = low_ * 0x9e3779b97f4a7c15U ^ std::rotl(high_, 29);
    mixed ^= std::uint64_t{static_cast<std::uint8_t>(exponent_)} << 8 | flags_;
    mixed = (mixed ^ (mixed >> 32)) * 0xd6e8feb86659fd93U;
    return static_cast<std::size_t>(mixed ^ (mixed >> 32));
}

}  // namespace vemo
