// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <optional>
#include <string_view>

#include "records/element.h"
#include "vemo/context.h"

namespace vemo {

// The way back into the pass that runs the evaluators, for those that evaluate part of a list first.
class EvaluationPass {
public:
    virtual ~EvaluationPass() = default;
    // Runs the evaluators from the given position on. The list itself is not changed.
    virtual ElementList evaluate(const ElementList& elements, Context& context, std::size_t startEvaluatorIndex,
                                 bool debug) = 0;
};

struct EvaluationContext {
    EvaluationPass& calculator;
    std::size_t startEvaluatorIndex;  // position of the evaluator that receives this
    bool debug;

    ElementList evaluate(const ElementList& elements, Context& context) const {
        return calculator.evaluate(elements, context, startEvaluatorIndex, debug);
    }
};

// One step that reduces a list of elements. Keeps nothing from line to line.
class Evaluator {
public:
    // An evaluator that names attributes is asked only about lists in which an element has one of them.
    explicit Evaluator(std::initializer_list<Attribute> triggers = {}) {
        for (const Attribute trigger : triggers)
            triggers_ = static_cast<std::uint16_t>(triggers_ | Value::bit(trigger));
    }
    virtual ~Evaluator() = default;
    bool concerns(const ElementList& elements) const {
        return triggers_ == 0 || (triggers_ & elements.attributes()) != 0;
    }
    virtual std::u16string_view name() const = 0;  // for the trace
    // The reduced list; nothing when there is nothing to change.
    virtual std::optional<ElementList> evaluate(const ElementList& elements, Context& context,
                                                const EvaluationContext& evaluationContext) const = 0;

private:
    std::uint16_t triggers_ = 0;
};

// What a part of a line that makes no sense, such as unbalanced brackets, stands for.
inline Value errorValue() {
    return Value(Attribute::error, u"");
}

}  // namespace vemo
