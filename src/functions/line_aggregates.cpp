// SPDX-License-Identifier: MIT
#include "functions/line_aggregates.h"

#include "records/context_parts.h"

namespace vemo {

namespace {

const ValuesList* previousResults(Context& context) {
    context.addDependencyOn(context_keys::previousResults, std::nullopt, Value());
    return context.get<ValuesList>(context_keys::previousResults);
}

// False for lines of words, though a unit's or a function's name among them is a value.
bool isResult(const Value& value) {
    return value.has(Attribute::decimal) || value.has(Attribute::date);
}

struct BlockTotal {
    Value total;
    std::size_t count = 0;
};

// Totals blocks of results.
class BlockAdder {
public:
    explicit BlockAdder(const Reduction& reduction) : reduction_(reduction) {}

    // Nothing for an empty block, or when its values can't be added.
    std::optional<BlockTotal> add(const ValuesList& results, Context& context) {
        if (!holds(context)) latest_ = ValuesList();
        std::vector<const Value*> values;  // newest first
        ValuesList rest = results;
        for (; !rest.empty() && isResult(rest.newest()) && !rest.isSameAs(latest_); rest.dropNewest())
            if (!rest.newest().isNotANumber()) values.push_back(&rest.newest());
        BlockTotal block;
        Context adding = ContextParts::layer(context);
        if (!rest.empty() && rest.isSameAs(latest_)) {
            block = total_;
            ContextParts::addDependencies(adding, dependencies_);
        }
        for (; !values.empty(); values.pop_back(), ++block.count) {
            const auto sum =
                block.count == 0 ? *values.back() : reduction_.apply(u"+", block.total, *values.back(), adding);
            if (!sum) break;
            block.total = *sum;
        }
        ContextParts::addDependencies(context, ContextParts::dependencies(adding));
        if (block.count == 0 || !values.empty()) return std::nullopt;
        latest_ = results;
        total_ = block;
        dependencies_ = ContextParts::dependencies(adding);
        return block;
    }

private:
    // True while the latest total would come out the same: it may depend on rates.
    bool holds(const Context& context) const {
        return dependencies_.all([&](const auto& entry) {
            const IsEquatable* present = context.find(entry.key());
            return present ? present->isEqual(entry.value()) : entry.value().isEmptyValue();
        });
    }

    const Reduction& reduction_;
    ValuesList latest_;
    BlockTotal total_;
    ContextMap dependencies_;
};

std::optional<Value> totalOf(const std::vector<Value>& values, const Reduction& reduction, Context& context) {
    std::optional<Value> total;
    for (const Value& value : values) {
        total = total ? reduction.apply(u"+", *total, value, context) : value;
        if (!total) break;
    }
    return total;
}

class SumToken : public Function {
public:
    explicit SumToken(const Reduction& reduction) : reduction_(reduction), adder_(reduction) {}

    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        const ValuesList* results = previousResults(context);
        const auto block = results ? adder_.add(*results, context) : std::nullopt;
        return block ? std::optional(block->total) : std::nullopt;
    }
    bool repeatsLines() const override { return true; }
    std::optional<Value> evaluateSeveral(const std::vector<Value>& values, Context& context) const override {
        return totalOf(values, reduction_, context);
    }
    bool takesSeveral() const override { return true; }

private:
    const Reduction& reduction_;
    mutable BlockAdder adder_;
};

class AvgToken : public Function {
public:
    explicit AvgToken(const Reduction& reduction) : reduction_(reduction), adder_(reduction) {}

    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        const ValuesList* results = previousResults(context);
        const auto block = results ? adder_.add(*results, context) : std::nullopt;
        if (!block) return std::nullopt;
        return reduction_.apply(u"/", block->total, Value(DecimalNumber::fromUInt64(block->count)), context);
    }
    bool repeatsLines() const override { return true; }
    std::optional<Value> evaluateSeveral(const std::vector<Value>& values, Context& context) const override {
        const auto total = totalOf(values, reduction_, context);
        if (!total) return std::nullopt;
        return reduction_.apply(u"/", *total, Value(DecimalNumber::fromUInt64(values.size())), context);
    }
    bool takesSeveral() const override { return true; }

private:
    const Reduction& reduction_;
    mutable BlockAdder adder_;
};

class PrevToken : public Function {
public:
    std::size_t mostValues() const override { return 0; }
    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        if (!previousResults(context)) return std::nullopt;
        const Value* previous = context.get<Value>(context_keys::previousResult);
        return previous ? std::optional(*previous) : std::nullopt;
    }
    bool repeatsLines() const override { return true; }
};

}  // namespace

std::vector<Value> blockAbove(Context& context) {
    std::vector<Value> values;
    const ValuesList* results = previousResults(context);
    if (!results) return values;
    for (ValuesList rest = *results; !rest.empty() && isResult(rest.newest()); rest.dropNewest())
        values.push_back(rest.newest());
    return values;
}

std::shared_ptr<const Function> sumToken(const Reduction& reduction) {
    return std::make_shared<SumToken>(reduction);
}

std::shared_ptr<const Function> avgToken(const Reduction& reduction) {
    return std::make_shared<AvgToken>(reduction);
}

std::shared_ptr<const Function> prevToken() {
    return std::make_shared<PrevToken>();
}

}  // namespace vemo
