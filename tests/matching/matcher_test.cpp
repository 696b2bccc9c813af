// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "matching/domain_matchers.h"

namespace vemo {
namespace {

using namespace pattern;
using testing::ElementsAre;

// One element a character: digits are numbers, u units, blanks plain text, the rest named by the value's type.
ElementList line(std::u16string_view text) {
    ElementList elements;
    for (const char16_t c : text) {
        const std::u16string_view token(&c, 1);
        Value value;
        RunType type = RunType::none;
        if (c >= u'0' && c <= u'9')
            value = Value(DecimalNumber::fromInt64(c - u'0')), type = RunType::number;
        else if (c == u'u')
            value = Value(Attribute::unit, u"m"), type = RunType::unit;
        else if (c == u'q')
            value = Value(DecimalNumber::fromInt64(1)).with(u"m", Attribute::unit);
        else if (c == u'+' || c == u'x')
            value = Value(Attribute::operation, token), type = RunType::operatorSymbol;
        else if (c == u'=')
            value = Value(Attribute::assignment, DecimalNumber::fromInt64(1)), type = RunType::operatorWord;
        else if (c == u'f')
            value = Value(Attribute::function, u"time"), type = RunType::function;
        else if (c == u'a')
            value = Value(Attribute::type, u"a");
        elements.append(makeElement(value, AttributedText(token, type)));
    }
    return elements;
}

std::vector<std::size_t> lengths(const MatcherPointer& matcher, std::u16string_view text, std::size_t from = 0) {
    std::vector<std::size_t> result;
    for (const Match& match : matcher->matches(line(text), from)) result.push_back(match.range.length);
    return result;
}

TEST(Combinators, reportEveryWayInOrder) {
    EXPECT_THAT(lengths(seq({}), u"a", 1), ElementsAre(0u));
    EXPECT_THAT(lengths(repeat(type(u"a"), 1), u"aaa"), ElementsAre(1u, 2u, 3u));
    EXPECT_THAT(lengths(repeat(type(u"a"), 2), u"aaa"), ElementsAre(2u, 3u));
    EXPECT_THAT(lengths(repeat(type(u"a"), std::nullopt, 1), u"aaa"), ElementsAre(0u, 1u));
    EXPECT_THAT(lengths(repeat(seq({type(u"a"), anyElement()})), u"aaaaa"), ElementsAre(0u, 2u, 4u));
    EXPECT_THAT(lengths(either({type(u"a"), anyElement()}), u"a"), ElementsAre(1u, 1u));
    EXPECT_THAT(lengths(all({type(u"a"), has(Attribute::unit)}), u"a"), ElementsAre());
    EXPECT_THAT(lengths(seq({repeat(type(u"a")), repeat(type(u"a"))}), u"aa"), ElementsAre(0u, 1u, 2u, 1u, 2u, 2u));
    EXPECT_THAT(lengths(std::make_shared<NotMatcher>(type(u"a")), u"a", 1), ElementsAre());
    EXPECT_THAT(lengths(std::make_shared<NotMatcher>(type(u"a")), u"1a"), ElementsAre(1u));
    EXPECT_THAT(lengths(std::make_shared<SequenceStartMatcher>(), u"aa", 1), ElementsAre());
    EXPECT_THAT(lengths(repeat(repeat(type(u"b"))), u"aa"), ElementsAre(0u));  // an empty inner match ends it
}

TEST(Combinators, recordGroupsInTextOrder) {
    const auto matches = group(seq({group(type(u"a"), u"g"), group(type(u"a"), u"g")}), u"g")->matches(line(u"aa"), 0);
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_THAT(matches[0].groups(u"g"), ElementsAre(ElementRange{0, 2}, ElementRange{0, 1}, ElementRange{1, 1}));
}

TEST(FinderMatcher, keepsTheFurthestOfEachStart) {
    const FinderMatcher finder(repeat(type(u"a"), 1));
    const auto found = finder.occurrences(line(u"aa1a"));
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].range, (ElementRange{0, 2}));
    EXPECT_EQ(found[1].range, (ElementRange{3, 1}));
    EXPECT_TRUE(FinderMatcher(repeat(type(u"a"))).occurrences(line(u"11")).empty());
}

std::vector<ElementRange> found(const FinderMatcher& matcher, std::u16string_view text,
                                std::u16string_view group = u"") {
    std::vector<ElementRange> result;
    for (const Match& match : matcher.occurrences(line(text)))
        for (const ElementRange& range : group.empty() ? std::vector{match.range} : match.groups(group))
            result.push_back(range);
    return result;
}

TEST(DomainMatchers, findTheirConstructs) {
    EXPECT_THAT(found(decimalFollowedByUnitMatcher(), u"5 u 5u"), ElementsAre(ElementRange{0, 3}, ElementRange{4, 2}));
    EXPECT_THAT(found(unitFollowedByDecimalMatcher(), u"u5"), ElementsAre(ElementRange{0, 2}));
    EXPECT_THAT(found(unitAroundDecimalMatcher(), u"u5 u"), ElementsAre(ElementRange{0, 4}));
    EXPECT_THAT(found(convertableValueSequenceMatcher(), u"q q+q", u"value"),
                ElementsAre(ElementRange{0, 1}, ElementRange{2, 1}, ElementRange{4, 1}));
    EXPECT_THAT(found(functionExpressionMatcher(), u"f 1 2", u"values"),
                ElementsAre(ElementRange{2, 1}, ElementRange{4, 1}));
    EXPECT_THAT(found(geoNameSequenceMatcher(), u"bf"), ElementsAre(ElementRange{0, 2}));
    EXPECT_TRUE(found(geoNameSequenceMatcher(), u" f").empty());
}

TEST(DomainMatchers, delimitAssignments) {
    const auto matcher = assignmentSequenceMatcher();
    EXPECT_THAT(found(matcher, u"b u=5+3", u"varnameparts"), ElementsAre(ElementRange{0, 3}));
    EXPECT_THAT(found(matcher, u"b=5+3", u"expression"), ElementsAre(ElementRange{2, 3}));
    EXPECT_THAT(found(matcher, u"b+=5", u"operation"), ElementsAre(ElementRange{1, 1}));
    EXPECT_THAT(found(matcher, u"bx=5", u"varnameparts"), ElementsAre(ElementRange{0, 2}));  // x belongs to the name
    EXPECT_TRUE(found(matcher, u"b=").empty());
}

}  // namespace
}  // namespace vemo
