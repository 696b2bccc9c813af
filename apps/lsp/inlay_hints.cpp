// SPDX-License-Identifier: MIT
#include <algorithm>

#include "lsp/features.h"
#include "lsp/line_description.h"
#include "lsp/server.h"

namespace vemo::lsp {

// The text is put together here: a document may have ten thousand of them after every edit.
Reply inlayHints(Server& server, OpenDocument& document, const Json& params) {
    const Json& range = params.at("range");
    const Position start = server.position(range.at("start")), end = server.position(range.at("end"));
    const bool lazily = server.client().resolvesTooltips;
    constexpr std::size_t windowLines = 300;
    const bool told = !lazily && end.line - start.line <= windowLines;
    std::string text = "[";
    for (std::size_t line = start.line; line < document.views.size() && line <= end.line; ++line) {
        const std::string& label = document.views[line].hint;
        if (label.empty()) continue;
        const std::u16string_view written = document.buffer.line(line);
        const std::size_t character = lengthIn(server.client().encoding, written);
        if ((line == end.line && character > end.character) || (line == start.line && character < start.character))
            continue;
        if (text.size() > 1) text += ',';
        text += R"({"position":{"line":)";
        text += std::to_string(line);
        text += R"(,"character":)";
        text += std::to_string(character);
        text += R"(},"paddingLeft":true,"label":)";
        text += label;
        if (lazily) {
            text += R"(,"data":[)";
            text += std::to_string(document.number);
            text += ',';
            text += std::to_string(document.version);
            text += ',';
            text += std::to_string(line);
            text += ']';
        } else if (told) {
            text += R"(,"tooltip":)" + jsonString(shortDescription(document, line));
        }
        text += '}';
    }
    return Reply::ofText(text += ']');
}

Reply resolveInlayHint(Server& server, const Json& params) {
    Json hint = params;
    const Json& data = member(params, "data");
    if (!data.is_array() || data.size() != 3) return hint;
    const OpenDocument* document = server.numbered(data.at(0).get<std::uint64_t>());
    if (!document || !document->isCalculated() || document->version != data.at(1).get<std::int64_t>()) return hint;
    const auto line = data.at(2).get<std::size_t>();
    if (line < document->lineCount())
        hint["tooltip"] = {{"kind", "markdown"}, {"value", lineDescription(server, *document, line)}};
    return hint;
}

}  // namespace vemo::lsp
