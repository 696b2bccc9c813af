// SPDX-License-Identifier: MIT
// Where a cursor stops, how wide a text is, and what a completion replaces.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <clocale>
#include <string>

#include "session/characters.h"
#include "session/word_starts.h"

namespace vemo::session {
namespace {

// Widths are those of the characters of the process's locale.
class Utf8Locale {
public:
    Utf8Locale() : before_(std::setlocale(LC_CTYPE, nullptr)) { std::setlocale(LC_CTYPE, "C.UTF-8"); }
    ~Utf8Locale() { std::setlocale(LC_CTYPE, before_.c_str()); }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    std::string before_;
};

std::vector<std::size_t> stops(std::u16string_view text) {
    std::vector<std::size_t> result;
    for (std::size_t at = 0; at < text.size(); result.push_back(at)) at = nextStop(text, at);
    return result;
}

TEST(Cursor, stepsOverWhatIsOneCharacter) {
    const Utf8Locale locale;
    using Stops = std::vector<std::size_t>;
    const std::pair<std::u16string_view, Stops> cases[] = {
        {u"", {}},
        {u"a1", {1, 2}},
        {u"e\u0301x", {2, 3}},
        {u"\u0301x", {1, 2}},  // a mark with nothing to stand on
        {u"\U0001f600!", {2, 3}},
        {u"\U0001f44d\U0001f3fd!", {4, 5}},                                   // a thumb and its tone
        {u"\U0001f468\u200d\U0001f469\u200d\U0001f466!", {8, 9}},             // a family
        {u"\U0001f1e9\U0001f1ea\U0001f1eb\U0001f1f7\U0001f1e9", {4, 8, 10}},  // two flags and a half
        {u"\xd83d!", {1, 2}},                                                 // half of a pair
        {u"a\x1b[", {1, 2, 3}},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(stops(text), expected) << testing::PrintToString(text);
}

TEST(Cursor, countsColumns) {
    const Utf8Locale locale;
    const std::pair<std::u16string_view, std::size_t> cases[] = {{u"km", 2},           {u"\u00e9e\u0301", 2},
                                                                 {u"\u6587\u5b57", 4}, {u"\U0001f600", 2},
                                                                 {u"\x1b\u0085", 2},   {u"\xd800", 1}};
    for (const auto& [text, columns] : cases) EXPECT_EQ(columnsOf(text), columns) << testing::PrintToString(text);
}

// From any place, a step to the right and one to the left meet; no stop lies within a pair.
RC_GTEST_PROP(CursorLaws, leadBackToTheStopBefore, ()) {
    const Utf8Locale locale;
    const auto pieces = *rc::gen::container<std::vector<std::u16string>>(
        rc::gen::element<std::u16string>(u"a", u" ", u"\u0301", u"\u200d", u"\u6587", u"\U0001f600", u"\U0001f3fd",
                                         u"\U0001f1e9", u"\xd83d", u"\xde00"));
    std::u16string text;
    for (const std::u16string& piece : pieces) text += piece;
    std::size_t before = 0;
    for (const std::size_t stop : stops(text)) {
        RC_ASSERT((stop > before && stop <= text.size()));
        RC_ASSERT(previousStop(text, stop) == before);
        for (std::size_t within = before + 1; within < stop; ++within) RC_ASSERT(previousStop(text, within) == before);
        const bool pair = stop < text.size() && text[stop - 1] >= 0xd800 && text[stop - 1] < 0xdc00 &&
                          text[stop] >= 0xdc00 && text[stop] < 0xe000;
        RC_ASSERT(!pair);
        before = stop;
    }
    RC_ASSERT(before == text.size());
    RC_ASSERT((nextStop(text, text.size() + 5) == text.size() && previousStop(text, 0) == 0u));
}

TEST(WordStarts, beginWithTheLongestStretch) {
    using Starts = std::vector<std::size_t>;
    const std::pair<std::u16string_view, Starts> cases[] = {
        {u"", {}},
        {u"kilo", {0}},
        {u"kilo ", {}},    // nothing is begun
        {u"5 kilo", {2}},  // a number is no word
        {u"5kilo", {1}},   // it may stand right before its unit
        {u"12.5%x", {5}},
        {u"a b c d e", {2, 4, 6, 8}},  // four at most
        {u"a  b", {3}},                // two blanks part them
        {u"cost of 3 ap", {10}},
        {u"x = kitchen wi", {4, 12}},
        {u"a\tb", {2}},
        {u"(sq", {1}},
        {u"a + 7", {}},
        {u"// kilo", {3}},
    };
    for (const auto& [text, starts] : cases) EXPECT_EQ(wordStarts(text), starts) << testing::PrintToString(text);
}

TEST(WordStarts, compareBeginningsInAnyCase) {
    EXPECT_TRUE(beginsWith(u"Kilometer", u"kILO"));
    EXPECT_TRUE(beginsWith(u"kilo", u""));
    EXPECT_FALSE(beginsWith(u"kil", u"kilo"));
    EXPECT_FALSE(beginsWith(u"{", u"["));            // one bit apart, as letters of two cases are
    EXPECT_FALSE(beginsWith(u"\u00c9", u"\u00e9"));  // ASCII alone
}

}  // namespace
}  // namespace vemo::session
