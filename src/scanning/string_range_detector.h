// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/cache.h"
#include "platform/word_segmenter.h"

namespace vemo {

// Cuts texts into words, remembered by text. Not synchronised.
class StringRangeDetector {
public:
    StringRangeDetector();

    // While set, words are only the chunks between white space.
    bool simplifiedWordRangesDetection() const { return simplified_; }
    void setSimplifiedWordRangesDetection(bool simplified) { simplified_ = simplified; }

    // The words in text order: "10km" gives "10" and "km", "$10" gives "$" and "10", and what stands
    // between words is a word too. Valid until the next call.
    const std::vector<TextRange>& wordRanges(std::u16string_view text);
    // The words joined with single blanks: the form in which phrases are stored and looked up.
    std::u16string normalized(std::u16string_view phrase);

    void setCacheEnabled(bool enabled);

private:
    std::vector<TextRange> cut(std::u16string_view text);

    bool simplified_ = false;
    WordSegmenter segmenter_;
    Cache<std::vector<TextRange>> wordRangesCache_;
    std::u16string latestKey_;  // many phrase tables ask for the same line in a row
    const std::vector<TextRange>* latest_ = nullptr;
    std::vector<TextRange> uncached_;
};

}  // namespace vemo
