// SPDX-License-Identifier: MIT
#include "base/text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace vemo {
namespace {

// Texts of the kinds that go wrong: signs of every width, halves of pairs, marks that combine, ends of lines.
std::u16string anyText() {
    const auto piece = rc::gen::element<std::u16string>(u"a", u"Z", u"0", u" ", u"\n", u"\r", u"\r\n", u"\u0085",
                                                        u"\u2028", u"\u2029", u"\u00e9", u"e\u0301", u"\u07ff",
                                                        u"\u0800", u"\uffff", u"\U0001f600", u"\U0010ffff");
    const auto half = rc::gen::map(rc::gen::inRange(0xd800, 0xe000),
                                   [](int unit) { return std::u16string(1, static_cast<char16_t>(unit)); });
    const auto pieces = *rc::gen::container<std::vector<std::u16string>>(
        *rc::gen::arbitrary<bool>() ? rc::gen::oneOf(piece, half) : piece);
    return joined(pieces, u"");
}

bool isLead(char16_t unit) {
    return unit >= 0xd800 && unit < 0xdc00;
}
bool isTrail(char16_t unit) {
    return unit >= 0xdc00 && unit < 0xe000;
}

// The text with a replacement for every half of a pair that stands alone.
std::u16string mended(const std::u16string& text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair = isLead(text[i]) && i + 1 < text.size() && isTrail(text[i + 1]);
        if (pair) result += text[i++];
        result += pair || (!isLead(text[i]) && !isTrail(text[i])) ? text[i] : u'\ufffd';
    }
    return result;
}

// UTF-8 from its definition, a character at a time.
std::string encoded(char32_t c) {
    const auto byte = [](char32_t bits) { return static_cast<char>(bits); };
    if (c < 0x80) return {byte(c)};
    if (c < 0x800) return {byte(0xc0 | c >> 6), byte(0x80 | (c & 0x3f))};
    if (c < 0x10000) return {byte(0xe0 | c >> 12), byte(0x80 | (c >> 6 & 0x3f)), byte(0x80 | (c & 0x3f))};
    return {byte(0xf0 | c >> 18), byte(0x80 | (c >> 12 & 0x3f)), byte(0x80 | (c >> 6 & 0x3f)), byte(0x80 | (c & 0x3f))};
}

RC_GTEST_PROP(Utf8Laws, bringBackWhatIsWellFormed, ()) {
    const std::u16string text = anyText();
    RC_ASSERT(toUtf16(toUtf8(text)) == mended(text));
    const auto code = static_cast<char32_t>(*rc::gen::inRange(0, 0x110000));
    RC_PRE(code < 0xd800 || code > 0xdfff);
    RC_ASSERT(toUtf8(toUtf16(encoded(code))) == encoded(code));
    RC_ASSERT(toUtf16(encoded(code)).size() == (code < 0x10000 ? 1u : 2u));
}

TEST(Utf8, replacesWhatIsIllFormedAndGoesOn) {
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"a\xff"
         "b",
         u"a\ufffdb"},
        {"\x80", u"\ufffd"},
        {"\xc3", u"\ufffd"},
        {"\xc3"
         "A",
         u"\ufffdA"},
        {"\xe2\x82", u"\ufffd"},                            // the rest of a character is one fault
        {"\xf0\x9f\x98\xe2\x82\xac", u"\ufffd\u20ac"},      // and the next one begins anew
        {"\xc0\x80", u"\ufffd\ufffd"},                      // longer than it must be
        {"\xed\xa0\x80", u"\ufffd\ufffd\ufffd"},            // half of a pair
        {"\xf4\x90\x80\x80", u"\ufffd\ufffd\ufffd\ufffd"},  // past the last character
        {std::string_view("a\0b", 3), std::u16string_view(u"a\0b", 3)},
    };
    for (const auto& [bytes, text] : cases) EXPECT_EQ(toUtf16(bytes), text) << testing::PrintToString(bytes);
}

// Lines as one would cut them by hand: at each terminator, CR LF being one.
std::vector<std::u16string> cutByHand(const std::u16string& text) {
    std::vector<std::u16string> lines;
    std::u16string line;
    bool begun = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool second = text[i] == u'\n' && i > 0 && text[i - 1] == u'\r';
        if (second) continue;
        begun = true;
        if (std::u16string_view(u"\n\r\u0085\u2028\u2029").find(text[i]) == std::u16string_view::npos) {
            line += text[i];
            continue;
        }
        lines.push_back(std::exchange(line, u""));
        begun = false;
    }
    if (begun) lines.push_back(line);
    return lines;
}

