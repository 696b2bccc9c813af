// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/percentage_words.h"
#include "evaluation/structure_evaluators.h"
#include "units/scale_manager.h"
#include "units/unit_converter.h"

namespace vemo {

// The evaluators that give a line its meaning beyond operators: each reduces the matches of one pattern.

// "name = expression", "name += expression": stores the variable; the line's value is the expression's.
class AssignmentEvaluator : public Evaluator {
public:
    explicit AssignmentEvaluator(const OperationCalculator& operationCalculator)
        : Evaluator({Attribute::assignment}),
          operationCalculator_(operationCalculator),
          matcher_(assignmentSequenceMatcher()) {}
    std::u16string_view name() const override { return u"AssignmentEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    void assign(ElementList& part, const Value& assigned, Context& context) const;

    const OperationCalculator& operationCalculator_;
    FinderMatcher matcher_;
};

// "3 million".
class ScaleEvaluator : public Evaluator {
public:
    explicit ScaleEvaluator(const ScaleManager& scaleManager)
        : Evaluator({Attribute::scale}), scaleManager_(scaleManager), matcher_(scaledExpressionMatcher()) {}
    std::u16string_view name() const override { return u"ScaleEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const ScaleManager& scaleManager_;
    FinderMatcher matcher_;
};

// "$5 CAD": of a currency on each side, the one after the number wins.
class DecimalSurroundByCurrencyEvaluator : public Evaluator {
public:
    explicit DecimalSurroundByCurrencyEvaluator(const UnitConverter& unitConverter)
        : Evaluator({Attribute::unit}), unitConverter_(unitConverter), matcher_(unitAroundDecimalMatcher()) {}
    std::u16string_view name() const override { return u"DecimalSurroundByCurrencyEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const UnitConverter& unitConverter_;
    FinderMatcher matcher_;
};

// "5 kg", "$5". A sign of money that touches the number after it belongs to that one, whatever stands before.
class DecimalUnitEvaluator : public Evaluator {
public:
    explicit DecimalUnitEvaluator(const UnitConverter& unitConverter)
        : Evaluator({Attribute::unit, Attribute::nsystem}),
          unitConverter_(unitConverter),
          decimalUnitMatcher_(decimalFollowedByUnitMatcher()),
          unitDecimalMatcher_(unitFollowedByDecimalMatcher()) {}
    std::u16string_view name() const override { return u"DecimalUnitEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::optional<ElementList> withSigns(const ElementList& elements) const;

    const UnitConverter& unitConverter_;
    FinderMatcher decimalUnitMatcher_;
    FinderMatcher unitDecimalMatcher_;
};

// "5 ft 3 in": a run of quantities is their sum, but not one of money and other things, as in "5 lb flour $3.69".
class ConvertableValueSequenceEvaluator : public Evaluator {
public:
    ConvertableValueSequenceEvaluator(const OperationCalculator& operationCalculator,
                                      const UnitConverter& unitConverter, const PercentageWords& percentageWords)
        : Evaluator({Attribute::unit}),
          operationCalculator_(operationCalculator),
          unitConverter_(unitConverter),
          percentageWords_(percentageWords),
          matcher_(convertableValueSequenceMatcher()) {}
    std::u16string_view name() const override { return u"ConvertableValueSequenceEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const OperationCalculator& operationCalculator_;
    const UnitConverter& unitConverter_;
    const PercentageWords& percentageWords_;
    FinderMatcher matcher_;
};

}  // namespace vemo
