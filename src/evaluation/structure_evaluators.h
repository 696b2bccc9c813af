// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "evaluation/conversion_reach.h"
#include "evaluation/element_replacement.h"
#include "evaluation/evaluator.h"
#include "evaluation/operation_calculator.h"
#include "matching/domain_matchers.h"
#include "scanning/words/string_range_detector.h"

namespace vemo {

// The evaluators that give expressions their structure.

// Records which names a line mentions, so that it is calculated again once one of them gets a value.
class EmptyDependenciesEvaluator : public Evaluator {
public:
    explicit EmptyDependenciesEvaluator(StringRangeDetector& stringRangeDetector)
        : stringRangeDetector_(stringRangeDetector) {}
    std::u16string_view name() const override { return u"EmptyDependenciesEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    StringRangeDetector& stringRangeDetector_;
};

// Evaluates what stands in brackets, the inner ones by the same rule. Unbalanced brackets make the whole
// list one element with the error value.
class ParenthesesEvaluator : public Evaluator {
public:
    ParenthesesEvaluator() : Evaluator({Attribute::parenthesis}) {}
    std::u16string_view name() const override { return u"ParenthesesEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;
};

// Evaluates the operands between operators and reduces them to one value.
class OperationEvaluator : public Evaluator {
public:
    // `takesSigns` tells by a function's id whether a sign between its name and a number is the number's.
    OperationEvaluator(const OperationCalculator& operationCalculator, const UnitConverter& unitConverter,
                       std::function<bool(std::u16string_view)> takesSigns)
        : Evaluator({Attribute::operation}),
          operationCalculator_(operationCalculator),
          reach_(operationCalculator, unitConverter),
          takesSigns_(std::move(takesSigns)) {}
    std::u16string_view name() const override { return u"OperationEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::optional<ElementList> withSignedNumbers(const ElementList& elements) const;

    const OperationCalculator& operationCalculator_;
    const ConversionReach reach_;
    std::function<bool(std::u16string_view)> takesSigns_;
};

// Implicit multiplication: 2 (3 + 4).
class ParenthesesSequenceMultiplicator : public Evaluator {
public:
    ParenthesesSequenceMultiplicator(const OperationCalculator& operationCalculator, const UnitConverter& unitConverter)
        : Evaluator({Attribute::decimal}),
          operationCalculator_(operationCalculator),
          unitConverter_(unitConverter),
          matcher_(valueWithParenthesesSequenceMatcher()) {}
    std::u16string_view name() const override { return u"ParenthesesSequenceMultiplicator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    bool isPriceBesideWords(const ElementList& elements, std::size_t from, std::size_t bracket) const;

    const OperationCalculator& operationCalculator_;
    const UnitConverter& unitConverter_;
    FinderMatcher matcher_;
};

// Lets each value take the text around it, so that the first element carries the line's value.
class EmptyValueSanitizer : public Evaluator {
public:
    std::u16string_view name() const override { return u"EmptyValueSanitizer"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;
};

}  // namespace vemo
