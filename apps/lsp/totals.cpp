// SPDX-License-Identifier: MIT
#include "lsp/features.h"
#include "lsp/server.h"
#include "session/rows.h"

namespace vemo::lsp {

// The grand total above the first line, where it is always found.
Reply codeLenses(Server& server, OpenDocument& document, const Json&) {
    const auto total = session::totalOf(document.answer->result, false);
    if (!total) return Json::array();
    const std::string title = total->text.empty() ? total->label : total->label + ": " + total->text;
    return Json::array(
        {{{"range", server.range(document, 0, 0, 0)},
          {"command",
           {{"title", title}, {"command", "vemo.results"}, {"arguments", Json::array({document.uri, "text"})}}}}});
}

}  // namespace vemo::lsp
