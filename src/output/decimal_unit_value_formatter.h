// SPDX-License-Identifier: MIT
#pragma once

#include "output/number_formatter.h"
#include "output/value_formatter.h"

namespace vemo {

class UnitConverter;
class UnitManager;

// Numbers and quantities: the number in its numeral system, in the unit's display format, and a short text
// of fewer than 9 characters where possible.
class DecimalUnitValueFormatter : public ValueFormatter {
public:
    DecimalUnitValueFormatter(const VemoEngineNumberFormatter& numberFormatter, const UnitManager& unitCollection,
                              const UnitConverter& unitConverter)
        : numberFormatter_(numberFormatter), unitCollection_(unitCollection), unitConverter_(unitConverter) {}
    std::optional<FormattedValue> format(const Value& value, Context& context) const override;

private:
    std::u16string displayFormat(const Value& value) const;

    const VemoEngineNumberFormatter& numberFormatter_;
    const UnitManager& unitCollection_;
    const UnitConverter& unitConverter_;
};

}  // namespace vemo
