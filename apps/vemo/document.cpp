// SPDX-License-Identifier: MIT
#include "document.h"

#include <algorithm>

#include "files.h"
#include "output.h"

namespace vemo::cli {

namespace {

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

// The offset of the first byte that is not UTF-8, or nothing.
std::optional<std::size_t> firstInvalidByte(const std::string& text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const std::size_t length = byte < 0x80   ? 1
                                   : byte < 0xc2 ? 0
                                   : byte < 0xe0 ? 2
                                   : byte < 0xf0 ? 3
                                   : byte < 0xf5 ? 4
                                                 : 0;
        if (length == 0 || i + length > text.size()) return i;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xc0) != 0x80) return i;
        const auto second = length > 1 ? static_cast<unsigned char>(text[i + 1]) : 0;
        // Overlong forms, surrogates and code points past U+10FFFF.
        if ((byte == 0xe0 && second < 0xa0) || (byte == 0xed && second > 0x9f) || (byte == 0xf0 && second < 0x90) ||
            (byte == 0xf4 && second > 0x8f))
            return i;
        i += length;
    }
    return std::nullopt;
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

bool looksLikeFile(const std::string& argument) {
    for (const char* beginning : {"/", "./", "../", "~/"})
        if (argument.starts_with(beginning)) return true;
    const std::size_t point = argument.rfind('.');
    if (point == argument.npos || argument.find(' ') != argument.npos) return false;
    const std::string_view name = std::string_view(argument).substr(0, point);
    const std::string_view ending = std::string_view(argument).substr(point + 1);
    return ending.size() >= 2 && ending.size() <= 5 && std::all_of(ending.begin(), ending.end(), isLetter) &&
           std::any_of(name.begin(), name.end(), isLetter);
}

std::optional<std::string> readDocument(const Options& options) {
    const bool fromInput = options.file.empty() || options.file == "-";
    const std::string name = fromInput ? "standard input" : options.file;
    std::optional<std::string> text;
    if (options.expressions.empty()) {
        text = fromInput ? readInput() : readFile(options.file);
    } else {
        text.emplace();
        for (const std::string& line : options.expressions) *text += line + "\n";
    }
    if (!text) {
        complain(name + ": cannot be read");
        return std::nullopt;
    }
    if (const auto offset = firstInvalidByte(*text)) {
        complain((options.argument ? "the argument" : name) + ": not UTF-8 at byte " + std::to_string(*offset));
        return std::nullopt;
    }
    if (text->starts_with(byteOrderMark)) text->erase(0, byteOrderMark.size());
    return text;
}

}  // namespace vemo::cli
