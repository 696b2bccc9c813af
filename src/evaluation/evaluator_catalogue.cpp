// SPDX-License-Identifier: MIT
#include "evaluation/evaluator_catalogue.h"

#include "evaluation/arguments_evaluator.h"
#include "evaluation/compound_measure_evaluator.h"
#include "evaluation/discount_evaluator.h"
#include "evaluation/duration_evaluator.h"
#include "evaluation/each_price_evaluator.h"
#include "evaluation/fraction_evaluator.h"
#include "evaluation/function_expression_evaluator.h"
#include "evaluation/geo_names_parser.h"
#include "evaluation/implicit_product_evaluator.h"
#include "evaluation/joined_digits_evaluator.h"
#include "evaluation/labelled_result_evaluator.h"
#include "evaluation/line_marks_evaluator.h"
#include "evaluation/number_word_evaluator.h"
#include "evaluation/phrase_evaluator.h"
#include "evaluation/power_evaluator.h"
#include "evaluation/price_evaluators.h"
#include "evaluation/quantity_evaluators.h"
#include "evaluation/quick_type_expression_evaluator.h"
#include "evaluation/rate_evaluator.h"
#include "evaluation/rounding_evaluator.h"
#include "evaluation/structure_evaluators.h"
#include "evaluation/time_difference_evaluator.h"
#include "evaluation/time_zone_evaluator.h"
#include "evaluation/unanswered_evaluator.h"

namespace vemo {

void registerEvaluators(EvaluatorList& evaluators, const EvaluatorParts& parts) {
    evaluators.add(std::make_shared<QuickTypeExpressionEvaluator>());
    evaluators.add(std::make_shared<EmptyDependenciesEvaluator>(parts.stringRangeDetector));
    // What is decided on the whole line, before it is taken apart.
    evaluators.add(std::make_shared<JoinedDigitsEvaluator>(parts.locale, parts.unitConverter));
    evaluators.add(std::make_shared<LineMarksEvaluator>(parts.functions, parts.unitConverter));
    evaluators.add(std::make_shared<DiscountEvaluator>(parts.localizer, parts.percentageWords));
    evaluators.add(std::make_shared<PowerEvaluator>(parts.unitConverter));
    evaluators.add(std::make_shared<NumberWordEvaluator>(parts.localizer, parts.scales));
    evaluators.add(std::make_shared<DurationEvaluator>());
    evaluators.add(std::make_shared<FractionEvaluator>(parts.unitConverter));
    evaluators.add(std::make_shared<CompoundMeasureEvaluator>(parts.localizer));
    evaluators.add(std::make_shared<PhraseEvaluator>(parts.localizer, parts.log));
    evaluators.add(std::make_shared<UnansweredEvaluator>(parts.localizer));
    evaluators.add(std::make_shared<TimeDifferenceEvaluator>(parts.localizer, parts.places));
    evaluators.add(std::make_shared<EachPriceEvaluator>(parts.localizer, parts.unitConverter));
    evaluators.add(std::make_shared<ImplicitProductEvaluator>(parts.functions));
    evaluators.add(std::make_shared<ArgumentsEvaluator>(parts.functions));
    evaluators.add(std::make_shared<ParenthesesEvaluator>());
    evaluators.add(std::make_shared<RoundingEvaluator>(parts.localizer, parts.unitConverter));
    evaluators.add(std::make_shared<GeoNamesParser>(parts.places));
    evaluators.add(std::make_shared<TimePlacingEvaluator>());
    evaluators.add(std::make_shared<AssignmentEvaluator>(parts.operationCalculator));
    evaluators.add(std::make_shared<RateEvaluator>(parts.units, parts.unitConverter));
    evaluators.add(std::make_shared<PricedDescriptionEvaluator>(parts.unitConverter,
                                                                [&functions = parts.functions](std::u16string_view id) {
                                                                    const Function* function = functions.function(id);
                                                                    return function && function->mostValues() == 0;
                                                                }));
    evaluators.add(std::make_shared<OperationEvaluator>(parts.operationCalculator, parts.unitConverter,
                                                        [&functions = parts.functions](std::u16string_view id) {
                                                            const Function* function = functions.function(id);
                                                            return function && function->takesSigns();
                                                        }));
    evaluators.add(std::make_shared<ScaleEvaluator>(parts.scales));
    evaluators.add(std::make_shared<DecimalSurroundByCurrencyEvaluator>(parts.unitConverter));
    evaluators.add(std::make_shared<DecimalUnitEvaluator>(parts.unitConverter));
    evaluators.add(std::make_shared<ConvertableValueSequenceEvaluator>(parts.operationCalculator, parts.unitConverter,
                                                                       parts.percentageWords));
    evaluators.add(std::make_shared<FunctionExpressionEvaluator>(parts.functions));
    evaluators.add(std::make_shared<ParenthesesSequenceMultiplicator>(parts.operationCalculator, parts.unitConverter));
    evaluators.add(std::make_shared<TimePrefixedByTimeZoneEvaluator>());
    evaluators.add(
        std::make_shared<PriceEvaluator>(parts.unitConverter, parts.operationCalculator, parts.percentageWords));
    evaluators.add(std::make_shared<EmptyValueSanitizer>());
    evaluators.add(std::make_shared<LabelledResultEvaluator>());
}

}  // namespace vemo
