// SPDX-License-Identifier: MIT
#include "vemo/engine.h"

#include "engine/calculator.h"
#include "platform/text.h"
#include "scripting/extensions.h"

namespace vemo {

struct VemoEngine::State {
    Environment environment;
    std::unique_ptr<Calculator> calculator;
    std::string startUpLog;
    std::vector<Extension> extensions;
};

VemoEngine::VemoEngine(Environment environment) : state_(std::make_unique<State>()) {
    state_->environment = std::move(environment);
}

VemoEngine::~VemoEngine() = default;

void VemoEngine::buildVemoWorker(const Config& config) {
    auto calculator = std::make_unique<Calculator>(config, state_->environment);
    {
        const std::lock_guard lock(calculator->context().mutex());
        calculator->initialize();
    }
    state_->extensions = calculator->loadExtensions(config.extensions);
    state_->startUpLog = vemo::startUpLog(state_->extensions);
    state_->calculator = std::move(calculator);
}

std::optional<VemoEngine::Result> VemoEngine::calculateSync(std::u16string_view text, Context& context) {
    if (!state_->calculator) return std::nullopt;
    const std::lock_guard lock(state_->calculator->context().mutex());
    Calculator::MultilineResult calculated = state_->calculator->calculate(text, context);
    Result result;
    result.context = &context;
    result.lines.reserve(calculated.lines.size());
    for (LineResultPointer& line : calculated.lines) result.lines.emplace_back(std::move(line));
    return result;
}

const std::string& VemoEngine::startUpLog() const { return state_->startUpLog; }
const std::vector<Extension>& VemoEngine::extensions() const { return state_->extensions; }

const AttributedText& VemoEngine::Result::Line::attributedText() const { return result_->formattedString; }
const FormattedValue& VemoEngine::Result::Line::formattedResult() const { return result_->formattedValue; }
const QuickTypeData& VemoEngine::Result::Line::quickTypeData() const { return result_->quickTypeData; }
const std::u16string& VemoEngine::Result::Line::extensionsLog() const { return result_->extensionsLog; }

std::string_view VemoEngine::version() { return VEMO_VERSION; }

std::u16string utf16(std::string_view utf8) { return toUtf16(utf8); }
std::string utf8(std::u16string_view text) { return toUtf8(text); }

}  // namespace vemo
