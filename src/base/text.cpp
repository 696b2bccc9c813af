// SPDX-License-Identifier: MIT
#include "base/text.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <memory>

namespace vemo {

std::u16string toUtf16(std::string_view utf8) {
    std::u16string result;
    result.reserve(utf8.size());
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const std::size_t length = utf8.size();
    for (std::size_t i = 0; i < length;) {
        UChar32 character;
        U8_NEXT_OR_FFFD(bytes, i, length, character);
        if (U_IS_BMP(character)) {
            result += static_cast<char16_t>(character);
        } else {
            result += static_cast<char16_t>(U16_LEAD(character));
            result += static_cast<char16_t>(U16_TRAIL(character));
        }
    }
    return result;
}

std::string toUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        UChar32 character;
        U16_NEXT_OR_FFFD(text.data(), i, text.size(), character);
        char bytes[4];
        std::size_t count = 0;
        U8_APPEND_UNSAFE(bytes, count, character);
        result.append(bytes, count);
    }
    return result;
}

std::u16string lowercased(std::u16string_view text) {
    std::u16string result(text);
    for (char16_t& character : result) {
        if (character >= 0x80) {
            icu::UnicodeString whole(text.data(), static_cast<std::int32_t>(text.size()));
            whole.toLower(icu::Locale::getRoot());
            return std::u16string(whole.getBuffer(), static_cast<std::size_t>(whole.length()));
        }
        if (character >= u'A' && character <= u'Z') character = static_cast<char16_t>(character + 0x20);
    }
    return result;
}

char16_t beyond_ascii::lowercasedUnit(char16_t character) {
    const UChar32 lower = u_tolower(character);
    return U_IS_BMP(lower) ? static_cast<char16_t>(lower) : character;
}

std::u16string foldedWidth(std::u16string_view text) {
    std::u16string result(text);
    for (char16_t& c : result) {
        if (c >= 0xff01 && c <= 0xff5e)
            c = static_cast<char16_t>(c - 0xff01 + u'!');
        else if (c == 0x3000)
            c = u' ';
    }
    return result;
}

bool beyond_ascii::isLetter(char16_t character) {
    return u_isalpha(character) != 0;
}

bool hasLetter(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        UChar32 character;
        U16_NEXT(text.data(), i, text.size(), character);
        if (u_isalpha(character)) return true;
    }
    return false;
}

bool isCjk(char16_t character) {
    return (character >= 0x2e80 && character < 0x3000) || (character >= 0x3040 && character < 0xa4d0) ||
           (character >= 0xf900 && character < 0xfb00);
}

bool beyond_ascii::isWhitespace(char16_t character) {
    return u_isUWhiteSpace(character) != 0;
}

std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && isWhitespace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isWhitespace(text.back())) text.remove_suffix(1);
    return text;
}

std::u16string spoken(std::u16string_view text) {
    std::u16string words = lowercased(trimmed(text));
    std::size_t kept = 0;
    for (const char16_t c : words) {
        const bool blank = isWhitespace(c);
        if (blank && words[kept - 1] == u' ') continue;
        words[kept++] = blank ? u' ' : c;
    }
    words.resize(kept);
    return words;
}

std::u16string joined(const std::vector<std::u16string>& parts, std::u16string_view separator) {
    std::u16string result;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0) result += separator;
        result += parts[i];
    }
    return result;
}

std::u16string indentLines(std::u16string_view text) {
    std::u16string result;
    for (const TextRange& line : lineRanges(text)) {
        result += u'\t';
        result += line.in(text);
        result += u'\n';
    }
    return result;
}

std::vector<TextRange> lineRanges(std::u16string_view text) {
    std::vector<TextRange> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c > u'\r' && c < u'\u0085') continue;  // nearly all of them
        if (c != u'\n' && c != u'\r' && c != u'\u0085' && c != u'\u2028' && c != u'\u2029') continue;
        lines.push_back({start, i - start});
        if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
        start = i + 1;
    }
    if (start < text.size()) lines.push_back({start, text.size() - start});
    return lines;
}

std::optional<std::u16string> formatted(std::u16string_view format, std::u16string_view argument) {
    const std::size_t place = format.find(u"%@");
    if (place == std::u16string_view::npos) return std::nullopt;
    std::u16string result(format.substr(0, place));
    result += argument;
    result += format.substr(place + 2);
    return result;
}

bool canonicallyEqual(std::u16string_view a, std::u16string_view b) {
    if (a == b) return true;
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t order = unorm_compare(a.data(), static_cast<std::int32_t>(a.size()), b.data(),
                                             static_cast<std::int32_t>(b.size()), 0, &status);
    return U_SUCCESS(status) && order == 0;
}

std::size_t graphemeCount(std::u16string_view text, std::size_t limit) {
    if (std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= 0x20 && c < 0x300; }))
        return std::min(text.size(), limit);
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) return std::min(text.size(), limit);
    const icu::UnicodeString alias(false, text.data(), static_cast<std::int32_t>(text.size()));
    iterator->setText(alias);
    std::size_t count = 0;
    while (count < limit && iterator->next() != icu::BreakIterator::DONE) ++count;
    return count;
}

}  // namespace vemo
