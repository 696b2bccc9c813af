// SPDX-License-Identifier: MIT
#include "engine/calculator.h"
#include "evaluation/operator_catalogue.h"
#include "functions/constants.h"
#include "functions/function_catalogue.h"
#include "platform/system.h"
#include "scripting/extensions.h"
#include "scripting/js_runner.h"
#include "units/british_units.h"

namespace vemo {

namespace {

QuickTypeCollector* hintsFor(const Calculator::Config& config, QuickTypeCollector& collector) {
    return config.enableQuickTypeHints ? &collector : nullptr;
}

}  // namespace

Calculator::Calculator(const Config& config, Environment environment, std::optional<Scheduler> scheduler)
    : config_(config),
      environment_(withDefaults(std::move(environment))),
      scheduler_(std::move(scheduler)),
      localZone_(TimeZoneRules::find(toUtf16(environment_.timeZone))),
      measurer_("Calculator initialization", environment_.log),
      localizer_(environment_.language, environment_.resources, environment_.log),
      percentageWords_(localizer_),
      mistakeNotes_(localizer_),
      numerals_(LocaleInfo::forIdentifier(environment_.locale)),
      placeNames_(localizer_, environment_.language),
      decimalParser_(environment_.locale),
      scientificParser_(decimalParser_),
      operatorCollection_(stringRangeDetector_, hintsFor(config, quickTypeCollector_)),
      operationCalculator_(operatorCollection_, operationCollection_, unitConverter_),
      unitManager_(stringRangeDetector_),
      unitRegistry_(unitManager_, unitConverter_, hintsFor(config, quickTypeCollector_)),
      scaleManager_(stringRangeDetector_, hintsFor(config, quickTypeCollector_)),
      functionManager_(stringRangeDetector_, hintsFor(config, quickTypeCollector_)),
      numberFormatter_(environment_.locale, environment_.language),
      decimalUnitValueFormatter_(numberFormatter_, unitManager_, unitConverter_),
      timeFormatter_(decimalUnitValueFormatter_) {}

Calculator::~Calculator() = default;

void Calculator::initialize() {
    if (scheduler_ && !config_.testMode) {
        const auto report = [weak = weak_from_this()](const OnlineProblem& problem) {
            if (const auto self = weak.lock()) self->reportOnlineProblem(problem);
        };
        online_ = std::make_unique<OnlineData>(*scheduler_, environment_, report);
    }
    stringRangeDetector_.setSimplifiedWordRangesDetection(true);
    const std::pair<const char*, std::function<void()>> steps[] = {
        {"operators", [&] { registerOperators(operatorCollection_, localizer_); }},
        {"operations", [&] { registerOperations(operationCollection_, unitConverter_); }},
        {"initializeExtractors",
         [&] {
             registerExtractors(
                 extractors_, {decimalParser_, scientificParser_, localizer_, stringRangeDetector_, operatorCollection_,
                               scaleManager_.phraseDetector(), unitManager_, functionManager_, environment_.language,
                               environment_.locale, localZone_});
         }},
        {"initializeEvaluators",
         [&] {
             registerEvaluators(evaluators_, {numerals_.locale(), localizer_, stringRangeDetector_,
                                              online_ && online_->geoNames() ? nullptr : &placeNames_,
                                              operationCalculator_, functionManager_, scaleManager_, unitManager_,
                                              unitConverter_, percentageWords_, environment_.log});
         }},
        {"initializeFormatters",
         [&] {
             registerFormatters(formatters_, {timeFormatter_, decimalUnitValueFormatter_, environment_.locale,
                                              toUtf16(environment_.timeZone), localZone_, environment_.clock});
         }},
        {"initializeUnits", [&] { registerUnits(unitRegistry_, localizer_, environment_.log); }},
        {"initializeFunctions",
         [&] { registerFunctions(functionManager_, localizer_, operationCalculator_, unitConverter_); }},
        {"initializeCurrency",
         [&] { registerCurrencies(unitRegistry_, localizer_, environment_.language, environment_.locale); }},
        {"initializeCrypto", [] {}},  // crypto-currencies come with their first rates
        {"initializeDates", [&] { registerDates(); }},
        {"initializeScales",
         [&] {
             registerScales(scaleManager_, localizer_, environment_.locale);
             if (hasImperialMeasures(environment_.locale))
                 registerImperialMeasures(unitRegistry_, scaleManager_, localizer_);
             else if (environment_.locale.starts_with("en_US"))
                 registerAmericanNotes(unitManager_);
         }},
        {"initializeConstants", [&] { registerConstants(context_); }},
        {"initializeCss", [&] { registerScreenUnits(unitRegistry_, localizer_, context_); }},
    };
    for (const auto& [name, step] : steps) measurer_.measure(name, step);
    stringRangeDetector_.setSimplifiedWordRangesDetection(false);
    context_.setDelegate(this);
}

std::vector<Extension> Calculator::loadExtensions(const std::filesystem::path& folder) {
    quickTypeCollector_.setScripts(true);
    auto extensions =
        vemo::loadExtensions(folder, context_.mutex(), environment_.log, [&]() -> std::pair<JSRunner&, JSVemo&> {
            if (!jsVemo_) jsVemo_ = std::make_unique<JSVemo>(context_, unitRegistry_, functionManager_);
            if (!jsRunner_) jsRunner_ = std::make_unique<JSRunner>(*jsVemo_, config_.scriptLimits, environment_.log);
            return {*jsRunner_, *jsVemo_};
        });
    quickTypeCollector_.setScripts(false);
    return extensions;
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

}  // namespace vemo
