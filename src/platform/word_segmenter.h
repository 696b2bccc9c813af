// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace vemo {

// Language-aware word segmentation (Unicode word boundaries, dictionaries where a script needs one).
// Not synchronised.
class WordSegmenter {
public:
    WordSegmenter();
    ~WordSegmenter();
    WordSegmenter(const WordSegmenter&) = delete;
    WordSegmenter& operator=(const WordSegmenter&) = delete;

    // The words of the text, without what stands between them.
    std::vector<TextRange> words(std::u16string_view text);
    // The same by ICU in every case, as the measure for tests.
    std::vector<TextRange> segmented(std::u16string_view text);

private:
    struct Iterator;
    std::unique_ptr<Iterator> iterator_;
};

}  // namespace vemo
