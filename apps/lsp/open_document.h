// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lsp/json_text.h"
#include "lsp/text_buffer.h"
#include "vemo/documents.h"

namespace vemo::lsp {

struct Method;

// A note or a reason, as a diagnostic tells it.
struct LineRemark {
    std::uint32_t start = 0, length = 0;  // UTF-16 units of the line
    bool reason = false;
    std::string code;
    std::string message;
};

// What is shown of a line again and again: made when the line has changed, kept as long as it has not.
struct LineView {
    std::string hint;        // the label as JSON; empty without a result
    std::u16string defines;  // the name that the line defines, as it is written there
    std::vector<LineRemark> remarks;
};

// A request that waits for the text to be calculated.
struct WaitingRequest {
    Json id;
    const Method* method;
    Json params;
};

// A document that the client has open.
struct OpenDocument {
    std::string uri;
    std::uint64_t number = 0;  // told in the data of hints, which are many
    std::int64_t version = 0;
    TextBuffer buffer;
    std::unique_ptr<VemoDocument> document;  // null before there is an engine
    std::shared_ptr<const VemoDocument::Answer> answer;

    std::vector<LineView> views;                         // of the answer's lines
    std::optional<std::vector<LineView>> viewsToChange;  // those of an engine that was replaced
    std::string total;                                   // as it is shown

    bool dirty = false;       // is to be calculated
    bool unprompted = false;  // not because of an edit
    std::vector<WaitingRequest> waiting;

    std::optional<std::size_t> held;  // the line that is being typed, whose remarks wait
    std::uint64_t edits = 0;
    std::string published;  // the latest diagnostics

    struct Tokens {
        std::uint64_t id = 0;
        std::vector<std::uint32_t> data;
    } tokens;  // the latest that were told

    bool isCalculated() const { return answer && document && !dirty && !document->isCalculating(); }
    std::size_t lineCount() const { return answer ? answer->result.lines.size() : 0; }
    const VemoEngine::Result::Line& line(std::size_t index) const { return answer->result.lines[index]; }

    // Replaces a stretch of the text, in the engine's document too. Gives the line on which the new text ends.
    std::size_t edit(std::size_t start, std::size_t length, std::u16string_view replacement, std::int64_t newVersion);
    // Begins anew with an engine, which has calculated nothing of it.
    void attach(VemoEngine& engine, const Context& context);

    // What an answer changed for those who look.
    struct Shown {
        bool hints = false;
        bool total = false;
    };
    Shown take(std::shared_ptr<const VemoDocument::Answer> newAnswer);
};

// The text of a result as a hint shows it: the short one where the full one is long.
std::string hintText(const FormattedValue& value);

// A text for the engine, in which a line ends where it does for clients.
std::u16string engineText(std::u16string_view text);

}  // namespace vemo::lsp
