// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
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
        noteStart(key, std::min(mostWordsIn(key), maxWordsLookup));
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
            const std::size_t most = std::min(words.size() - i, mostWordsFrom(words[i].in(text)));
            const std::size_t length = most == 0 ? 0 : longestAt(text, words, i, most, run, matches);
            i += std::max<std::size_t>(length, 1);
        }
        return matches;
    }

private:
    static constexpr std::size_t asciiCharacters = 128;
    static constexpr char16_t noLetter = 0;  // as the second character of a phrase, or none

    const Object* findAnyCase(std::u16string_view phrase) const {
        const Object* object = find(phrase);
        const bool otherCase = !object && std::any_of(phrase.begin(), phrase.end(), [](char16_t c) {
            return c >= asciiCharacters || (c >= u'A' && c <= u'Z');
        });
        return otherCase ? find(lowercased(phrase)) : object;
    }

    // The words of the longest phrase that may begin with this word; 0 for none.
    std::size_t mostWordsFrom(std::u16string_view word) const {
        const char16_t first = word.front();
        if (first >= asciiCharacters) {
            const bool known =
                firstCharQuickLookup_.contains(first) || firstCharQuickLookup_.contains(lowercasedUnit(first));
            return known ? mostWords_ : 0;
        }
        const std::size_t most = asciiStarts_[first];
        if (most == 0) return 0;
        // The second character is the word's own in a word of several; in a word of one letter it is no letter.
        if (word.size() == 1) return !isLetter(first) || asciiPairs_[pairIndex(first, noLetter)] ? most : 0;
        return word[1] >= asciiCharacters || asciiPairs_[pairIndex(first, word[1])] ? most : 0;
    }

    static std::size_t pairIndex(char16_t first, char16_t second) {
        const auto lower = [](char16_t c) -> std::size_t { return c >= u'A' && c <= u'Z' ? c + 0x20u : c; };
        return lower(first) * asciiCharacters + lower(second);
    }

    void noteStart(std::u16string_view phrase, std::size_t words) {
        const char16_t first = phrase.front();
        firstCharQuickLookup_.insert(first);
        mostWords_ = std::max(mostWords_, words);
        if (first >= asciiCharacters) return;
        const auto note = [&](char16_t c) {
            asciiStarts_[c] = std::max(asciiStarts_[c], static_cast<std::uint8_t>(words));
        };
        note(first);
        if (first >= u'a' && first <= u'z') note(static_cast<char16_t>(first - u'a' + u'A'));
        const char16_t second = phrase.size() > 1 ? phrase[1] : noLetter;
        if (second >= asciiCharacters || !isLetter(second)) asciiPairs_.set(pairIndex(first, noLetter));
        if (second < asciiCharacters) asciiPairs_.set(pairIndex(first, second));
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

    // True when a digit stands before the place and a letter stands there.
    static bool isInsideQuantity(std::u16string_view text, std::size_t place) {
        return place < text.size() && text[place - 1] >= u'0' && text[place - 1] <= u'9' && isLetter(text[place]);
    }

    // Adds the longest match that starts at word i, of at most so many words, and gives their number, 0 without one.
    std::size_t longestAt(std::u16string_view text, const std::vector<TextRange>& words, std::size_t i,
                          std::size_t most, std::u16string& run, std::vector<PhraseMatch<Object>>& matches) const {
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
    std::size_t mostWords_ = 0;  // of a phrase
    // The same for those that begin with a character of ASCII, in either case, and the first two characters of phrases
    // that have them: most words of a line begin none, and are told by this alone.
    std::array<std::uint8_t, asciiCharacters> asciiStarts_{};
    std::bitset<asciiCharacters * asciiCharacters> asciiPairs_;
};

}  // namespace vemo
