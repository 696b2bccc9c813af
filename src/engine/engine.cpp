// SPDX-License-Identifier: MIT
#include "vemo/engine.h"

#include "base/text.h"
#include "engine/engine_core.h"
#include "scanning/words/localizer.h"

namespace vemo {

VemoEngine::VemoEngine(Environment environment, std::shared_ptr<Executor> main)
    : state_(std::make_unique<State>(State{std::make_shared<EngineCore>(std::move(environment), main)})) {}

VemoEngine::~VemoEngine() {
    state_->core->close();
}

void VemoEngine::setDelegate(std::weak_ptr<VemoEngineDelegate> delegate) {
    state_->core->setDelegate(std::move(delegate));
}

void VemoEngine::buildVemoWorker(const Config& config, WorkerThread thread) {
    state_->core->buildWorker(config, thread);
}

void VemoEngine::calculate(std::u16string_view text, const Context& context, Callback callback) {
    state_->core->calculate(text, context, std::move(callback));
}

std::optional<VemoEngine::Result> VemoEngine::calculateSync(std::u16string_view text, Context& context) {
    return state_->core->calculateSync(text, context);
}

std::optional<std::u16string> VemoEngine::readingOf(std::size_t line, std::u16string_view text,
                                                    const Context& context) const {
    return state_->core->readingOf(line, text, context);
}

AttributedText VemoEngine::Result::Line::attributedText() const {
    return result_->attributedText();
}
FormattedValue VemoEngine::Result::Line::formattedResult() const {
    return result_->formattedValue();
}
QuickTypeData VemoEngine::Result::Line::quickTypeData() const {
    return result_->quickTypeData();
}
std::vector<Note> VemoEngine::Result::Line::notes() const {
    return result_->remarks().notes;
}
std::optional<Reason> VemoEngine::Result::Line::reason() const {
    return result_->remarks().reason;
}
Value VemoEngine::Result::Line::value() const {
    return result_->value();
}
std::u16string VemoEngine::Result::Line::extensionsLog() const {
    return std::u16string(result_->extensionsLog());
}

void VemoEngine::buildQuickTypeEngine(WorkerThread thread,
                                      std::function<void(std::shared_ptr<QuickTypeEngine>)> callback) {
    state_->core->build(
        thread, [](Calculator& calculator) { return calculator.buildQuickTypeEngine(); }, std::move(callback));
}

void VemoEngine::buildCompletions(WorkerThread thread,
                                  std::function<void(std::shared_ptr<const Completions>)> callback) {
    state_->core->build(
        thread, [](Calculator& calculator) { return calculator.completions(); }, std::move(callback));
}

std::vector<Completion> VemoEngine::conversionsOf(std::u16string_view unit) const {
    const auto calculator = state_->core->calculator();
    return calculator ? calculator->conversionsOf(unit) : std::vector<Completion>();
}

std::u16string VemoEngine::welcomeSample(std::string_view language) {
    return Localizer(language).translationOrBase(u"sample.welcome", u"Samples");
}

std::optional<FormattedValue> VemoEngine::format(const Value& value, const Context& context) const {
    const auto calculator = state_->core->calculator();
    return calculator ? std::optional(calculator->formatted(value, context)) : std::nullopt;
}

VemoEngine::Pending VemoEngine::pending() const {
    const auto calculator = state_->core->calculator();
    return calculator ? calculator->pending() : Pending();
}

std::string VemoEngine::takeRates(RatesFile file, std::string_view json) {
    return state_->core->takeRates(file, json);
}

const std::string& VemoEngine::startUpLog() const {
    return state_->core->startUpLog();
}
const std::vector<Extension>& VemoEngine::extensions() const {
    return state_->core->extensions();
}

std::string_view VemoEngine::version() {
    return VEMO_VERSION;
}

std::u16string utf16(std::string_view utf8) {
    return toUtf16(utf8);
}
std::string utf8(std::u16string_view text) {
    return toUtf8(text);
}

}  // namespace vemo
