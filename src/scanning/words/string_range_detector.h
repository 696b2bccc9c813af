// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/cache.h"
#include "platform/word_segmenter.h"

namespace vemo {

// Cuts texts into words, remembered by text. Not synchronised.
class StringRangeDetector {
public:
    StringRangeDetector();

    // While set, words are only the chunks between white space.
    bool simplifiedWordRangesDetection() const { return simplified_; }
    void setSimplifiedWordRangesDetection(bool simplified) { simplified_ = simplified; }

    // The words in text order: "10km" gives "10" and "km", "$10" gives "$" and "10", and signs are words too: "=-(" is
    // three, "<<" one. Valid until the next call.
    const std::vector<TextRange>& wordRanges(std::u16string_view text);
    // The words joined with single blanks: the form in which phrases are stored and looked up.
    std::u16string normalized(std::u16string_view phrase);

    void setCacheEnabled(bool enabled);

private:
    // The ranges of a text together with its key, as small as possible: there is one for every line of a document.
    class PackedRanges {
    public:
        void pack(std::u16string_view key, const std::vector<TextRange>& ranges);
        void unpack(std::u16string_view text, std::vector<TextRange>& ranges) const;
        std::u16string_view key() const {
            return block_.empty() ? std::u16string_view() : std::u16string_view(block_).substr(1, block_.front());
        }
        std::size_t bytes() const { return block_.capacity() * sizeof(char16_t); }

    private:
        std::u16string block_;
    };
    struct KeyOfPackedRanges {
        explicit KeyOfPackedRanges(std::u16string_view) {}
        bool is(std::u16string_view key, const PackedRanges& ranges) const { return ranges.key() == key; }
        static std::size_t bytes(const PackedRanges& ranges) { return ranges.bytes(); }
    };

    void cut(std::u16string_view text);  // into `latest_`

    bool simplified_ = false;
    WordSegmenter segmenter_;
    using RangesCache = TextCache<PackedRanges, KeyOfPackedRanges>;
    RangesCache wordRangesCache_;
    RangesCache longTextsCache_;  // apart, so that they push out no others
    std::u16string latestKey_;    // many phrase tables ask for the same line in a row
    std::vector<TextRange> latest_;
    std::vector<TextRange> between_;  // from one step of cutting to the next
};

}  // namespace vemo
