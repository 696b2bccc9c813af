// SPDX-License-Identifier: MIT
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "scanning/words/phrase_detector.h"
#include "units/unit.h"
#include "vemo/remarks.h"

namespace vemo {

// What a word does where a rate is told.
enum class RateWord : std::uint8_t {
    per,      // it stands between a quantity and the unit that it is told per: "per", "a"
    product,  // it multiplies a rate by what it is told of: "at", "for"
    lot,      // the same as `per` before 100 or 1000, though it usually means something else: "6 l auf 100 km"
    after,    // it stands after what a rate is told of: "1時間につき1000円"
    article,
};
inline constexpr std::size_t rateWordKinds = 5;

// Makes units findable by phrase and symbol, and knows how their amounts are shown.
class UnitManager {
public:
    explicit UnitManager(StringRangeDetector& stringRangeDetector) : phraseDetector_(stringRangeDetector) {}

    // Where two units claim a phrase or symbol, the last one added has it. Without `phrasesVerbatim` the
    // words of a phrase are joined with single blanks first.
    void addUnit(const Unit& unit, bool phrasesVerbatim);
    void addPhrase(std::u16string_view phrase, std::u16string_view unitId);
    void setFormat(std::u16string_view unitId, std::u16string_view format) {
        format_.insert_or_assign(std::u16string(unitId), std::u16string(format));
    }

    // A phrase, in lower case, that is a word too: it names its unit in a conversion only.
    void restrictToConversions(std::u16string phrase) { conversionOnly_.insert(std::move(phrase)); }
    bool isForConversionsOnly(const std::u16string& phrase) const { return conversionOnly_.contains(phrase); }

    // A phrase, in the case in which it counts, that is a word first: it names its unit after a number, or where a
    // unit must stand.
    void restrictToNumbers(std::u16string phrase) { afterNumbers_.insert(std::move(phrase)); }
    bool isForNumbersOnly(std::u16string_view phrase) const;

    // A word that helps to tell a rate; one word may do so in several ways.
    void addRateWord(RateWord kind, std::u16string_view word);
    bool isRateWord(RateWord kind, std::u16string_view word) const;
    bool isRateWord(std::u16string_view word) const { return isRateWord(RateWord::per, word); }
    bool isRateProductWord(std::u16string_view word) const { return isRateWord(RateWord::product, word); }
    bool isRateLotWord(std::u16string_view word) const { return isRateWord(RateWord::lot, word); }
    bool isRateAfterWord(std::u16string_view word) const { return isRateWord(RateWord::after, word); }
    bool isArticle(std::u16string_view word) const { return isRateWord(RateWord::article, word); }
    bool hasRateAfterWords() const { return hasRateAfterWords_; }
    // A word in front of a length that makes it a speed, told per that unit of time: "時速60 km".
    void addRatePrefix(std::u16string word, std::u16string_view timeUnit) {
        ratePrefixes_.emplace_back(std::move(word), timeUnit);
    }
    const std::vector<std::pair<std::u16string, std::u16string>>& ratePrefixes() const { return ratePrefixes_; }

    // A phrase that is worth a note after a number, with what the message names.
    struct PhraseNote {
        std::u16string phrase;
        NoteKind kind;
        std::u16string first;
    };
    void addNote(PhraseNote note) { notes_.push_back(std::move(note)); }
    const PhraseNote* note(std::u16string_view phrase) const;

    // A phrase, in lower case, that names another unit beside certain ones: in German a pound is money, but a weight
    // beside weights. With `convertedTo`, only what such units are converted to: "$50 in pounds".
    struct Homonym {
        std::u16string phrase, unit;
        bool convertedTo = false;
        std::vector<std::u16string> companions;
    };
    void addHomonym(Homonym homonym) { homonyms_.push_back(std::move(homonym)); }
    const std::vector<Homonym>& homonyms() const { return homonyms_; }

    const PhraseDetector<std::u16string>& phraseDetector() const { return phraseDetector_; }
    // The display format; null when the unit has none.
    const std::u16string* format(std::u16string_view unitId) const;

private:
    PhraseDetector<std::u16string> phraseDetector_;
    TextMap<std::u16string> format_;
    std::unordered_set<std::u16string> conversionOnly_;
    std::unordered_set<std::u16string> afterNumbers_;
    std::unordered_map<std::u16string, std::bitset<rateWordKinds>> rateWords_;
    bool hasRateAfterWords_ = false;
    std::vector<PhraseNote> notes_;
    std::vector<Homonym> homonyms_;
    std::vector<std::pair<std::u16string, std::u16string>> ratePrefixes_;
};

}  // namespace vemo
