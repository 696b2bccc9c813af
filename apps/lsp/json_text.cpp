// SPDX-License-Identifier: MIT
#include "lsp/json_text.h"

#include <cstdio>

namespace vemo::lsp {

namespace {

constexpr std::size_t deepest = 64;
constexpr std::size_t mostValues = 500000;

}  // namespace

std::string jsonString(std::string_view utf8) {
    std::string text = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[7];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
            text += escape;
        } else {
            text += c;
        }
    }
    return text += '"';
}

std::string textOf(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool isReasonable(std::string_view json) {
    std::size_t depth = 0, values = 0;
    bool string = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (string) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                string = false;
        } else if (c == '"') {
            string = true;
        } else if (c == '[' || c == '{') {
            ++values;
            if (++depth > deepest) return false;
        } else if (c == ']' || c == '}') {
            if (depth > 0) --depth;
        } else if (c == ',') {
            ++values;
        }
        if (values > mostValues) return false;
    }
    return true;
}

const Json& member(const Json& object, std::string_view name) {
    static const Json null;
    if (!object.is_object()) return null;
    const auto found = object.find(name);
    return found == object.end() ? null : *found;
}

}  // namespace vemo::lsp
