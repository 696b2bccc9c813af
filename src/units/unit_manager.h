// SPDX-License-Identifier: MIT
#pragma once

#include <unordered_set>
#include <utility>
#include <vector>

#include "scanning/words/phrase_detector.h"
#include "units/unit.h"
#include "vemo/remarks.h"

namespace vemo {

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

    // The words between a quantity and the unit that it is told per: "per", "a".
    void addRateWord(std::u16string word) { rateWords_.insert(std::move(word)); }
    bool isRateWord(std::u16string_view word) const;
    // A word in front of a length that makes it a speed, told per that unit of time: "時速60 km".
    void addRatePrefix(std::u16string word, std::u16string_view timeUnit) {
        ratePrefixes_.emplace_back(std::move(word), timeUnit);
    }
    const std::vector<std::pair<std::u16string, std::u16string>>& ratePrefixes() const { return ratePrefixes_; }
    // The words that multiply a rate by what it is told of: "at", "for".
    void addRateProductWord(std::u16string word) { rateProductWords_.insert(std::move(word)); }
    bool isRateProductWord(std::u16string_view word) const;

    // The words that tell a rate per 100 or 1000 of its lower unit, though they usually mean something else: "6 l auf
    // 100 km".
    void addRateLotWord(std::u16string word) { rateLotWords_.insert(std::move(word)); }
    bool isRateLotWord(std::u16string_view word) const;
    // The words after what a rate is told of: "1時間につき1000円".
    void addRateAfterWord(std::u16string word) { rateAfterWords_.insert(std::move(word)); }
    bool isRateAfterWord(std::u16string_view word) const;
    bool hasRateAfterWords() const { return !rateAfterWords_.empty(); }
    void addArticle(std::u16string word) { articles_.insert(std::move(word)); }
    bool isArticle(std::u16string_view word) const;

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
    std::unordered_set<std::u16string> rateWords_;
    std::unordered_set<std::u16string> rateProductWords_;
    std::unordered_set<std::u16string> rateLotWords_;
    std::unordered_set<std::u16string> rateAfterWords_;
    std::unordered_set<std::u16string> articles_;
    std::vector<PhraseNote> notes_;
    std::vector<Homonym> homonyms_;
    std::vector<std::pair<std::u16string, std::u16string>> ratePrefixes_;
};

}  // namespace vemo
