// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "evaluation/operation_collection.h"
#include "evaluation/operation_remarks.h"
#include "evaluation/operator_collection.h"
#include "functions/reduction.h"

namespace vemo {

// Reduces operands and the operators between them to one value: the highest priority first, from the
// left among equals, each operator by the first of its operations that accepts the operands. Where that gives nothing,
// percentage phrases go first: "$50 + 20% of $30".
class OperationCalculator : public Reduction {
public:
    OperationCalculator(const OperatorCollection& operators, const OperationCollection& operations,
                        const UnitConverter& unitConverter)
        : operatorCollection_(operators), operationCollection_(operations), remarks_(unitConverter) {}

    // `operators[i]` stands between `values[i]` and `values[i + 1]`; further ones are ignored. Nothing when
    // there are too few, or when one can't be applied. An operand that is not-a-number ends the reduction.
    // `ranges` are those of the values in their line, for remarks; they may be left out.
    std::optional<Value> calculate(std::vector<Value> values, std::vector<Value> operators, Context& context,
                                   std::vector<TextRange> ranges = {}) const;

    // Two operands and one operator id.
    std::optional<Value> apply(std::u16string_view operatorId, const Value& left, const Value& right,
                               Context& context) const override;

private:
    int priority(const Value& op) const;
    std::optional<Value> reduced(std::vector<Value> values, std::vector<Value> operators, std::vector<int> priorities,
                                 Context& context, std::vector<TextRange> ranges) const;

    const OperatorCollection& operatorCollection_;
    const OperationCollection& operationCollection_;
    OperationRemarks remarks_;
};

}  // namespace vemo
