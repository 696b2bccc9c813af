// SPDX-License-Identifier: MIT
// What a calculator offers to those who type.
#include <algorithm>
#include <tuple>

#include "base/text.h"
#include "engine/calculator.h"
#include "units/usual_units.h"

namespace vemo {

namespace {

constexpr int placeWeight = -2;
constexpr int constantWeight = 5;

}  // namespace

// The name by which results show a unit, if a line with that name means this unit; else the shortest word that does.
std::u16string Calculator::nameInLines(std::u16string_view unit) const {
    const auto& phrases = unitManager_.phraseDetector();
    std::u16string name = decimalUnitValueFormatter_.unitName(unit);
    const auto converter = unitConverter_.baseUnit(unit);
    const std::u16string* named = phrases.find(name);
    if (!named) named = phrases.find(lowercased(name));
    // A rate is written with its sign: no phrase has that.
    if (named ? *named == unit : !converter) return name;
    name.clear();
    const auto rank = [](const std::u16string& phrase) {
        return std::tuple(phrase.empty() || !isLetter(phrase.front()), phrase.size(), phrase);
    };
    for (const auto& [phrase, id] : phrases.phrases())
        if (id == unit && (name.empty() || rank(phrase) < rank(name))) name = phrase;
    return name;
}

std::shared_ptr<const Completions> Calculator::completions() {
    std::vector<Completion> all;
    {
        const std::lock_guard lock(context_.mutex());
        all = quickTypeCollector_.completions();
        for (const auto& [key, entry] : context_.data())
            if (key.starts_with(context_keys::variable))
                all.push_back({key.substr(context_keys::variable.size()), CompletionKind::variable, constantWeight});
    }
    for (std::u16string& place : placeNames_.names())
        all.push_back({std::move(place), CompletionKind::place, placeWeight});
    return std::make_shared<const Completions>(std::move(all));
}

std::vector<Completion> Calculator::conversionsOf(std::u16string_view unit) const {
    const std::lock_guard lock(context_.mutex());
    std::vector<std::u16string_view> ids;
    const auto offer = [&](std::u16string_view id) {
        if (id != unit && unitConverter_.isConvertible(unit, id)) ids.push_back(id);
    };
    for (const auto& [id, base] : unitConverter_.baseUnits())
        if (usualRank(id) == 0) offer(id);
    for (const std::u16string_view id : usualUnits()) offer(id);  // among them rates, which are made of two units
    std::vector<Completion> choices;
    for (const std::u16string_view id : ids) {
        const bool currency = unitConverter_.isCurrency(id);
        std::u16string name = currency ? std::u16string(id) : nameInLines(id);
        if (name.empty()) continue;
        choices.push_back({std::move(name), currency ? CompletionKind::currency : CompletionKind::unit, usualRank(id)});
    }
    std::sort(choices.begin(), choices.end(), [](const Completion& a, const Completion& b) {
        return a.weight != b.weight ? a.weight > b.weight : a.text < b.text;
    });
    return choices;
}

}  // namespace vemo
