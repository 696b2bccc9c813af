// SPDX-License-Identifier: MIT
#include "engine/calculator.h"

#include <cassert>
#include <cstdio>
#include <limits>
#include <span>

#include "engine/line_reading.h"
#include "engine/line_remarks.h"
#include "engine/repeated_lines.h"
#include "evaluation/element_replacement.h"
#include "records/context_parts.h"
#include "scanning/string_extractor.h"
#include "scripting/js_runner.h"

namespace vemo {

namespace {

// Bounds against hostile input: a longer line is text without a value, but for a comment at its end; deeper nesting
// gives the error value.
constexpr std::size_t longestLine = 4096;  // UTF-16 units
constexpr std::size_t deepestEvaluation = 100;

// Counts a level of evaluation as long as it lasts, however it ends.
class Deeper {
public:
    explicit Deeper(std::size_t& depth) : depth_(depth) { ++depth_; }
    ~Deeper() { --depth_; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;

private:
    std::size_t& depth_;
};

template <class Item>
std::u16string descriptions(const std::vector<Item>& items, std::size_t from) {
    std::u16string result;
    for (std::size_t i = from; i < items.size(); ++i) {
        if (i > from) result += u',';
        result += items[i].shortDescription();
    }
    return result;
}

// The part of a line that is calculated, and what is left: of a long line its comment, a header, or all of it.
std::pair<std::u16string_view, AttributedText> withinBounds(std::u16string_view line) {
    if (line.size() <= longestLine) return {line, {}};
    const std::u16string_view words = trimmed(line);
    if (words.starts_with(u'#')) return {u"", AttributedText(line, RunType::header)};
    const std::size_t comment = line.find(u"//");
    if (comment <= longestLine)
        return {line.substr(0, comment), AttributedText(line.substr(comment), RunType::comment)};
    const bool quoted = words.size() > 1 && words.front() == u'"' && words.find(u'"', 1) == words.size() - 1;
    return {u"", AttributedText(line, quoted ? RunType::comment : RunType::none)};
}

// The runs over another text of the same length.
AttributedText withText(const AttributedText& runs, std::u16string_view text) {
    assert(runs.compoundString().size() == text.size());
    if (runs.compoundString() == text) return runs;
    AttributedText result;
    for (const AttributedText::Run& run : runs.runs()) {
        result.append(AttributedText(text.substr(0, run.length), run.type));
        text.remove_prefix(run.length);
    }
    return result;
}

}  // namespace

void Calculator::trace(const std::u16string& line) const {
    const std::string text = utf8(line);
    if (environment_.trace)
        environment_.trace(text);
    else
        std::printf("%s\n", text.c_str());
}

Calculator::MultilineResult Calculator::calculate(std::u16string_view text, Context& document,
                                                  const std::atomic<bool>* cancelled, std::uint64_t asker) {
    const JSRunner::Calculation scripts(jsRunner_.get(), cancelled);
    if (online_ && online_->geoNames()) online_->geoNames()->beginBatch(asker);
    if (!scheduler_ && !config_.testMode) renewTime();
    ContextParts::dependencies(document);  // those that wait would keep results of an earlier calculation
    Context snapshot = document.copyContext();
    ContextParts::add(document, ContextParts::data(context_));
    MultilineResult result;
    const std::vector<TextRange> lines = lineRanges(text);
    result.lines.reserve(lines.size());
    for (const TextRange& line : lines) {
        if (cancelled && *cancelled) return result;
        const LineResultPointer& calculated =
            result.lines.emplace_back(calculateLine(line.in(text), document, config_.debug));
        if (jsRunner_ && !calculated->extensionsLog().empty()) result.logging.push_back(calculated);
        carryForward(*calculated, document);
    }
    if (const Value* total = document.get<Value>(context_keys::grandTotal)) {
        document.set(context_keys::grandTotalFormatted,
                     std::make_shared<const FormattedValue>(format(*total, snapshot)));
    }
    return result;
}

void Calculator::carryForward(const LineResult& line, Context& document) const {
    const Value& value = line.value();
    document.set(context_keys::previousResult, value);
    const auto* results = document.get<ValuesList>(context_keys::previousResults);
    document.set(context_keys::previousResults, (results ? *results : ValuesList()).appending(value));
    if (value.isEmpty() || value.isNotANumber() || line.repeatsLines()) return;
    std::optional<Value> total = value;
    if (const Value* before = document.get<Value>(context_keys::grandTotal))
        total = operationCalculator_.apply(u"+", *before, value, document);
    if (total && !total->isNotANumber()) {
        document.set(context_keys::grandTotal, *total);
    } else {
        document.set(context_keys::grandTotal, std::nullopt);
        document.set(context_keys::grandTotalPartial, true);
    }
}

Calculator::EvaluatedLine Calculator::evaluateLine(std::u16string_view line, Context& context, bool debug) {
    EvaluatedLine result;
    const auto [calculated, rest] = withinBounds(line);
    if (!calculated.empty()) {
        result.written = extractElements(std::u16string(calculated), context, debug);
        if (debug) trace(u"Elements extraction: " + result.written.shortDescription());
        remarkOnText(result.written, unitManager_, context_, context);
        tooDeep_ = false;
        result.elements = evaluate(result.written, context, 0, debug);
        remarkOnUnused(result.written, result.elements, percentageWords_, context);
        // Operators around the error value may have made a number of it.
        if (tooDeep_) result.elements = reducedTo(errorValue(), result.elements);
    }
    if (!rest.compoundString().empty()) result.elements.append(makeElement({}, rest));
    if (line.size() > longestLine && rest.runs()[0].type == RunType::none)
        remarksOf(context).reason(ReasonCode::tooLong);
    return result;
}

LineResultPointer Calculator::calculateLine(std::u16string_view text, Context& document, bool debug) {
    if (LineResultPointer known = cacheManager_.lookup(text, document)) {
        ContextParts::addUpdatesOf(document, *known);
        // The line saw an equal list, perhaps another one: with that one in place, later comparisons end at once.
        for (const LineResult::EntryPointer& seen : known->seen())
            if (seen->key() == context_keys::previousResults) document.set(seen->key(), seen->value());
        // Its look-up may have been dropped in favour of a newer calculation.
        if (online_ && online_->geoNames()) lookUpPlaces(*known);
        return known;
    }
    const std::u16string line = numerals_.folded(text);
    const std::size_t logged = jsRunner_ ? jsRunner_->log().size() : 0;
    if (debug) trace(u"=== Debug for '" + line + u"' ===");
    Context context = ContextParts::layer(document);
    const auto [written, elements] = evaluateLine(line, context, debug);
    const Value value = elements.empty() ? Value() : elements[0].value;
    const FormattedValue formatted = format(value, context);
    const std::u16string extensionsLog = jsRunner_ ? jsRunner_->log().substr(logged) : u"";
    const LineRemarks remarks = spokenRemarks(
        context, written, formatted.regular.has_value(),
        {localizer_, mistakeNotes_, [&](std::u16string_view unit) { return decimalUnitValueFormatter_.unitName(unit); },
         [&](const Value& other) { return format(other, context).regular.value_or(u""); },
         [&](std::u16string_view word) {
             if (!unitSpelling_) unitSpelling_.emplace(unitManager_);
             return unitSpelling_->isNearly(word);
         }});
    LineResultPointer result =
        LineResult::make(value, ContextParts::updates(context), ContextParts::dependencies(context),
                         withText(elements.attributedText(), text), formatted, context.quickTypeData(), extensionsLog,
                         remarks, onlyRepeatsLines(written, functionManager_));
    context = Context();  // no longer shares the document's data, which can then be changed in place
    ContextParts::addUpdatesOf(document, *result);
    ContextParts::addDependenciesOf(document, result);
    if (!jsRunner_ || !jsRunner_->takeCutShort()) cacheManager_.add(result);
    if (online_ && online_->geoNames()) lookUpPlaces(*result);
    if (debug) trace(u"---");
    return result;
}

std::optional<std::u16string> Calculator::reading(std::u16string_view text, Context& document, std::size_t number) {
    const std::vector<TextRange> lines = lineRanges(text);
    if (number >= lines.size()) return std::nullopt;
    calculate(text.substr(0, lines[number].location), document);
    Context context = ContextParts::layer(document);
    remarksOf(context).keepSteps();
    const std::u16string line = numerals_.folded(lines[number].in(text));
    const ElementList elements = evaluateLine(line, context, false).elements;
    if (elements.empty() || !format(elements[0].value, context).regular) return std::nullopt;
    Context writing = ContextParts::layer(document);
    writing.setPrecision(DecimalNumber::maxDigits);
    return lineReading(line, remarksOf(context).steps(), elements[0].value,
                       [&](const Value& value) { return format(value, writing).regular.value_or(u""); });
}

ElementList Calculator::extractElements(const std::u16string& text, Context& context, bool debug) const {
    std::vector<Extraction> extractions;
    constexpr std::size_t usual = 16;
    extractions.reserve(usual);
    for (std::size_t i = 0; i < extractors_.size(); ++i) {
        const Extractor& extractor = *extractors_[i];
        const std::size_t before = extractions.size();
        extractor.extract(text, context, extractions);
        if (debug && extractions.size() > before) {
            trace(u"Extractions for " + std::u16string(extractor.name()) + u": " + descriptions(extractions, before));
        }
    }
    if (debug) trace(u"Replacements: " + descriptions(extractions, 0));
    return StringExtractor::elements(text, extractions);
}

ElementList Calculator::evaluate(const ElementList& elements, Context& context, std::size_t startEvaluatorIndex,
                                 bool debug) {
    assert(startEvaluatorIndex <= evaluators_.size());
    if (evaluationDepth_ >= deepestEvaluation) {
        tooDeep_ = true;
        remarksOf(context).reason(ReasonCode::tooDeep);
        return reducedTo(errorValue(), elements);
    }
    const Deeper deeper(evaluationDepth_);
    std::optional<ElementList> latest;
    for (std::size_t i = startEvaluatorIndex; i < evaluators_.size(); ++i) {
        const Evaluator& evaluator = *evaluators_[i];
        const ElementList& current = latest ? *latest : elements;
        if (evaluator.concerns(current)) {
            if (auto reduced = evaluator.evaluate(current, context, {*this, i, debug})) {
                latest = std::move(reduced);
                latest->setLocation(elements.location());
            }
        }
        if (debug)
            trace(u"Evaluate " + std::u16string(evaluator.name()) + u": " +
                  (latest ? *latest : elements).shortDescription());
    }
    return latest ? *std::move(latest) : elements;
}

FormattedValue Calculator::format(const Value& value, Context& context) const {
    for (std::size_t i = 0; i < formatters_.size(); ++i) {
        if (auto formatted = formatters_[i]->format(value, context)) return *std::move(formatted);
    }
    return {};
}

FormattedValue Calculator::formatted(const Value& value, const Context& document) const {
    const std::lock_guard lock(context_.mutex());
    Context context = document.copyContext();
    ContextParts::add(context, ContextParts::data(context_));
    return format(value, context);
}

std::shared_ptr<QuickTypeEngine> Calculator::buildQuickTypeEngine() {
    const std::lock_guard lock(context_.mutex());
    Measurer measurer("QuickTypeEngine", environment_.log);
    std::shared_ptr<QuickTypeEngine> engine;
    measurer.measure("QuickTypeEngine", [&] { engine = quickTypeEngine(quickTypeCollector_); });
    return engine;
}

void Calculator::setCachesEnabled(bool enabled) {
    cacheManager_.setEnabled(enabled);
    stringRangeDetector_.setCacheEnabled(enabled);
}

}  // namespace vemo
