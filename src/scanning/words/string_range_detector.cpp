// SPDX-License-Identifier: MIT
#include "scanning/words/string_range_detector.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstring>

namespace vemo {

namespace {

constexpr std::size_t cachedTexts =
    1u << 17;  // as many as results of lines: a document's lines are cut again and again
constexpr std::size_t cachedBytes = std::size_t(32) << 20;  // of each generation, as are those of long texts
constexpr std::size_t cachedBytesOfLong = std::size_t(4) << 20;
constexpr std::size_t longText = 128;          // UTF-16 units
constexpr std::size_t longestCached = 0xffff;  // UTF-16 units, the key's included: its length is kept in one
constexpr std::size_t bitsPerUnit = 16;

using Predicate = bool (*)(char16_t);

// True for a sign of money: in "(€40)" it stands between a bracket and a number.
bool isCurrencySign(char16_t c) {
    return c == u'$' || (c >= 0x80 && u_charType(c) == U_CURRENCY_SYMBOL);
}

// True for characters that mean something whatever they touch: operators, brackets, "=".
bool isSign(char16_t c) {
    if (c < 0x80) return c > u' ' && !(isAsciiDigit(c) || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'));
    return (U_GET_GC_MASK(c) & (U_GC_SM_MASK | U_GC_P_MASK)) != 0;
}

// Cuts what stands between words before and after each sign, but not between equal ones ("<<") nor in comparisons.
void addSigns(std::u16string_view text, TextRange stretch, std::vector<TextRange>& result) {
    std::size_t start = stretch.location;
    for (std::size_t i = start + 1; i < stretch.end(); ++i) {
        const char16_t before = text[i - 1], c = text[i];
        if (before == c || (!isSign(before) && !isSign(c))) continue;
        if (c == u'=' && start == i - 1 && std::u16string_view(u"<>!:~").find(before) != std::u16string_view::npos)
            continue;
        if (before == u'=' && c == u'>') continue;
        result.push_back({start, i - start});
        start = i;
    }
    result.push_back({start, stretch.end() - start});
}

// True for the signs of 10 to 10^12, which stand between a number and its unit without a blank.
bool isNumberKanji(char16_t c) {
    return std::u16string_view(u"\u5341\u767e\u5343\u4e07\u5104\u5146").find(c) != std::u16string_view::npos;
}

// Cuts these signs off the words that they begin after digits.
void splitNumberKanji(std::u16string_view text, std::vector<TextRange>& ranges) {
    for (std::size_t i = 1; i < ranges.size(); ++i) {
        const TextRange word = ranges[i];
        if (!isNumberKanji(text[word.location]) || !isAsciiDigit(text[word.location - 1])) continue;
        std::size_t signs = 1;
        while (signs < word.length && isNumberKanji(text[word.location + signs])) ++signs;
        if (signs == word.length) continue;
        ranges[i].length = signs;
        ranges.insert(ranges.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                      {word.location + signs, word.length - signs});
    }
}

// The runs of characters for which the predicate holds, and the stretches between, of each range.
void splitRuns(std::u16string_view text, const std::vector<TextRange>& ranges, Predicate holds,
               std::vector<TextRange>& result) {
    result.clear();
    for (const TextRange& range : ranges) {
        std::size_t start = range.location;
        for (std::size_t i = start + 1; i < range.end(); ++i) {
            if (holds(text[i]) == holds(text[i - 1])) continue;
            result.push_back({start, i - start});
            start = i;
        }
        result.push_back({start, range.end() - start});
    }
}

void splitAtBlanks(std::u16string_view text, std::vector<TextRange>& result) {
    result.clear();
    for (std::size_t i = 0; i < text.size();) {
        if (isWhitespace(text[i])) {
            ++i;
            continue;
        }
        const std::size_t start = i;
        while (i < text.size() && !isWhitespace(text[i])) ++i;
        result.push_back({start, i - start});
    }
}

// The parts of each chunk: words, and what is left between them.
void splitWords(std::u16string_view text, const std::vector<TextRange>& chunks, const std::vector<TextRange>& words,
                std::vector<TextRange>& result) {
    result.clear();
    auto word = words.begin();
    for (const TextRange& chunk : chunks) {
        std::size_t position = chunk.location;
        while (word != words.end() && word->end() <= position) ++word;
        for (; word != words.end() && word->location < chunk.end(); ++word) {
            const std::size_t start = std::max(word->location, position);
            const std::size_t end = std::min(word->end(), chunk.end());
            if (start > position) addSigns(text, {position, start - position}, result);
            result.push_back({start, end - start});
            position = end;
            if (word->end() > chunk.end()) break;  // a word over white space goes on in the next chunk
        }
        if (position < chunk.end()) addSigns(text, {position, chunk.end() - position}, result);
    }
}

}  // namespace

StringRangeDetector::StringRangeDetector()
    : wordRangesCache_(cachedTexts, cachedBytes), longTextsCache_(cachedTexts, cachedBytesOfLong) {}

// In the block: the length of the key, the key, which ends with the text, and a bit for each unit of the text, set
// where a word begins. Words end where the next begins, or white space.
void StringRangeDetector::PackedRanges::pack(std::u16string_view key, const std::vector<TextRange>& ranges) {
    block_.reserve(1 + key.size() + key.size() / bitsPerUnit + 1);
    block_ += static_cast<char16_t>(key.size());
    block_ += key;
    const std::size_t bits = block_.size();
    block_.resize(bits + key.size() / bitsPerUnit + 1);
    for (const auto& [start, length] : ranges)
        block_[bits + start / bitsPerUnit] |= static_cast<char16_t>(1u << start % bitsPerUnit);
}

void StringRangeDetector::PackedRanges::unpack(std::u16string_view text, std::vector<TextRange>& ranges) const {
    ranges.clear();
    const std::u16string_view bits = std::u16string_view(block_).substr(1 + key().size());
    bool inWord = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((bits[i / bitsPerUnit] >> i % bitsPerUnit & 1) != 0) {
            ranges.push_back({i, 0});
            inWord = true;
        } else if (isWhitespace(text[i])) {
            inWord = false;
        }
        if (inWord) ++ranges.back().length;
    }
}

void StringRangeDetector::cut(std::u16string_view text) {
    splitAtBlanks(text, latest_);
    if (simplified_ || latest_.empty()) return;
    splitWords(text, latest_, segmenter_.words(text), between_);
    splitRuns(text, between_, isAsciiDigit, latest_);
    splitNumberKanji(text, latest_);
    splitRuns(text, latest_, isCurrencySign, between_);
    latest_.swap(between_);
}

const std::vector<TextRange>& StringRangeDetector::wordRanges(std::u16string_view text) {
    const char16_t mode = simplified_ ? u's' : u'f';
    // Compared as bytes, for views of 16-bit units are compared one unit at a time.
    if (latestKey_.size() == text.size() + 1 && latestKey_.front() == mode &&
        std::memcmp(latestKey_.data() + 1, text.data(), text.size() * sizeof(char16_t)) == 0)
        return latest_;
    latestKey_.assign(1, mode).append(text);
    RangesCache& cache = text.size() > longText ? longTextsCache_ : wordRangesCache_;
    // Phrases are cut once, while they are registered.
    const bool cached = !simplified_ && latestKey_.size() <= longestCached;
    if (const PackedRanges* known = cached ? cache.find(latestKey_) : nullptr) {
        known->unpack(text, latest_);
        return latest_;
    }
    cut(text);
    if (PackedRanges* added = cached ? cache.obtain(latestKey_) : nullptr) {
        added->pack(latestKey_, latest_);
        cache.charge(added->bytes());
    }
    return latest_;
}

std::u16string StringRangeDetector::normalized(std::u16string_view phrase) {
    std::u16string result;
    for (const TextRange& word : wordRanges(phrase)) {
        if (!result.empty()) result += u' ';
        result += word.in(phrase);
    }
    return result;
}

void StringRangeDetector::setCacheEnabled(bool enabled) {
    wordRangesCache_.setEnabled(enabled);
    longTextsCache_.setEnabled(enabled);
    latestKey_.clear();
}

}  // namespace vemo
