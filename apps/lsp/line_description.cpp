// SPDX-License-Identifier: MIT
#include "lsp/line_description.h"

#include <algorithm>
#include <vector>

#include "session/rows.h"
#include "vemo/context_keys.h"

namespace vemo::lsp {

namespace {

constexpr std::int64_t ratePrecision = 6;

bool isCurrency(std::u16string_view unit) {
    return unit.size() >= 3 && unit.size() <= 5 &&
           std::all_of(unit.begin(), unit.end(), [](char16_t c) { return c >= u'A' && c <= u'Z'; });
}

std::string escapedMarkdown(std::string_view text) {
    constexpr std::string_view special = "\\`*_{}[]<>#|~";
    std::string result;
    for (const char c : text) {
        if (special.find(c) != special.npos) result += '\\';
        result += c;
    }
    return result;
}

// What one unit of each other currency of the line is worth in that of its result, with the day of the rates.
std::vector<std::string> ratesOf(Server& server, const OpenDocument& document, std::size_t line) {
    std::vector<std::string> rates;
    const Value value = document.line(line).value();
    const auto target = value.string(Attribute::unit);
    if (!target || !isCurrency(*target)) return rates;
    std::vector<std::u16string> names;
    document.line(line).attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t) {
        if (type == RunType::unit && std::find(names.begin(), names.end(), text) == names.end())
            names.emplace_back(text);
    });
    Context context;
    context.setPrecision(ratePrecision);
    for (const std::u16string& name : names) {
        const std::u16string one = u"1 " + name;
        const std::u16string question = one + u"\n(prev) in " + std::u16string(*target);
        Context asking = context.copyContext();
        const auto answer = server.engine().calculateSync(question, asking);
        if (!answer || answer->lines.size() != 2) continue;
        const Value own = answer->lines[0].value(), converted = answer->lines[1].value();
        const auto unit = own.string(Attribute::unit);
        if (!unit || !isCurrency(*unit) || *unit == *target || !converted.is(Attribute::unit, *target)) continue;
        const FormattedValue shown = answer->lines[1].formattedResult();
        if (shown.regular) rates.push_back("1 " + utf8(*unit) + " = " + utf8(*shown.regular));
    }
    const auto* when = document.answer->result.context->get<double>(context_keys::currencyRatesTime);
    if (rates.empty() || !when) return rates;
    constexpr double from1970 = 978307200;
    constexpr std::size_t day = 10;  // characters of an instant that tell the day
    rates.back() +=
        " (" + session::instantText(Date(std::chrono::duration<double>(*when + from1970))).substr(0, day) + ")";
    return rates;
}

}  // namespace

std::string shortDescription(const OpenDocument& document, std::size_t line) {
    const session::Row row = session::rowOf(document.answer->result, line, {});
    const std::string exact = session::plainResult(row);
    return exact.empty() || exact == row.result ? row.result : row.result + " = " + exact;
}

std::string lineDescription(Server& server, const OpenDocument& document, std::size_t line) {
    const session::Row row = session::rowOf(document.answer->result, line, {});
    if (row.result.empty()) return "";
    std::string text = "**" + escapedMarkdown(row.result) + "**";
    const auto paragraph = [&](const std::string& content) { text += "\n\n" + content; };
    if (const std::string exact = session::plainResult(row); !exact.empty() && exact != row.result)
        paragraph("`" + exact + "`");
    if (const auto reading = document.document->readingOf(line)) paragraph(escapedMarkdown("= " + utf8(*reading)));
    for (const std::string& rate : ratesOf(server, document, line)) paragraph(escapedMarkdown(rate));
    return text;
}

}  // namespace vemo::lsp
