// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "lsp/json_text.h"

namespace vemo::lsp {

namespace error_code {
inline constexpr int parseError = -32700;
inline constexpr int invalidRequest = -32600;
inline constexpr int methodNotFound = -32601;
inline constexpr int invalidParams = -32602;
inline constexpr int internalError = -32603;
inline constexpr int serverNotInitialized = -32002;
inline constexpr int requestFailed = -32803;
inline constexpr int contentModified = -32801;
inline constexpr int requestCancelled = -32800;
}  // namespace error_code

struct ErrorReply {
    int code;
    std::string message;
};

// What a request is answered with: a result, as JSON text where there is much of it, or an error.
class Reply {
public:
    Reply(const Json& result) : content_(textOf(result)) {}
    Reply(ErrorReply error) : content_(std::move(error)) {}
    static Reply ofText(std::string json) { return Reply(std::move(json), 0); }
    static Reply null() { return ofText("null"); }

    const std::string* text() const { return std::get_if<std::string>(&content_); }
    const ErrorReply& error() const { return *std::get_if<ErrorReply>(&content_); }

private:
    Reply(std::string text, int) : content_(std::move(text)) {}

    std::variant<std::string, ErrorReply> content_;
};

class Server;
struct OpenDocument;

// A row of the table of methods: one of the functions is there.
struct Method {
    std::string_view name;
    Reply (*handle)(Server& server, const Json& params);
    // Called when the text of the document that the parameters name is calculated.
    Reply (*answer)(Server& server, OpenDocument& document, const Json& params);
    std::string_view ability;  // members of the server's capabilities that tell of it, as JSON
};

// Null for an unknown method.
const Method* methodNamed(std::string_view name);
Json serverCapabilities();

}  // namespace vemo::lsp
