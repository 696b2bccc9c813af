// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "decimal/decimal_math.h"
#include "decimal/precise.h"

namespace vemo {

namespace {

using Function = std::function<DecimalNumber(const DecimalNumber&, const DecimalNumber&)>;

Function ofOne(DecimalNumber (*function)(const DecimalNumber&)) {
    return [function](const DecimalNumber& a, const DecimalNumber&) { return function(a); };
}

const std::map<std::string, Function>& functions() {
    static const std::map<std::string, Function> all = {
        {"sin", ofOne(mxSin)},
        {"cos", ofOne(mxCos)},
        {"tan", ofOne(mxTan)},
        {"csc", ofOne(mxCsc)},
        {"sec", ofOne(mxSec)},
        {"cot", ofOne(mxCot)},
        {"asin", ofOne(mxAsin)},
        {"acos", ofOne(mxAcos)},
        {"atan", ofOne(mxAtan)},
        {"acsc", ofOne(mxAcsc)},
        {"asec", ofOne(mxAsec)},
        {"acot", ofOne(mxAcot)},
        {"sinh", ofOne(mxSinh)},
        {"cosh", ofOne(mxCosh)},
        {"tanh", ofOne(mxTanh)},
        {"csch", ofOne(mxCsch)},
        {"sech", ofOne(mxSech)},
        {"coth", ofOne(mxCoth)},
        {"asinh", ofOne(mxAsinh)},
        {"acosh", ofOne(mxAcosh)},
        {"atanh", ofOne(mxAtanh)},
        {"acsch", ofOne(mxAcsch)},
        {"asech", ofOne(mxAsech)},
        {"acoth", ofOne(mxAcoth)},
        {"sqrt", ofOne(mxSqrt)},
        {"ln", ofOne(mxLn)},
        {"log10", ofOne(mxLog10)},
        {"nthRoot", mxNthRoot},
        {"power", mxPower},
        {"nthLog", mxNthLog},
        {"mod", mxMod},
        {"factorial", ofOne(mxFactorial)},
    };
    return all;
}

// The difference in units of max(1, |reference|).
double errorOf(const DecimalNumber& result, const Precise& reference) {
    const Precise magnitude = abs(reference);
    return static_cast<double>(abs(precise(result) - reference) / (magnitude > 1 ? magnitude : Precise(1)));
}

}  // namespace

TEST(DecimalAccuracy, everyFunctionErrsByNoMoreThanItsLastDigits) {
    struct Worst {
        double error = 0;
        std::string arguments;
        int count = 0;
    };
    std::map<std::string, Worst> worst;
    std::ifstream file(std::string(VEMO_TEST_DATA_DIR) + "/decimal/references.txt");
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::string name, a, b, reference;
        std::istringstream(line) >> name >> a >> b >> reference;
        const DecimalNumber result = functions().at(name)(DecimalNumber::parse(a), DecimalNumber::parse(b));
        Worst& of = worst[name];
        ++of.count;
        ASSERT_EQ(result.notANumber(), reference == "NaN") << line << "\ngives " << result.toString();
        if (result.notANumber()) continue;
        const double error = errorOf(result, Precise(reference));
        EXPECT_LE(error, 1e-36) << line << "\ngives " << result.toString();
        if (error > of.error) of = {error, a + (b == "0" ? "" : ", " + b), of.count};
    }
    ASSERT_EQ(worst.size(), functions().size());
    for (const auto& [name, of] : worst) {
        std::printf("%-9s %4d arguments, worst error %.1e at %s\n", name.c_str(), of.count, of.error,
                    of.arguments.c_str());
    }
}

TEST(DecimalAccuracy, resultsWithFewDigitsAreExact) {
    const auto decimalOf = [](const char* text) { return DecimalNumber::parse(text); };
    EXPECT_EQ(mxNthRoot(decimalOf("125"), decimalOf("3")).toString(), "5");
    EXPECT_EQ(mxNthRoot(decimalOf("1024"), decimalOf("-10")).toString(), "0.5");
    EXPECT_EQ(mxSqrt(decimalOf("152415787532388367501905199875019052100")).toString(), "12345678901234567890");
    EXPECT_EQ(mxPower(decimalOf("0.25"), decimalOf("-1.5")).toString(), "8");
    EXPECT_EQ(mxLog10(decimalOf("1e-73")).toString(), "-73");
    EXPECT_EQ(mxNthLog(decimalOf("531441"), decimalOf("3")).toString(), "12");
    EXPECT_EQ(mxMod(decimalOf("1e40"), decimalOf("7")).toString(), "4");
    EXPECT_EQ(mxMod(decimalOf("-1e127"), decimalOf("0.3")).toString(), "0.2");
    EXPECT_EQ(mxFactorial(decimalOf("-0.5")), mxSqrt(mxPi()));
    EXPECT_EQ(mxSinh(decimalOf("-290")), mxNegated(mxSinh(decimalOf("290"))));
}

}  // namespace vemo
