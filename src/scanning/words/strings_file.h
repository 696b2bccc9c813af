// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vemo {

struct StringsEntry {
    std::u16string key;
    std::u16string value;
    int line;
};

struct StringsError {
    int line;
    std::string message;
};

// Reads a file of `"key" = "value";` entries with /* */ and // comments, in UTF-8. Escapes: \" \\ \n \t and
// \UXXXX (four hexadecimal digits, \u as well). Needs nothing but the standard library: the build uses it too.
std::variant<std::vector<StringsEntry>, StringsError> parseStrings(std::string_view utf8);

}  // namespace vemo
