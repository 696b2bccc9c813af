// SPDX-License-Identifier: MIT
#pragma once

#include "output/value_formatter.h"
#include "records/context_map.h"
#include "vemo/number_formatter.h"

namespace vemo {

class UnitConverter;
class UnitManager;

// Numbers and quantities: the number in its numeral system, in the unit's display format, and a short text
// of fewer than 9 characters where possible.
class DecimalUnitValueFormatter : public ValueFormatter {
public:
    DecimalUnitValueFormatter(const VemoEngineNumberFormatter& numberFormatter, const UnitManager& unitCollection,
                              const UnitConverter& unitConverter)
        : numberFormatter_(numberFormatter), unitCollection_(unitCollection), unitConverter_(unitConverter) {
        noPrecision_.set(context_keys::precision, Value());
    }
    // How a unit is written after one of it, such as "kg"; its id where it is written as nothing.
    std::u16string unitName(std::u16string_view unit) const;
    std::optional<FormattedValue> format(const Value& value, Context& context) const override;

private:
    std::optional<FormattedValue> inParts(const Value& value, Context& context) const;
    // The format of a value of which the number `shown` is shown: of "%@ day|%@ days" the one that suits.
    std::u16string displayFormat(const Value& value, const DecimalNumber& shown) const;
    std::u16string formatOf(std::u16string_view unit, const DecimalNumber& shown) const;
    bool isMoney(std::u16string_view unit) const;

    const VemoEngineNumberFormatter& numberFormatter_;
    const UnitManager& unitCollection_;
    const UnitConverter& unitConverter_;
    ContextMap noPrecision_;  // shared by the many lines that depend on nothing else
};

}  // namespace vemo
