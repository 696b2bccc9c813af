// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/cache_manager.h"
#include "engine/measurer.h"
#include "evaluation/evaluator.h"
#include "evaluation/operation_calculator.h"
#include "functions/function_manager.h"
#include "output/decimal_unit_value_formatter.h"
#include "scanning/extractor.h"
#include "scanning/localizer.h"
#include "scanning/number_parsers.h"
#include "scanning/sorted_list.h"
#include "scanning/string_range_detector.h"
#include "units/scale_manager.h"
#include "units/unit_catalogue.h"
#include "vemo/engine.h"

namespace vemo {

class JSRunner;
class JSVemo;
class Scheduler;

// Turns a document into one result per line: each line is cut into elements (extraction), these are
// reduced to a value (evaluation), and the value is written out (formatting). One calculation at a time,
// under the lock of the calculator's own context.
class Calculator : public EvaluationPass, public ContextDelegate {
public:
    using Config = VemoEngine::Config;

    struct MultilineResult {
        std::vector<LineResultPointer> lines;
    };

    // `scheduler` must outlive the calculator; without one there are no timers and no downloads.
    Calculator(const Config& config, Environment environment, Scheduler* scheduler = nullptr);
    ~Calculator() override;
    Calculator(const Calculator&) = delete;
    Calculator& operator=(const Calculator&) = delete;

    // Fills the catalogues and lists. Once, before the first calculation.
    void initialize();
    const Measurer& measurer() const { return measurer_; }
    // Evaluates the scripts of a folder, holding the lock of the calculator's context for each. Before the first
    // calculation; an empty path loads nothing.
    std::vector<Extension> loadExtensions(const std::filesystem::path& folder);

    // Every line of `text`, in order; `document` is changed as the lines say.
    MultilineResult calculate(std::u16string_view text, Context& document);
    LineResultPointer calculateLine(std::u16string_view text, Context& document, bool debug);

    ElementList extractElements(const std::u16string& text, Context& context, bool debug) const;
    ElementList evaluate(const ElementList& elements, Context& context, std::size_t startEvaluatorIndex,
                         bool debug) override;
    FormattedValue format(const Value& value, Context& context) const;

    void contextUpdated(Context& context) override;

    Context& context() { return context_; }
    void setCachesEnabled(bool enabled);

    // The catalogues, for those who look into or add to them.
    OperatorCollection& operatorCollection() { return operatorCollection_; }
    const OperationCalculator& operationCalculator() const { return operationCalculator_; }
    UnitManager& unitManager() { return unitManager_; }
    UnitConverter& unitConverter() { return unitConverter_; }
    ScaleManager& scaleManager() { return scaleManager_; }
    FunctionManager& functionManager() { return functionManager_; }

private:
    void registerExtractors();
    void registerEvaluators();
    void registerFormatters();
    void registerDates();
    void registerConstants();
    void carryForward(const Value& value, Context& document) const;
    void trace(const std::u16string& line) const;

    Config config_;
    Environment environment_;
    [[maybe_unused]] Scheduler* scheduler_;
    Measurer measurer_;
    Context context_;
    CacheManager cacheManager_;

    Localizer localizer_;
    StringRangeDetector stringRangeDetector_;
    DecimalParser decimalParser_;
    ScientificParser scientificParser_;
    OperatorCollection operatorCollection_;
    OperationCollection operationCollection_;
    OperationCalculator operationCalculator_;
    UnitManager unitManager_;
    UnitConverter unitConverter_;
    UnitRegistry unitRegistry_;
    ScaleManager scaleManager_;
    FunctionManager functionManager_;
    VemoEngineNumberFormatter numberFormatter_;
    DecimalUnitValueFormatter decimalUnitValueFormatter_;

    SortedList<std::shared_ptr<const Extractor>> extractors_;
    SortedList<std::shared_ptr<const Evaluator>> evaluators_;
    SortedList<std::shared_ptr<const ValueFormatter>> formatters_;
    std::unique_ptr<JSVemo> jsVemo_;      // null without scripts
    std::unique_ptr<JSRunner> jsRunner_;  // null without scripts
    std::size_t evaluationDepth_ = 0;
};

}  // namespace vemo
