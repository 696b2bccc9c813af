// SPDX-License-Identifier: MIT
#include "units/scale_manager.h"

#include <algorithm>
#include <iterator>

#include "platform/locale_info.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr struct {
    std::u16string_view id;
    std::int16_t ratio;
    std::int64_t factor = 1;
} scaleRows[] = {{u"hundred", 2},
                 {u"dozen", 0, 12},
                 {u"score", 0, 20},
                 {u"gross", 0, 144},
                 {u"lakh", 5},
                 {u"crore", 7},
                 {u"million", 6},
                 {u"thousand", 3},
                 {u"billion", 9},
                 // A phrase of a later row wins: English "billion" is a German's trillion.
                 {u"trillion", 12},
                 {u"ten_thousand", 4},
                 {u"ten_million", 7},
                 {u"hundred_million", 8}};

// The currency of the locale's region where it has cents, else the one that most speakers of the language count in
// them.
std::u16string currencyOfCents(const std::string& locale) {
    constexpr std::u16string_view withCents[] = {u"USD", u"EUR", u"CAD", u"AUD", u"NZD", u"SGD", u"HKD",
                                                 u"ZAR", u"CHF", u"MXN", u"BRL", u"ARS", u"COP"};
    std::u16string currency = currencyOfLocale(locale);
    if (std::find(std::begin(withCents), std::end(withCents), currency) != std::end(withCents)) return currency;
    const bool euro = locale.starts_with("de") || locale.starts_with("fr") || locale.starts_with("es");
    return euro ? u"EUR" : u"USD";
}

}  // namespace

void ScaleManager::add(Scale scale) {
    for (const std::u16string& phrase : scale.phrases) {
        phraseDetector_.add(phrase, scale.id, true);
        if (hints_) hints_->addLowercased(phrase, completion_weight::usual, CompletionKind::unit);
    }
    std::u16string id = scale.id;
    scales_.insert_or_assign(std::move(id), std::move(scale));
}

const Scale* ScaleManager::scale(std::u16string_view id) const {
    const auto found = scales_.find(id);
    return found == scales_.end() ? nullptr : &found->second;
}

void registerScales(ScaleManager& scales, const Localizer& localizer, const std::string& locale) {
    for (const auto& row : scaleRows) {
        const std::u16string id(row.id);
        std::vector<std::u16string> phrases = localizer.variants(id + u".variants", u"Scales");
        std::erase(phrases, id + u".variants");  // no language has it
        if (!phrases.empty()) scales.add({id, row.ratio, std::move(phrases), {}, row.factor});
    }
    // "3割" is 30 per cent.
    std::vector<std::u16string> tenths = localizer.variants(u"tenths.variants", u"Scales");
    std::erase(tenths, u"tenths.variants");
    constexpr std::int64_t percentOfATenth = 10;
    if (!tenths.empty()) scales.add({u"tenths", 0, std::move(tenths), u"percent", percentOfATenth});
    scales.add({u"cent", -2, localizer.variants(u"cent.variants", u"Scales"), currencyOfCents(locale)});
}

}  // namespace vemo
