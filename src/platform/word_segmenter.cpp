// SPDX-License-Identifier: MIT
#include "platform/word_segmenter.h"

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

namespace vemo {

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
