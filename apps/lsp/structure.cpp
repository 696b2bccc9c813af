// SPDX-License-Identifier: MIT
// Headers, labels and definitions: an outline, and what folds under headers.
#include <algorithm>

#include "lsp/features.h"
#include "lsp/server.h"

namespace vemo::lsp {

namespace {

// The kinds of symbols of the protocol.
constexpr int namespaceSymbol = 3;
constexpr int propertySymbol = 7;
constexpr int variableSymbol = 13;

struct Entry {
    int kind = 0;
    std::u16string name;
    std::size_t start = 0, length = 0;  // of the name
    std::size_t level = 0;              // of a header, from 1
};

Entry entryOf(const OpenDocument& document, std::size_t line) {
    Entry entry;
    if (const std::u16string& defined = document.views[line].defines; !defined.empty()) {
        const auto use = document.line(line).names().front();
        return {variableSymbol, defined, use.start, use.length, 0};
    }
    // Only a line with the sign of an entry is looked into.
    const std::u16string_view written = document.buffer.line(line);
    if (written.find_first_of(u"#:") == written.npos && written.find(u'\uff1a') == written.npos) return entry;
    document.line(line).attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t location) {
        if (entry.kind != 0 || (type != RunType::header && type != RunType::label)) return;
        entry = {type == RunType::header ? namespaceSymbol : propertySymbol, std::u16string(text), location,
                 text.size(), 0};
    });
    if (entry.kind == namespaceSymbol) {
        const std::size_t sign = entry.name.find(u'#');
        std::size_t first = sign == entry.name.npos ? 0 : sign;
        while (first < entry.name.size() && entry.name[first] == u'#') {
            ++first;
            ++entry.level;
        }
        entry.level = std::max<std::size_t>(entry.level, 1);
        entry.name.erase(0, first);
    } else {
        while (!entry.name.empty() &&
               (entry.name.back() == u':' || entry.name.back() == u'\uff1a' || entry.name.back() == u' '))
            entry.name.pop_back();
    }
    entry.name.erase(0, std::min(entry.name.find_first_not_of(u" \t"), entry.name.size()));
    return entry;
}

class Outline {
public:
    Outline(const Server& server, const OpenDocument& document) : server_(server), document_(document) {}

    Json take() {
        while (line_ < document_.lineCount()) {
            const Entry entry = entryOf(document_, line_);
            if (entry.level > 0) {
                add(top_, header(entry));
            } else {
                if (entry.kind != 0) add(top_, symbol(entry, line_));
                ++line_;
            }
        }
        return std::move(top_);
    }

private:
    static constexpr std::size_t deepest = 6;

    static void add(Json& list, Json symbol) { list.push_back(std::move(symbol)); }

    // A header with what is under it, up to one of its level.
    Json header(const Entry& entry) {
        const std::size_t first = line_++;
        Json children = Json::array();
        while (line_ < document_.lineCount()) {
            const Entry next = entryOf(document_, line_);
            if (next.level > 0) {
                if (next.level <= entry.level || entry.level >= deepest) break;
                add(children, header(next));
            } else {
                if (next.kind != 0) add(children, symbol(next, line_));
                ++line_;
            }
        }
        Json result = symbol(entry, first);
        const std::size_t last = line_ - 1;
        result["range"]["end"] = server_.range(document_, last, document_.buffer.line(last).size(), 0)["start"];
        result["children"] = std::move(children);
        return result;
    }

    Json symbol(const Entry& entry, std::size_t line) const {
        Json result{{"name", entry.name.empty() ? "#" : utf8(entry.name)},
                    {"kind", entry.kind},
                    {"range", server_.range(document_, line, 0, document_.buffer.line(line).size())},
                    {"selectionRange", server_.range(document_, line, entry.start, entry.length)}};
        if (const std::string& hint = document_.views[line].hint; !hint.empty()) result["detail"] = Json::parse(hint);
        return result;
    }

    const Server& server_;
    const OpenDocument& document_;
    std::size_t line_ = 0;
    Json top_ = Json::array();
};

}  // namespace

Reply documentSymbols(Server& server, OpenDocument& document, const Json&) {
    return Outline(server, document).take();
}

Reply foldingRanges(Server&, OpenDocument& document, const Json&) {
    struct Open {
        std::size_t line, level;
    };
    std::vector<Open> open;
    Json ranges = Json::array();
    const auto close = [&](std::size_t level, std::size_t end) {
        // Empty lines before the next header stay to be seen.
        while (end > 0 && document.buffer.line(end - 1).empty()) --end;
        for (; !open.empty() && open.back().level >= level; open.pop_back())
            if (end > open.back().line + 1)
                ranges.push_back({{"startLine", open.back().line}, {"endLine", end - 1}, {"kind", "region"}});
    };
    for (std::size_t i = 0; i < document.lineCount(); ++i) {
        const std::size_t level = entryOf(document, i).level;
        if (level == 0) continue;
        close(level, i);
        open.push_back({i, level});
    }
    close(0, document.lineCount());
    return ranges;
}

}  // namespace vemo::lsp
