// SPDX-License-Identifier: MIT
// How lines are cut and coloured: what an application shows.

#include <gtest/gtest.h>

#include "support/calculators.h"

namespace vemo::test {
namespace {

// "num:5| |unit:inch": runs with their types, plain text without one.
std::string runs(std::string_view document) {
    static const auto calculator = newCalculator();
    Context context;
    const auto lines = calculator->calculate(utf16(document), context).lines;
    std::string result;
    lines.back()->attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t) {
        if (!result.empty()) result += '|';
        if (type != RunType::none) result += utf8(runTypeCode(type)) + ":";
        result += utf8(text);
    });
    return result;
}

TEST(Runs, tellNumbersFromOperators) {
    EXPECT_EQ(runs("5 - 3"), "num:5| |oprtrsmb:-| |num:3");
    EXPECT_EQ(runs("-7"), "oprtrsmb:-|num:7");
    EXPECT_EQ(runs("1e-3"), "num:1e-3");
    EXPECT_EQ(runs("0xff"), "num:0xff");
    EXPECT_EQ(runs("0XFF"), "num:0|XFF");
    EXPECT_EQ(runs("0b102"), "num:0b10|2");
    EXPECT_EQ(runs("3."), "num:3|.");
    EXPECT_EQ(runs("12 345, 6"), "num:12 345, 6");
    EXPECT_EQ(runs("10 plus 5"), "num:10| |oprtr:plus| |num:5");
    EXPECT_EQ(runs("6 \xc3\xb7 2"), "num:6| |oprtrsmb:\xc3\xb7| |num:2");
    EXPECT_EQ(runs("1 << 2 and 3"), "num:1| |oprtr:<<| |num:2| and |num:3");
}

TEST(Runs, keepStructureApart) {
    EXPECT_EQ(runs("Total: 5"), "lbl:Total:| |num:5");
    EXPECT_EQ(runs("a: b: 5"), "lbl:a: b:| |num:5");
    EXPECT_EQ(runs("5 // 3 + 2"), "num:5| |cmnt:// 3 + 2");
    EXPECT_EQ(runs("x # y 5"), "oprtr:x|hdr: # y 5");
    EXPECT_EQ(runs("1 \"2\" 3"), "num:1| |cmnt:\"2\"| |num:3");
    EXPECT_EQ(runs("1 \"2"), "num:1| \"|num:2");
    EXPECT_EQ(runs("((1)) 2"), "prnth:(|prnth:(|num:1|prnth:)|prnth:)| |num:2");
    EXPECT_EQ(runs("(1"), "prnth:(|num:1");
}

TEST(Runs, tellDatesFromLabelsAndArithmetic) {
    EXPECT_EQ(runs("10:30"), "num:10:30");
    EXPECT_EQ(runs("standup 10:30 + 90 min"), "standup |num:10:30| |oprtrsmb:+| |num:90| |unit:min");
    EXPECT_EQ(runs("meeting at 10:30: 50"), "lbl:meeting at 10:30:| |num:50");
    EXPECT_EQ(runs("due: 10:30"), "lbl:due:| |num:10:30");
    EXPECT_EQ(runs("March 14, 2027 - March 4, 2027"), "num:March 14, 2027| |oprtrsmb:-| |num:March 4, 2027");
    EXPECT_EQ(runs("next friday + 3 days"), "num:next friday| |oprtrsmb:+| |num:3| |unit:days");
    EXPECT_EQ(runs("lunch on Friday"), "lunch |num:on Friday");
    EXPECT_EQ(runs("5-3"), "num:5|oprtrsmb:-|num:3");
    EXPECT_EQ(runs("2027-3-4"), "num:2027|oprtrsmb:-|num:3|oprtrsmb:-|num:4");
    EXPECT_EQ(runs("5 min"), "num:5| |unit:min");
    EXPECT_EQ(runs("1 hour in minutes"), "num:1| |unit:hour| |oprtr:in| |unit:minutes");
    EXPECT_EQ(runs("255 in dec"), "num:255| |oprtr:in| |unit:dec");
    EXPECT_EQ(runs("Monday = 8 h\nMonday"), "var:Monday");
}

TEST(Runs, nameUnitsScalesFunctionsAndVariables) {
    EXPECT_EQ(runs("5 inch in cm"), "num:5| |unit:inch| |oprtr:in| |unit:cm");
    EXPECT_EQ(runs("6 ft 2 in in cm"), "num:6| |unit:ft| |num:2| |unit:in| |oprtr:in| |unit:cm");
    EXPECT_EQ(runs("$5k"), "unit:$|num:5|unit:k");
    EXPECT_EQ(runs("20%"), "num:20|unit:%");
    EXPECT_EQ(runs("50 as a % of 200"), "num:50| |oprtr:as a % of| |num:200");
    EXPECT_EQ(runs("sqrt 16"), "fn:sqrt| |num:16");
    EXPECT_EQ(runs("255 in hex"), "num:255| |oprtr:in| |unit:hex");
    EXPECT_EQ(runs("5 \xc2\xb0"
                   "C"),
              "num:5| |unit:\xc2\xb0"
              "C");
    EXPECT_EQ(runs("10 m2"), "num:10| |unit:m2");
    EXPECT_EQ(runs("5 million"), "num:5| |unit:million");
    EXPECT_EQ(runs("2 x 3"), "num:2| |oprtr:x| |num:3");
    EXPECT_EQ(runs("x = 1\n2 x 3"), "num:2| |var:x| |num:3");       // a name wins over the letter
    EXPECT_EQ(runs("m = 1\n2 * m"), "num:2| |oprtrsmb:*| |var:m");  // and over a unit,
    EXPECT_EQ(runs("m = 1\n2 m"), "num:2| |unit:m");                // but not after a number
    EXPECT_EQ(runs("hourly rate = 5\nHourly Rate * 2"), "var:Hourly Rate| |oprtrsmb:*| |num:2");
    EXPECT_EQ(runs("rate"), "rate");
    // What is put between for the calculation leaves no run, and marks of lists are text.
    EXPECT_EQ(runs("5\u00b2"), "num:5|num:\u00b2");
    EXPECT_EQ(runs("3pi"), "num:3|var:pi");
    EXPECT_EQ(runs("5' 6\" \"note\""), "num:5|unit:'| |num:6|unit:\"| |cmnt:\"note\"");
    EXPECT_EQ(runs("2) tea $3"), "2|)| tea |unit:$|num:3");
    EXPECT_EQ(runs("Wow! 3!"), "Wow! |num:3|!");
}

TEST(Runs, colourTheNameThatIsAssigned) {
    EXPECT_EQ(runs("hourly rate = 40"), "var:hourly rate |oprtr:=| |num:40");
    EXPECT_EQ(runs("x += 1"), "var:x|var: |oprtrsmb:+|oprtr:=| |num:1");
    EXPECT_EQ(runs("5x = 1"), "num:5|oprtr:x| |oprtr:=| |num:1");  // no name begins with a digit
    EXPECT_EQ(runs("x ="), "oprtr:x| |oprtr:=");
}

}  // namespace
}  // namespace vemo::test
