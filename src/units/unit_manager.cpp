// SPDX-License-Identifier: MIT
#include "units/unit_manager.h"

#include <algorithm>

namespace vemo {

namespace {

constexpr std::size_t longestRateWord = 16;

std::size_t indexOf(RateWord kind) {
    return static_cast<std::size_t>(kind);
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

void UnitManager::addRateWord(RateWord kind, std::u16string_view word) {
    if (word.empty()) return;
    rateWords_[std::u16string(word)].set(indexOf(kind));
    hasRateAfterWords_ = hasRateAfterWords_ || kind == RateWord::after;
}

// In any case of letters. Long texts are not even looked up.
bool UnitManager::isRateWord(RateWord kind, std::u16string_view word) const {
    if (word.empty() || word.size() > longestRateWord) return false;
    const auto found = rateWords_.find(lowercased(word));
    return found != rateWords_.end() && found->second.test(indexOf(kind));
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
