// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vemo {

class DecimalAccess;  // assembles results inside the library

// How a result that does not fit is rounded.
enum class RoundingMode : std::uint8_t {
    plain,    // to nearest, half away from zero
    down,     // towards minus infinity
    up,       // towards plus infinity
    bankers,  // to nearest, half to even
};

// A rounding mode and the number of digits kept after the decimal point (may be negative).
// Whatever the scale, at most 38 significant digits are kept.
struct RoundingBehavior {
    static constexpr std::int16_t noScale = INT16_MAX;

    RoundingMode mode = RoundingMode::bankers;
    std::int16_t scale = noScale;
};

// Every addition, subtraction, multiplication and division of the engine rounds like this.
inline constexpr RoundingBehavior standardBehavior{RoundingMode::up, RoundingBehavior::noScale};

// What happened to the exact result of an operation.
enum class DecimalStatus : std::uint8_t {
    exact,
    lossOfPrecision,
    underflow,     // not zero, yet smaller in magnitude than 10^-128
    overflow,      // result is not-a-number
    divideByZero,  // result is not-a-number
};

// A decimal number: ± mantissa × 10^exponent with up to 38 significant digits and an exponent from -128 to 127, or
// not-a-number. Trivially copyable; equal numbers have equal representations (no trailing zeros in the mantissa while
// the exponent allows, zero is +0 × 10^0). Each operation rounds its exact result once, to 38 digits and to the scale
// together. A result out of range, a division by zero and any operation on not-a-number give not-a-number; nothing
// throws. Safe to read from several threads.
class DecimalNumber {
public:
    static constexpr int maxDigits = 38;
    static constexpr int minExponent = -128;
    static constexpr int maxExponent = 127;

    constexpr DecimalNumber() = default;  // zero
    static DecimalNumber fromInt64(std::int64_t value);
    static DecimalNumber fromUInt64(std::uint64_t value);
    // The shortest decimal that reads back as `value` (at most 17 digits); infinities and NaN give not-a-number.
    static DecimalNumber fromDouble(double value);
    static constexpr DecimalNumber notANumberValue() {
        DecimalNumber result;
        result.flags_ = nanFlag;
        return result;
    }
    // ± (high × 2^64 + low) × 10^exponent, rounded half to even when it does not fit.
    static DecimalNumber fromParts(std::uint64_t high, std::uint64_t low, int exponent, bool negative);

    // Reads the longest prefix of the form [+-] digits [. digits] [e [+-] digits] (either part of the
    // digits may be missing, not both); no such prefix gives not-a-number. More than 38 digits are
    // rounded half to even. `decimalSeparator` may be of several characters.
    static DecimalNumber parse(std::string_view text);
    static DecimalNumber parse(std::u16string_view text, std::u16string_view decimalSeparator = u".");

    // Canonical text: no exponent, no grouping, "." as separator, no trailing zeros; "NaN".
    std::string toString() const;
    double toDouble() const;         // nearest double; not-a-number gives a quiet NaN
    std::int64_t toInt64() const;    // fraction dropped, clamped to the range; not-a-number gives 0
    std::uint64_t toUInt64() const;  // the same; negative numbers give 0

    bool notANumber() const { return (flags_ & nanFlag) != 0; }
    bool isZero() const { return flags_ == 0 && high_ == 0 && low_ == 0; }
    bool isNegative() const { return flags_ == negativeFlag; }
    // The mantissa is mantissaHigh × 2^64 + mantissaLow.
    std::uint64_t mantissaHigh() const { return high_; }
    std::uint64_t mantissaLow() const { return low_; }
    int exponent() const { return exponent_; }

    // The status, where one is asked for, tells how the result differs from the exact one. 0 to the power of 0 is 1.
    DecimalNumber adding(const DecimalNumber& other, RoundingBehavior = standardBehavior,
                         DecimalStatus* = nullptr) const;
    DecimalNumber subtracting(const DecimalNumber& other, RoundingBehavior = standardBehavior,
                              DecimalStatus* = nullptr) const;
    DecimalNumber multiplying(const DecimalNumber& other, RoundingBehavior = standardBehavior,
                              DecimalStatus* = nullptr) const;
    DecimalNumber dividing(const DecimalNumber& other, RoundingBehavior = standardBehavior,
                           DecimalStatus* = nullptr) const;
    DecimalNumber raising(std::uint64_t power, RoundingBehavior = standardBehavior, DecimalStatus* = nullptr) const;
    DecimalNumber multiplyingByPowerOf10(int power, RoundingBehavior = standardBehavior,
                                         DecimalStatus* = nullptr) const;
    DecimalNumber rounding(RoundingBehavior, DecimalStatus* = nullptr) const;

    DecimalNumber negative() const;  // × -1
    DecimalNumber abs() const;
    DecimalNumber round(std::int16_t scale) const;  // half away from zero
    DecimalNumber integer() const;                  // towards minus infinity: -2.5 gives -3
    DecimalNumber fraction() const;                 // the number minus integer(): -2.5 gives 0.5
    int fractionDigitsCount() const;                // digits after "." in the canonical text

    // Three-way comparison; nothing when either is not-a-number.
    static std::optional<int> compare(const DecimalNumber& a, const DecimalNumber& b);
    // Numeric equality; not-a-number equals not-a-number.
    friend bool operator==(const DecimalNumber& a, const DecimalNumber& b) {
        return a.low_ == b.low_ && a.high_ == b.high_ && a.exponent_ == b.exponent_ && a.flags_ == b.flags_;
    }
    friend bool operator!=(const DecimalNumber& a, const DecimalNumber& b) { return !(a == b); }
    // Equal numbers have equal hashes.
    std::size_t hash() const;

private:
    friend class DecimalAccess;

    static constexpr std::uint8_t negativeFlag = 1;
    static constexpr std::uint8_t nanFlag = 2;

    std::uint64_t low_ = 0;
    std::uint64_t high_ = 0;
    std::int8_t exponent_ = 0;
    std::uint8_t flags_ = 0;
};

}  // namespace vemo
