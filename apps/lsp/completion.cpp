// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <set>

#include "lsp/features.h"
#include "lsp/server.h"
#include "session/word_starts.h"

namespace vemo::lsp {

namespace {

constexpr std::size_t mostItems = 60;

// The item kinds of the protocol.
int itemKind(CompletionKind kind) {
    switch (kind) {
        case CompletionKind::operatorWord:
            return 24;
        case CompletionKind::unit:
            return 11;
        case CompletionKind::currency:
            return 12;  // a value
        case CompletionKind::function:
            return 3;
        case CompletionKind::variable:
            return 6;
        case CompletionKind::place:
            return 21;  // a constant
        case CompletionKind::script:
            return 9;  // a module
    }
    return 1;
}

// The type of what stands before a place of a line: nothing is completed in comments and headers.
RunType runBefore(const VemoEngine::Result::Line& line, std::size_t unit) {
    RunType found = RunType::none;
    line.attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t location) {
        if (location < unit && unit <= location + text.size()) found = type;
    });
    return found;
}

class Items {
public:
    Items(const Server& server, const OpenDocument& document, std::size_t line, std::size_t end)
        : server_(server), document_(document), line_(line), end_(end) {}

    bool full() const { return list_.size() >= mostItems; }
    bool empty() const { return list_.empty(); }
    void add(const Completion& completion, std::size_t start, std::string_view detail = {}) {
        if (full() || !known_.insert(completion.text).second) return;
        char order[8];
        std::snprintf(order, sizeof order, "%04u", static_cast<unsigned>(list_.size()));
        const std::string text = utf8(completion.text);
        list_.push_back(
            {{"label", text},
             {"kind", itemKind(completion.kind)},
             {"detail", detail.empty() ? utf8(completionKindName(completion.kind)) : std::string(detail)},
             {"sortText", order},
             {"textEdit", {{"range", server_.range(document_, line_, start, end_ - start)}, {"newText", text}}}});
    }
    Json take() { return {{"isIncomplete", full()}, {"items", std::move(list_)}}; }

private:
    const Server& server_;
    const OpenDocument& document_;
    std::size_t line_, end_;
    std::set<std::u16string> known_;
    Json list_ = Json::array();
};

// The units into which the amount before converts, where the last word before the place is one of a conversion.
std::vector<Completion> conversionsBefore(Server& server, const OpenDocument& document, std::size_t line,
                                          std::size_t start) {
    std::u16string_view before = document.buffer.line(line).substr(0, start);
    while (before.ends_with(u' ')) before.remove_suffix(1);
    const std::size_t blank = before.rfind(u' ');
    if (blank == before.npos) return {};
    const auto words = server.completions().startingWith(before.substr(blank + 1), 1);
    if (words.empty() || words.front().kind != CompletionKind::operatorWord) return {};
    Context context = server.context();
    const std::size_t begin = document.buffer.lineStart(line);
    const std::u16string text = engineText(document.buffer.text().substr(0, begin + blank));
    const auto result = server.engine().calculateSync(text, context);
    if (!result || result->lines.size() <= line) return {};
    const Value value = result->lines[line].value();
    const auto unit = value.string(Attribute::unit);
    return unit ? server.engine().conversionsOf(*unit) : std::vector<Completion>();
}

}  // namespace

Reply completion(Server& server, OpenDocument& document, const Json& params) {
    const Position position = server.position(params.at("position"));
    const std::size_t end = server.unit(document, position);
    const std::u16string_view written = document.buffer.line(position.line).substr(0, end);
    Items items(server, document, position.line, end);
    if (position.line < document.lineCount()) {
        const RunType type = runBefore(document.line(position.line), end);
        if (type == RunType::comment || type == RunType::header) return items.take();
    }
    std::vector<std::size_t> starts = session::wordStarts(written);
    const bool afterBlank = starts.empty() && !written.empty();
    if (afterBlank) starts.push_back(end);
    for (const std::size_t start : starts) {
        const std::u16string_view typed = written.substr(start);
        for (const Completion& unit : conversionsBefore(server, document, position.line, start))
            if (session::beginsWith(unit.text, typed)) items.add(unit, start);
        if (typed.empty()) continue;
        for (std::size_t line = 0; line < document.views.size(); ++line) {
            const LineView& view = document.views[line];
            if (line == position.line || !session::beginsWith(view.defines, typed)) continue;
            items.add({view.defines, CompletionKind::variable, 0}, start,
                      view.hint.empty() ? "" : Json::parse(view.hint).get<std::string>());
        }
        for (const Completion& each : server.completions().startingWith(typed, mostItems)) items.add(each, start);
        if (!items.empty()) break;  // the longest stretch of words that begins something is what is meant
    }
    return items.take();
}

}  // namespace vemo::lsp
