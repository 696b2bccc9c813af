// SPDX-License-Identifier: MIT
// Functions of the lines above, where each line of a long document asks for them.

#include <gtest/gtest.h>

#include "functions/functions_of_values.h"
#include "functions/line_aggregates.h"
#include "support/calculators.h"
#include "vemo/context_keys.h"

namespace vemo::test {
namespace {

// The calculator's, which tells how often it was asked.
class CountingReduction : public Reduction {
public:
    explicit CountingReduction(const Reduction& reduction) : reduction_(reduction) {}
    std::optional<Value> apply(std::u16string_view id, const Value& left, const Value& right,
                               Context& context) const override {
        ++count;
        return reduction_.apply(id, left, right, context);
    }

    mutable std::size_t count = 0;

private:
    const Reduction& reduction_;
};

using Make = std::shared_ptr<const Function> (*)(const Reduction&);
constexpr Make makers[] = {sumToken,     avgToken,    minimumToken,
                           maximumToken, medianToken, [](const Reduction&) { return countToken(); }};

std::optional<Value> below(const Function& function, const ValuesList& lines) {
    Context context;
    context.set(context_keys::previousResults, lines);
    return function.evaluate({}, context);
}

TEST(BlockFunctions, costWhatIsNewInTheBlock) {
    const auto calculator = newCalculator();
    constexpr std::size_t lines = 1000, mostSteps = 16;  // of one line
    for (const Make make : makers) {
        const CountingReduction reduction(calculator->operationCalculator());
        const auto function = make(reduction);
        ValuesList above;
        for (std::size_t i = 0; i < lines; ++i) {
            const Value number(DecimalNumber::fromUInt64(i * 7919 % lines));
            above = above.appending(i % 3 == 0 ? number.with(u"meter", Attribute::unit) : number);
            const auto remembered = below(*function, above);
            if (i % 50 > 0) continue;
            EXPECT_EQ(remembered, below(*make(calculator->operationCalculator()), above)) << i;
        }
        EXPECT_LT(reduction.count, lines * mostSteps);
    }
}

// A line that does not go with those above ends what is remembered, and an edit of an earlier line does, too.
TEST(BlockFunctions, rememberNoOtherBlock) {
    const auto calculator = newCalculator();
    const Value one(DecimalNumber::fromInt64(1)), two(DecimalNumber::fromInt64(2));
    const Value metre = one.with(u"meter", Attribute::unit), kilogram = two.with(u"kilogram", Attribute::unit);
    for (const Make make : makers) {
        const auto function = make(calculator->operationCalculator());
        const ValuesList first = ValuesList().appending(metre).appending(two);
        const auto before = below(*function, first);
        const ValuesList lists[] = {first.appending(kilogram), first.appending(kilogram).appending(metre),
                                    first.appending(Value()).appending(kilogram), ValuesList().appending(two), first};
        for (const ValuesList& list : lists)
            EXPECT_EQ(below(*function, list), below(*make(calculator->operationCalculator()), list));
        EXPECT_EQ(below(*function, first), before);
    }
}

TEST(BlockFunctions, tellWhichOfEqualLinesTheyMean) {
    EXPECT_EQ(result("100 cm\n1 m\nmin"), "1 m");
    EXPECT_EQ(result("100 cm\n1 m\nmax"), "100 cm");
    EXPECT_EQ(result("2 m\n100 cm\n1 m\nmedian"), "100 cm");
    // Numbers go with every unit, but these units don't go with each other.
    EXPECT_EQ(result("median(1 m, 5, 7 kg)"), "");
    EXPECT_EQ(result("7 kg\n5\n1 m\nmedian"), "");
}

}  // namespace
}  // namespace vemo::test
