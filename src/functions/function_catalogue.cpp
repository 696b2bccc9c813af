// SPDX-License-Identifier: MIT
#include "functions/function_catalogue.h"

#include "decimal/decimal_math.h"
#include "functions/date_functions.h"
#include "functions/function_manager.h"
#include "functions/functions_of_values.h"
#include "functions/line_aggregates.h"
#include "functions/mathematical_functions.h"
#include "functions/trigonometric_functions.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

struct FunctionRow {
    std::u16string_view id;
    std::u16string_view phrases;  // a key of the table, or the one phrase when there is no table
    std::u16string_view table;
    std::shared_ptr<const Function> function;
    bool offered = true;  // as a completion
};

}  // namespace

void registerFunctions(FunctionManager& functions, const Localizer& localizer, const Reduction& reduction,
                       const UnitConverter& unitConverter) {
    using namespace formulas;
    const FunctionRow rows[] = {
        {u"sqrt", u"sqrt.variants", u"Operations", unaryFunction(squareRoot)},
        {u"root", u"root", u"", binaryFunction(root)},
        {u"cbrt", u"cbrt.variants", u"Operations", unaryFunction(cubeRoot)},
        {u"abs", u"abs", u"", unaryFunction([](const DecimalNumber& x) { return x.abs(); })},
        {u"log", u"log", u"", binaryFunction(logarithm)},
        {u"ln", u"ln", u"", unaryFunction(mxLn)},
        {u"fact", u"fact", u"", unaryFunction(mxFactorial)},
        {u"sin", u"sin", u"", trigonometricFunction(AngleRatio::sine, unitConverter)},
        {u"cos", u"cos", u"", trigonometricFunction(AngleRatio::cosine, unitConverter)},
        {u"tan", u"tan", u"", trigonometricFunction(AngleRatio::tangent, unitConverter)},
        {u"arcsin", u"arcsin", u"", inverseTrigonometricFunction(arcsineInDegrees)},
        {u"arccos", u"arccos", u"", inverseTrigonometricFunction(arccosineInDegrees)},
        {u"arctan", u"arctan", u"", inverseTrigonometricFunction(arctangentInDegrees)},
        {u"arcsin", u"asin", u"", inverseTrigonometricFunction(arcsineInDegrees)},
        {u"arccos", u"acos", u"", inverseTrigonometricFunction(arccosineInDegrees)},
        {u"arctan", u"atan", u"", inverseTrigonometricFunction(arctangentInDegrees)},
        {u"sinh", u"sinh", u"", unaryFunction(mxSinh)},
        {u"cosh", u"cosh", u"", unaryFunction(mxCosh)},
        {u"tanh", u"tanh", u"", unaryFunction(mxTanh)},
        {u"round", u"round", u"", roundFunction()},
        {u"exp", u"exp", u"", unaryFunction([](const DecimalNumber& x) { return mxPower(mxE(), x); })},
        {u"log10", u"log10", u"", unaryFunction(mxLog10)},
        {u"log10", u"lg", u"", unaryFunction(mxLog10)},
        {u"log2", u"log2", u"",
         unaryFunction([](const DecimalNumber& x) { return mxNthLog(x, DecimalNumber::fromInt64(2)); })},
        {u"ceil", u"ceil", u"", unaryFunction(ceiling)},
        {u"floor", u"floor", u"", unaryFunction(formulas::floor)},
        {u"ceil", u"round up", u"", unaryFunction(ceiling), false},
        {u"floor", u"round down", u"", unaryFunction(formulas::floor), false},
        {u"sum", u"sum.variants", u"Operations", sumToken(reduction)},
        {u"avg", u"avg.variants", u"Operations", avgToken(reduction)},
        {u"min", u"min.variants", u"Operations", minimumToken(reduction)},
        {u"max", u"max.variants", u"Operations", maximumToken(reduction)},
        {u"median", u"median.variants", u"Operations", medianToken(reduction)},
        {u"count", u"count.variants", u"Operations", countToken()},
        {u"gcd", u"gcd.variants", u"Operations", greatestDivisor()},
        {u"lcm", u"lcm.variants", u"Operations", leastMultiple()},
        {u"prev", u"prev.variants", u"Operations", prevToken()},
        {u"today", u"today.variants", u"Dates", todayFunction()},
        {u"yesterday", u"yesterday.variants", u"Dates", yesterdayFunction()},
        {u"tomorrow", u"tomorrow.variants", u"Dates", tomorrowFunction()},
        {u"fromunixtime", u"fromunix", u"", fromUnixTimeFunction()},
        {u"fromunixtime", u"unixtime", u"", fromUnixTimeFunction()},
        {u"local_tz", u"local_time.variants", u"Dates", localTimeZoneFunction()},
        {u"gmt", u"gmt", u"", gmtFunction()},
        {u"time", u"current_time.variants", u"Dates", timeFunction()},
    };
    std::vector<std::u16string> ofWords = localizer.variants(u"percent_of.variants", u"Percent");
    std::erase_if(ofWords, [](const std::u16string& words) { return words.find(u' ') != words.npos; });
    for (const FunctionRow& row : rows) {
        std::vector<std::u16string> phrases{std::u16string(row.phrases)};
        if (!row.table.empty()) phrases = localizer.variants(row.phrases, row.table);
        // "sqrt of 16"
        const bool ofNumbers = row.function->takesSigns() || row.table == u"Operations";
        for (std::size_t i = 0, count = ofNumbers ? phrases.size() : 0; i < count; ++i)
            for (const std::u16string& of : ofWords) phrases.push_back(phrases[i] + u" " + of);
        functions.add(std::u16string(row.id), phrases, row.function, row.offered);
    }
}

}  // namespace vemo
