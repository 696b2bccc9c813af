// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "evaluation/operation_calculator.h"
#include "units/unit_converter.h"

namespace vemo {

// How far to the left a conversion reaches. It binds tightest; but where the operand before it has nothing to convert,
// it converts all that stands to its left: "100 km / 4 in miles", "255 & 15 in hex".
class ConversionReach {
public:
    ConversionReach(const OperationCalculator& operationCalculator, const UnitConverter& unitConverter)
        : operationCalculator_(operationCalculator), converter_(unitConverter) {}

    // Replaces what a conversion reaches by its value.
    void apply(std::vector<Value>& operands, std::vector<Value>& operators, std::vector<TextRange>& ranges,
               Context& context) const;

private:
    std::optional<Value> reached(const std::vector<Value>& operands, const std::vector<Value>& operators,
                                 const std::vector<TextRange>& ranges, std::size_t conversion, Context& context) const;
    std::optional<Value> whole(const std::vector<Value>& operands, const std::vector<Value>& operators,
                               const std::vector<TextRange>& ranges, std::size_t conversion, Context& context) const;
    std::optional<Value> percentage(const std::vector<Value>& operands, const std::vector<Value>& operators,
                                    const std::vector<TextRange>& ranges, std::size_t conversion,
                                    Context& context) const;
    std::optional<Value> quotientAsRate(const std::vector<Value>& operands, const std::vector<Value>& operators,
                                        std::size_t conversion, std::u16string_view target, Context& context) const;
    std::optional<Value> productOfLengths(const std::vector<Value>& operands, const std::vector<Value>& operators,
                                          std::size_t conversion, std::u16string_view target, Context& context) const;
    int powerOfLength(std::u16string_view unit) const;
    bool isConvertible(const Value& value, std::u16string_view target) const;

    const OperationCalculator& operationCalculator_;
    const UnitConverter& converter_;
};

}  // namespace vemo
