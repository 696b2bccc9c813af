// SPDX-License-Identifier: MIT
#include <algorithm>

#include "lsp/features.h"

namespace vemo::lsp {

namespace {

constexpr Method methods[] = {
    {"initialize", initialize, nullptr, ""},
    {"initialized", initialized, nullptr, ""},
    {"shutdown", shutDown, nullptr, ""},
    {"exit", exit, nullptr, ""},
    {"$/cancelRequest", cancelRequest, nullptr, ""},
    {"$/setTrace", setTrace, nullptr, ""},
    {"workspace/didChangeConfiguration", didChangeConfiguration, nullptr, ""},
    {"workspace/didChangeWatchedFiles", didChangeWatchedFiles, nullptr, ""},
    {"textDocument/didOpen", didOpen, nullptr, R"({"textDocumentSync":{"openClose":true,"change":2}})"},
    {"textDocument/didChange", didChange, nullptr, ""},
    {"textDocument/didClose", didClose, nullptr, ""},
    {"textDocument/inlayHint", nullptr, inlayHints, R"({"inlayHintProvider":{"resolveProvider":true}})"},
    {"inlayHint/resolve", resolveInlayHint, nullptr, ""},
    {"textDocument/completion", nullptr, completion, R"({"completionProvider":{}})"},
    {"textDocument/hover", nullptr, hover, R"({"hoverProvider":true})"},
    {"textDocument/semanticTokens/full", nullptr, semanticTokens, ""},
    {"textDocument/semanticTokens/full/delta", nullptr, semanticTokensDelta, ""},
    {"textDocument/semanticTokens/range", nullptr, semanticTokensRange, ""},
    {"textDocument/definition", nullptr, definition, R"({"definitionProvider":true})"},
    {"textDocument/references", nullptr, references, R"({"referencesProvider":true})"},
    {"textDocument/documentHighlight", nullptr, highlights, R"({"documentHighlightProvider":true})"},
    {"textDocument/prepareRename", nullptr, prepareRename, R"({"renameProvider":{"prepareProvider":true}})"},
    {"textDocument/rename", nullptr, rename, ""},
    {"textDocument/codeAction", nullptr, codeActions,
     R"({"codeActionProvider":{"codeActionKinds":["refactor.rewrite","refactor.inline"]}})"},
    {"textDocument/documentSymbol", nullptr, documentSymbols, R"({"documentSymbolProvider":true})"},
    {"textDocument/foldingRange", nullptr, foldingRanges, R"({"foldingRangeProvider":true})"},
    {"textDocument/codeLens", nullptr, codeLenses, R"({"codeLensProvider":{}})"},
    {"workspace/executeCommand", nullptr, executeCommand,
     R"({"executeCommandProvider":{"commands":["vemo.results","vemo.text"]}})"},
};

}  // namespace

const Method* methodNamed(std::string_view name) {
    const auto found =
        std::find_if(std::begin(methods), std::end(methods), [&](const Method& method) { return method.name == name; });
    return found == std::end(methods) ? nullptr : found;
}

Json serverCapabilities() {
    Json capabilities = Json::object();
    for (const Method& method : methods)
        if (!method.ability.empty()) capabilities.update(Json::parse(method.ability));
    capabilities["semanticTokensProvider"] = {
        {"legend", semanticTokensLegend()}, {"range", true}, {"full", {{"delta", true}}}};
    return capabilities;
}

}  // namespace vemo::lsp
