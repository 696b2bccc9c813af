// SPDX-License-Identifier: MIT
// What each feature answers: a file each, and a row in the table of `methods.cpp`.
#pragma once

#include "lsp/protocol.h"

namespace vemo::lsp {

// lifecycle.cpp
Reply initialize(Server& server, const Json& params);
Reply initialized(Server& server, const Json& params);
Reply shutDown(Server& server, const Json& params);
Reply exit(Server& server, const Json& params);
Reply cancelRequest(Server& server, const Json& params);
Reply setTrace(Server& server, const Json& params);
Reply didChangeConfiguration(Server& server, const Json& params);
Reply didChangeWatchedFiles(Server& server, const Json& params);

// synchronisation.cpp
Reply didOpen(Server& server, const Json& params);
Reply didChange(Server& server, const Json& params);
Reply didClose(Server& server, const Json& params);

// inlay_hints.cpp
Reply inlayHints(Server& server, OpenDocument& document, const Json& params);
Reply resolveInlayHint(Server& server, const Json& params);

// completion.cpp, hover.cpp
Reply completion(Server& server, OpenDocument& document, const Json& params);
Reply hover(Server& server, OpenDocument& document, const Json& params);

// semantic_tokens.cpp
Json semanticTokensLegend();
Reply semanticTokens(Server& server, OpenDocument& document, const Json& params);
Reply semanticTokensDelta(Server& server, OpenDocument& document, const Json& params);
Reply semanticTokensRange(Server& server, OpenDocument& document, const Json& params);

// names.cpp
Reply definition(Server& server, OpenDocument& document, const Json& params);
Reply references(Server& server, OpenDocument& document, const Json& params);
Reply highlights(Server& server, OpenDocument& document, const Json& params);
Reply prepareRename(Server& server, OpenDocument& document, const Json& params);
Reply rename(Server& server, OpenDocument& document, const Json& params);

// code_actions.cpp
Reply codeActions(Server& server, OpenDocument& document, const Json& params);

// structure.cpp
Reply documentSymbols(Server& server, OpenDocument& document, const Json& params);
Reply foldingRanges(Server& server, OpenDocument& document, const Json& params);

// totals.cpp, commands.cpp
Reply codeLenses(Server& server, OpenDocument& document, const Json& params);
Reply executeCommand(Server& server, OpenDocument& document, const Json& params);

}  // namespace vemo::lsp
