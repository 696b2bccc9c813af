// SPDX-License-Identifier: MIT
#include <algorithm>

#include "lsp/features.h"
#include "lsp/server.h"

namespace vemo::lsp {

namespace {

// The legend, by the protocol's own names.
enum Type : std::uint32_t {
    variable,
    number,
    comment,
    type,
    namespaceType,
    property,
    function,
    keyword,
    operatorType,
    none
};
constexpr const char* typeNames[] = {"variable", "number",   "comment", "type",    "namespace",
                                     "property", "function", "keyword", "operator"};
constexpr std::u16string_view signs = u"=+-*/^&|<>!:";  // an operator of signs is no word
constexpr const char* modifierNames[] = {"definition"};
constexpr std::uint32_t definitionModifier = 1;

Type typeOf(RunType run) {
    switch (run) {
        case RunType::variable:
            return variable;
        case RunType::number:
            return number;
        case RunType::comment:
            return comment;
        case RunType::unit:
            return type;
        case RunType::header:
            return namespaceType;
        case RunType::label:
            return property;
        case RunType::function:
            return function;
        case RunType::operatorWord:
            return keyword;
        case RunType::operatorSymbol:
            return operatorType;
        case RunType::parenthesis:
        case RunType::none:
            return none;
    }
    return none;
}

// Five numbers a token: lines and columns from the one before, length, type, modifiers.
std::vector<std::uint32_t> tokensOf(const Server& server, const OpenDocument& document, std::size_t first,
                                    std::size_t last) {
    const Encoding encoding = server.client().encoding;
    std::vector<std::uint32_t> data;
    std::size_t lineBefore = 0, columnBefore = 0;
    for (std::size_t i = first; i < document.lineCount() && i <= last; ++i) {
        const std::size_t definition = document.views[i].defines.size();
        std::size_t definitionStart = definition > 0 ? document.line(i).names().front().start : 0;
        document.line(i).attributedText().enumerate([&](std::u16string_view text, RunType run, std::size_t location) {
            Type kind = typeOf(run);
            if (kind == none) return;
            // Blanks around a name belong to its run.
            while (text.starts_with(u' ')) {
                text.remove_prefix(1);
                ++location;
            }
            while (text.ends_with(u' ')) text.remove_suffix(1);
            if (text.empty()) return;
            if (kind == keyword && signs.find(text.front()) != signs.npos) kind = operatorType;
            const bool defines = kind == variable && location >= definitionStart &&
                                 location + text.size() <= definitionStart + definition;
            const std::size_t column = document.buffer.characterOf(i, location, encoding);
            if (i != lineBefore) columnBefore = 0;
            for (const std::size_t part : {i - lineBefore, column - columnBefore,
                                           lengthIn(encoding, document.buffer.line(i).substr(location, text.size())),
                                           std::size_t{kind}, std::size_t{defines ? definitionModifier : 0}})
                data.push_back(static_cast<std::uint32_t>(part));
            lineBefore = i;
            columnBefore = column;
        });
    }
    return data;
}

void append(std::string& text, const std::uint32_t* begin, const std::uint32_t* end) {
    text += '[';
    for (const std::uint32_t* each = begin; each != end; ++each) {
        if (each != begin) text += ',';
        text += std::to_string(*each);
    }
    text += ']';
}

Reply whole(OpenDocument::Tokens& known, std::vector<std::uint32_t> data) {
    known.data = std::move(data);
    std::string text = R"({"resultId":")" + std::to_string(++known.id) + R"(","data":)";
    append(text, known.data.data(), known.data.data() + known.data.size());
    return Reply::ofText(text += '}');
}

constexpr std::size_t allLines = static_cast<std::size_t>(-1);

}  // namespace

Json semanticTokensLegend() {
    return {{"tokenTypes", typeNames}, {"tokenModifiers", modifierNames}};
}

Reply semanticTokens(Server& server, OpenDocument& document, const Json&) {
    return whole(document.tokens, tokensOf(server, document, 0, allLines));
}

// Tells the one stretch that differs; what stands before and after it is left alone.
Reply semanticTokensDelta(Server& server, OpenDocument& document, const Json& params) {
    OpenDocument::Tokens& known = document.tokens;
    std::vector<std::uint32_t> data = tokensOf(server, document, 0, allLines);
    if (member(params, "previousResultId") != std::to_string(known.id)) return whole(known, std::move(data));
    const auto& old = known.data;
    const std::size_t most = std::min(old.size(), data.size());
    std::size_t head = 0, tail = 0;
    while (head < most && old[head] == data[head]) ++head;
    while (tail < most - head && old[old.size() - tail - 1] == data[data.size() - tail - 1]) ++tail;
    std::string text = R"({"resultId":")" + std::to_string(++known.id) + R"(","edits":[)";
    if (head < old.size() || head < data.size()) {
        text += R"({"start":)" + std::to_string(head) + R"(,"deleteCount":)" +
                std::to_string(old.size() - tail - head) + R"(,"data":)";
        append(text, data.data() + head, data.data() + (data.size() - tail));
        text += '}';
    }
    known.data = std::move(data);
    return Reply::ofText(text += "]}");
}

Reply semanticTokensRange(Server& server, OpenDocument& document, const Json& params) {
    const Json& range = params.at("range");
    const auto data =
        tokensOf(server, document, server.position(range.at("start")).line, server.position(range.at("end")).line);
    std::string text = R"({"data":)";
    append(text, data.data(), data.data() + data.size());
    return Reply::ofText(text += '}');
}

}  // namespace vemo::lsp
