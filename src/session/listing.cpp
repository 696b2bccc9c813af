// SPDX-License-Identifier: MIT
#include "session/listing.h"

#include <algorithm>

#include "session/characters.h"
#include "session/printable.h"

namespace vemo::session {

namespace {

constexpr std::string_view reset = "\033[0m";
constexpr std::size_t gap = 2;  // columns between a line and its result
constexpr std::size_t widestColumn = 120;

std::string colored(const AttributedText& text, bool color) {
    std::string result;
    text.enumerate([&](std::u16string_view run, RunType type, std::size_t) {
        const std::string_view code = color ? colorOf(type) : std::string_view();
        result += std::string(code) + printable(utf8(run)) + std::string(code.empty() ? std::string_view() : reset);
    });
    return result;
}

void printRow(std::ostream& out, const std::string& shown, std::size_t shownWidth, const std::string& value,
              std::size_t column, const Layout& layout) {
    out << shown;
    if (!value.empty()) {
        const std::size_t used = displayWidth(value) + gap;
        // A result that has no room beside its line goes to the right of the next row of a terminal.
        if (layout.width && shownWidth + used > column) {
            out << '\n';
            shownWidth = 0;
        }
        out << std::string(shownWidth + used > column ? gap : column - shownWidth - used + gap, ' ');
        if (layout.color)
            out << "\033[1m" << value << reset;
        else
            out << value;
    }
    out << '\n';
}

void printUnderLine(std::ostream& out, const std::string& text, const Layout& layout) {
    const char* dim = "\033[2m";
    out << std::string(gap, ' ') << (layout.color ? dim : "") << printable(text) << (layout.color ? reset : "") << '\n';
}

// The numbers of as many lines are as wide as the widest.
std::string numberOf(std::size_t line, std::size_t count) {
    const std::string number = std::to_string(line + 1), widest = std::to_string(count);
    return std::string(widest.size() - number.size(), ' ') + number + "  ";
}

}  // namespace

std::string_view colorOf(RunType type) {
    switch (type) {
        case RunType::number:
            return "\033[36m";
        case RunType::unit:
            return "\033[32m";
        case RunType::variable:
            return "\033[35m";
        case RunType::function:
            return "\033[34m";
        case RunType::operatorWord:
        case RunType::operatorSymbol:
            return "\033[33m";
        case RunType::header:
            return "\033[1m";
        case RunType::comment:
        case RunType::label:
            return "\033[2m";
        case RunType::none:
        case RunType::parenthesis:
            break;
    }
    return {};
}

std::size_t displayWidth(std::string_view text) {
    return columnsOf(utf16(text));
}

void printRemarksOf(std::ostream& out, const VemoEngine::Result::Line& line, const Layout& layout) {
    for (const Note& note : line.notes()) printUnderLine(out, utf8(note.message), layout);
    if (const auto reason = line.reason()) printUnderLine(out, utf8(reason->message), layout);
}

void printResult(std::ostream& out, const VemoEngine::Result& result, const Layout& layout,
                 const std::vector<std::string>& readings) {
    struct Shown {
        std::string number, value;
        std::size_t width = 0;
    };
    const auto total = layout.total ? totalOf(result, layout.writing.shortTexts) : std::nullopt;
    const std::string label = total ? total->label : std::string();
    const std::string totalText = total ? printable(total->text) : std::string();
    // The column is as narrow as the longest row needs, and at most as wide as the terminal; where there is none, a
    // long line does not push the results of all others away.
    const std::size_t most = layout.width.value_or(widestColumn);
    std::size_t column = total ? label.size() + gap + displayWidth(totalText) : 0;
    std::vector<Shown> rows;
    rows.reserve(result.lines.size());
    for (std::size_t i = 0; i < result.lines.size(); ++i) {
        const Row row = rowOf(result, i, layout.writing);
        Shown shown{layout.numbered ? numberOf(i, result.lines.size()) : "", printable(row.result), 0};
        shown.width = displayWidth(shown.number) + displayWidth(printable(row.text));
        const std::size_t needed = shown.width + gap + displayWidth(shown.value);
        if (!shown.value.empty() && (layout.width || needed <= most)) column = std::max(column, needed);
        rows.push_back(std::move(shown));
    }
    column = std::min(column, most);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& line = result.lines[i];
        printRow(out, rows[i].number + colored(line.attributedText(), layout.color), rows[i].width, rows[i].value,
                 column, layout);
        if (i < readings.size() && !readings[i].empty()) printUnderLine(out, "= " + readings[i], layout);
        if (layout.remarks) printRemarksOf(out, line, layout);
    }
    if (!total) return;
    out << std::string(column, '-') << '\n';
    printRow(out, label, label.size(), totalText, column, layout);
}

void printResults(std::ostream& out, const VemoEngine::Result& result, const Writing& writing) {
    for (std::size_t i = 0; i < result.lines.size(); ++i) {
        const std::string value = rowOf(result, i, writing).result;
        if (!value.empty()) out << printable(value) << '\n';
    }
}

void printRemarks(std::ostream& out, const VemoEngine::Result& result, std::string_view name) {
    std::size_t number = 0;
    for (const auto& line : result.lines) {
        ++number;
        for (const Note& note : line.notes())
            out << printable(name) << ':' << number << ':' << note.start + 1 << ": " << printable(utf8(note.message))
                << '\n';
        if (const auto reason = line.reason())
            out << printable(name) << ':' << number << ":1: " << printable(utf8(reason->message)) << '\n';
    }
}

}  // namespace vemo::session
