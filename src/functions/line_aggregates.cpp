// SPDX-License-Identifier: MIT
#include "functions/line_aggregates.h"

#include "functions/block_memory.h"

namespace vemo {

namespace {

struct BlockTotal {
    Value total;
    std::size_t count = 0;
};

// Totals blocks of results.
class BlockAdder {
public:
    explicit BlockAdder(const Reduction& reduction) : reduction_(reduction) {}

    // Null for an empty block, or when its values can't be added.
    const BlockTotal* totalOf(Context& context) {
        const auto add = [&](BlockTotal& block, const Value& value, Context& adding) {
            if (value.isNotANumber()) return true;
            const auto sum = block.count == 0 ? value : reduction_.apply(u"+", block.total, value, adding);
            if (!sum) return false;
            block.total = *sum;
            ++block.count;
            return true;
        };
        const BlockTotal* block = memory_.summaryOf(context, add);
        return block && block->count > 0 ? block : nullptr;
    }

private:
    const Reduction& reduction_;
    BlockMemory<BlockTotal> memory_;
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
        const BlockTotal* block = adder_.totalOf(context);
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
        const BlockTotal* block = adder_.totalOf(context);
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
