// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>

#include "platform/regex.h"
#include "scanning/number_parsers.h"
#include "scanning/string_extractor.h"
#include "scanning/words/localizer.h"
#include "scanning/words/phrase_detector.h"
#include "scanning/words/strings_file.h"
#include "support/temporary_folder.h"
#include "vemo/sorted_list.h"

namespace vemo {
namespace {

using testing::ElementsAre;

std::vector<std::u16string> words(StringRangeDetector& detector, std::u16string_view text) {
    std::vector<std::u16string> result;
    for (const TextRange& range : detector.wordRanges(text)) result.emplace_back(range.in(text));
    return result;
}

TEST(StringRangeDetector, cutsWordsDigitsAndDollars) {
    StringRangeDetector detector;
    EXPECT_THAT(words(detector, u"10km $10"), ElementsAre(u"10", u"km", u"$", u"10"));
    EXPECT_THAT(words(detector, u"5\u00b0C/2x"), ElementsAre(u"5", u"\u00b0", u"C", u"/", u"2", u"x"));
    EXPECT_THAT(words(detector, u"it's  << a.b "), ElementsAre(u"it's", u"<<", u"a.b"));
    EXPECT_THAT(words(detector, u"x=-(\u221a4)<<=3"),
                ElementsAre(u"x", u"=", u"-", u"(", u"\u221a", u"4", u")", u"<<", u"=", u"3"));
    EXPECT_THAT(words(detector, u"a<=b!=c=>d"), ElementsAre(u"a", u"<=", u"b", u"!=", u"c", u"=>", u"d"));
    detector.setSimplifiedWordRangesDetection(true);
    EXPECT_THAT(words(detector, u"10km $10"), ElementsAre(u"10km", u"$10"));
    detector.setSimplifiedWordRangesDetection(false);
    EXPECT_THAT(words(detector, u"10km $10"), ElementsAre(u"10", u"km", u"$", u"10"));
}

RC_GTEST_PROP(StringRangeDetectorLaws, theCacheChangesNothing, ()) {
    static StringRangeDetector cached, uncached;
    uncached.setCacheEnabled(false);
    const std::u16string text = *rc::gen::container<std::u16string>(rc::gen::element<char16_t>(
        u'a', u'Z', u'1', u'2', u'.', u'\'', u'$', u'+', u'=', u' ', u'\t', u'\u00a0', u'\u3000', u'\u0301', u'\u20ac',
        u'\u6771', u'\u4eac', u'\u30ab', u'\u0e01', u'\u0e32', u'\xd83d', u'\xde00'));
    const std::vector<TextRange> expected = uncached.wordRanges(text);
    RC_ASSERT(cached.wordRanges(text) == expected);
    cached.wordRanges(u"another line");
    RC_ASSERT(cached.wordRanges(text) == expected);
}

TEST(StringRangeDetector, cutsTextsOfAnyLength) {
    StringRangeDetector detector;
    const std::u16string longText = std::u16string(70000, u'a') + u" b";
    EXPECT_THAT(detector.wordRanges(longText), ElementsAre(TextRange{0, 70000}, TextRange{70001, 1}));
    EXPECT_THAT(words(detector, u"a b"), ElementsAre(u"a", u"b"));
    EXPECT_THAT(detector.wordRanges(longText), ElementsAre(TextRange{0, 70000}, TextRange{70001, 1}));
}

rc::Gen<std::u16string> asciiText() {
    return rc::gen::container<std::u16string>(rc::gen::map(
        rc::gen::oneOf(rc::gen::inRange(1, 128),
                       rc::gen::element<int>('a', 'Z', '0', '9', '_', '.', '\'', ':', ',', ';', '-', ' ', '@')),
        [](int c) { return static_cast<char16_t>(c); }));
}

RC_GTEST_PROP(WordSegmenterLaws, cutsAsciiAsTheGeneralIterationDoes, ()) {
    static WordSegmenter segmenter;
    const std::u16string text = *asciiText();
    RC_ASSERT(segmenter.words(text) == segmenter.segmented(text));
}

RC_GTEST_PROP(DecimalLiteralLaws, areThoseOfTheExpression, ()) {
    static const Regex pattern(uR"((?:[+-][\s]*)? (\.? \d+ [\s\d\._,]*) (?<!\s|,|\.))", true);
    const std::u16string text = *rc::gen::container<std::u16string>(
        rc::gen::element<char16_t>(u'1', u'2', u'.', u',', u'_', u' ', u'\t', u'+', u'-', u'a', u'\u0665', u'\u00a0'));
    std::vector<TextRange> found;
    for (const DecimalLiteral& literal : decimalLiterals(text)) {
        found.push_back(literal.whole);
        found.push_back(literal.digits);
    }
    RC_ASSERT(found == pattern.ranges(text, true));
}

TEST(Regex, givesTheGroupsThatTookPart) {
    EXPECT_THAT(Regex(u"(a)(b)?", false).ranges(u"a", true), ElementsAre(TextRange{0, 1}, TextRange{0, 1}));
}

TEST(PhraseDetector, findsTheLongestWholeWords) {
    StringRangeDetector ranges;
    PhraseDetector<int> detector(ranges);
    for (const auto& [phrase, id] : {std::pair(u"light year", 1),
                                     {u"light", 2},
                                     {u"km", 3},
                                     {u"Mb", 4},
                                     {u"m2", 5},
                                     {u"one two three four five six seven eight", 6}})
        detector.add(phrase, id, false);
    const auto ids = [&](std::u16string_view text) {
        std::vector<int> result;
        for (const auto& match : detector.detect(text)) result.push_back(match.object);
        return result;
    };
    EXPECT_THAT(ids(u"2 light years"), ElementsAre(2));
    EXPECT_THAT(ids(u"2 light  year light"), ElementsAre(1, 2));
    EXPECT_THAT(ids(u"5Km KM skm"), ElementsAre(3, 3));
    EXPECT_THAT(ids(u"1 Mb mb"), ElementsAre(4));  // stored with a capital, found with it only
    EXPECT_THAT(ids(u"5 m2, 5 m 2"), ElementsAre(5));
    EXPECT_THAT(ids(u"one two three four five six seven eight"), ElementsAre());  // eight words are too many
}

Extraction candidate(std::size_t location, std::size_t length, std::int64_t priority, std::int64_t secondary,
                     std::u16string_view unit) {
    return {{location, length}, priority, secondary, makeElement(Value(Attribute::unit, unit), AttributedText(unit))};
}

TEST(StringExtractor, resolvesOverlapsByPriorityThenLength) {
    const auto units = [](std::u16string_view text, const std::vector<Extraction>& extractions) {
        std::vector<std::u16string> result;
        const ElementList elements = StringExtractor::elements(text, extractions);
        for (const ElementPointer& e : elements.pointers())
            result.emplace_back(e->value.string(Attribute::unit).value_or(u"-"));
        return result;
    };
    EXPECT_THAT(units(u"abcdef", {candidate(0, 3, 0, 0, u"a"), candidate(2, 4, 0, 0, u"b")}), ElementsAre(u"-", u"b"));
    EXPECT_THAT(units(u"abc", {candidate(0, 3, 0, 0, u"first"), candidate(0, 3, 0, 0, u"second")}),
                ElementsAre(u"first"));
    EXPECT_THAT(units(u"abc", {candidate(0, 3, 0, 0, u"first"), candidate(0, 3, 0, 10, u"second")}),
                ElementsAre(u"second"));
    EXPECT_THAT(units(u"abc", {candidate(0, 3, 0, 0, u"long"), candidate(1, 1, 10, 0, u"strong")}),
                ElementsAre(u"-", u"strong", u"-"));
    EXPECT_THAT(units(u"abc", {candidate(2, 2, 0, 0, u"beyond")}), ElementsAre(u"-"));
    EXPECT_THAT(units(u"abc", {candidate(1, 2, 0, 0, u"a"), candidate(1, 0, 0, 0, u"none")}), ElementsAre(u"-", u"a"));
    EXPECT_THAT(units(u"", {}), ElementsAre());
}

TEST(SortedList, keepsTiesInOrderOfRegistration) {
    SortedList<int> list;
    list.add(1, 100);
    list.add(2, 50, u"early");
    list.add(3, 100);
    EXPECT_EQ(list[0], 2);
    EXPECT_EQ(list[1], 1);
    EXPECT_EQ(list[2], 3);
    EXPECT_THAT(list.items(), ElementsAre(2, 1, 3));
    EXPECT_THAT(list.itemsUnsorted(), ElementsAre(1, 2, 3));
    EXPECT_TRUE(list.has(u"early"));
    EXPECT_FALSE(list.has(u""));
}

TEST(DecimalParser, followsTheLocale) {
    const auto parse = [](const char* locale, std::u16string_view text) {
        return DecimalParser(locale).decimalNumber(text).toString();
    };
    EXPECT_EQ(parse("en_US", u"1,234.5"), "1234.5");
    EXPECT_EQ(parse("en_US", u"5, 6"), "56");
    EXPECT_EQ(parse("de_DE", u"1.234,5"), "1234.5");
    EXPECT_EQ(parse("de_DE", u"1.5"), "15");
    EXPECT_EQ(parse("fr_FR", u"1.5"), "1.5");
    EXPECT_EQ(parse("fr_FR", u"1\u202f234,5"), "1234.5");
    EXPECT_EQ(parse("ar_EG", u"\u0661\u0662\u066b\u0665"), "12.5");
    EXPECT_EQ(parse("en_US", u""), "NaN");
}

TEST(StringsFile, readsEntriesCommentsAndEscapes) {
    const auto parsed = parseStrings("/* c */ \"a\" = \"1\\n\\\"\\U00b5\"; // d\n\"b\"=\"\xf0\x9f\x98\x80\";");
    const auto& entries = *parsed;
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].value, u"1\n\"\u00b5");
    EXPECT_EQ(entries[1].value, u"\U0001f600");
    EXPECT_EQ(entries[1].line, 2);
}

