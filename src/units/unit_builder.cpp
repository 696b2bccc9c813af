// SPDX-License-Identifier: MIT
#include "units/unit_builder.h"

#include <algorithm>

#include "scanning/words/localizer.h"

namespace vemo {

namespace {

// "1852/3600" is a quotient.
DecimalNumber ratioOf(std::string_view text) {
    const std::size_t stroke = text.find('/');
    const DecimalNumber dividend = DecimalNumber::parse(text.substr(0, stroke));
    return stroke == text.npos ? dividend : dividend.dividing(DecimalNumber::parse(text.substr(stroke + 1)));
}

}  // namespace

UnitBuilder::UnitBuilder(UnitRegistry& registry, const Localizer& localizer, Offered offered)
    : registry_(registry),
      localizer_(localizer),
      omittedSymbols_(localizer.variants(u"symbols.omitted", u"Aliases")),
      unshownSymbols_(localizer.variants(u"symbols.unshown", u"Aliases")),
      offered_(offered) {}

Unit UnitBuilder::make(const UnitRow& row, std::u16string_view base, std::u16string_view table, bool lowercase) const {
    const std::u16string key(row.key.empty() ? row.id : row.key);
    Unit unit;
    unit.id = row.id;
    unit.phrases = localizer_.variants(key + u".variants", table, true, lowercase);
    unit.baseUnitId = base;
    if (!row.ratio.empty()) unit.baseRatio = ratioOf(row.ratio);
    unit.format = localizer_.translationOrBase(key + u".format", table);
    unit.isSiUnit = row.si;
    if (row.si) {
        unit.internationalSymbol = localizer_.base(key + u".symbol", table);
        unit.localizedSymbol = localizer_.translation(key + u".symbol", table);
    }
    return unit;
}

void UnitBuilder::add(Unit unit) const {
    for (std::u16string& alias : aliases(unit.id)) unit.phrases.push_back(std::move(alias));
    for (auto* symbol : {&unit.internationalSymbol, &unit.localizedSymbol}) {
        if (*symbol && std::find(omittedSymbols_.begin(), omittedSymbols_.end(), **symbol) != omittedSymbols_.end())
            symbol->reset();
    }
    registry_.registerUnit(unit, true, offered_ == Offered::always);
    CompletionCollector* hints = registry_.hints();
    if (!hints || offered_ == Offered::always) return;
    for (const auto* symbol : {&unit.localizedSymbol, &unit.internationalSymbol})
        if (*symbol) hints->add(**symbol, completion_weight::rareUnit, CompletionKind::unit);
    for (const std::u16string& phrase : unit.phrases)
        hints->addWords(phrase, completion_weight::rareUnit, CompletionKind::unit);
}

// Forms that people type beside the names, symbols and derived ones.
std::vector<std::u16string> UnitBuilder::aliases(const std::u16string& id) const {
    const std::u16string key = id + u".aliases";
    std::vector<std::u16string> phrases = localizer_.variants(key, u"Aliases");
    std::erase(phrases, key);
    return phrases;
}

bool UnitBuilder::isShown(const Unit& unit) const {
    const std::u16string symbol = unit.localizedSymbol ? *unit.localizedSymbol : *unit.internationalSymbol;
    return std::find(omittedSymbols_.begin(), omittedSymbols_.end(), symbol) == omittedSymbols_.end() &&
           std::find(unshownSymbols_.begin(), unshownSymbols_.end(), symbol) == unshownSymbols_.end();
}

void UnitBuilder::addAll(std::span<const UnitRow> rows, std::u16string_view base, std::u16string_view table,
                         bool lowercase) const {
    for (const UnitRow& row : rows) add(make(row, base, table, lowercase));
}

std::vector<Unit> UnitBuilder::prefixed(const Unit& unit, const std::vector<Prefix>& prefixes, int factorBase,
                                        bool includeNegative) const {
    std::vector<Unit> variants;
    for (const Prefix& prefix : prefixes) {
        if (prefix.factor < 0 && !includeNegative) continue;
        Unit variant;
        variant.id = prefix.internationalSymbol + unit.id;
        for (const std::u16string& name : prefix.names)
            for (const std::u16string& phrase : unit.phrases) variant.phrases.push_back(name + phrase);
        if (unit.internationalSymbol)
            variant.internationalSymbol = prefix.internationalSymbol + *unit.internationalSymbol;
        if (unit.localizedSymbol) variant.localizedSymbol = prefix.localizedSymbol + *unit.localizedSymbol;
        if (variant.localizedSymbol)
            variant.format = u"%@ " + *variant.localizedSymbol;
        else if (variant.internationalSymbol)
            variant.format = u"%@ " + *variant.internationalSymbol;
        if (variant.format && !isShown(variant)) variant.format = u"%@ " + variant.phrases.front();
        const DecimalNumber ratio = unit.baseRatio.value_or(DecimalNumber::fromInt64(1));
        variant.baseRatio =
            factorBase == 10
                ? ratio.multiplyingByPowerOf10(prefix.factor)
                : ratio.multiplying(
                      DecimalNumber::fromInt64(factorBase).raising(static_cast<std::uint64_t>(prefix.factor)));
        variant.baseUnitId = unit.baseUnitId.value_or(unit.id);
        variants.push_back(std::move(variant));
    }
    return variants;
}

}  // namespace vemo
