// SPDX-License-Identifier: MIT
// Whatever bytes a phrase table holds, reading it ends with entries or with the line of a fault; and the entries
// written out again are read as the same.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <set>

#include "base/text.h"
#include "scanning/words/strings_file.h"

namespace {

std::string quoted(std::u16string_view text) {
    std::string result = "\"";
    for (const char c : vemo::toUtf8(text)) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + '"';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vemo;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto entries = parseStrings(text);
    const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
    if (!entries) {
        const Failure& failure = entries.failure();
        if (failure.message.empty() || failure.line < 1 || failure.line > lines) std::abort();
        return 0;
    }
    std::set<std::u16string> keys;
    std::string written;
    int line = 1;
    for (const StringsEntry& entry : *entries) {
        if (!keys.insert(entry.key).second || entry.line < line || entry.line > lines) std::abort();
        line = entry.line;
        // Half a character can be written as an escape only.
        if (toUtf16(toUtf8(entry.key)) != entry.key || toUtf16(toUtf8(entry.value)) != entry.value) return 0;
        written += quoted(entry.key) + " = " + quoted(entry.value) + ";\n";
    }
    const auto again = parseStrings(written);
    if (!again || again->size() != entries->size()) std::abort();
    for (std::size_t i = 0; i < again->size(); ++i)
        if ((*again)[i].key != (*entries)[i].key || (*again)[i].value != (*entries)[i].value) std::abort();
    return 0;
}
