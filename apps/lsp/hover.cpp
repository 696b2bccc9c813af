// SPDX-License-Identifier: MIT
#include "lsp/features.h"
#include "lsp/line_description.h"
#include "lsp/server.h"

namespace vemo::lsp {

Reply hover(Server& server, OpenDocument& document, const Json& params) {
    const Position position = server.position(params.at("position"));
    if (position.line >= document.lineCount()) return Reply::null();
    std::string text = lineDescription(server, document, position.line);
    for (const LineRemark& remark : document.views[position.line].remarks) {
        if (!text.empty()) text += "\n\n";
        text += remark.message;
    }
    if (text.empty()) return Reply::null();
    return Json{{"contents", {{"kind", "markdown"}, {"value", text}}},
                {"range", server.range(document, position.line, 0, document.buffer.line(position.line).size())}};
}

}  // namespace vemo::lsp
