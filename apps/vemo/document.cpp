// SPDX-License-Identifier: MIT
#include "document.h"

#include <algorithm>

#include "output.h"
#include "session/document_text.h"
#include "session/files.h"

namespace vemo::cli {

namespace {

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
        text = fromInput ? session::readInput() : session::readFile(options.file);
    } else {
        text.emplace();
        for (const std::string& line : options.expressions) *text += line + "\n";
    }
    if (!text) {
        complain(name + ": cannot be read");
        return std::nullopt;
    }
    if (const auto offset = session::firstInvalidByte(*text)) {
        complain((options.argument ? "the argument" : name) + ": not UTF-8 at byte " + std::to_string(*offset));
        return std::nullopt;
    }
    if (text->starts_with(session::byteOrderMark)) text->erase(0, session::byteOrderMark.size());
    return text;
}

}  // namespace vemo::cli
