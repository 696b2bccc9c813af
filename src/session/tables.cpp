// SPDX-License-Identifier: MIT
#include "session/tables.h"

#include <algorithm>
#include <iterator>

#include "session/printable.h"

namespace vemo::session {

namespace {

constexpr std::string_view header[] = {"line", "result", "number", "unit", "remark"};

// A spreadsheet would calculate a text that begins like a formula; after an apostrophe it is text.
std::string harmless(const std::string& text) {
    constexpr std::string_view formula = "=+-@";
    const std::size_t first = text.find_first_not_of(' ');
    if (first == text.npos || formula.find(text[first]) == formula.npos) return text;
    const std::string_view digits = std::string_view(text).substr(first + 1);
    const bool number = text[first] == '-' && !digits.empty() && digits.find_first_not_of("0123456789.") == digits.npos;
    return number ? text : "'" + text;
}

std::string quoted(const std::string& cell) {
    if (cell.find_first_of(",\";") == cell.npos && (cell.empty() || (cell.front() != ' ' && cell.back() != ' ')))
        return cell;
    std::string result = "\"";
    for (const char c : cell) result += c == '"' ? "\"\"" : std::string(1, c);
    return result + '"';
}

// Cells hold neither tabs nor line feeds: no control characters at all.
std::string separated(const std::vector<Row>& rows, char separator, std::string (*written)(const std::string&)) {
    std::string text;
    for (const std::string_view name : header) {
        if (!text.empty()) text += separator;
        text += name;
    }
    text += '\n';
    for (const Row& row : rows) {
        const std::string* cells[] = {&row.text, &row.result, &row.number, &row.unit, &row.remark};
        for (std::size_t i = 0; i < std::size(cells); ++i) {
            if (i > 0) text += separator;
            text += written(harmless(printable(*cells[i])));
        }
        text += '\n';
    }
    return text;
}

std::string escapedMarkdown(std::string_view text) {
    constexpr std::string_view special = "\\|`*_[]<>&~#";
    std::string result;
    for (const char c : printable(text)) {
        if (special.find(c) != special.npos) result += '\\';
        result += c;
    }
    return result;
}

std::string escapedHtml(std::string_view text) {
    std::string result;
    for (const char c : printable(text)) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else if (c == '"')
            result += "&quot;";
        else
            result += c;
    }
    return result;
}

constexpr std::string_view style =
    "body{font:16px/1.5 system-ui,sans-serif;margin:2em auto;max-width:50em;padding:0 1em;color-scheme:light dark}"
    "table{border-collapse:collapse;width:100%}td{padding:.1em .5em;white-space:pre-wrap;vertical-align:top}"
    "td:last-child{text-align:right;font-weight:600}small{display:block;opacity:.7}tfoot td{border-top:1px solid}";

}  // namespace

std::string csvText(const std::vector<Row>& rows) {
    return separated(rows, ',', quoted);
}

std::string tsvText(const std::vector<Row>& rows) {
    return separated(rows, '\t', [](const std::string& cell) { return cell; });
}

std::string markdownText(const std::vector<Row>& rows, const std::optional<Total>& total) {
    const bool remarks = std::any_of(rows.begin(), rows.end(), [](const Row& row) { return !row.remark.empty(); });
    std::string text = remarks ? "| line | result | remark |\n|---|---:|---|\n" : "| line | result |\n|---|---:|\n";
    const auto add = [&](const std::string& line, const std::string& result, const std::string& remark) {
        text += "| " + line + " | " + result + " |" + (remarks ? " " + remark + " |\n" : "\n");
    };
    for (const Row& row : rows)
        add(escapedMarkdown(row.text), escapedMarkdown(row.result), escapedMarkdown(row.remark));
    if (total)
        add("**" + total->label + "**", total->text.empty() ? "" : "**" + escapedMarkdown(total->text) + "**", "");
    return text;
}

std::string htmlText(const std::vector<Row>& rows, const std::optional<Total>& total, std::string_view title) {
    std::string text = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + escapedHtml(title) +
                       "</title>\n<style>" + std::string(style) + "</style>\n</head>\n<body>\n<table>\n<tbody>\n";
    for (const Row& row : rows) {
        text += "<tr><td>" + escapedHtml(row.text);
        if (!row.remark.empty()) text += "<small>" + escapedHtml(row.remark) + "</small>";
        text += "</td><td>" + escapedHtml(row.result) + "</td></tr>\n";
    }
    text += "</tbody>\n";
    if (total)
        text += "<tfoot><tr><td>" + total->label + "</td><td>" + escapedHtml(total->text) + "</td></tr></tfoot>\n";
    return text + "</table>\n</body>\n</html>\n";
}

}  // namespace vemo::session
