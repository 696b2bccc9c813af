// SPDX-License-Identifier: MIT
#include "engine/calculator.h"
#include "evaluation/function_expression_evaluator.h"
#include "evaluation/geo_names_parser.h"
#include "evaluation/operator_catalogue.h"
#include "evaluation/quantity_evaluators.h"
#include "evaluation/quick_type_expression_evaluator.h"
#include "evaluation/structure_evaluators.h"
#include "evaluation/time_zone_evaluator.h"
#include "functions/function_catalogue.h"
#include "output/date_formatter.h"
#include "platform/system.h"
#include "scanning/date_extractor.h"
#include "scanning/number_extractors.h"
#include "scanning/structural_extractors.h"
#include "scanning/time_zone_extractor.h"
#include "scanning/vocabulary_extractors.h"
#include "scripting/extensions.h"
#include "scripting/js_runner.h"

namespace vemo {

namespace {

QuickTypeCollector* hintsFor(const Calculator::Config& config, QuickTypeCollector& collector) {
    return config.enableQuickTypeHints ? &collector : nullptr;
}

}  // namespace

Calculator::Calculator(const Config& config, Environment environment, Scheduler* scheduler)
    : config_(config),
      environment_(withDefaults(std::move(environment))),
      scheduler_(scheduler),
      localZone_(TimeZoneRules::find(toUtf16(environment_.timeZone))),
      measurer_("Calculator initialization", environment_.log),
      localizer_(environment_.language, environment_.resources, environment_.log),
      placeNames_(localizer_, environment_.language),
      online_(scheduler && !config.testMode ? std::make_unique<OnlineData>(*scheduler, environment_) : nullptr),
      decimalParser_(LocaleInfo::forIdentifier(environment_.locale)),
      scientificParser_(decimalParser_),
      operatorCollection_(stringRangeDetector_, hintsFor(config, quickTypeCollector_)),
      operationCalculator_(operatorCollection_, operationCollection_),
      unitManager_(stringRangeDetector_),
      unitRegistry_(unitManager_, unitConverter_, hintsFor(config, quickTypeCollector_)),
      scaleManager_(stringRangeDetector_, hintsFor(config, quickTypeCollector_)),
      functionManager_(stringRangeDetector_, hintsFor(config, quickTypeCollector_)),
      numberFormatter_(environment_.locale, environment_.language),
      decimalUnitValueFormatter_(numberFormatter_, unitManager_, unitConverter_),
      timeFormatter_(decimalUnitValueFormatter_) {}

Calculator::~Calculator() = default;

void Calculator::initialize() {
    stringRangeDetector_.setSimplifiedWordRangesDetection(true);
    const std::pair<const char*, std::function<void()>> steps[] = {
        {"operators", [&] { registerOperators(operatorCollection_, localizer_); }},
        {"operations", [&] { registerOperations(operationCollection_, unitConverter_); }},
        {"initializeExtractors", [&] { registerExtractors(); }},
        {"initializeEvaluators", [&] { registerEvaluators(); }},
        {"initializeFormatters", [&] { registerFormatters(); }},
        {"initializeUnits", [&] { registerUnits(unitRegistry_, localizer_, environment_.log); }},
        {"initializeFunctions",
         [&] { registerFunctions(functionManager_, localizer_, operationCalculator_, unitConverter_); }},
        {"initializeCurrency", [&] { registerCurrencies(unitRegistry_, localizer_, environment_.language); }},
        {"initializeCrypto", [] {}},  // crypto-currencies come with their first rates
        {"initializeDates", [&] { registerDates(); }},
        {"initializeScales", [&] { registerScales(scaleManager_, localizer_); }},
        {"initializeConstants", [&] { registerConstants(); }},
        {"initializeCss", [&] { registerScreenUnits(unitRegistry_, localizer_, context_); }},
    };
    for (const auto& [name, step] : steps) measurer_.measure(name, step);
    stringRangeDetector_.setSimplifiedWordRangesDetection(false);
    context_.setDelegate(this);
}

std::vector<Extension> Calculator::loadExtensions(const std::filesystem::path& folder) {
    return vemo::loadExtensions(folder, context_.mutex(), [&]() -> std::pair<JSRunner&, JSVemo&> {
        if (!jsVemo_) jsVemo_ = std::make_unique<JSVemo>(context_, unitRegistry_, functionManager_);
        if (!jsRunner_) jsRunner_ = std::make_unique<JSRunner>(*jsVemo_, config_.scriptLimits, environment_.log);
        return {*jsRunner_, *jsVemo_};
    });
}

void Calculator::registerDates() {
    setCurrentTime();
    context_.set(context_keys::currentTimeZone, TimeZone{toUtf16(environment_.timeZone)});
}

void Calculator::setCurrentTime() {
    const Date now = environment_.clock();
    context_.set(context_keys::currentTime, now);
    context_.set(context_keys::currentDay, localZone_->day(now));
}

void Calculator::registerConstants() {
    constexpr double pi = 3.141592653589793;
    // Euler's number to 100 digits (OEIS A001113), and the molar gas constant in J/(mol K) (CODATA 2014).
    constexpr std::string_view e =
        "2.7182818284590452353602874713526624977572470936999595749669676277240766303535475945713821785251664274";
    constexpr std::string_view r = "8.3144598";
    context_.setValue(Value(DecimalNumber::fromDouble(pi)), u"pi");
    context_.setValue(Value(DecimalNumber::fromDouble(pi)), u"\u03c0");
    context_.setValue(Value(DecimalNumber::parse(e)), u"e");
    context_.setValue(Value(DecimalNumber::parse(r)), u"r");
}

void Calculator::registerExtractors() {
    auto operators = std::make_shared<OperatorExtractor>(operatorCollection_);
    operators->prepare();
    const auto structural = [&](const StructuralPattern& pattern) {
        extractors_.add(std::make_shared<StructuralExtractor>(pattern));
    };
    extractors_.add(std::make_shared<DecimalNumberExtractor>(decimalParser_));
    extractors_.add(std::make_shared<HexNumberExtractor>());
    extractors_.add(std::make_shared<OctalNumberExtractor>());
    extractors_.add(std::make_shared<BinaryNumberExtractor>());
    extractors_.add(std::make_shared<ScientificNumberExtractor>(scientificParser_));
    extractors_.add(std::make_shared<ScalesExtractor>(scaleManager_.phraseDetector()));
    extractors_.add(std::make_shared<NumeralRepresentationExtractor>(localizer_, stringRangeDetector_));
    extractors_.add(std::make_shared<ParenthesesExtractor>());
    extractors_.add(std::make_shared<PercentageSymbolExtractor>());
    extractors_.add(std::make_shared<MultiplyXSymbolExtractor>(stringRangeDetector_));
    structural(headerPattern);
    structural(labelPattern);
    structural(quotedCommentPattern);
    structural(slashCommentPattern);
    extractors_.add(std::move(operators));
    extractors_.add(std::make_shared<UnitExtractor>(unitManager_.phraseDetector(), operatorCollection_));
    extractors_.add(std::make_shared<FunctionExtractor>(functionManager_.phraseDetector()));
    extractors_.add(std::make_shared<AssignmentExtractor>(localizer_, stringRangeDetector_));
    extractors_.add(std::make_shared<VariablesExtractor>(stringRangeDetector_));
    extractors_.add(
        std::make_shared<DateExtractor>(localizer_, environment_.language, environment_.locale, localZone_));
    extractors_.add(std::make_shared<TimeZoneAbbreviationsExtractor>(stringRangeDetector_, environment_.language));
}

void Calculator::registerEvaluators() {
    evaluators_.add(std::make_shared<QuickTypeExpressionEvaluator>());
    evaluators_.add(std::make_shared<EmptyDependenciesEvaluator>(stringRangeDetector_));
    evaluators_.add(std::make_shared<ParenthesesEvaluator>());
    evaluators_.add(std::make_shared<GeoNamesParser>(online_ && online_->geoNames() ? nullptr : &placeNames_));
    evaluators_.add(std::make_shared<AssignmentEvaluator>(operationCalculator_));
    evaluators_.add(std::make_shared<OperationEvaluator>(operationCalculator_, [this](std::u16string_view id) {
        const Function* function = functionManager_.function(id);
        return function && function->takesSigns();
    }));
    evaluators_.add(std::make_shared<ScaleEvaluator>(scaleManager_));
    evaluators_.add(std::make_shared<DecimalSurroundByCurrencyEvaluator>(unitConverter_));
    evaluators_.add(std::make_shared<DecimalUnitEvaluator>());
    evaluators_.add(std::make_shared<ConvertableValueSequenceEvaluator>(operationCalculator_));
    evaluators_.add(std::make_shared<FunctionExpressionEvaluator>(functionManager_));
    evaluators_.add(std::make_shared<ParenthesesSequenceMultiplicator>(operationCalculator_));
    evaluators_.add(std::make_shared<TimePrefixedByTimeZoneEvaluator>());
    evaluators_.add(std::make_shared<EmptyValueSanitizer>());
}

void Calculator::registerFormatters() {
    const auto unowned = [](const ValueFormatter& formatter) {
        return std::shared_ptr<const ValueFormatter>(std::shared_ptr<void>(), &formatter);
    };
    formatters_.add(unowned(timeFormatter_), 100, u"timeFormatter");
    formatters_.add(unowned(decimalUnitValueFormatter_), 100, u"defaultFormatter");
    formatters_.add(std::make_shared<VemoDateFormatter>(environment_.locale, toUtf16(environment_.timeZone), localZone_,
                                                        environment_.clock),
                    100, u"dateFormatter");
}

}  // namespace vemo
