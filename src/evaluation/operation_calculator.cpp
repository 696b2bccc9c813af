// SPDX-License-Identifier: MIT
#include "evaluation/operation_calculator.h"

#include <algorithm>

#include "evaluation/percentage_operations.h"
#include "records/context_parts.h"
#include "records/remarks.h"

namespace vemo {

namespace {

constexpr int phrasePriority = 250;  // above products, below powers and conversions

bool isPhrase(const Value& op) {
    const auto id = op.string(Attribute::operation);
    return id && isPercentagePhrase(*id);
}

}  // namespace

int OperationCalculator::priority(const Value& op) const {
    if (const auto priority = op.decimal(Attribute::opPriority)) return static_cast<int>(priority->toInt64());
    const auto id = op.string(Attribute::operation);
    return id ? operatorCollection_.priority(*id) : 0;
}

std::optional<Value> OperationCalculator::apply(std::u16string_view operatorId, const Value& left, const Value& right,
                                                Context& context) const {
    if (left.isNotANumber() || right.isNotANumber()) return Value(DecimalNumber::notANumberValue());
    const OperationList& operations = operationCollection_.operations(operatorId);
    for (std::size_t i = 0; i < operations.size(); ++i) {
        auto result = operations[i]->calculate(left, right, context);
        if (!result) continue;
        if (result->isNotANumber()) remarks_.failed(operatorId, left, right, context);
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
    const bool anyPhrase = operators.size() > 1 && std::any_of(operators.begin(), operators.end(), isPhrase);
    if (anyPhrase) {
        // Both orders are tried aside first, so that nothing is remarked on the one that fails.
        std::vector<int> phrasesFirst = priorities;
        for (std::size_t i = 0; i < operators.size(); ++i)
            if (isPhrase(operators[i])) phrasesFirst[i] = std::max(phrasesFirst[i], phrasePriority);
        const auto gives = [&](const std::vector<int>& order) {
            Context aside = ContextParts::layer(context);
            const bool result = reduced(values, operators, order, aside, ranges).has_value();
            ContextParts::addDependencies(context, ContextParts::dependencies(aside));
            return result;
        };
        if (phrasesFirst != priorities && !gives(priorities) && gives(phrasesFirst))
            priorities = std::move(phrasesFirst);
    }
    return reduced(std::move(values), std::move(operators), std::move(priorities), context, std::move(ranges));
}

std::optional<Value> OperationCalculator::reduced(std::vector<Value> values, std::vector<Value> operators,
                                                  std::vector<int> priorities, Context& context,
                                                  std::vector<TextRange> ranges) const {
    // The operators of the highest priority are applied from the left in one pass, which closes the gaps that it makes;
    // then come those of the next priority.
    while (values.size() > 1) {
        const int highest = *std::max_element(priorities.begin(), priorities.end());
        std::size_t kept = 0;  // values up to the one that takes part next
        for (std::size_t i = 0; i < operators.size(); ++i) {
            Value& right = values[i + 1];
            if (priorities[i] != highest) {
                operators[kept] = operators[i];
                priorities[kept] = priorities[i];
                ++kept;
                if (kept != i + 1) values[kept] = std::move(right);
                ranges[kept] = ranges[i + 1];
                continue;
            }
            Value& left = values[kept];
            const bool failed = left.isNotANumber() || right.isNotANumber();
            const std::u16string_view id = operators[i].string(Attribute::operation).value_or(u"");
            auto result = apply(id, left, right, context);
            if (!result || failed) return result;
            TextRange& range = ranges[kept];
            const TextRange leftRange = range;
            range.length = ranges[i + 1].end() - range.location;
            remarks_.applied(id, left, right, range, context);
            keepStep(context, [&] {
                return ReadingStep{std::u16string(id), {{left, leftRange}, {right, ranges[i + 1]}}, *result, range};
            });
            left = *std::move(result);
        }
        operators.resize(kept);
        priorities.resize(kept);
        values.resize(kept + 1);
        ranges.resize(kept + 1);
    }
    return values.front();
}

}  // namespace vemo
