// SPDX-License-Identifier: MIT
#include "functions/line_aggregates.h"

#include "engine/context_map.h"

namespace vemo {

namespace {

const ValuesList* previousResults(Context& context) {
    context.addDependencyOn(context_keys::previousResults, std::nullopt, Value());
    return context.get<ValuesList>(context_keys::previousResults);
}

// The values of the block, oldest first.
std::vector<Value> block(const ValuesList& results) {
    std::vector<Value> values;
    for (const auto* node = results.last().get(); node && !node->value.isEmpty(); node = node->previous.get())
        values.push_back(node->value);
    return {values.rbegin(), values.rend()};
}

std::optional<Value> total(const std::vector<Value>& values, const OperationCalculator& calculator, Context& context) {
    if (values.empty()) return std::nullopt;
    return calculator.calculate(values, std::vector<Value>(values.size() - 1, Value(Attribute::operation, u"+")), context);
}

class SumToken : public Function {
public:
    explicit SumToken(const OperationCalculator& calculator) : calculator_(calculator) {}

    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        const ValuesList* results = previousResults(context);
        return results ? total(block(*results), calculator_, context) : std::nullopt;
    }

private:
    const OperationCalculator& calculator_;
};

class AvgToken : public Function {
public:
    explicit AvgToken(const OperationCalculator& calculator) : calculator_(calculator) {}

    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        const ValuesList* results = previousResults(context);
        if (!results) return std::nullopt;
        const std::vector<Value> values = block(*results);
        const auto sum = total(values, calculator_, context);
        if (!sum) return std::nullopt;
        const Value count(DecimalNumber::fromUInt64(values.size()));
        return calculator_.apply(u"/", *sum, count, context);
    }

private:
    const OperationCalculator& calculator_;
};

class PrevToken : public Function {
public:
    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        if (!previousResults(context)) return std::nullopt;
        const Value* previous = context.get<Value>(context_keys::previousResult);
        return previous ? std::optional(*previous) : std::nullopt;
    }
};

}  // namespace

std::shared_ptr<const Function> sumToken(const OperationCalculator& operationCalculator) {
    return std::make_shared<SumToken>(operationCalculator);
}

std::shared_ptr<const Function> avgToken(const OperationCalculator& operationCalculator) {
    return std::make_shared<AvgToken>(operationCalculator);
}

std::shared_ptr<const Function> prevToken() { return std::make_shared<PrevToken>(); }

}  // namespace vemo
