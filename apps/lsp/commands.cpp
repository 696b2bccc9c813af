// SPDX-License-Identifier: MIT
// What a client copies: the results of a document in one of the forms that the command writes.
#include <algorithm>

#include "lsp/features.h"
#include "lsp/server.h"
#include "session/json.h"
#include "session/rows.h"
#include "session/tables.h"

namespace vemo::lsp {

namespace {

using Result = VemoEngine::Result;

struct Format {
    std::string_view name;
    std::string (*write)(const Result& result);
};

// Lines with their results at the right.
std::string plainText(const Result& result) {
    const auto rows = session::rowsOf(result, {});
    const auto total = session::totalOf(result, false);
    const auto length = [](const std::string& text) { return lengthIn(Encoding::utf16, utf16(text)); };
    std::size_t left = 0, right = 0;
    for (const session::Row& row : rows) {
        left = std::max(left, length(row.text));
        right = std::max(right, length(row.result));
    }
    if (total) {
        left = std::max(left, length(total->label));
        right = std::max(right, length(total->text));
    }
    std::string text;
    const auto line = [&](const std::string& written, const std::string& shown) {
        text += written;
        if (!shown.empty()) text.append(left + 2 + right - length(written) - length(shown), ' ').append(shown);
        text += '\n';
    };
    for (const session::Row& row : rows) line(row.text, row.result);
    if (total) line(total->label, total->text);
    return text;
}

constexpr Format formats[] = {
    {"text", plainText},
    {"csv", [](const Result& result) { return session::csvText(session::rowsOf(result, {})); }},
    {"tsv", [](const Result& result) { return session::tsvText(session::rowsOf(result, {})); }},
    {"markdown",
     [](const Result& result) {
         return session::markdownText(session::rowsOf(result, {}), session::totalOf(result, false));
     }},
    {"json", [](const Result& result) { return session::jsonText(result, "", {}); }},
};

}  // namespace

// Answered with the text: what becomes of it is the client's. The arguments are a document and, of "vemo.results", the
// name of a form. "vemo.text" gives the text that the server has.
Reply executeCommand(Server&, OpenDocument& document, const Json& params) {
    const auto command = params.at("command").get<std::string>();
    const Json& arguments = params.at("arguments");
    if (command == "vemo.text") return Json(utf8(document.buffer.text()));
    if (command != "vemo.results") return ErrorReply{error_code::invalidParams, "there is no such command"};
    const std::string name = arguments.size() > 1 ? arguments.at(1).get<std::string>() : "text";
    const auto format =
        std::find_if(std::begin(formats), std::end(formats), [&](const Format& each) { return each.name == name; });
    if (format == std::end(formats)) return ErrorReply{error_code::invalidParams, "there is no such form"};
    return Json(format->write(document.answer->result));
}

}  // namespace vemo::lsp
