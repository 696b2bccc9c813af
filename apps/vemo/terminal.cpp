// SPDX-License-Identifier: MIT
#include "terminal.h"

#include <wchar.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace vemo::cli {

namespace {

constexpr std::string_view reset = "\033[0m";
constexpr std::size_t gap = 2;  // columns between a line and its result

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

// Control characters would change the terminal's state: they are shown as the replacement character.
std::string printable(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\t')
            result += "    ";
        else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            result += "\xef\xbf\xbd";
        else
            result += c;
    }
    return result;
}

std::string colored(const AttributedText& text, bool color) {
    std::string result;
    text.enumerate([&](std::u16string_view run, RunType type, std::size_t) {
        const std::string_view code = color ? colorOf(type) : std::string_view();
        result += std::string(code) + printable(utf8(run)) + std::string(code.empty() ? std::string_view() : reset);
    });
    return result;
}

void printRow(std::ostream& out, const std::string& shown, std::size_t shownWidth, const std::string& value,
              const Layout& layout) {
    out << shown;
    if (!value.empty()) {
        const std::size_t used = displayWidth(value) + gap;
        // A result that has no room beside its line goes to the right of the next row.
        if (shownWidth + used > layout.width) {
            out << '\n';
            shownWidth = 0;
        }
        out << std::string(shownWidth + used > layout.width ? gap : layout.width - shownWidth - used + gap, ' ');
        if (layout.color)
            out << "\033[1m" << value << reset;
        else
            out << value;
    }
    out << '\n';
}

nlohmann::json textsOf(const FormattedValue& value) {
    nlohmann::json texts = nlohmann::json::object();
    if (value.regular) texts["regular"] = utf8(*value.regular);
    if (value.shortText) texts["short"] = utf8(*value.shortText);
    return texts;
}

std::vector<std::string> utf8All(const std::vector<std::u16string>& texts) {
    std::vector<std::string> result(texts.size());
    std::transform(texts.begin(), texts.end(), result.begin(), [](const auto& text) { return utf8(text); });
    return result;
}

// The exact number and the unit's id; null where there is no number.
nlohmann::json valueOf(const Value& value) {
    nlohmann::json object;
    const auto number = value.decimal();
    if (!number || number->notANumber()) return object;
    object["number"] = number->toString();
    if (const auto unit = value.string(Attribute::unit)) object["unit"] = utf8(*unit);
    return object;
}

// A remark on a line in the terminal: dim, under it.
void printRemark(std::ostream& out, const std::u16string& message, const Layout& layout) {
    const char* dim = "\033[2m";
    out << std::string(gap, ' ') << (layout.color ? dim : "") << printable(utf8(message)) << (layout.color ? reset : "")
        << '\n';
}

}  // namespace

std::string resultText(const FormattedValue& value, bool shortTexts) {
    const auto& text = shortTexts && value.shortText ? value.shortText : value.regular;
    return text ? utf8(*text) : std::string();
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    const std::u16string units = utf16(text);
    for (std::size_t i = 0; i < units.size(); ++i) {
        wchar_t character = units[i];
        if (character >= 0xd800 && character < 0xdc00 && i + 1 < units.size())
            character = 0x10000 + ((character - 0xd800) << 10) + (units[++i] - 0xdc00);
        width += static_cast<std::size_t>(std::max(wcwidth(character), 0));
    }
    return width;
}

void printResult(std::ostream& out, const VemoEngine::Result& result, const Layout& layout) {
    // The column is as narrow as the longest row needs, and at most as wide as the terminal.
    const FormattedValue* total = result.context->grandTotalFormatted();
    const std::string totalText = total ? resultText(*total, layout.shortTexts) : std::string();
    std::vector<std::string> lines;
    std::size_t needed = 0;
    for (const auto& line : result.lines) {
        lines.push_back(printable(utf8(line.attributedText().compoundString())));
        const std::string value = resultText(line.formattedResult(), layout.shortTexts);
        if (!value.empty()) needed = std::max(needed, displayWidth(lines.back()) + gap + displayWidth(value));
    }
    Layout fitted = layout;
    fitted.width = std::min(layout.width, std::max(needed, displayWidth(totalText) + gap));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto& line = result.lines[i];
        printRow(out, colored(line.attributedText(), layout.color), displayWidth(lines[i]),
                 resultText(line.formattedResult(), layout.shortTexts), fitted);
        if (!layout.remarks) continue;
        for (const Note& note : line.notes()) printRemark(out, note.message, layout);
        if (const auto reason = line.reason()) printRemark(out, reason->message, layout);
    }
    if (totalText.empty() || lines.size() < 2) return;
    out << std::string(fitted.width, '-') << '\n';
    printRow(out, "", 0, totalText, fitted);
}

void printRemarks(std::ostream& out, const VemoEngine::Result& result, std::string_view name) {
    std::size_t number = 0;
    for (const auto& line : result.lines) {
        ++number;
        for (const Note& note : line.notes())
            out << name << ':' << number << ':' << note.start + 1 << ": " << printable(utf8(note.message)) << '\n';
        if (const auto reason = line.reason())
            out << name << ':' << number << ":1: " << printable(utf8(reason->message)) << '\n';
    }
}

void printJson(std::ostream& out, const VemoEngine::Result& result, std::string_view log) {
    nlohmann::json lines = nlohmann::json::array();
    for (const auto& line : result.lines) {
        nlohmann::json runs = nlohmann::json::array();
        line.attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t) {
            nlohmann::json run{{"text", utf8(text)}};
            if (type != RunType::none) run["type"] = utf8(runTypeCode(type));
            runs.push_back(std::move(run));
        });
        nlohmann::json object = textsOf(line.formattedResult());
        object["text"] = utf8(line.attributedText().compoundString());
        object["runs"] = std::move(runs);
        object["tokens"] = utf8All(line.quickTypeData().tokens);
        object["expressions"] = utf8All(line.quickTypeData().expressions);
        if (nlohmann::json value = valueOf(line.value()); !value.is_null()) object["value"] = std::move(value);
        for (const Note& note : line.notes())
            object["notes"].push_back({{"kind", utf8(noteKindName(note.kind))},
                                       {"start", note.start},
                                       {"length", note.length},
                                       {"message", utf8(note.message)}});
        if (const auto reason = line.reason())
            object["reason"] = {{"code", utf8(reasonCodeName(reason->code))}, {"message", utf8(reason->message)}};
        lines.push_back(std::move(object));
    }
    nlohmann::json document{{"lines", std::move(lines)}, {"log", log}};
    if (const FormattedValue* total = result.context->grandTotalFormatted()) document["grandTotal"] = textsOf(*total);
    out << document.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

}  // namespace vemo::cli
