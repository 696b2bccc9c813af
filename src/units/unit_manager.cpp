// SPDX-License-Identifier: MIT
#include "units/unit_manager.h"

#include <algorithm>

namespace vemo {

namespace {

// True for one of the words, in any case of letters. Long texts are not even looked up.
bool contains(const std::unordered_set<std::u16string>& words, std::u16string_view word) {
    constexpr std::size_t longest = 16;
    return !word.empty() && word.size() <= longest && words.contains(lowercased(word));
}

}  // namespace

std::u16string Unit::description() const {
    const auto text = [](const std::optional<std::u16string>& field) { return field.value_or(u""); };
    const std::u16string fields =
        u"id: " + id + u"\nphrases: " + joined(phrases, u",") + u"\nbaseRatio: " +
        (baseRatio ? toUtf16(baseRatio->toString()) : u"") + u"\nbaseUnitId: " + text(baseUnitId) + u"\nformat: " +
        text(format) + u"\nisSiUnit: " + (isSiUnit ? u"true" : u"false") + u"\ninternationalSymbol: " +
        text(internationalSymbol) + u"\nlocalizedSymbol: " + text(localizedSymbol) + u"\ntoBaseValueConverter: " +
        (toBaseValueConverter ? u"yes" : u"") + u"\nfromBaseValueConverter: " + (fromBaseValueConverter ? u"yes" : u"");
    return u"Unit: {\n" + indentLines(fields) + u"}";
}

void UnitManager::addUnit(const Unit& unit, bool phrasesVerbatim) {
    for (const std::u16string& phrase : unit.phrases) phraseDetector_.add(phrase, unit.id, !phrasesVerbatim);
    for (const auto* symbol : {&unit.internationalSymbol, &unit.localizedSymbol})
        if (*symbol) phraseDetector_.add(**symbol, unit.id, false);
    if (unit.format) format_.insert_or_assign(unit.id, *unit.format);
}

void UnitManager::addPhrase(std::u16string_view phrase, std::u16string_view unitId) {
    phraseDetector_.add(phrase, std::u16string(unitId), false);
}

bool UnitManager::isForNumbersOnly(std::u16string_view phrase) const {
    return afterNumbers_.contains(std::u16string(phrase)) || afterNumbers_.contains(lowercased(phrase));
}

bool UnitManager::isRateWord(std::u16string_view word) const {
    return contains(rateWords_, word);
}

bool UnitManager::isRateProductWord(std::u16string_view word) const {
    return contains(rateProductWords_, word);
}

bool UnitManager::isRateLotWord(std::u16string_view word) const {
    return contains(rateLotWords_, word);
}

bool UnitManager::isRateAfterWord(std::u16string_view word) const {
    return contains(rateAfterWords_, word);
}

bool UnitManager::isArticle(std::u16string_view word) const {
    return contains(articles_, word);
}

const UnitManager::PhraseNote* UnitManager::note(std::u16string_view phrase) const {
    constexpr std::size_t longest = 4;
    if (phrase.size() > longest) return nullptr;
    const auto found =
        std::find_if(notes_.begin(), notes_.end(), [&](const PhraseNote& note) { return note.phrase == phrase; });
    return found == notes_.end() ? nullptr : &*found;
}

const std::u16string* UnitManager::format(std::u16string_view unitId) const {
    const auto found = format_.find(unitId);
    return found == format_.end() ? nullptr : &found->second;
}

}  // namespace vemo
