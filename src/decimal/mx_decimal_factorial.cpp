// SPDX-License-Identifier: MIT
#include <array>
#include <boost/multiprecision/cpp_int.hpp>

#include "decimal/decimal_math.h"
#include "decimal/precise.h"

namespace vemo {

namespace {

// Spouge's approximation of the gamma function with as many terms has an error below 10^-45.
constexpr int gammaTerms = 58;

const std::array<Precise, gammaTerms>& gammaCoefficients() {
    static const auto coefficients = [] {
        std::array<Precise, gammaTerms> result;
        result[0] = squareRoot(4 * preciseHalfPi());
        Precise factorial = 1;
        for (int k = 1; k < gammaTerms; ++k) {
            const Precise rest = gammaTerms - k;
            const Precise term = pow(rest, k) / squareRoot(rest) * exponential(rest) / factorial;
            result[static_cast<std::size_t>(k)] = k % 2 == 1 ? term : Precise(-term);
            factorial *= k;
        }
        return result;
    }();
    return coefficients;
}

// The factorial of a fraction above -1.
Precise factorialAbove(const Precise& value) {
    const auto& coefficients = gammaCoefficients();
    Precise sum = coefficients[0];
    for (int k = 1; k < gammaTerms; ++k) sum += coefficients[static_cast<std::size_t>(k)] / (value + k);
    const Precise base = value + gammaTerms;
    return exponential(logarithm(base) * (value + 0.5) - base) * sum;
}

DecimalNumber factorialOfFraction(const DecimalNumber& value) {
    // Beyond these the result is too large, or too small.
    constexpr int largest = 120;
    constexpr int smallest = -200;
    const Precise x = precise(value);
    if (x > largest) return DecimalNumber::notANumberValue();
    if (x < smallest) return DecimalNumber();
    if (x > -0.5) return decimal(factorialAbove(x));
    // x! (-1 - x)! = -pi / sin(pi x)
    const Precise pi = 2 * preciseHalfPi();
    return decimal(-pi / (sin(Precise(pi * x)) * factorialAbove(-1 - x)));
}

}  // namespace

DecimalNumber mxFactorial(const DecimalNumber& value) {
    if (value.notANumber()) return value;
    if (!mxIsInteger(value)) return factorialOfFraction(value);
    constexpr std::uint64_t largest = 103;
    const std::uint64_t count = mxAbsoluteValue(value).toUInt64();
    if (count > largest) return DecimalNumber::notANumberValue();
    boost::multiprecision::cpp_int product = 1;
    for (std::uint64_t factor = 2; factor <= count; ++factor) product *= factor;
    return DecimalNumber::parse(product.str());
}

}  // namespace vemo
