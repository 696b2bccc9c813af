// SPDX-License-Identifier: MIT
// Every line of up to four tokens, alone and in documents of three lines, in every language: what a cache remembers is
// what a fresh calculation gives, a change that is undone leaves no trace, and the runs of a line join to it.
// A sample by default; all of them with VEMO_EXHAUSTIVE=1 in the environment.

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "support/calculators.h"

namespace vemo::test {
namespace {

constexpr const char* tokens[] = {"2",     "0.5",  "1,200", "kg",   "cm", "$",   "EUR", "%",   "+",   "-",
                                  "*",     "/",    "^",     "(",    ")",  "=",   "in",  "of",  "x",   "a b",
                                  "rent",  ":",    "sum",   "sqrt", "//", "#",   "\"",  "May", "now", "k",
                                  "10:30", "cafe", "²",     "!",    ";",  "max", "two"};
constexpr std::size_t tokenCount = std::size(tokens);
constexpr std::size_t longest = 4;    // tokens of a line
constexpr std::size_t sample = 3000;  // lines of each language

std::string lineNumber(std::size_t number, bool blanks) {
    std::string line;
    for (; number > 0; number /= tokenCount + 1) {
        const std::size_t token = number % (tokenCount + 1);
        if (token == 0) continue;
        if (blanks && !line.empty()) line += ' ';
        line += tokens[token - 1];
    }
    return line;
}

struct Seen {
    std::string text;
    AttributedText runs;
    FormattedValue formatted;
    Value value;
    friend bool operator==(const Seen&, const Seen&) = default;
};

std::ostream& operator<<(std::ostream& out, const Seen& seen) {
    return out << '\'' << seen.text << "' = " << utf8(seen.formatted.regular.value_or(u"(nothing)"));
}

std::vector<Seen> calculated(Calculator& calculator, const std::string& document) {
    Context context;
    std::vector<Seen> lines;
    for (const LineResultPointer& line : calculator.calculate(utf16(document), context).lines) {
        lines.push_back({utf8(line->text()), line->attributedText(), line->formattedValue(), line->value()});
        EXPECT_EQ(line->attributedText().compoundString(), line->text());
    }
    return lines;
}

class Exhaustive : public testing::TestWithParam<const char*> {};

TEST_P(Exhaustive, whatACacheRemembersIsWhatAFreshCalculationGives) {
    Environment environment = fixedEnvironment();
    environment.language = GetParam();
    const auto cached = newCalculator(environment);
    const auto fresh = newCalculator(environment);
    fresh->setCachesEnabled(false);

    std::size_t all = 1;
    for (std::size_t i = 0; i < longest; ++i) all *= tokenCount + 1;
    const bool whole = std::getenv("VEMO_EXHAUSTIVE") != nullptr;
    std::mt19937_64 random(20261125);
    const auto some = [&] { return lineNumber(random() % all, random() % 4 != 0); };

    for (std::size_t i = 0; i < (whole ? all : sample); ++i) {
        const std::string line = whole ? lineNumber(i, true) : some();
        const std::vector<Seen> expected = calculated(*fresh, line);
        ASSERT_EQ(calculated(*cached, line), expected) << "cold";
        ASSERT_EQ(calculated(*cached, line), expected) << "warm";

        // Beside a line that may define what it mentions, and one that may use what it defines.
        const std::string before = some() + "\n", after = "\n" + some(), other = some();
        const std::vector<Seen> document = calculated(*fresh, before + line + after);
        ASSERT_EQ(calculated(*cached, before + line + after), document) << before << line << after;
        const std::string edited = before + other + after;
        ASSERT_EQ(calculated(*cached, edited), calculated(*fresh, edited)) << edited;
        const std::string defined = "rent = 7\na b = 3 kg\n" + line + after;
        ASSERT_EQ(calculated(*cached, defined), calculated(*fresh, defined)) << defined;
        ASSERT_EQ(calculated(*cached, before + line + after), document) << "undone: " << before << line << after;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, Exhaustive, testing::Values("en", "de", "fr", "es", "ja"));

}  // namespace
}  // namespace vemo::test
