// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/cache_manager.h"
#include "engine/measurer.h"
#include "engine/mistake_notes.h"
#include "evaluation/evaluator_catalogue.h"
#include "evaluation/operation_calculator.h"
#include "evaluation/percentage_words.h"
#include "functions/function_manager.h"
#include "online/online_data.h"
#include "online/place_names.h"
#include "output/decimal_unit_value_formatter.h"
#include "output/formatter_catalogue.h"
#include "output/time_formatter.h"
#include "platform/locale_info.h"
#include "platform/scheduler.h"
#include "platform/time_zones.h"
#include "quicktype/quick_type_collector.h"
#include "scanning/extractor_catalogue.h"
#include "scanning/locale_numerals.h"
#include "scanning/number_parsers.h"
#include "scanning/words/localizer.h"
#include "scanning/words/string_range_detector.h"
#include "units/scale_manager.h"
#include "units/unit_catalogue.h"
#include "units/unit_spelling.h"
#include "vemo/engine.h"

namespace vemo {

class JSRunner;
class JSVemo;

// Hears from a calculator, on any thread and usually under the lock of its context.
class CalculatorDelegate {
public:
    virtual ~CalculatorDelegate() = default;
    virtual void calculatorContextUpdated(const Context& context) = 0;
    virtual void calculatorCryptoInitialized() = 0;
    virtual void calculatorOnlineProblem(const OnlineProblem& /*problem*/) {}
};

// Turns a document into one result per line: each line is cut into elements (extraction), these are
// reduced to a value (evaluation), and the value is written out (formatting). One calculation at a time,
// under the lock of the calculator's own context.
class Calculator : public EvaluationPass, public ContextDelegate, public std::enable_shared_from_this<Calculator> {
public:
    using Config = VemoEngine::Config;

    struct MultilineResult {
        std::vector<LineResultPointer> lines;
        std::vector<LineResultPointer> logging;  // those among them in which scripts logged something
    };

    // Without a scheduler there are no timers and no downloads.
    Calculator(const Config& config, Environment environment, std::optional<Scheduler> scheduler = std::nullopt);
    ~Calculator() override;
    Calculator(const Calculator&) = delete;
    Calculator& operator=(const Calculator&) = delete;

    // Fills the catalogues and lists. Once, before the first calculation.
    void initialize();
    // `start` begins timers and downloads, and `retire` ends them for good; neither need be called. Both on the main
    // executor. `onMain` tells that calculations run there, too.
    void start(bool onMain = false);
    void retire();
    const Measurer& measurer() const { return measurer_; }
    // Evaluates the scripts of a folder, holding the lock of the calculator's context for each. Before the first
    // calculation; an empty path loads nothing.
    std::vector<Extension> loadExtensions(const std::filesystem::path& folder);

    // Every line of `text`, in order; `document` is changed as the lines say. Once `cancelled` is set, the remaining
    // lines are skipped. `asker` tells whose latest calculation it is: places are looked up for that one.
    MultilineResult calculate(std::u16string_view text, Context& document, const std::atomic<bool>* cancelled = nullptr,
                              std::uint64_t asker = 0);
    LineResultPointer calculateLine(std::u16string_view text, Context& document, bool debug);

    // The line of that number as it is calculated, fully bracketed, with names as their values; nothing for a line
    // without a result. `document` is changed by the lines up to it.
    std::optional<std::u16string> reading(std::u16string_view text, Context& document, std::size_t line);

    ElementList extractElements(const std::u16string& text, Context& context, bool debug) const;
    ElementList evaluate(const ElementList& elements, Context& context, std::size_t startEvaluatorIndex,
                         bool debug) override;
    FormattedValue format(const Value& value, Context& context) const;
    // The same for a caller who holds no lock and has only the context of a document.
    FormattedValue formatted(const Value& value, const Context& document) const;

    void setDelegate(std::weak_ptr<CalculatorDelegate> delegate) { delegate_ = std::move(delegate); }
    void contextUpdated(Context& context) override;
    // New rates, which every document sees. The first crypto rates bring their units.
    void setCurrencyRates(CurrencyRatesContainer rates);
    void setCryptoRates(CurrencyRatesContainer rates);
    // Runs the change where calculations run, between them, so that the main executor never waits for one; at once
    // without a scheduler.
    void later(std::function<void(Calculator&)> change);
    // What is under way beside calculations.
    VemoEngine::Pending pending() const;
    // Sets the current time anew and notifies, as is done once a minute.
    void minuteTimerDing();

    // Every completion offered while the catalogues were filled; none when the configuration wants none.
    std::vector<QuickTypeHint> quickTypeHints() const { return quickTypeCollector_.hints(); }
    // These take the lock of the calculator's own context.
    std::shared_ptr<QuickTypeEngine> buildQuickTypeEngine();
    std::shared_ptr<const Completions> completions();
    std::vector<Completion> conversionsOf(std::u16string_view unit) const;

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
    struct EvaluatedLine {
        ElementList written, elements;  // before and after the evaluation
    };

    EvaluatedLine evaluateLine(std::u16string_view line, Context& context, bool debug);
    std::u16string nameInLines(std::u16string_view unit) const;
    double secondsSince2001() const;
    void storeRates(std::u16string_view key, std::u16string_view timeKey, CurrencyRatesContainer rates);
    void lookUpPlaces(const LineResult& line);
    void reportOnlineProblem(const OnlineProblem& problem);
    void setPlaceLater(const std::u16string& name, std::u16string zone);
    void setPlace(const std::u16string& name, const std::u16string& zone);
    void registerDates();
    void setCurrentTime();
    void renewTime();
    void carryForward(const LineResult& line, Context& document) const;
    void trace(const std::u16string& line) const;

    Config config_;
    Environment environment_;
    std::optional<Scheduler> scheduler_;
    std::shared_ptr<const TimeZoneRules> localZone_;
    Measurer measurer_;
    Context context_;
    std::weak_ptr<CalculatorDelegate> delegate_;
    CacheManager cacheManager_;

    QuickTypeCollector quickTypeCollector_;
    Localizer localizer_;
    PercentageWords percentageWords_;
    MistakeNotes mistakeNotes_;
    LocaleNumerals numerals_;
    PlaceNames placeNames_;
    std::unique_ptr<OnlineData> online_;  // null without a scheduler
    bool cryptoInitialized_ = false;      // guarded by the context's lock
    std::atomic<bool> retired_ = false;
    bool onMain_ = false;
    StringRangeDetector stringRangeDetector_;
    DecimalParser decimalParser_;
    ScientificParser scientificParser_;
    OperatorCollection operatorCollection_;
    OperationCollection operationCollection_;
    OperationCalculator operationCalculator_;
    UnitManager unitManager_;
    std::optional<UnitSpelling> unitSpelling_;  // made when a line first asks for it
    UnitConverter unitConverter_;
    UnitRegistry unitRegistry_;
    ScaleManager scaleManager_;
    FunctionManager functionManager_;
    VemoEngineNumberFormatter numberFormatter_;
    DecimalUnitValueFormatter decimalUnitValueFormatter_;
    TimeFormatter timeFormatter_;

    ExtractorList extractors_;
    EvaluatorList evaluators_;
    FormatterList formatters_;
    std::unique_ptr<JSVemo> jsVemo_;      // null without scripts
    std::unique_ptr<JSRunner> jsRunner_;  // null without scripts
    std::size_t evaluationDepth_ = 0;
    bool tooDeep_ = false;                           // tells of the line under way
    std::unique_ptr<Scheduler::Timer> minuteTimer_;  // is destroyed before what its ticks use
};

}  // namespace vemo
