// SPDX-License-Identifier: MIT
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "c/engine.h"
#include "c/failure.h"
#include "c/texts.h"
#include "session/word_starts.h"

struct vemo_completions {
    struct Entry {
        std::string text, kind;
    };
    std::size_t start = 0;
    std::vector<Entry> entries;
};

namespace {

using namespace vemo;
using c::Refusal;

// True where the last line is a comment or a header at its end: nothing is completed there.
bool endsInProse(const VemoEngine::Result::Line& line) {
    RunType last = RunType::none;
    line.attributedText().enumerate([&](std::u16string_view, RunType type, std::size_t) { last = type; });
    return last == RunType::comment || last == RunType::header;
}

class Answer {
public:
    explicit Answer(std::size_t most) : most_(most) {}

    void add(std::u16string_view text, CompletionKind kind) {
        if (entries_.size() >= most_ || !known_.emplace(text).second) return;
        entries_.push_back({utf8(text), utf8(completionKindName(kind))});
    }
    bool empty() const { return entries_.empty(); }
    std::vector<vemo_completions::Entry> take() { return std::move(entries_); }

private:
    std::size_t most_;
    std::set<std::u16string, std::less<>> known_;
    std::vector<vemo_completions::Entry> entries_;
};

}  // namespace

vemo_completions* vemo_engine_complete(vemo_engine* engine, const char* text, size_t length, size_t position,
                                       size_t most) {
    return c::guarded<vemo_completions*>(nullptr, [&] {
        c::Host& host = *c::given(engine, "the engine").host;
        const std::string_view all = c::givenText(text, length, "the text");
        if (position > all.size()) throw Refusal{VEMO_BAD_ARGUMENT, "the position is after the end of the text"};
        // A position in the middle of a character is none.
        const std::u16string before = utf16(c::givenText(text, position, "the text before the position"));
        const auto whole = host.calculate(utf16(all));
        const auto written = host.calculate(before);
        const std::size_t begin = before.find_last_of(u"\n\r\u0085\u2028\u2029") + 1;
        const std::u16string_view line = std::u16string_view(before).substr(begin);
        auto completions = std::make_unique<vemo_completions>();
        completions->start = position;
        if (line.empty() || (!written.lines.empty() && endsInProse(written.lines.back()))) return completions.release();
        Answer answer(most);
        for (const std::size_t start : session::wordStarts(line)) {
            const std::u16string_view typed = line.substr(start);
            for (const auto& each : whole.lines)
                for (const auto& name : each.names())
                    if (name.defines && name.name != typed && session::beginsWith(name.name, typed))
                        answer.add(name.name, CompletionKind::variable);
            const auto found = host.ask<std::vector<Completion>>(
                [&](VemoEngine& asked) { return host.completions(asked).startingWith(typed, most); });
            for (const Completion& each : found) answer.add(each.text, each.kind);
            if (answer.empty()) continue;
            completions->start = position - utf8(typed).size();
            completions->entries = answer.take();
            break;  // the longest stretch of words that begins something is what is meant
        }
        return completions.release();
    });
}

void vemo_completions_destroy(vemo_completions* completions) {
    c::guardedStatus([&] { delete completions; });
}

size_t vemo_completions_count(const vemo_completions* completions) {
    return c::guarded<std::size_t>(0, [&] { return c::given(completions, "completions").entries.size(); });
}

size_t vemo_completions_start(const vemo_completions* completions) {
    return c::guarded<std::size_t>(0, [&] { return c::given(completions, "completions").start; });
}

namespace {

const vemo_completions::Entry& entryOf(const vemo_completions* completions, std::size_t index) {
    const auto& entries = c::given(completions, "completions").entries;
    c::checkIndex(index, entries.size(), "completion");
    return entries[index];
}

}  // namespace

vemo_text vemo_completions_text(const vemo_completions* completions, size_t index) {
    return c::guarded(vemo_text{}, [&] { return c::handed(entryOf(completions, index).text); });
}

vemo_text vemo_completions_kind(const vemo_completions* completions, size_t index) {
    return c::guarded(vemo_text{}, [&] { return c::handed(entryOf(completions, index).kind); });
}
