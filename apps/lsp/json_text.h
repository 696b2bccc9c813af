// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace vemo::lsp {

using Json = nlohmann::json;

// A text as JSON writes it, with its quotation marks.
std::string jsonString(std::string_view utf8);

// The text of a JSON value; ill-formed UTF-8 in it becomes U+FFFD.
std::string textOf(const Json& value);

// False for a text whose value would take many times its size, or nest without end.
bool isReasonable(std::string_view json);

// A member of an object; null where it is none or has none.
const Json& member(const Json& object, std::string_view name);

}  // namespace vemo::lsp
