// SPDX-License-Identifier: MIT
// Texts on their way to a terminal and from a file: what no terminal may get, and what is no text.

#include "session/printable.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "session/document_text.h"

namespace vemo::session {
namespace {

constexpr char32_t controls[] = {0x00, 0x07, 0x0a, 0x0d, 0x1b, 0x7f, 0x80, 0x9b, 0x2028, 0x202e, 0x2066, 0x2069};

// Pieces of UTF-8, whole and broken, with controls in every place.
std::string anyBytes() {
    const auto bytes = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
        "a", "9", " ", "\t", "\n", "\x1b[2J", "\x7f", "\xc2\x9b", "\xc3\xa9", "\xe2\x80\xae", "\xe2\x80\xa9",
        "\xe2\x82\xac", "\xe2\x80\x8e", "\xd8\x9c", "\xf0\x9f\x98\x80", "\xf0\x9f", "\xc3", "\xe2\x80", "\xe1", "\xff",
        "\x80", "\x9b"));
    std::string text;
    for (const std::string& piece : bytes) text += piece;
    return text;
}

bool isWellFormed(std::string_view text) {
    return !firstInvalidByte(text);
}

TEST(Printable, knowsWhatControlsATerminal) {
    for (const char32_t code : controls) EXPECT_TRUE(isControl(code)) << static_cast<unsigned>(code);
    for (const unsigned code : {0x20u, 0x7eu, 0xa0u, 0xe9u, 0x2027u, 0x202fu, 0x2065u, 0x206au, 0x1f600u})
        EXPECT_FALSE(isControl(code)) << code;
}

TEST(Printable, replacesWhatWouldChangeTheTerminal) {
    EXPECT_EQ(printable("a\tb"), "a    b");
    EXPECT_EQ(printable("\x1b[31mred\n"), "\xef\xbf\xbd[31mred\xef\xbf\xbd");
    EXPECT_EQ(printableLines("a\r\nb\x1b"), "a\xef\xbf\xbd\nb\xef\xbf\xbd");
    EXPECT_EQ(printable("5\xe2\x80\x8e \xd8\x9c\xe2\x82\xac"), "5 \xe2\x82\xac");  // marks of direction go
    EXPECT_EQ(printable("\xe2\x80\xaegnp.exe"), "\xef\xbf\xbdgnp.exe");
}

// Of text that is UTF-8, all that is harmless stays. Of other bytes, a file's name for example, no control gets out
// under the cover of a character that is not whole.
RC_GTEST_PROP(PrintableLaws, letNoControlThrough, ()) {
    const std::string text = anyBytes();
    for (const bool lines : {false, true}) {
        const std::string shown = lines ? printableLines(text) : printable(text);
        for (const char c : shown) {
            const auto byte = static_cast<unsigned char>(c);
            if ((byte < 0x20 && !(lines && c == '\n')) || byte == 0x7f) RC_FAIL("a control character stays");
        }
        for (const char16_t c : toUtf16(shown)) RC_ASSERT((!isControl(c) || (lines && c == u'\n')));
        RC_ASSERT((lines ? printableLines(shown) : printable(shown)) == shown);
        if (!isWellFormed(text)) continue;
        std::u16string expected;
        for (const char16_t c : toUtf16(text)) {
            if (c == u'\t')
                expected += u"    ";
            else if (isControl(c) && !(lines && c == u'\n'))
                expected += u'\ufffd';
            else if (c != 0x200e && c != 0x200f && c != 0x061c)
                expected += c;
        }
        RC_ASSERT(toUtf16(shown) == expected);
    }
}

// JSON means the same with its controls as escapes, and has none of them any more.
RC_GTEST_PROP(EscapedJsonLaws, changeNoMeaning, ()) {
    const std::string text = toUtf8(toUtf16(anyBytes()));
    const std::string json = nlohmann::json{{"text", text}}.dump();
    const std::string escaped = escapedJson(json);
    RC_ASSERT(nlohmann::json::parse(escaped) == nlohmann::json::parse(json));
    for (const char16_t c : toUtf16(escaped)) RC_ASSERT((!isControl(c) && c != 0x200e && c != 0x061c));
}

// The first byte that is not UTF-8: the text before it is, and nothing that follows can make it so.
RC_GTEST_PROP(FirstInvalidByteLaws, agreeWithTheConversion, ()) {
    std::string text = anyBytes();
    if (!text.empty() && *rc::gen::arbitrary<bool>())
        text[*rc::gen::inRange<std::size_t>(0, text.size())] = static_cast<char>(*rc::gen::inRange(0, 256));
    const auto invalid = firstInvalidByte(text);
    RC_ASSERT(invalid.has_value() == (toUtf8(toUtf16(text)) != text));
    if (!invalid) return;
    RC_ASSERT(*invalid < text.size());
    const std::string before = text.substr(0, *invalid);
    RC_ASSERT(toUtf8(toUtf16(before)) == before);
    // It is the beginning of a character: the next byte alone makes the text a wrong one.
    const auto first = static_cast<unsigned char>(text[*invalid]);
    RC_ASSERT(first >= 0x80);
}

TEST(FirstInvalidByte, tellsTheBoundsOfTheEncoding) {
    const std::pair<std::string_view, std::optional<std::size_t>> cases[] = {
        {"", std::nullopt},
        {std::string_view("\0", 1), std::nullopt},
        {"\xc2\x80\xdf\xbf", std::nullopt},
        {"\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80", std::nullopt},
        {"\xf0\x90\x80\x80\xf4\x8f\xbf\xbf", std::nullopt},
        {"\xc1\xbf", 0},
        {"a\xe0\x9f\xbf", 1},
        {"\xed\xa0\x80", 0},
        {"\xf0\x8f\xbf\xbf", 0},
        {"\xf4\x90\x80\x80", 0},
        {"\xf5\x80\x80\x80", 0},
        {"\xe2\x82\xac\xe2\x82", 3},
        {"\xc3\xa9\x80", 2},
    };
    for (const auto& [text, offset] : cases) EXPECT_EQ(firstInvalidByte(text), offset) << testing::PrintToString(text);
}

}  // namespace
}  // namespace vemo::session
