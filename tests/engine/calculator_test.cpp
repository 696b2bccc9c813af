// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <thread>

#include "support/calculators.h"

namespace vemo::test {
namespace {

using testing::ElementsAre;

std::string joined(const LineResult& line) {
    return utf8(line.text());
}

TEST(Calculator, measuresItsSetUpInOrder) {
    const auto calculator = newCalculator();
    std::vector<std::string> names;
    for (const auto& [name, seconds] : calculator->measurer().info()) names.push_back(name);
    EXPECT_THAT(names, ElementsAre("operators", "operations", "initializeExtractors", "initializeEvaluators",
                                   "initializeFormatters", "initializeUnits", "initializeFunctions",
                                   "initializeCurrency", "initializeCrypto", "initializeDates", "initializeScales",
                                   "initializeConstants", "initializeCss"));
}

TEST(Calculator, definesConstantsWithTheirDigits) {
    const auto calculator = newCalculator();
    Context& context = calculator->context();
    EXPECT_EQ(*context.getVariable(u"pi"), *context.getVariable(u"\u03c0"));
    EXPECT_EQ(context.getVariable(u"pi")->decimal()->toString(), "3.141592653589793");
    EXPECT_EQ(context.getVariable(u"e")->decimal()->toString(), "2.7182818284590452353602874713526624978");
}

TEST(Calculator, splitsAtEveryTerminator) {
    EXPECT_EQ(results("1\n2\r3\r\n4\u00855\u20286\u20297").size(), 7u);
    EXPECT_THAT(results("1\n\n2\n"), ElementsAre("1", "", "2"));
    const auto calculator = newCalculator();
    Context context;
    EXPECT_TRUE(calculator->calculate(u"", context).lines.empty());
    EXPECT_EQ(context.find(u"prev_results"), nullptr);
}

TEST(Calculator, keepsRunningValues) {
    const auto calculator = newCalculator();
    Context context;
    calculator->calculate(u"10\n\n20", context);
    EXPECT_EQ(context.get<ValuesList>(u"prev_results")->size(), 3u);
    EXPECT_EQ(*context.get<Value>(u"prev_result"), Value(DecimalNumber::fromInt64(20)));
    EXPECT_EQ(*context.grandTotalFormatted()->regular, u"30");
}

// A host may calculate with one context as long as it lives.
TEST(Calculator, leavesNothingOfEarlierCalculationsInAContextButItsEntries) {
    const auto calculator = newCalculator();
    calculator->setCachesEnabled(false);
    Context context;
    const std::weak_ptr<const LineResult> first = calculator->calculate(u"unknown + 1", context).lines[0];
    calculator->calculate(u"2", context);
    EXPECT_TRUE(first.expired());
    EXPECT_TRUE(context.hasDependencyOn(u"var_unknown"));
}

TEST(Calculator, startsANewTotalAfterOneThatCannotBeComputed) {
    const auto calculator = newCalculator();
    Context context;
    calculator->calculate(u"10\n(2\n7\n8", context);
    EXPECT_EQ(*context.grandTotalFormatted()->regular, u"15");
}

// Whatever changes above a line, its result is the one a new calculator gives.
TEST(Calculator, recalculatesLinesWhoseNamesChange) {
    const auto calculator = newCalculator();
    const auto last = [&](std::u16string_view text) {
        Context context;
        return utf8(calculator->calculate(text, context).lines.back()->formattedValue().regular.value_or(u"none"));
    };
    EXPECT_EQ(last(u"a = 5\na * 2"), "10");
    EXPECT_EQ(last(u"a = 6\na * 2"), "12");
    EXPECT_EQ(last(u"\nPrice * 2"), "2");
    EXPECT_EQ(last(u"price = 3\nPrice * 2"), "6");
    EXPECT_EQ(last(u"\nhourly rate * 2"), "2");
    EXPECT_EQ(last(u"hourly rate = 7\nhourly rate * 2"), "14");
    EXPECT_EQ(last(u"hourly = 1\nhourly rate * 2"), "2");
    EXPECT_EQ(last(u"x1 = 4\nx1 * 2"), "8");
    EXPECT_EQ(last(u"\nx1 * 2"), "2");  // the letter x multiplies
    EXPECT_EQ(last(u"x1 = 5\nx1 * 2"), "10");
    EXPECT_EQ(last(u"\n東京都 + 1"), "1");  // one run of letters that is cut into several words
    EXPECT_EQ(last(u"東京 = 4\n東京都 + 1"), "5");
    EXPECT_EQ(last(u"東京都 = 6\n東京都 + 1"), "7");
    EXPECT_EQ(last(u"\n東京都 + 1"), "1");
}

TEST(Calculator, recalculatesWhenThePrecisionIsSet) {
    const auto calculator = newCalculator();
    Context plain;
    EXPECT_EQ(*calculator->calculate(u"1/3", plain).lines[0]->formattedValue().regular, u"0.33");
    Context precise;
    precise.setPrecision(5);
    EXPECT_EQ(*calculator->calculate(u"1/3", precise).lines[0]->formattedValue().regular, u"0.33333");
}

TEST(Calculator, takesNoPrecisionBeyondItsBounds) {
    const auto calculator = newCalculator();
    const auto shown = [&](std::int64_t digits) {
        Context context;
        context.setPrecision(digits);
        return calculator->calculateLine(u"2 m in feet and inches", context, false)->formattedValue().regular;
    };
    EXPECT_EQ(shown(40000), shown(999));
    EXPECT_EQ(shown(-1), shown(0));
}

// Memory may run out anywhere, and a host catches that and goes on.
TEST(Calculator, countsNoDepthThatAFailureHasLeft) {
    class Failing : public Function {
        std::optional<Value> evaluate(const std::vector<Value>&, Context&) const override { throw std::bad_alloc(); }
    };
    const auto calculator = newCalculator();
    calculator->functionManager().add(u"failing", {u"failing"}, std::make_shared<Failing>());
    Context context;
    for (int i = 0; i < 200; ++i)
        EXPECT_THROW(calculator->calculateLine(u"2 * (failing 1)", context, false), std::bad_alloc);
    EXPECT_EQ(*calculator->calculateLine(u"2 * (3 + 4)", context, false)->formattedValue().regular, u"14");
}

TEST(Calculator, servesUnchangedLinesFromItsCache) {
    const auto calculator = newCalculator();
    const auto line = [&](std::u16string_view text) {
        Context context;
        return calculator->calculate(text, context).lines.back();
    };
    EXPECT_EQ(line(u"2 + 2"), line(u"1\n2 + 2"));
    const LineResultPointer oldest = line(u"a = 1\na + 0");
    for (const char16_t* text : {u"a = 2\na + 0", u"a = 3\na + 0"}) line(text);
    EXPECT_EQ(line(u"a = 1\na + 0"), oldest);
    line(u"a = 4\na + 0");
    EXPECT_NE(line(u"a = 1\na + 0"), oldest);  // only the three latest are kept
}

TEST(Calculator, tracesEachStep) {
    Environment environment = fixedEnvironment();
    std::vector<std::string> lines;
    environment.trace = [&](std::string_view line) { lines.emplace_back(line); };
    const auto calculator = newCalculator(environment);
    Context context;
    calculator->calculateLine(u"1 + 2", context, true);
    ASSERT_GE(lines.size(), 16u);
    EXPECT_EQ(lines.front(), "=== Debug for '1 + 2' ===");
    EXPECT_THAT(lines, testing::Contains(
                           testing::StartsWith("Extractions for DecimalNumberExtractor: Extraction: {range:{0, 1},")));
    EXPECT_THAT(lines, testing::Contains(testing::StartsWith("Evaluate OperationEvaluator: {decimal: 3}")));
    EXPECT_EQ(lines.back(), "---");
}

// Lines made of the things people write.
rc::Gen<std::u16string> anyDocument() {
    const auto piece = rc::gen::element<std::u16string>(
        u"1", u"2.5", u"1,000", u"0x1f", u"1e3", u" ", u"+", u"-", u"*", u"/", u"^", u"(", u")", u"=", u"%", u"x", u"a",
        u"rent", u"price", u" of ", u" in ", u"cm", u"ft", u"$", u"\u20ac", u"sum", u"prev", u"sqrt ", u"million",
        u"// c", u"# h", u"l:", u"\"q\"", u"time", u"time ", u" in Berlin", u"St Louis ", u"Port-au-Prince", u"abs ",
        u"\u221a", u"today ", u"10:30 ", u"ft2", u"\uff11\uff08", u"\u3000", u"\u0130", u"of milk ", u"\n", u"\n",
        u"\u00b0C", u"\U0001f600", u"\u0661", u"as a % of", u"\t");
    return rc::gen::map(rc::gen::container<std::vector<std::u16string>>(piece), [](const auto& pieces) {
        std::u16string text;
        for (const std::u16string& p : pieces) text += p;
        return text;
    });
}

RC_GTEST_PROP(CalculatorLaws, runsJoinToTheLineAndCachesChangeNothing, ()) {
    static const auto cached = newCalculator();
    static const auto uncached = newCalculator();
    uncached->setCachesEnabled(false);
    const std::u16string text = *anyDocument();
    const auto lines = lineRanges(text);
    Context first, second;
    const auto a = cached->calculate(text, first);
    const auto b = uncached->calculate(text, second);
    RC_ASSERT(a.lines.size() == lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        RC_ASSERT(a.lines[i]->text() == lines[i].in(text));
        RC_ASSERT(a.lines[i]->value() == b.lines[i]->value());
        RC_ASSERT(a.lines[i]->attributedText() == b.lines[i]->attributedText());
        RC_ASSERT(a.lines[i]->formattedValue() == b.lines[i]->formattedValue());
    }
    RC_ASSERT(first.data() == second.data());
}

// Calculators on threads of their own share compiled patterns and tables, and nothing that changes.
TEST(Calculator, worksBesideOthers) {
    std::vector<std::string> totals(4);
    std::vector<std::thread> threads;
    for (std::string& total : totals) {
        threads.emplace_back([&total] {
            const auto calculator = newCalculator();
            for (int run = 0; run < 3; ++run) {
                Context context;
                calculator->calculate(u"a = 1.5e3\n2 km in m // c\n20% of a\nsum\nl: 0xff", context);
            }
            Context context;
            calculator->calculate(u"a = 2\na * 0x10 # h", context);
            total = utf8(*context.grandTotalFormatted()->regular);
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_THAT(totals, testing::Each("0x22"));
}

// A caller may calculate on with a context it got while another thread appends to the same list.
TEST(Calculator, lendsItsRunningValuesToOtherThreads) {
    const auto calculator = newCalculator();
    Context first;
    calculator->calculate(u"1\n2", first);
    Context second = first.copyContext();
    std::thread other([&] {
        const auto theirs = newCalculator();
        for (int i = 0; i < 50; ++i) theirs->calculate(u"3\nsum", second);
    });
    for (int i = 0; i < 50; ++i) calculator->calculate(u"4\nsum", first);
    other.join();
    EXPECT_EQ(first.get<ValuesList>(u"prev_results")->size(), 102u);
    EXPECT_EQ(second.get<ValuesList>(u"prev_results")->size(), 102u);
    EXPECT_NE(*first.get<Value>(u"prev_result"), *second.get<Value>(u"prev_result"));
}

// A line that mentions a name before it is defined is calculated again when it comes or goes.
TEST(Caches, knowNamesThatBeginWithASign) {
    const auto calculator = newCalculator();
    const auto last = [&](std::u16string_view document) {
        Context context;
        return utf8(calculator->calculate(document, context).lines.back()->formattedValue().regular.value_or(u""));
    };
    for (const std::u16string name : {u"@john", u"@ john", u"!x", u"?", u"[a", u".a b", u"~", u"%p", u"john@home"}) {
        const std::u16string line = name + u" + 1";
        const std::string before = last(line);
        EXPECT_EQ(last(name + u" = 20\n" + line), "21") << utf8(name);
        EXPECT_EQ(last(line), before) << utf8(name);
    }
}

std::u16string repeated(std::u16string_view piece, std::size_t count) {
    std::u16string result;
    for (std::size_t i = 0; i < count; ++i) result += piece;
    return result;
}

TEST(HostileInput, endsSoonAndLosesNothing) {
    const auto calculator = newCalculator();
    std::vector<std::u16string> lines{repeated(u"(", 100000), repeated(u"1 + ", 250000)};
    for (const char16_t* piece : {u"(",     u")", u"()", u"((1)",   u"1 + ",   u"a = ", u"-",   u"1 m ",  u"(1)",
                                  u"sqrt ", u"#", u" ",  u"1 ",     u"1,",     u"9",    u"1e",  u"x ",    u"a ",
                                  u"\"",    u"/", u"%",  u"\xd800", u"\u0301", u"$1",   u"in ", u"1 in ", u"sum "}) {
        const std::u16string_view text = piece;
        lines.push_back(repeated(text, 4096 / text.size()));
    }
    lines.emplace_back(u"a\0b 1", 5);
    for (const std::u16string& line : lines) {
        Context context;
        const auto start = std::chrono::steady_clock::now();
        const auto result = calculator->calculateLine(line, context, false);
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(result->text(), line);
        EXPECT_LT(elapsed.count(), 20) << joined(*result).substr(0,
                                                                 20);  // far above what it takes, sanitizers included
    }
    Context context;
    EXPECT_TRUE(calculator->calculateLine(lines[0], context, false)->value().isEmpty());  // text, that long
    EXPECT_TRUE(calculator->calculateLine(repeated(u"(", 300) + u"1" + repeated(u")", 300), context, false)
                    ->value()
                    .has(Attribute::error));
    EXPECT_EQ(*calculator->calculateLine(repeated(u"(", 40) + u"1" + repeated(u")", 40), context, false)
                   ->formattedValue()
                   .regular,
              u"1");
    // Not a number that leaves out what lies too deep.
    EXPECT_TRUE(calculator->calculateLine(repeated(u"(1+", 105) + u"1" + repeated(u")", 105) + u"+ 7", context, false)
                    ->value()
                    .has(Attribute::error));
    EXPECT_EQ(
        *calculator->calculateLine(u"5" + repeated(u" ", 2000) + u"# + 100", context, false)->formattedValue().regular,
        u"5");
}

TEST(LongLines, areTextThatLeavesTheTotalAlone) {
    const std::string prose = std::string("5 words ") + std::string(5000, 'a');
    EXPECT_THAT(results("2\n3\n" + prose + "\nsum\n7\nsum"), ElementsAre("2", "3", "", "", "7", "7"));
    EXPECT_EQ(results("2\n" + prose), results("2\nwords"));
    const auto calculator = newCalculator();
    Context context;
    const std::u16string filler = repeated(u" x 5", 5000);
    const std::u16string document =
        u"2\n1 + 2 // and" + filler + u"\n# head" + filler + u"\n\"quoted" + filler + u"\"\n" + filler;
    std::vector<std::string> seen;
    for (const auto& line : calculator->calculate(document, context).lines) {
        EXPECT_FALSE(line->value().has(Attribute::error));
        RunType last = RunType::none;
        line->attributedText().enumerate([&](std::u16string_view, RunType type, std::size_t) { last = type; });
        seen.push_back(utf8(line->formattedValue().regular.value_or(u"-")) + " " +
                       std::to_string(static_cast<int>(last)));
    }
    const auto ends = [](RunType type) { return " " + std::to_string(static_cast<int>(type)); };
    EXPECT_THAT(seen,
                ElementsAre("2" + ends(RunType::number), "3" + ends(RunType::comment), "-" + ends(RunType::header),
                            "-" + ends(RunType::comment), "-" + ends(RunType::none)));
    EXPECT_EQ(*context.get<Value>(u"grand_total"), Value(DecimalNumber::fromInt64(5)));
}

// What a line of a script without blanks depends on grows with its length, not faster.
TEST(HostileInput, takesNoMoreMemoryThanItsLength) {
    const auto calculator = newCalculator();
    std::u16string line;
    for (std::size_t i = 0; i < 4000; ++i) line += static_cast<char16_t>(0x4e00 + i * 7919 % 0x5000);
    Context context;
    std::size_t units = 0;
    calculator->calculateLine(line, context, false)->absentKeys([&](std::u16string_view key) { units += key.size(); });
    EXPECT_LT(units, 300 * line.size());
}

}  // namespace
}  // namespace vemo::test
