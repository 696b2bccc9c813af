// SPDX-License-Identifier: MIT
#include "units/unit_spelling.h"

#include <algorithm>

namespace vemo {

namespace {

// Shorter names are too near to other words.
constexpr std::size_t shortestToChange = 5;
constexpr std::size_t shortestToSwap = 3;

// True when the shorter text is the longer one without one letter.
bool lacksOne(std::u16string_view shorter, std::u16string_view longer) {
    const auto [a, b] = std::mismatch(shorter.begin(), shorter.end(), longer.begin());
    return std::equal(a, shorter.end(), b + 1, longer.end());
}

bool areSwapped(std::u16string_view a, std::u16string_view b) {
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin());
    const auto place = static_cast<std::size_t>(left - a.begin());
    return place + 1 < a.size() && a[place] == b[place + 1] && a[place + 1] == b[place] &&
           a.substr(place + 2) == b.substr(place + 2);
}

}  // namespace

UnitSpelling::UnitSpelling(const UnitManager& units) {
    for (const auto& [phrase, unit] : units.phraseDetector().phrases())
        if (phrase.size() >= shortestToSwap && std::all_of(phrase.begin(), phrase.end(), isLetter))
            names_[lowercasedUnit(phrase.front())].push_back(phrase);
}

bool UnitSpelling::isNearly(std::u16string_view word) const {
    const auto names = word.empty() ? names_.end() : names_.find(word.front());
    if (names == names_.end()) return false;
    return std::any_of(names->second.begin(), names->second.end(), [&](std::u16string_view name) {
        if (name.size() == word.size()) return areSwapped(word, name);
        if (std::min(name.size(), word.size()) + 1 < shortestToChange) return false;
        if (name.size() == word.size() + 1) return name.size() >= shortestToChange && lacksOne(word, name);
        return name.size() + 1 == word.size() && word.size() > shortestToChange && lacksOne(name, word);
    });
}

}  // namespace vemo
