// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "scanning/words/completion_collector.h"
#include "units/unit_converter.h"
#include "units/unit_manager.h"

namespace vemo {

class Localizer;

using Log = std::function<void(std::string_view)>;

// Where the catalogue's units go.
class UnitRegistry {
public:
    UnitRegistry(UnitManager& manager, UnitConverter& converter, CompletionCollector* hints = nullptr)
        : manager_(manager), converter_(converter), hints_(hints) {}
    virtual ~UnitRegistry() = default;
    // With `addHints`, symbols and the words of phrases are offered as completions.
    virtual void registerUnit(const Unit& unit, bool phrasesVerbatim, bool addHints = true);
    UnitManager& manager() const { return manager_; }
    UnitConverter& converter() const { return converter_; }
    // Null when nobody wants any.
    CompletionCollector* hints() const { return hints_; }

private:
    UnitManager& manager_;
    UnitConverter& converter_;
    CompletionCollector* hints_;
};

// Registers every built-in unit but currencies and the screen measures.
void registerUnits(UnitRegistry& registry, const Localizer& localizer, const Log& log);

// Registers pixel and em, and sets what they depend on: the variables "ppi" and "em".
void registerScreenUnits(UnitRegistry& registry, const Localizer& localizer, Context& context);

// Registers the currencies, converted by the rates under "currency_rates". Names and symbols that the tables
// lack come from CLDR, in the given language and in English. Names that several have are that of the locale.
void registerCurrencies(UnitRegistry& registry, const Localizer& localizer, std::string_view language,
                        std::string_view locale);

// Registers the codes of a rates file that are no currencies of the catalogue, converted by the rates under
// "crypto_rates".
void registerCryptoCurrencies(UnitRegistry& registry, const CurrencyRatesContainer& rates,
                              const std::function<bool(std::u16string_view code)>& isWord);

// The square (2) or cubic (3) variant of a length.
Unit poweredVariant(const Unit& unit, int power, const std::vector<std::u16string>& templates,
                    std::u16string_view powerFormat, const Log& log);

}  // namespace vemo
