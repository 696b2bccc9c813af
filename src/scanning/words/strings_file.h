// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vemo/result.h"

namespace vemo {

struct StringsEntry {
    std::u16string key;
    std::u16string value;
    int line;
};

// Reads a file of `"key" = "value";` entries with /* */ and // comments, in UTF-8. Escapes: \" \\ \n \t and
// \UXXXX (four hexadecimal digits, \u as well). Needs nothing but the standard library: the build uses it too.
Result<std::vector<StringsEntry>> parseStrings(std::string_view utf8);

}  // namespace vemo
