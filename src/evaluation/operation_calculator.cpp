// SPDX-License-Identifier: MIT
#include "evaluation/operation_calculator.h"

#include <algorithm>

#include "records/remarks.h"

namespace vemo {

namespace {

bool isNotANumber(const Value& value) {
    const auto decimal = value.decimal();
    return decimal && decimal->notANumber();
}

}  // namespace

int OperationCalculator::priority(const Value& op) const {
    if (const auto priority = op.decimal(Attribute::opPriority)) return static_cast<int>(priority->toInt64());
    const auto id = op.string(Attribute::operation);
    return id ? operatorCollection_.priority(*id) : 0;
}

std::optional<Value> OperationCalculator::apply(std::u16string_view operatorId, const Value& left, const Value& right,
                                                Context& context) const {
    if (isNotANumber(left) || isNotANumber(right)) return Value(DecimalNumber::notANumberValue());
    for (const auto& entry : operationCollection_.operations(operatorId)) {
        auto result = entry.item->calculate(left, right, context);
        if (!result) continue;
        if (isNotANumber(*result)) remarks_.failed(operatorId, left, right, context);
        return result;
    }
    if (right.isEmpty()) return left;
    if (left.isEmpty()) return right;
    remarks_.failed(operatorId, left, right, context);
    return std::nullopt;
}

std::optional<Value> OperationCalculator::calculate(std::vector<Value> values, std::vector<Value> operators,
                                                    Context& context, std::vector<TextRange> ranges) const {
    if (values.empty() || operators.size() + 1 < values.size()) return std::nullopt;
    operators.resize(values.size() - 1);
    ranges.resize(values.size());
    std::vector<int> priorities(operators.size());
    std::transform(operators.begin(), operators.end(), priorities.begin(),
                   [&](const Value& op) { return priority(op); });
    while (values.size() > 1) {
        const auto highest = std::max_element(priorities.begin(), priorities.end());
        const auto index = highest - priorities.begin();
        const auto left = values.begin() + index;
        const auto op = operators.begin() + index;
        const bool failed = isNotANumber(*left) || isNotANumber(*(left + 1));
        const std::u16string_view id = op->string(Attribute::operation).value_or(u"");
        auto result = apply(id, *left, *(left + 1), context);
        if (!result || failed) return result;
        const auto range = ranges.begin() + index;
        const TextRange leftRange = *range;
        range->length = (range + 1)->end() - range->location;
        remarks_.applied(id, *left, *(left + 1), *range, context);
        keepStep(context, [&] {
            return ReadingStep{std::u16string(id), {{*left, leftRange}, {*(left + 1), *(range + 1)}}, *result, *range};
        });
        ranges.erase(range + 1);
        *left = *std::move(result);
        values.erase(left + 1);
        operators.erase(op);
        priorities.erase(highest);
    }
    return values.front();
}

}  // namespace vemo
