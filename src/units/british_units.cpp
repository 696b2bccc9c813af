// SPDX-License-Identifier: MIT
#include "units/british_units.h"

#include <algorithm>

#include "scanning/words/localizer.h"
#include "units/scale_manager.h"
#include "units/unit_catalogue.h"

namespace vemo {

namespace {

constexpr std::string_view regions[] = {"GB", "IE", "IM", "JE", "GG", "GI"};

struct Measure {
    std::u16string_view american, imperial, table;
    std::u16string_view format, americanFormat;
};

constexpr Measure measures[] = {
    {u"pint", u"imperial_pint", u"Volume", u"%@ pint|%@ pints", u"%@ US pint|%@ US pints"},
    {u"gallon", u"imperial_gallon", u"Volume", u"%@ gal", u"%@ US gal"},
    {u"quart", u"imperial_quart", u"Volume", u"%@ qt", u"%@ US qt"},
    {u"cup", u"imperial_cup", u"Volume", u"%@ cup|%@ cups", u"%@ US cup|%@ US cups"},
    {u"fluid_ounce", u"imperial_fluid_ounce", u"Volume", u"%@ fl oz", u"%@ US fl oz"},
    {u"gill", u"imperial_gill", u"Volume", u"%@ gill|%@ gills", u"%@ US gill|%@ US gills"},
    {u"tablespoon", u"metric_tablespoon", u"Volume", u"%@ tbsp", u"%@ US tbsp"},
    {u"teaspoon", u"metric_teaspoon", u"Volume", u"%@ tsp", u"%@ US tsp"},
    {u"mile/gallon", u"mile/imperial_gallon", u"Rates", u"%@ mpg", u"%@ US mpg"},
};

}  // namespace

bool hasImperialMeasures(std::string_view locale) {
    return locale.size() >= 5 && locale.starts_with("en") && (locale[2] == '_' || locale[2] == '-') &&
           std::find(std::begin(regions), std::end(regions), locale.substr(3, 2)) != std::end(regions);
}

void registerImperialMeasures(UnitRegistry& registry, ScaleManager& scales, const Localizer& localizer) {
    UnitManager& manager = registry.manager();
    for (const Measure& measure : measures) {
        const std::u16string key = std::u16string(measure.american) + u".variants";
        for (const std::u16string& phrase : localizer.variants(key, measure.table, true, true))
            if (!phrase.starts_with(u"us ")) manager.addPhrase(phrase, measure.imperial);
        manager.setFormat(measure.imperial, measure.format);
        manager.setFormat(measure.american, measure.americanFormat);
    }
    for (const char16_t* phrase : {u"ton", u"tons"}) manager.addNote({phrase, NoteKind::metricTon, u"UK ton"});
    scales.add({u"pence", -2, {u"p", u"pence"}, u"GBP"});
}

void registerAmericanNotes(UnitManager& manager) {
    for (const char16_t* phrase : {u"ton", u"tons"}) manager.addNote({phrase, NoteKind::metricTon, u"US ton"});
}

}  // namespace vemo
