// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "evaluation/evaluator.h"
#include "vemo/sorted_list.h"

namespace vemo {

class FunctionManager;
class Localizer;
struct LocaleInfo;
class OperationCalculator;
class PercentageWords;
class Places;
class ScaleManager;
class StringRangeDetector;
class UnitConverter;
class UnitManager;

using EvaluatorList = SortedList<std::shared_ptr<const Evaluator>>;

// What evaluators use; all of it must outlive them.
struct EvaluatorParts {
    const LocaleInfo& locale;
    const Localizer& localizer;
    StringRangeDetector& stringRangeDetector;
    const Places* places;  // null to ask a server
    const OperationCalculator& operationCalculator;
    const FunctionManager& functions;
    const ScaleManager& scales;
    const UnitManager& units;
    const UnitConverter& unitConverter;
    const PercentageWords& percentageWords;
    const std::function<void(std::string_view)>& log;  // is told of phrases that can't be read; may be empty
};

// Adds every evaluator, in the order in which they run.
void registerEvaluators(EvaluatorList& evaluators, const EvaluatorParts& parts);

}  // namespace vemo
