// SPDX-License-Identifier: MIT
#include "units/unit_catalogue.h"

#include <algorithm>

#include "records/context_map.h"
#include "scanning/words/localizer.h"
#include "units/everyday_units.h"
#include "units/formula_converters.h"
#include "units/unit_builder.h"

namespace vemo {

namespace {

// The international yard and pound agreement of 1959 and NIST SP 811, appendix B, but for the cable, the
// league and the nautical mile, which are the imperial ones of 6080 feet, and rounded where shown so.
constexpr UnitRow lengthRows[] = {{u"inch", "0.0254"}, {u"foot", "0.3048"}, {u"yard", "0.9144"}, {u"mile", "1609.344"}};
constexpr UnitRow otherLengthRows[] = {{u"point", "0.00035277777"},    {u"cable", "185.3184"},
                                       {u"league", "4828.032"},        {u"furlong", "201.168"},
                                       {u"nautical_mile", "1853.184"}, {u"chain", "20.1168"}};
constexpr UnitRow areaRows[] = {{u"acre", "4046.86"}, {u"hectare", "10000"}, {u"are", "100"}, {u"ping", "3.306"}};
constexpr UnitRow volumeRows[] = {{u"cup", "0.000236588237"},
                                  {u"quart", "0.000946352946"},
                                  {u"pint", "0.000473176473"},
                                  {u"gallon", "0.00378541178"}};
constexpr UnitRow spoonRows[] = {{u"tablespoon", "0.0000147867648"}, {u"teaspoon", "0.00000492892159"}};
constexpr UnitRow angleRows[] = {{u"radian", ""}, {u"degree", "0.017453292519943295"}};
constexpr UnitRow timeRows[] = {{u"minute", "60"},   {u"hour", "3600"},     {u"day", "86400"},
                                {u"week", "604800"}, {u"month", "2592000"}, {u"year", "31536000"}};
constexpr UnitRow weightRows[] = {{u"carat", "0.2"},
                                  {u"pound", "453.59237"},
                                  {u"centner", "100000"},
                                  {u"ounce", "28.349523125"},
                                  {u"stone", "6350.29318"}};

class Catalogue : public UnitBuilder {
public:
    Catalogue(UnitRegistry& registry, const Localizer& localizer, const Log& log)
        : UnitBuilder(registry, localizer), log_(log) {}

    std::vector<Unit> siPrefixed(const Unit& unit, bool includeNegative) const {
        return prefixed(unit, siPrefixes(localizer_), 10, includeNegative);
    }

    void addWithPrefixes(const Unit& unit, bool includeNegative) const {
        add(unit);
        for (const Unit& variant : siPrefixed(unit, includeNegative)) add(variant);
    }

    void addPowered(const std::vector<Unit>& units, int power, std::u16string_view table,
                    std::u16string_view key) const {
        const std::u16string name(key);
        const auto templates = localizer_.variants(name + u".templates", table);
        const auto format = localizer_.translationOrBase(name + u".format", table);
        for (const Unit& unit : units) add(poweredVariant(unit, power, templates, format, log_));
    }

    void addPhrases(std::u16string_view key, std::u16string_view unitId) const {
        for (const std::u16string& phrase : localizer_.variants(key, u"Volume"))
            registry_.manager().addPhrase(phrase, unitId);
    }

    std::vector<Unit> lengths() const {
        std::vector<Unit> units{make({u"m", "", true, u"meter"}, u"m", u"Length", true)};
        const std::vector<Unit> variants = siPrefixed(units.front(), true);
        units.insert(units.end(), variants.begin(), variants.end());
        for (const UnitRow& row : lengthRows) units.push_back(make(row, u"m", u"Length", true));
        return units;
    }

    void addVolumes(const std::vector<Unit>& lengths) const {
        addPowered(lengths, 3, u"Volume", u"volume");
        addWithPrefixes(make({u"litre", "0.001", true}, u"m3", u"Volume", true), true);
        addAll(volumeRows, u"m3", u"Volume");
        addAll(spoonRows, u"m3", u"Volume", false);  // T and t differ
        addPhrases(u"cbinch.variants", u"inch3");
        addPhrases(u"cbcm.variants", u"cm3");
    }

    void addData() const {
        for (const UnitRow& row : {UnitRow{u"bit", "", true}, UnitRow{u"byte", "8", true}}) {
            const Unit unit = make(row, u"bit", u"Data", false);  // b and B differ
            addWithPrefixes(unit, false);
            for (const Unit& variant : prefixed(unit, iecPrefixes(localizer_), 1024, false)) add(variant);
        }
    }

    void addTemperatures() const {
        add(make({u"kelvin", ""}, u"kelvin", u"Temperature", true));
        Unit celsius = make({u"celsius", ""}, u"kelvin", u"Temperature", true);
        celsius.toBaseValueConverter = celsiusToKelvinConverter();
        celsius.fromBaseValueConverter = kelvinToCelsiusConverter();
        add(celsius);
        Unit fahrenheit = make({u"fahrenheit", ""}, u"kelvin", u"Temperature", true);
        fahrenheit.toBaseValueConverter = fahrenheitToKelvinConverter();
        fahrenheit.fromBaseValueConverter = kelvinToFahrenheitConverter();
        add(fahrenheit);
    }

