// SPDX-License-Identifier: MIT
// Lines as they were calculated: bracketed, with what was not written.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <tuple>

#include "support/calculators.h"
#include "vemo/engine.h"

namespace vemo::test {
namespace {

class ReadingTest : public testing::Test {
protected:
    ReadingTest() : engine_(fixedEnvironment()) {
        VemoEngine::Config config;
        config.testMode = true;
        engine_.buildVemoWorker(config);
    }

    // Of the last line; "-" for none.
    std::string reading(const std::string& text) {
        const std::u16string document = utf16(text);
        const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
        return utf8(engine_.readingOf(lines, document, Context()).value_or(u"-"));
    }

    std::optional<DecimalNumber> number(const std::string& text) {
        Context context;
        return engine_.calculateSync(utf16(text), context)->lines.back().value().decimal();
    }

    VemoEngine engine_;
};

TEST_F(ReadingTest, showsEveryBracketAndImplicitStep) {
    constexpr std::pair<const char*, const char*> rows[] = {
        {"2 (3 + 4)", "2 × (3 + 4)"},
        {"2 + 3 * 4 ^ 2", "2 + (3 × (4 ^ 2))"},
        {"total: 10 - 2 - 3 // weekly", "(10 - 2) - 3"},
        {"2 - -3", "2 - (-3)"},
        {"sqrt (16 + 9) + 1", "sqrt (16 + 9) + 1"},
        {"5 ft 3 in", "5 ft + 3 in"},
        {"Coffee $3, cake $4", "$3 + $4"},
        {"20% off $80", "$80 × (1 - 20%)"},
        {"$50 + 20%", "$50 × (1 + 20%)"},
        {"5% of what is 20", "(20 ÷ 5) × 100"},
        {"5 inch in cm", "5 in in cm"},
        {"1,5 + 2", "15 + 2"},  // what the digits were taken for
        {"1/3", "1 ÷ 3"},
        {"Rent * 12", "12"},
        {"rent = 1/3\nrent * 3", "0.33333333333333333333333333333333333334 × 3"},
        {"rent = 5 + 7\nrent", "12"},
        {"// nothing", "-"},
        {"(2 + 3", "-"},
        {"plain words", "-"},
    };
    for (const auto& [line, expected] : rows) EXPECT_EQ(reading(line), expected) << line;
}

TEST_F(ReadingTest, isOfTheLineAskedForAndChangesNothing) {
    const std::u16string document = u"a = 2\na * 3\na * 4";
    EXPECT_EQ(engine_.readingOf(1, document, Context()), u"2 × 3");
    EXPECT_EQ(engine_.readingOf(3, document, Context()), std::nullopt);
    Context given;
    given.setValue(Value(DecimalNumber::fromInt64(7)), u"b");
    EXPECT_EQ(engine_.readingOf(0, u"b + 1", given), u"7 + 1");
    EXPECT_FALSE(given.getVariable(u"a"));
}

TEST_F(ReadingTest, aLongSumIsReadInTime) {
    std::string sum = "1";
    while (sum.size() < 4000) sum += " + 10%";
    EXPECT_LT(reading(sum).size(), 20 * sum.size());
}

// An expression of numbers and the four operations, with brackets here and there.
rc::Gen<std::string> expressions(int depth) {
    const auto literal = rc::gen::map(rc::gen::inRange(1, 1000), [](int n) {
        return n % 3 == 0 ? std::to_string(n / 10) + "." + std::to_string(n % 10) : std::to_string(n);
    });
    if (depth == 0) return literal;
    const auto deeper = rc::gen::map(
        rc::gen::tuple(expressions(depth - 1), rc::gen::element<std::string>(" + ", " - ", " * ", " / ", " "),
                       expressions(depth - 1), rc::gen::arbitrary<bool>()),
        [](const auto& parts) {
            const auto& [left, op, right, brackets] = parts;
            if (op == " ") return "(" + left + ") (" + right + ")";
            const std::string whole = left + op + right;
            return brackets ? "(" + whole + ")" : whole;
        });
    return rc::gen::oneOf(literal, deeper, deeper);
}

RC_GTEST_FIXTURE_PROP(ReadingTest, calculatedAsALineGivesTheResult, ()) {
    const std::string line = *expressions(4);
    const std::string read = reading(line);
    const auto result = number(line);
    if (read == "-") {
        RC_ASSERT(!result || result->notANumber());
        return;
    }
    RC_LOG() << read << std::endl;
    RC_ASSERT(number(read) == result);
}

}  // namespace
}  // namespace vemo::test
