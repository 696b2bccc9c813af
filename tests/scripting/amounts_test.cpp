// SPDX-License-Identifier: MIT
// What crosses between lines and scripts: amounts and texts in both directions, and units on top of units.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "support/scripted.h"

namespace vemo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

Scripted& mirror() {
    static Scripted scripted(R"js(
const add = (phrases, f) => vemo.addFunction({id: phrases, phrases}, f);
add("mirror", ([x]) => x);
add("bare", ([x]) => x.double);
add("unitof", ([x]) => { log(typeof x.unitId + " " + x.unitId + " " + Object.keys(x)); return 1 });
add("both", ([x, y]) => ({double: x.double * y.double, unitId: y.unitId ?? x.unitId}));
add("unitonly", ([x]) => ({unitId: "km"}));
add("textual", ([x]) => ({double: String(x.double), unitId: {toString: () => "km"}}));
add("wordy", () => ({double: "five", unitId: "km"}));
add("nulls", () => ({double: null, unitId: undefined}));
add("list", ([x]) => [x.double]);
add("infinite", () => 1 / 0);
add("zero", () => -0);
)js");
    return scripted;
}

Value valueOf(const std::string& line) {
    Context context;
    return mirror().engine.calculateSync(utf16(line), context)->lines.back().value();
}

// A double crosses as itself: the shortest digits that read back as it.
RC_GTEST_PROP(ScriptAmounts, crossAsDoubles, ()) {
    const auto mantissa = *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::int64_t>());
    const double amount = std::ldexp(static_cast<double>(mantissa), *rc::gen::inRange(-90, 20));
    const DecimalNumber number = DecimalNumber::fromDouble(amount).abs();
    const std::string unit = *rc::gen::element<std::string>("", " km", " USD", " celsius");
    const std::string line = "(" + number.toString() + unit + ")";
    const Value given = valueOf(line), back = valueOf("mirror " + line);
    if (back != given) RC_FAIL(line + " came back as " + utf8(back.description()));
    RC_ASSERT(valueOf("bare " + line) == Value(number));
}

TEST(ScriptAmounts, keepSixteenDigitsOfMore) {
    EXPECT_EQ(valueOf("mirror 0.1234567890123456789012345"), Value(DecimalNumber::parse("0.12345678901234568")));
    EXPECT_EQ(valueOf("mirror 12345678901234567890"), Value(DecimalNumber::parse("12345678901234567000")));
}

TEST(ScriptAmounts, areWhatIsReturned) {
    const auto shown = [](const std::string& line) { return mirror().result(line); };
    EXPECT_EQ(shown("unitof 5"), "1");
    EXPECT_EQ(mirror().logs.back(), "undefined undefined double\n");
    EXPECT_EQ(shown("unitof (5 km)"), "1");
    EXPECT_EQ(mirror().logs.back(), "string km double,unitId\n");
    EXPECT_EQ(shown("both (4) (5 km)"), "20 km");
    EXPECT_EQ(shown("both (4 km) (5)"), "20 km");
    EXPECT_EQ(shown("textual 5"), "5 km");  // as the language makes numbers and texts
    EXPECT_EQ(shown("zero 1"), "0");
    for (const char* line : {"unitonly 5", "nulls 5", "list 5", "infinite 5", "wordy 5"})
        EXPECT_EQ(shown(line), "") << line;
}

// Any text comes through, whatever its characters; halves of pairs are shown as replacements.
TEST(ScriptTexts, comeThroughWhole) {
    Scripted scripted(R"js(
log("\u00e9\ud83d\ude00\u0000z");
log("half \ud800 here");
log("lines\nof\nmore");
log({toString: () => "an object"});
log(); log(null); log([1, 2]);
vemo.setVariable("\u00c9t\u00e9", 5);
vemo.setVariable("\u6587\u5b57", {double: 2, unitId: "km"});
)js");
    using namespace std::string_literals;
    EXPECT_EQ(scripted.log(),
              "\xc3\xa9\xf0\x9f\x98\x80\0z\nhalf \xef\xbf\xbd here\nlines\nof\nmore\nan object\n"
              "undefined\nnull\n1,2\n"s);
    EXPECT_THAT(scripted.results("\xc3\x89T\xc3\x89 * 2\n\xe6\x96\x87\xe5\xad\x97 * 2"), ElementsAre("10", "4 km"));
}

// A unit of a script may stand on another of a script, or on a built-in one that is no base.
TEST(ScriptUnits, standOnOthers) {
    Scripted scripted(R"js(
vemo.addUnit({id: "span", phrases: "span,spans", baseUnitId: "inch", ratio: 9});
vemo.addUnit({id: "fathom2", phrases: "faden", baseUnitId: "span", ratio: 8});
vemo.addUnit({id: "coin", phrases: "coin,coins", format: "%@ coin|%@ coins"});
vemo.addUnit({id: "purse", phrases: "purse,purses", baseUnitId: "coin", ratio: 12});
vemo.addUnit({id: "chest", phrases: "chest,chests", baseUnitId: "purse", ratio: 20});
)js");
    EXPECT_EQ(scripted.log(), "");
    EXPECT_THAT(scripted.results("2 spans in inch\n1 faden in ft\n6 ft in spans\n3 chests in purses\n1 chest in m"),
                ElementsAre("18 in", "6 ft", "8 span", "60 purse", ""));
}

TEST(ScriptUnits, refuseWhatCannotConvert) {
    Scripted scripted(R"js(
vemo.addUnit({id: "warmth", phrases: "warmth", baseUnitId: "celsius", ratio: 2});
vemo.addUnit({id: "flat", phrases: "flat", baseUnitId: "m", ratio: 0});
vemo.addUnit({id: "odd", phrases: "odd", baseUnitId: "m", ratio: NaN});
vemo.addUnit({id: "inch", phrases: "zoll", baseUnitId: "m", ratio: 0.03});
vemo.addUnit({id: "inch", phrases: "zolle", baseUnitId: "m", ratio: 0.0254});
vemo.addUnit({id: "foot", phrases: "schuh"});
vemo.setVariable("2nd", 1);
vemo.setVariable("a+b", 1);
vemo.setVariable("  ", 1);
vemo.setVariable("empty", {});
)js");
    const std::string log = scripted.log();
    for (const char* message :
         {"'celsius' can't be the base of 'warmth'; 'kelvin' can", "ratio of 'flat' must be", "ratio of 'odd' must be",
          "'inch' is a built-in unit", "no line can use the name '2nd'", "no line can use the name 'a+b'",
          "the name is empty", "'empty' is given neither an amount nor a unit"})
        EXPECT_THAT(log, HasSubstr(message));
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 8) << log;
    EXPECT_THAT(scripted.results("2 zolle in cm\n2 schuh in inch"), ElementsAre("5.08 cm", "24 in"));
}

}  // namespace
}  // namespace vemo::test