TEST(StringsFile, namesTheLineOfAFault) {
    for (const auto& [text, line] : {std::pair("\"a\" = \"1\"\n\"b\" = \"2\";", 2),
                                     {"\n\"a\" = \"1;\n", 2},
                                     {"\"a\" = \"\\q\";", 1},
                                     {"\n\n/* never ends", 3},
                                     {"\"a\"=\"1\";\n\"a\"=\"2\";", 2},
                                     {"\"a\" = \"\xff\";", 1},
                                     {"a = \"1\";", 1},
                                     {"\"a\" = \"\\U12\";", 1}}) {
        const auto parsed = parseStrings(text);
        ASSERT_FALSE(parsed) << text;
        EXPECT_EQ(parsed.failure().line, line) << text;
    }
}

TEST(Localizer, putsTheUsersLanguageBeforeTheBase) {
    const test::TemporaryFolder temporary;
    const auto folder = temporary.path() / "vemo_localizer";
    std::filesystem::create_directories(folder / "xx.lproj");
    std::ofstream(folder / "xx.lproj/Operations.strings") << "\"plus.variants\" = \"Und, plus\";\n";
    std::ofstream(folder / "xx.lproj/Bad.strings") << "\n\"a\"";
    std::string log;
    const Localizer localizer("xx_YY.UTF-8", folder, [&](std::string_view line) { log += line; });
    EXPECT_THAT(localizer.variants(u"plus.variants", u"Operations"),
                ElementsAre(u"Und", u"plus", u"add", u"added to", u"increased by", u"marked up by", u"raised by"));
    EXPECT_THAT(localizer.variants(u"plus.variants", u"Operations", false, true), ElementsAre(u"und", u"plus"));
    EXPECT_THAT(localizer.variants(u"no.such", u"Operations"), ElementsAre(u"no.such"));
    EXPECT_EQ(localizer.translation(u"minus.variants", u"Operations"), std::nullopt);
    EXPECT_NE(log.find("Bad.strings:2: expected '='"), log.npos) << log;
}

}  // namespace
}  // namespace vemo
