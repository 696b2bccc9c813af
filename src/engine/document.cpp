// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "engine/engine_core.h"
#include "engine/line_changes.h"
#include "engine/line_maker.h"
#include "vemo/documents.h"

namespace vemo {

struct VemoDocument::State {
    std::weak_ptr<EngineCore> core;
    std::shared_ptr<EngineClient> client;
    std::u16string text;
    std::int64_t version;
    Context context;
    UntouchedEnds requested;  // between the latest answer and the request under way
    UntouchedEnds since;      // from there to the text as it is
    std::shared_ptr<const Answer> latest;
};

VemoDocument::VemoDocument(VemoEngine& engine, std::u16string_view text, std::int64_t version, const Context& context)
    : state_(std::make_shared<State>(State{engine.state_->core,
                                           engine.state_->core->newClient(),
                                           std::u16string(text),
                                           version,
                                           context.copyContext(),
                                           {},
                                           {},
                                           nullptr})) {}

VemoDocument::~VemoDocument() {
    if (state_) close();
}

VemoDocument::VemoDocument(VemoDocument&&) noexcept = default;

VemoDocument& VemoDocument::operator=(VemoDocument&& other) noexcept {
    if (this != &other && state_) close();
    state_ = std::move(other.state_);
    return *this;
}

void VemoDocument::edit(std::size_t start, std::size_t length, std::u16string_view replacement, std::int64_t version) {
    std::u16string& text = state_->text;
    start = std::min(start, text.size());
    length = std::min(length, text.size() - start);
    state_->since.touch(start, text.size() - start - length);
    text.replace(start, length, replacement);
    state_->version = version;
}

void VemoDocument::setContext(const Context& context) {
    state_->context = context.copyContext();
}

void VemoDocument::calculate(Callback callback) {
    const auto core = state_->core.lock();
    if (!core) return;
    state_->requested.touch(state_->since.head, state_->since.tail);
    state_->since = {};
    const auto text = std::make_shared<const std::u16string>(state_->text);
    core->calculate(state_->client, text, state_->context,
                    [weak = std::weak_ptr(state_), text, version = state_->version, callback = std::move(callback)](
                        Calculator::MultilineResult calculated, std::shared_ptr<Context> context) {
                        const auto state = weak.lock();
                        if (!state) return;
                        auto answer = std::make_shared<Answer>();
                        answer->version = version;
                        answer->result = resultOf(std::move(calculated), std::move(context));
                        static const VemoEngine::Result none;
                        answer->changes = lineChanges(state->latest ? state->latest->result.lines : none.lines,
                                                      answer->result.lines, *text, state->requested);
                        state->requested = {};
                        state->latest = std::move(answer);
                        if (callback) callback(std::shared_ptr<const Answer>(state->latest));
                    });
}

bool VemoDocument::isCalculating() const {
    return state_->client->request != nullptr;
}

void VemoDocument::close() {
    state_->client->drop();
}

const std::u16string& VemoDocument::text() const {
    return state_->text;
}

std::int64_t VemoDocument::version() const {
    return state_->version;
}

const std::shared_ptr<const VemoDocument::Answer>& VemoDocument::latest() const {
    return state_->latest;
}

std::optional<std::u16string> VemoDocument::readingOf(std::size_t line) const {
    const auto core = state_->core.lock();
    return core ? core->readingOf(line, state_->text, state_->context) : std::nullopt;
}

}  // namespace vemo
