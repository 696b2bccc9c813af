// SPDX-License-Identifier: MIT
#include "lsp/server.h"

namespace vemo::lsp {

namespace {

constexpr int warning = 2;
constexpr int hint = 4;

}  // namespace

void publishDiagnostics(Server& server, OpenDocument& document) {
    Json diagnostics = Json::array();
    for (std::size_t i = 0; i < document.views.size(); ++i) {
        if (document.views[i].remarks.empty() || document.held == i) continue;
        for (const LineRemark& remark : document.views[i].remarks)
            diagnostics.push_back({{"range", server.range(document, i, remark.start, remark.length)},
                                   {"severity", remark.reason ? warning : hint},
                                   {"code", remark.code},
                                   {"source", "vemo"},
                                   {"message", remark.message}});
    }
    // An empty list need not be told of a document that had none before.
    std::string text = diagnostics.empty() ? std::string() : textOf(diagnostics);
    if (text == document.published) return;
    document.published = std::move(text);
    server.notify("textDocument/publishDiagnostics",
                  {{"uri", document.uri}, {"version", document.version}, {"diagnostics", std::move(diagnostics)}});
}

}  // namespace vemo::lsp
