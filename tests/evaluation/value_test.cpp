// SPDX-License-Identifier: MIT
#include "vemo/value.h"

#include <gtest/gtest.h>

#include "records/element.h"
#include "support/calculators.h"

namespace vemo {
namespace {

DecimalNumber decimal(std::string_view text) {
    return DecimalNumber::parse(text);
}

TEST(Value, readsOnlyWhatIsThere) {
    const Value quantity = Value(decimal("2.50")).with(u"cm", Attribute::unit);
    EXPECT_EQ(quantity.string(Attribute::unit), u"cm");
    EXPECT_EQ(quantity.string(Attribute::decimal), std::nullopt);
    EXPECT_EQ(quantity.decimal(Attribute::unit), std::nullopt);
    EXPECT_EQ(quantity.date(), std::nullopt);
    EXPECT_EQ(Value(TimeZone{u"UTC"}).timeZone()->identifier, u"UTC");
}

TEST(Value, comparesKeysAndContents) {
    EXPECT_EQ(Value(decimal("2.50")), Value(decimal("2.5")));
    EXPECT_EQ(Value(decimal("2.50")).hash(), Value(decimal("2.5")).hash());
    EXPECT_NE(Value(decimal("2")), Value(decimal("2")).with(u"hex", Attribute::nsystem));
    EXPECT_EQ(Value(decimal("2")).with(u"m", Attribute::unit).without(Attribute::unit), Value(decimal("2")));
    EXPECT_TRUE(Value(decimal("2")).without(Attribute::decimal).isEmpty());
}

TEST(Value, mergesWithTheOtherWinning) {
    const Value left = Value(decimal("1")).with(u"cm", Attribute::unit).with(u"hex", Attribute::nsystem);
    const Value merged = left.merging(Value(decimal("2")).with(u"m", Attribute::unit));
    EXPECT_EQ(merged, Value(decimal("2")).with(u"m", Attribute::unit).with(u"hex", Attribute::nsystem));
    EXPECT_EQ(Value().merging(left), left);
    EXPECT_EQ(left.merging(Value()), left);
}

TEST(Value, describesItself) {
    const Value value = Value(decimal("5")).with(u"m", Attribute::unit);
    EXPECT_EQ(utf8(value.description()), "Value: {\n\tdecimal: 5\n\tunit: m\n}");
    EXPECT_EQ(utf8(ElementList().description()), "ElementList: {\n");
    EXPECT_EQ(utf8(AttributedText().description()), "AttributedText: {}");
    EXPECT_EQ(utf8(AttributedText(u"5", RunType::number).description()), "AttributedText: {\n\t[\"5\": \"num\"]\n}");
}

TEST(ElementList, replacesRanges) {
    ElementList list;
    for (char16_t c = u'a'; c < u'g'; ++c) list.append(makeElement({}, AttributedText(std::u16string_view(&c, 1))));
    list.replace(2, 3, makeElement({}, AttributedText(u"*")));
    EXPECT_EQ(list.text(), u"ab*f");
    list.replace(1, 0, makeElement({}, AttributedText(u"+")));
    EXPECT_EQ(list.text(), u"a+b*f");
    EXPECT_EQ(list.attributedText(0, 0), AttributedText());
    EXPECT_NE(AttributedText(u""), AttributedText());
}

TEST(AttributedText, countsInUtf16Units) {
    AttributedText text(u"\U0001f600");
    text.append(AttributedText(u"5", RunType::number));
    std::vector<std::size_t> locations;
    text.enumerate([&](std::u16string_view, RunType, std::size_t location) { locations.push_back(location); });
    EXPECT_EQ(locations, (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(text.elementAt(1), (AttributedTextElement{u"5", RunType::number}));
    EXPECT_TRUE(text.hasAttributeOf(RunType::number));
    EXPECT_EQ(text.usedAttributes(), std::vector{RunType::number});
}

TEST(OperationCalculator, fallsBackOnTheOperandThatIsThere) {
    const auto calculator = test::newCalculator();
    Context context;
    OperatorCollection& operators = calculator->operatorCollection();
    const OperationCalculator& reduce = calculator->operationCalculator();
    const auto op = [](std::u16string_view id) { return Value(Attribute::operation, id); };
    const auto number = [](int n) { return Value(DecimalNumber::fromInt64(n)); };
    EXPECT_EQ(operators.priority(u"nothing"), 0);
    EXPECT_EQ(reduce.calculate({}, {}, context), std::nullopt);
    EXPECT_EQ(reduce.calculate({number(1), number(2)}, {}, context), std::nullopt);
    EXPECT_EQ(reduce.calculate({number(8), number(2)}, {op(u"/"), op(u"+")}, context), number(4));
    EXPECT_EQ(reduce.calculate({number(5), number(3)}, {op(u"nothing")}, context), std::nullopt);
    EXPECT_EQ(reduce.calculate({Value(), number(5)}, {op(u"+")}, context), number(5));
    EXPECT_EQ(reduce.calculate({Value(), number(5)}, {op(u"-")}, context), number(-5));
    EXPECT_EQ(reduce.calculate({number(5), Value()}, {op(u"/")}, context), number(5));
    const Value nan(DecimalNumber::notANumberValue());
    EXPECT_EQ(reduce.calculate({nan.with(u"m", Attribute::unit), number(1)}, {op(u"nothing")}, context), nan);
}

}  // namespace
}  // namespace vemo