    void addWeights() const {
        addWithPrefixes(make({u"gram", "", true}, u"gram", u"Weight", true), true);
        const Unit tonne = make({u"tonne", "1000000", true}, u"gram", u"Weight", true);
        add(tonne);
        for (Unit& variant : siPrefixed(tonne, true)) {
            // These would take the symbols of the foot, the point and the carat.
            constexpr std::u16string_view taken[] = {u"ft", u"pt", u"ct"};
            if (std::find(std::begin(taken), std::end(taken), variant.internationalSymbol) != std::end(taken)) {
                variant.internationalSymbol.reset();
                variant.localizedSymbol.reset();
                variant.format = u"%@ " + variant.phrases.front();
            }
            add(variant);
        }
        addAll(weightRows, u"gram", u"Weight");
    }

private:
    const Log& log_;
};

}  // namespace

void UnitRegistry::registerUnit(const Unit& unit, bool phrasesVerbatim, bool addHints) {
    manager_.addUnit(unit, phrasesVerbatim);
    converter_.registerUnit(unit);
    if (!hints_ || !addHints) return;
    for (const auto* symbol : {&unit.localizedSymbol, &unit.internationalSymbol})
        if (*symbol) hints_->add(**symbol, completion_weight::unitSymbol, CompletionKind::unit);
    for (const std::u16string& phrase : unit.phrases) hints_->addWords(phrase, 0, CompletionKind::unit);
}

Unit poweredVariant(const Unit& unit, int power, const std::vector<std::u16string>& templates,
                    std::u16string_view powerFormat, const Log& log) {
    const std::u16string suffix(1, static_cast<char16_t>(u'0' + power));
    Unit variant = unit;
    variant.id += suffix;
    variant.phrases.clear();
    for (const std::u16string& phraseTemplate : templates) {
        if (phraseTemplate.find(u"%@") == phraseTemplate.npos) {
            if (log) log("Invalid translation for powered variant: " + toUtf8(phraseTemplate));
            continue;
        }
        std::vector<std::u16string> names = unit.phrases;
        for (const auto* symbol : {&unit.internationalSymbol, &unit.localizedSymbol})
            if (*symbol) names.push_back(**symbol);
        for (const std::u16string& name : names) variant.phrases.push_back(*formatted(phraseTemplate, name));
    }
    variant.internationalSymbol.reset();
    variant.localizedSymbol.reset();
    if (unit.format) variant.format = formatted(powerFormat, *unit.format).value_or(*unit.format);
    if (unit.baseRatio && unit.baseUnitId)
        variant.baseRatio = unit.baseRatio->raising(static_cast<std::uint64_t>(power));
    if (unit.baseUnitId) variant.baseUnitId = *unit.baseUnitId + suffix;
    return variant;
}

void registerUnits(UnitRegistry& registry, const Localizer& localizer, const Log& log) {
    const Catalogue catalogue(registry, localizer, log);
    // The order matters: where two units claim a phrase, the later one has it.
    const std::vector<Unit> lengths = catalogue.lengths();
    catalogue.addAll(otherLengthRows, u"m", u"Length");
    for (const Unit& unit : lengths) catalogue.add(unit);
    catalogue.addPowered(lengths, 2, u"Area", u"area");
    catalogue.addAll(areaRows, u"m2", u"Area");
    catalogue.addVolumes(lengths);
    catalogue.addData();
    catalogue.addTemperatures();
    catalogue.addAll(angleRows, u"radian", u"Angle");
    catalogue.addWithPrefixes(catalogue.make({u"second", "", true}, u"second", u"Time", true), true);
    catalogue.addAll(timeRows, u"second", u"Time");
    catalogue.addWeights();
    Unit percent = catalogue.make({u"percent", ""}, u"percent", u"Percent", false);
    percent.internationalSymbol = u"%";
    catalogue.add(percent);
    Unit date;
    date.id = u"date";
    date.baseUnitId = u"date";
    catalogue.add(date);
    registerEverydayUnits(registry, localizer);
}

void registerScreenUnits(UnitRegistry& registry, const Localizer& localizer, Context& context) {
    const Log none;
    const Catalogue catalogue(registry, localizer, none);
    Unit pixel = catalogue.make({u"pixel", ""}, u"m", u"Css", true);
    pixel.toBaseValueConverter = pixelToMeterConverter();
    pixel.fromBaseValueConverter = meterToPixelConverter();
    catalogue.add(pixel);
    Unit em = catalogue.make({u"em", ""}, u"m", u"Css", true);
    em.toBaseValueConverter = emToMeterConverter(registry.converter());
    em.fromBaseValueConverter = meterToEmConverter(registry.converter());
    catalogue.add(em);
    Unit rem = catalogue.make({u"rem", ""}, u"m", u"Css", true);
    rem.toBaseValueConverter = remToMeterConverter();
    rem.fromBaseValueConverter = meterToRemConverter();
    catalogue.add(rem);
    // The defaults of browsers: 96 pixels an inch, 16 pixels an em.
    context.setValue(Value(DecimalNumber::fromInt64(96)), u"ppi");
    context.setValue(Value(DecimalNumber::fromInt64(16)).with(u"pixel", Attribute::unit), u"em");
    context.set(std::u16string(context_keys::hiddenVariable) + u"em", true);
}

}  // namespace vemo
