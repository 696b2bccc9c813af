// SPDX-License-Identifier: MIT
#include "lsp/cases.h"

#include <fstream>
#include <stdexcept>

#include "vemo/engine.h"

namespace vemo::test {

namespace {

constexpr std::string_view beginning = "--- ";
constexpr std::string_view cursorMark = "‸";
constexpr std::string_view bar = "| ";

std::string trimmedBlanks(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

LspCase newCase(const std::string& line) {
    LspCase made;
    const std::size_t brace = line.find('{');
    made.title =
        trimmedBlanks(line.substr(beginning.size(), brace == line.npos ? line.npos : brace - beginning.size()));
    if (brace != line.npos) made.options = nlohmann::json::parse(line.substr(brace));
    return made;
}

void addLine(LspCase& added, const std::string& line) {
    const std::size_t separator = line.find(bar);
    std::string written = line.substr(0, separator);
    const std::string beside = separator == line.npos ? "" : trimmedBlanks(line.substr(separator + bar.size()));
    if (separator != line.npos) written.erase(written.find_last_not_of(' ') + 1);
    if (const std::size_t mark = written.find(cursorMark); mark != written.npos) {
        written.erase(mark, cursorMark.size());
        added.cursorLine = added.lines.size();
        added.cursor = utf16(written.substr(0, mark)).size();
    }
    added.lines.push_back(written);
    added.expected.push_back(beside);
}

}  // namespace

std::string LspCase::text() const {
    std::string joined;
    for (std::size_t i = 0; i < lines.size(); ++i) joined += (i > 0 ? "\n" : "") + lines[i];
    return joined;
}

std::vector<LspCase> casesIn(const std::string& file) {
    std::ifstream input(file);
    if (!input) throw std::runtime_error("cannot read " + file);
    std::vector<LspCase> cases;
    for (std::string line; std::getline(input, line);) {
        if (line.starts_with(beginning))
            cases.push_back(newCase(line));
        else if (!cases.empty())
            addLine(cases.back(), line);
    }
    // An empty line between two cases is none of theirs.
    for (LspCase& each : cases) {
        while (!each.lines.empty() && each.lines.back().empty() && each.expected.back().empty()) {
            each.lines.pop_back();
            each.expected.pop_back();
        }
    }
    return cases;
}

}  // namespace vemo::test
