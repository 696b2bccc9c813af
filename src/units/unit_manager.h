// SPDX-License-Identifier: MIT
#pragma once

#include <unordered_set>

#include "scanning/words/phrase_detector.h"
#include "units/unit.h"

namespace vemo {

// Makes units findable by phrase and symbol, and knows how their amounts are shown.
class UnitManager {
public:
    explicit UnitManager(StringRangeDetector& stringRangeDetector) : phraseDetector_(stringRangeDetector) {}

    // Where two units claim a phrase or symbol, the last one added has it. Without `phrasesVerbatim` the
    // words of a phrase are joined with single blanks first.
    void addUnit(const Unit& unit, bool phrasesVerbatim);
    void addPhrase(std::u16string_view phrase, std::u16string_view unitId);

    // A phrase, in lower case, that is a word too: it names its unit in a conversion only.
    void restrictToConversions(std::u16string phrase) { conversionOnly_.insert(std::move(phrase)); }
    bool isForConversionsOnly(const std::u16string& phrase) const { return conversionOnly_.contains(phrase); }

    const PhraseDetector<std::u16string>& phraseDetector() const { return phraseDetector_; }
    // The display format; null when the unit has none.
    const std::u16string* format(std::u16string_view unitId) const;

private:
    PhraseDetector<std::u16string> phraseDetector_;
    TextMap<std::u16string> format_;
    std::unordered_set<std::u16string> conversionOnly_;
};

}  // namespace vemo
