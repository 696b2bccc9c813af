// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <bit>
#include <boost/multiprecision/cpp_int.hpp>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>

// Unsigned integers of 128 bits and more, their powers of ten and their digit counts.
namespace vemo {

__extension__ typedef unsigned __int128 UInt128;

template <unsigned bits>
using WideInteger = boost::multiprecision::number<
    boost::multiprecision::cpp_int_backend<bits, bits, boost::multiprecision::unsigned_magnitude,
                                           boost::multiprecision::unchecked, void>,
    boost::multiprecision::et_off>;
using UInt256 = WideInteger<256>;

constexpr std::uint64_t highHalf(UInt128 value) {
    return static_cast<std::uint64_t>(value >> 64);
}
constexpr std::uint64_t lowHalf(UInt128 value) {
    return static_cast<std::uint64_t>(value);
}
constexpr UInt128 joinHalves(std::uint64_t high, std::uint64_t low) {
    return (UInt128{high} << 64) | low;
}

template <class Wide>
Wide widened(UInt128 value) {
    Wide result = highHalf(value);
    result <<= 64;
    result |= lowHalf(value);
    return result;
}

// `value` must fit.
template <class Wide>
UInt128 narrowed(const Wide& value) {
    const Wide low = value & Wide(UINT64_MAX);
    const Wide high = value >> 64;
    return joinHalves(static_cast<std::uint64_t>(high), static_cast<std::uint64_t>(low));
}
inline UInt128 narrowed(UInt128 value) {
    return value;
}

// The powers of ten that fit.
inline constexpr auto narrowPowersOfTen = [] {
    std::array<UInt128, 39> powers{};
    UInt128 power = 1;
    for (auto& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

template <class Integer>
inline constexpr int powersOfTenCount = std::numeric_limits<Integer>::digits10 + 1;
template <>
inline constexpr int powersOfTenCount<UInt128> = 39;

template <class Integer>
const Integer& powerOfTen(int exponent) {
    static const auto powers = [] {
        std::array<Integer, static_cast<std::size_t>(powersOfTenCount<Integer>)> result{};
        Integer power = 1;
        for (auto& entry : result) {
            entry = power;
            power *= 10;
        }
        return result;
    }();
    assert(exponent >= 0 && static_cast<std::size_t>(exponent) < powers.size());
    return powers[static_cast<std::size_t>(exponent)];
}
template <>
inline const UInt128& powerOfTen<UInt128>(int exponent) {
    assert(exponent >= 0 && exponent <= 38);
    return narrowPowersOfTen[static_cast<std::size_t>(exponent)];
}

// Decimal digits of the value; zero has none.
inline int digitCount(std::uint64_t value) {
    const int guess = static_cast<int>(std::bit_width(value)) * 1233 >> 12;
    const auto power = static_cast<std::uint64_t>(narrowPowersOfTen[static_cast<std::size_t>(guess)]);
    return guess + (value >= power ? 1 : 0);
}
inline int digitCount(UInt128 value) {
    const std::uint64_t high = highHalf(value);
    if (high == 0) return digitCount(lowHalf(value));
    const int guess = (static_cast<int>(std::bit_width(high)) + 64) * 1233 >> 12;
    return guess + (value >= powerOfTen<UInt128>(guess) ? 1 : 0);
}
template <class Wide>
int digitCount(const Wide& value) {
    if (value.is_zero()) return 0;
    const int guess = static_cast<int>((msb(value) + 1) * 78913 >> 18);
    return guess + (value >= powerOfTen<Wide>(guess) ? 1 : 0);
}

inline void divide(UInt128 value, UInt128 divisor, UInt128& quotient, UInt128& remainder) {
    if (highHalf(value) == 0) {  // then the divisor of interest is as small, and the machine divides
        const bool smaller = value < divisor;
        quotient = smaller ? 0 : lowHalf(value) / lowHalf(divisor);
        remainder = smaller ? value : UInt128{lowHalf(value) % lowHalf(divisor)};
        return;
    }
    quotient = value / divisor;
    remainder = value - quotient * divisor;
}
template <class Wide>
void divide(const Wide& value, const Wide& divisor, Wide& quotient, Wide& remainder) {
    boost::multiprecision::divide_qr(value, divisor, quotient, remainder);
}

}  // namespace vemo
