// SPDX-License-Identifier: MIT
#include "vemo/completions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/calculators.h"

namespace vemo::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

class CompletionsWithKinds : public testing::Test {
protected:
    CompletionsWithKinds() {
        engine.buildVemoWorker();
        engine.buildCompletions(VemoEngine::WorkerThread::main, [&](auto built) { completions = std::move(built); });
    }

    std::vector<std::string> offered(std::u16string_view typed, std::size_t most = 100000) {
        std::vector<std::string> all;
        for (const Completion& each : completions->startingWith(typed, most))
            all.push_back(utf8(each.text) + ":" + utf8(completionKindName(each.kind)));
        return all;
    }
    std::vector<std::string> conversions(std::u16string_view unit, std::size_t most) {
        std::vector<std::string> all;
        for (const Completion& each : engine.conversionsOf(unit))
            if (all.size() < most) all.push_back(utf8(each.text));
        return all;
    }

    VemoEngine engine{fixedEnvironment()};
    std::shared_ptr<const Completions> completions;
};

TEST_F(CompletionsWithKinds, tellsWhatAPhraseNames) {
    EXPECT_THAT(offered(u""), IsSupersetOf({"in:operator", "EUR:currency", "japanese yen:currency", "km:unit",
                                            "square meter:unit", "divided by:operator", "sqrt:function", "pi:variable",
                                            "New York:place", "Germany:place"}));
    EXPECT_THAT(offered(u"SQUARE M"), Contains("square meter:unit"));
    EXPECT_THAT(offered(u"new y"), ElementsAre("New York:place"));
    EXPECT_EQ(offered(u"m", 20).size(), 20u);
    EXPECT_EQ(offered(u"sin", 1).front(), "sin:function");  // what was typed in full comes first
    EXPECT_TRUE(offered(u"no such thing").empty());
}

TEST_F(CompletionsWithKinds, namesWhatAUnitConvertsInto) {
    EXPECT_THAT(conversions(u"inch", 4), ElementsAre("cm", "m", "km", "mm"));
    EXPECT_THAT(conversions(u"celsius", 2), ElementsAre("°F", "kelvin"));
    EXPECT_THAT(conversions(u"km/hour", 2), ElementsAre("mph", "m/s"));
    EXPECT_THAT(conversions(u"EUR", 2), ElementsAre("USD", "GBP"));
    EXPECT_TRUE(conversions(u"nothing", 1).empty());
}

// Each name is read as the unit that it is offered for.
TEST_F(CompletionsWithKinds, namesUnitsSoThatLinesReadThem) {
    for (const std::u16string_view unit : {u"m", u"m2", u"litre", u"gram", u"second", u"byte", u"pascal", u"joule"}) {
        for (const Completion& target : engine.conversionsOf(unit)) {
            Context context;
            context.setPrecision(30);
            context.setValue(Value(DecimalNumber::fromInt64(1)).with(unit, Attribute::unit), u"amount");
            const std::u16string line = u"amount in " + target.text;
            const auto result = engine.calculateSync(line, context);
            EXPECT_TRUE(result->lines[0].formattedResult().regular) << utf8(line);
            for (const Note& note : result->lines[0].notes())
                EXPECT_EQ(note.kind, NoteKind::averageLength) << utf8(line) << ": " << utf8(note.message);
        }
    }
}

}  // namespace
}  // namespace vemo::test