RC_GTEST_PROP(LineLaws, cutEveryTextAtItsTerminators, ()) {
    const std::u16string text = anyText();
    std::vector<std::u16string> lines;
    std::size_t end = 0;
    std::u16string indented;
    for (const TextRange& range : lineRanges(text)) {
        RC_ASSERT((range.location >= end && range.end() <= text.size()));
        end = range.end();
        lines.emplace_back(range.in(text));
        indented += u"\t" + lines.back() + u"\n";
    }
    RC_ASSERT(lines == cutByHand(text));
    RC_ASSERT(indentLines(text) == indented);
}

// The quick ways through ASCII say what the tables of Unicode say; case keeps every position.
TEST(Characters, areTheSameInBothWays) {
    for (char16_t c = 0; c < 0x80; ++c) {
        EXPECT_EQ(isLetter(c), beyond_ascii::isLetter(c)) << int{c};
        EXPECT_EQ(isWhitespace(c), beyond_ascii::isWhitespace(c)) << int{c};
        EXPECT_EQ(lowercasedUnit(c), beyond_ascii::lowercasedUnit(c)) << int{c};
    }
    for (int unit = 0; unit < 0x10000; ++unit) {
        const auto c = static_cast<char16_t>(unit);
        const std::u16string text(1, c);
        EXPECT_EQ(hasLetter(text), isLetter(c)) << unit;
        EXPECT_EQ(trimmed(text).empty(), isWhitespace(c)) << unit;
        // U+0130 is the one unit whose lower case takes two.
        if (c != 0x130) {
            EXPECT_EQ(lowercased(text), std::u16string(1, lowercasedUnit(c))) << unit;
        }
    }
    EXPECT_TRUE(hasLetter(u"1\U00010400"));  // of Deseret, in two units
    EXPECT_EQ(lowercased(u"A\u00c4\U00010400"), u"a\u00e4\U00010428");
}

RC_GTEST_PROP(TrimmingLaws, takeBlanksOfBothEndsOnly, ()) {
    const std::u16string text = anyText();
    const std::u16string_view inner = trimmed(text);
    RC_ASSERT(trimmed(inner) == inner);
    const auto all = [](std::u16string_view part) { return std::all_of(part.begin(), part.end(), isWhitespace); };
    const auto start = static_cast<std::size_t>(inner.data() - text.data());
    if (inner.empty()) {
        RC_ASSERT(all(text));
        return;
    }
    RC_ASSERT(all(std::u16string_view(text).substr(0, start)));
    RC_ASSERT(all(std::u16string_view(text).substr(start + inner.size())));
}

TEST(FoldedWidth, keepsPositions) {
    EXPECT_EQ(foldedWidth(u"\uff11\uff12\uff0b\uff21\uff5e\u3000x\uff00\uff5f\u3042"), u"12+A~ x\uff00\uff5f\u3042");
}

TEST(Formatted, putsTheArgumentInItsFirstPlace) {
    EXPECT_EQ(formatted(u"%@ m", u"%@"), u"%@ m");
    EXPECT_EQ(formatted(u"%@%@", u"5"), u"5%@");
    EXPECT_EQ(formatted(u"%%@", u"5"), u"%5");
    EXPECT_EQ(formatted(u"m % @", u"5"), std::nullopt);
}

TEST(CanonicalEquality, looksThroughComposition) {
    EXPECT_TRUE(canonicallyEqual(u"\u00e9", u"e\u0301"));
    EXPECT_TRUE(canonicallyEqual(u"\u1e69", u"s\u0307\u0323"));  // the order of marks above and below is free
    EXPECT_FALSE(canonicallyEqual(u"\u00e9", u"e"));
    EXPECT_FALSE(canonicallyEqual(u"\ufb01", u"fi"));  // a ligature is only compatible
    EXPECT_FALSE(canonicallyEqual(u"", u"\u0301"));
    EXPECT_TRUE(canonicallyEqual(u"\xd800", u"\xd800"));
}

TEST(GraphemeCount, countsWhatPeopleSee) {
    const std::pair<std::u16string_view, std::size_t> cases[] = {
        {u"", 0},
        {u"12.5 km", 7},
        {u"e\u0301a", 2},
        {u"\r\n", 1},
        {u"\U0001f1e9\U0001f1ea\U0001f1eb\U0001f1f7", 2},    // two flags
        {u"\U0001f468\u200d\U0001f469\u200d\U0001f466", 1},  // a family
        {u"\u00a0\u00ad\u02ff", 3},
        {u"\xd800\xd800", 2},
    };
    for (const auto& [text, count] : cases) {
        EXPECT_EQ(graphemeCount(text, 100), count) << toUtf8(text);
        EXPECT_EQ(graphemeCount(text, 1), std::min<std::size_t>(count, 1)) << toUtf8(text);
    }
}

}  // namespace
}  // namespace vemo
