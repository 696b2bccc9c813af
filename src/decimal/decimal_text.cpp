// SPDX-License-Identifier: MIT
// Decimal numbers to and from text and binary floating point.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "decimal/decimal_rounding.h"

namespace vemo {

namespace {

constexpr std::int64_t exponentLimit = 1'000'000'000;  // far out of range, whatever the digits

template <class Character>
class NumberReader {
public:
    NumberReader(std::basic_string_view<Character> text, std::basic_string_view<Character> separator)
        : text_(text), separator_(separator) {}

    DecimalNumber read() {
        const bool negative = readSign();
        readDigits(0);
        if (!separator_.empty() && text_.substr(position_, separator_.size()) == separator_) {
            position_ += separator_.size();
            readDigits(1);
        }
        if (!anyDigit_) return DecimalNumber::notANumberValue();
        const std::int64_t exponent = std::clamp(exponent_ + readExponent(), -exponentLimit, exponentLimit);
        if (mantissa_ == 0) return DecimalNumber();
        return rounded(ExactDecimal<UInt128>{mantissa_, static_cast<int>(exponent), negative, tail_},
                       {RoundingMode::bankers, RoundingBehavior::noScale}, nullptr);
    }

private:
    bool at(char16_t character) const { return position_ < text_.size() && text_[position_] == Character(character); }
    bool atDigit() const { return position_ < text_.size() && text_[position_] >= '0' && text_[position_] <= '9'; }

    bool readSign() {
        const bool negative = at(u'-');
        if (negative || at(u'+')) ++position_;
        return negative;
    }

    void readDigits(int exponentStep) {
        for (; atDigit(); ++position_) {
            const auto digit = static_cast<unsigned>(text_[position_] - Character('0'));
            anyDigit_ = true;
            exponent_ -= exponentStep;
            if (mantissa_ < narrowPowersOfTen[37]) {
                mantissa_ = mantissa_ * 10 + digit;
                continue;
            }
            ++exponent_;
            if (!full_) {
                tail_ = digit == 0   ? Tail::none
                        : digit < 5  ? Tail::belowHalf
                        : digit == 5 ? Tail::half
                                     : Tail::aboveHalf;
                full_ = true;
            } else if (digit != 0) {
                tail_ = tail_ == Tail::none ? Tail::belowHalf : tail_ == Tail::half ? Tail::aboveHalf : tail_;
            }
        }
    }

    std::int64_t readExponent() {
        if (!at(u'e') && !at(u'E')) return 0;
        ++position_;
        const bool negative = readSign();
        std::int64_t value = 0;  // without digits the prefix ends before the letter
        for (; atDigit(); ++position_) {
            value = std::min(value * 10 + static_cast<std::int64_t>(text_[position_] - Character('0')), exponentLimit);
        }
        return negative ? -value : value;
    }

    std::basic_string_view<Character> text_;
    std::basic_string_view<Character> separator_;
    std::size_t position_ = 0;
    UInt128 mantissa_ = 0;
    std::int64_t exponent_ = 0;
    Tail tail_ = Tail::none;
    bool anyDigit_ = false;
    bool full_ = false;  // 38 digits are in, the next ones only decide the rounding
};

// Writes the digits so that they end at `end`; returns their start.
char* writeDigits(UInt128 value, char* end) {
    constexpr std::uint64_t chunk = 10'000'000'000'000'000'000U;
    while (highHalf(value) != 0) {
        auto part = static_cast<std::uint64_t>(value % chunk);
        value /= chunk;
        for (int i = 0; i < 19; ++i, part /= 10) *--end = static_cast<char>('0' + part % 10);
    }
    std::uint64_t rest = lowHalf(value);
    do {
        *--end = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    return end;
}

}  // namespace

DecimalNumber DecimalNumber::parse(std::string_view text) {
    return NumberReader<char>(text, ".").read();
}

DecimalNumber DecimalNumber::parse(std::u16string_view text, std::u16string_view decimalSeparator) {
    return NumberReader<char16_t>(text, decimalSeparator).read();
}

std::string DecimalNumber::toString() const {
    if (notANumber()) return "NaN";
    char buffer[40];
    char* const end = buffer + sizeof buffer;
    const std::string_view digits(writeDigits(mantissaOf(*this), end), end);
    std::string result;
    if (isNegative()) result += '-';
    if (exponent_ >= 0) {
        result.append(digits).append(static_cast<std::size_t>(exponent_), '0');
        return result;
    }
    const auto fraction = static_cast<std::size_t>(-exponent_);
    if (digits.size() > fraction) {
        result.append(digits.substr(0, digits.size() - fraction)).append(1, '.');
        return result.append(digits.substr(digits.size() - fraction));
    }
    return result.append("0.").append(fraction - digits.size(), '0').append(digits);
}

DecimalNumber DecimalNumber::fromDouble(double value) {
    if (!std::isfinite(value)) return notANumberValue();
    constexpr double exactIntegers = 9007199254740992.0;  // 2^53
    if (std::abs(value) < exactIntegers && std::trunc(value) == value) {
        return fromInt64(static_cast<std::int64_t>(value));
    }
    char buffer[32];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    return parse(std::string_view(buffer, static_cast<std::size_t>(written.ptr - buffer)));
}

double DecimalNumber::toDouble() const {
    if (notANumber()) return std::numeric_limits<double>::quiet_NaN();
    static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (high_ == 0 && low_ < (std::uint64_t{1} << 53) && exponent_ >= -22 && exponent_ <= 22) {
        // Both factors are exact, so the one operation rounds once.
        const auto mantissa = static_cast<double>(low_);
        const double magnitude = exponent_ < 0 ? mantissa / powers[-exponent_] : mantissa * powers[exponent_];
        return isNegative() ? -magnitude : magnitude;
    }
    char buffer[64];
    char* const digitsEnd = buffer + 48;
    char* start = writeDigits(mantissaOf(*this), digitsEnd);
    if (isNegative()) *--start = '-';
    *digitsEnd = 'e';
    const auto written = std::to_chars(digitsEnd + 1, buffer + sizeof buffer, int{exponent_});
    *written.ptr = '\0';
    // There is no point in it that could be another locale's.
    return std::strtod(start, nullptr);
}

}  // namespace vemo
