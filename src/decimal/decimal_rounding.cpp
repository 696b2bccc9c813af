// SPDX-License-Identifier: MIT
#include "decimal/decimal_rounding.h"

#include <algorithm>
#include <utility>

namespace vemo {

class DecimalAccess {
public:
    static DecimalNumber make(UInt128 mantissa, int exponent, bool negative) {
        DecimalNumber result;
        result.low_ = lowHalf(mantissa);
        result.high_ = highHalf(mantissa);
        result.exponent_ = static_cast<std::int8_t>(exponent);
        result.flags_ = negative ? DecimalNumber::negativeFlag : std::uint8_t{0};
        return result;
    }
};

namespace {

int trailingZeroBits(std::uint64_t value) {
    return std::countr_zero(value);
}
int trailingZeroBits(UInt128 value) {
    return lowHalf(value) != 0 ? std::countr_zero(lowHalf(value)) : 64 + std::countr_zero(highHalf(value));
}

// Moves trailing decimal zeros into the exponent, as far as it may grow. The steps are constants for the
// sake of division.
template <class Integer, int... steps>
void stripZeros(Integer& mantissa, int& exponent, std::integer_sequence<int, steps...>) {
    int limit = std::min(DecimalNumber::maxExponent - exponent, trailingZeroBits(mantissa));
    const auto tryStep = [&](auto step) {
        constexpr auto power = static_cast<Integer>(narrowPowersOfTen[static_cast<std::size_t>(step())]);
        if (step() > limit || mantissa % power != 0) return;
        mantissa /= power;
        exponent += step();
        limit -= step();
    };
    if (limit > 0) (tryStep(std::integral_constant<int, steps>()), ...);
}

std::optional<DecimalNumber> normalized(UInt128 mantissa, int exponent, bool negative) {
    if (mantissa == 0) return DecimalNumber();
    if (exponent > DecimalNumber::maxExponent) {
        const int excess = exponent - DecimalNumber::maxExponent;
        if (excess > DecimalNumber::maxDigits - digitCount(mantissa)) return std::nullopt;
        return DecimalAccess::make(mantissa * powerOfTen<UInt128>(excess), DecimalNumber::maxExponent, negative);
    }
    if (highHalf(mantissa) == 0) {
        std::uint64_t small = lowHalf(mantissa);
        stripZeros(small, exponent, std::integer_sequence<int, 16, 8, 4, 2, 1>());
        return DecimalAccess::make(small, exponent, negative);
    }
    stripZeros(mantissa, exponent, std::integer_sequence<int, 16, 16, 8, 4, 2, 1>());
    if (mantissa >= powerOfTen<UInt128>(DecimalNumber::maxDigits)) return std::nullopt;
    return DecimalAccess::make(mantissa, exponent, negative);
}

template <class Integer>
Tail tailOf(const Integer& remainder, const Integer& unit, Tail rest) {
    if (remainder == 0) return rest == Tail::none ? Tail::none : Tail::belowHalf;
    const Integer complement = unit - remainder;
    if (remainder < complement) return Tail::belowHalf;
    return remainder == complement && rest == Tail::none ? Tail::half : Tail::aboveHalf;
}

bool awayFromZero(RoundingMode mode, Tail tail, bool negative, bool odd) {
    switch (mode) {
        case RoundingMode::plain:
            return tail >= Tail::half;
        case RoundingMode::down:
            return negative && tail != Tail::none;
        case RoundingMode::up:
            return !negative && tail != Tail::none;
        case RoundingMode::bankers:
            break;
    }
    return tail == Tail::aboveHalf || (tail == Tail::half && odd);
}

template <class Integer>
DecimalNumber roundedOnce(const ExactDecimal<Integer>& exact, RoundingBehavior behavior, DecimalStatus* status) {
    const int digits = digitCount(exact.coefficient);
    const int quantum = std::max(
        {-int{behavior.scale}, exact.exponent + digits - DecimalNumber::maxDigits, DecimalNumber::minExponent});
    const int dropped = quantum - exact.exponent;
    assert(dropped >= 0 || exact.tail == Tail::none);

    UInt128 kept = 0;
    int exponent = quantum;
    Tail tail = Tail::belowHalf;
    if (digits == 0) {
        tail = Tail::none;
    } else if (dropped <= 0) {
        kept = narrowed(exact.coefficient);
        exponent = exact.exponent;
        tail = exact.tail;
    } else if (dropped <= digits && dropped < powersOfTenCount<Integer>) {  // past both, less than half is kept
        const Integer& unit = powerOfTen<Integer>(dropped);
        Integer quotient;
        Integer remainder;
        divide(exact.coefficient, unit, quotient, remainder);
        tail = tailOf(remainder, unit, exact.tail);
        kept = narrowed(quotient);
    }
    if (awayFromZero(behavior.mode, tail, exact.negative, (kept & 1) != 0)) ++kept;

    const auto result = normalized(kept, exponent, exact.negative);
    if (!result) return failed(DecimalStatus::overflow, status);
    if (status) {
        const bool tiny = digits != 0 && exact.exponent + digits <= DecimalNumber::minExponent;
        *status = tiny                 ? DecimalStatus::underflow
                  : tail == Tail::none ? DecimalStatus::exact
                                       : DecimalStatus::lossOfPrecision;
    }
    return *result;
}

}  // namespace

DecimalNumber rounded(const ExactDecimal<UInt128>& exact, RoundingBehavior behavior, DecimalStatus* status) {
    return roundedOnce(exact, behavior, status);
}

DecimalNumber rounded(const ExactDecimal<UInt256>& exact, RoundingBehavior behavior, DecimalStatus* status) {
    return roundedOnce(exact, behavior, status);
}

}  // namespace vemo
