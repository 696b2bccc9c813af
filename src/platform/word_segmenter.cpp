// SPDX-License-Identifier: MIT
#include "platform/word_segmenter.h"

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace vemo {

namespace {

// The at sign counts as a letter since CLDR 42.
bool isLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'@';
}
bool isWordCharacter(char16_t c) {
    return isLetter(c) || isAsciiDigit(c) || c == u'_';
}

// The word boundary rules (Unicode Standard Annex 29) for ASCII, which most lines are: several times faster
// than the general iteration, with the same result.
std::vector<TextRange> asciiWords(std::u16string_view text) {
    std::vector<TextRange> result;
    const auto at = [&](std::size_t i) { return i < text.size() ? text[i] : u'\0'; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isWordCharacter(text[i])) continue;
        const std::size_t start = i;
        for (;;) {
            const char16_t next = at(i + 1);
            if (isWordCharacter(next)) {
                ++i;
            } else if ((isLetter(text[i]) && isLetter(at(i + 2)) && (next == u'.' || next == u'\'')) ||
                       (isAsciiDigit(text[i]) && isAsciiDigit(at(i + 2)) &&
                        (next == u'.' || next == u'\'' || next == u',' || next == u';'))) {
                i += 2;
            } else {
                break;
            }
        }
        // A single low line is no word; several are.
        if (i > start || text[i] != u'_') result.push_back({start, i + 1 - start});
    }
    return result;
}

}  // namespace

struct WordSegmenter::Iterator {
    std::unique_ptr<icu::BreakIterator> words;
};

WordSegmenter::WordSegmenter() : iterator_(std::make_unique<Iterator>()) {
    UErrorCode status = U_ZERO_ERROR;
    iterator_->words.reset(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) iterator_->words.reset();
}

WordSegmenter::~WordSegmenter() = default;

std::vector<TextRange> WordSegmenter::words(std::u16string_view text) {
    if (std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; })) return asciiWords(text);
    return segmented(text);
}

std::vector<TextRange> WordSegmenter::segmented(std::u16string_view text) {
    std::vector<TextRange> result;
    if (!iterator_->words) return result;
    icu::BreakIterator& words = *iterator_->words;
    const icu::UnicodeString alias(false, text.data(), static_cast<std::int32_t>(text.size()));
    words.setText(alias);
    std::int32_t start = words.first();
    for (std::int32_t end = words.next(); end != icu::BreakIterator::DONE; start = end, end = words.next()) {
        if (words.getRuleStatus() != UBRK_WORD_NONE)
            result.push_back({static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)});
    }
    return result;
}

}  // namespace vemo
