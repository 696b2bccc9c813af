// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/cache.h"
#include "scanning/words/string_range_detector.h"

namespace vemo {

template <class Object>
struct PhraseMatch {
    Object object;
    TextRange range;

    friend bool operator==(const PhraseMatch&, const PhraseMatch&) = default;
};

// A dictionary of phrases that finds the longest ones in a line, whole words only. A phrase written in
// lower case matches in any case.
template <class Object>
class PhraseDetector {
public:
    static constexpr std::size_t maxWordsLookup = 7;

    explicit PhraseDetector(StringRangeDetector& stringRangeDetector) : stringRangeDetector_(stringRangeDetector) {}

    // With `normalize`, the phrase is cut into words and joined with single blanks first. A later object
    // replaces an earlier one.
    void add(std::u16string_view phrase, Object object, bool normalize) {
        std::u16string key = normalize ? stringRangeDetector_.normalized(phrase) : std::u16string(phrase);
        if (key.empty()) return;
        noteStart(key.front());
        mostWords_ = std::max(mostWords_, std::min(mostWordsIn(key), maxWordsLookup));
        dict_.insert_or_assign(std::move(key), std::move(object));
    }

    const Object* find(std::u16string_view phrase) const {
        const auto found = dict_.find(phrase);
        return found == dict_.end() ? nullptr : &found->second;
    }
    const TextMap<Object>& phrases() const { return dict_; }

    // Matches in text order; matched words are not used again.
    std::vector<PhraseMatch<Object>> detect(std::u16string_view text) const {
        std::vector<PhraseMatch<Object>> matches;
        if (dict_.empty()) return matches;
        const std::vector<TextRange>& words = stringRangeDetector_.wordRanges(text);
        std::u16string run;
        for (std::size_t i = 0; i < words.size();) {
            const std::size_t length = longestAt(text, words, i, run, matches);
            i += std::max<std::size_t>(length, 1);
        }
        return matches;
    }

private:
    const Object* findAnyCase(std::u16string_view phrase) const {
        const Object* object = find(phrase);
        return object ? object : find(lowercased(phrase));
    }

    bool mayStart(char16_t first) const {
        if (first < asciiStarts_.size()) return asciiStarts_[first];
        if (firstCharQuickLookup_.contains(first)) return true;
        return firstCharQuickLookup_.contains(lowercased(std::u16string_view(&first, 1)).front());
    }

    void noteStart(char16_t first) {
        firstCharQuickLookup_.insert(first);
        if (first >= asciiStarts_.size()) return;
        asciiStarts_[first] = true;
        if (first >= u'a' && first <= u'z') asciiStarts_[static_cast<std::size_t>(first) - u'a' + u'A'] = true;
    }

    // An upper bound of the words that a phrase is cut into: they end where the kind of character changes, and at
    // signs.
    static std::size_t mostWordsIn(std::u16string_view phrase) {
        const auto kind = [](char16_t c) {
            if (c >= u'0' && c <= u'9') return 0;
            return c >= 0x80 || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ? 1 : 2;
        };
        std::size_t words = 1;
        for (std::size_t i = 1; i < phrase.size(); ++i)
            if (kind(phrase[i]) != kind(phrase[i - 1]) || kind(phrase[i]) == 2 || phrase[i] >= 0x80) ++words;
        return words;
    }

    // True when a digit stands before the place and a letter after it.
    static bool isInsideQuantity(std::u16string_view text, std::size_t place) {
        return place < text.size() && text[place - 1] >= u'0' && text[place - 1] <= u'9' && isLetter(text[place]);
    }

    // Adds the longest match that starts at word i and gives its number of words, 0 without one.
    std::size_t longestAt(std::u16string_view text, const std::vector<TextRange>& words, std::size_t i,
                          std::u16string& run, std::vector<PhraseMatch<Object>>& matches) const {
        if (!mayStart(text[words[i].location])) return 0;
        const std::size_t most = std::min(words.size() - i, mostWords_);
        std::array<std::size_t, maxWordsLookup + 1> ends{};
        run.clear();
        for (std::size_t k = 0; k < most; ++k) {
            if (k > 0) run += u' ';
            run += words[i + k].in(text);
            ends[k + 1] = run.size();
        }
        for (std::size_t k = most; k > 0; --k) {
            const std::u16string_view probe = std::u16string_view(run).substr(0, ends[k]);
            const TextRange range{words[i].location, words[i + k - 1].end() - words[i].location};
            const Object* object = findAnyCase(probe);
            // Words written without a gap also match a phrase that is stored so: "m2", "°C", but "ft2" not in "6ft2in".
            if (!object && range.length < probe.size() && !isInsideQuantity(text, range.end()))
                object = findAnyCase(range.in(text));
            if (!object) continue;
            matches.push_back({*object, range});
            return k;
        }
        return 0;
    }

    StringRangeDetector& stringRangeDetector_;
    TextMap<Object> dict_;
    std::unordered_set<char16_t> firstCharQuickLookup_;
    std::array<bool, 128> asciiStarts_{};  // the same for most words there are, in either case
    std::size_t mostWords_ = 0;            // of a phrase
};

}  // namespace vemo
