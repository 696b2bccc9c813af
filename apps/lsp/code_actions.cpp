// SPDX-License-Identifier: MIT
// Edits of one line that have to do with its result. What one makes is calculated before it is offered.
#include <algorithm>

#include "lsp/features.h"
#include "lsp/server.h"
#include "session/rows.h"

namespace vemo::lsp {

namespace {

constexpr std::size_t mostConversions = 8;

class LineActions {
public:
    LineActions(Server& server, const OpenDocument& document, std::size_t line, const Json& only)
        : server_(server), document_(document), line_(line), only_(only), context_(server.context()) {
        const std::u16string above = engineText(document.buffer.text().substr(0, document.buffer.lineStart(line)));
        server.engine().calculateSync(above, context_);
        written_ = engineText(document.buffer.line(line));
        findParts();
    }

    Json take() && {
        const session::Row row = session::rowOf(document_.answer->result, line_, {});
        if (row.result.empty()) return Json::array();
        convert();
        if (wants("refactor.rewrite") && !hasComment_)
            offer("Insert the result", "refactor.rewrite", end_, 0, " // " + row.result);
        if (wants("refactor.inline") && start_ < end_) {
            const std::string written = utf8(written_.substr(start_, end_ - start_));
            replace("Replace by the result", written, row.result);
            if (const std::string plain = session::plainResult(row); plain != row.result)
                replace("Replace by the plain number", written, plain);
        }
        return std::move(actions_);
    }

private:
    bool wants(std::string_view kind) const {
        if (!only_.is_array()) return true;
        return std::any_of(only_.begin(), only_.end(), [&](const Json& wanted) {
            return wanted.is_string() && kind.starts_with(wanted.get_ref<const std::string&>());
        });
    }

    // The part of the line between a label or the sign of an assignment and a comment.
    void findParts() {
        const auto names = document_.line(line_).names();
        const bool defines = !names.empty() && names.front().defines;
        std::size_t location = 0;
        end_ = written_.size();
        document_.line(line_).attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t at) {
            location = at + text.size();
            if (type == RunType::label) start_ = location;
            if (type == RunType::comment && at > 0) {
                hasComment_ = true;
                end_ = std::min(end_, at);
            }
            if (defines && !assigned_ && text == u"=") {
                start_ = location;
                assigned_ = true;
            }
        });
        if (defines && !assigned_) start_ = end_;  // "+=" and the like
        while (end_ > 0 && written_[end_ - 1] == u' ') --end_;
        while (start_ < end_ && written_[start_] == u' ') ++start_;
    }

    std::optional<VemoEngine::Result::Line> calculated(const std::u16string& line) {
        Context context = context_.copyContext();
        const auto result = server_.engine().calculateSync(line, context);
        if (!result || result->lines.size() != 1) return std::nullopt;
        return result->lines[0];
    }

    void offer(const std::string& title, std::string_view kind, std::size_t start, std::size_t length,
               const std::string& text) {
        const Json edit{{"range", server_.range(document_, line_, start, length)}, {"newText", text}};
        actions_.push_back(
            {{"title", title}, {"kind", kind}, {"edit", {{"changes", {{document_.uri, Json::array({edit})}}}}}});
    }

    // The words that ask for a conversion, the usual one first.
    std::vector<std::u16string> conversionWords() {
        const auto all = server_.completions().startingWith(u"", 40);
        std::vector<std::u16string> words;
        int best = 0;
        for (const Completion& each : all) {
            if (each.kind != CompletionKind::operatorWord || each.weight < best) continue;
            best = each.weight;
            words.push_back(each.text);
        }
        std::stable_partition(words.begin(), words.end(), [](const std::u16string& word) { return word == u"in"; });
        return words;
    }

    // Where the conversion that the line ends with begins, with the blanks before it; the end without one.
    std::size_t conversionStart(const std::vector<std::u16string>& words) const {
        std::optional<std::size_t> found;
        document_.line(line_).attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t at) {
            if (at >= end_) return;
            if (type == RunType::operatorWord && std::find(words.begin(), words.end(), text) != words.end())
                found = at;
            else if (type != RunType::unit && text.find_first_not_of(u' ') != text.npos)
                found.reset();
        });
        std::size_t start = found.value_or(end_);
        while (start > start_ && written_[start - 1] == u' ') --start;
        return start;
    }

    void convert() {
        const Value value = document_.line(line_).value();
        const auto unit = value.string(Attribute::unit);
        if (!wants("refactor.rewrite") || !unit || !value.has(Attribute::decimal)) return;
        std::vector<std::u16string> words = conversionWords();
        const std::size_t start = conversionStart(words);
        std::size_t offered = 0;
        for (const Completion& target : server_.engine().conversionsOf(*unit)) {
            if (offered == mostConversions || target.weight == 0) break;
            for (const std::u16string& word : words) {
                const std::u16string addition = u" " + word + u" " + target.text;
                std::u16string line = written_;
                const auto result = calculated(line.replace(start, end_ - start, addition));
                const auto text = result ? result->formattedResult().regular : std::nullopt;
                if (!text || result->reason() || result->value().string(Attribute::unit) == unit) continue;
                offer("Convert to " + utf8(target.text) + ": " + utf8(*text), "refactor.rewrite", start, end_ - start,
                      utf8(addition));
                ++offered;
                words = {word};
                break;
            }
        }
    }

    // Offered only where the line gives the same result with it.
    void replace(const std::string& title, const std::string& written, const std::string& text) {
        if (written == text) return;
        std::u16string line = written_;
        const auto result = calculated(line.replace(start_, end_ - start_, utf16(text)));
        const auto before = document_.line(line_).formattedResult().regular;
        if (!result || result->formattedResult().regular != before) return;
        offer(title, "refactor.inline", start_, end_ - start_, text);
    }

    Server& server_;
    const OpenDocument& document_;
    std::size_t line_;
    const Json& only_;
    Context context_;  // with what the lines above define
    std::u16string written_;
    std::size_t start_ = 0, end_ = 0;
    bool hasComment_ = false, assigned_ = false;
    Json actions_ = Json::array();
};

}  // namespace

Reply codeActions(Server& server, OpenDocument& document, const Json& params) {
    const std::size_t line = server.position(params.at("range").at("start")).line;
    if (line >= document.lineCount() || document.views[line].hint.empty()) return Json::array();
    return LineActions(server, document, line, member(member(params, "context"), "only")).take();
}

}  // namespace vemo::lsp
