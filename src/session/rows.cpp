// SPDX-License-Identifier: MIT
#include "session/rows.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

namespace vemo::session {

namespace {

constexpr std::size_t sureDigits = 34;  // in a number; later digits may come from rounding

bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool isBlank(char16_t c) {
    return c == u' ' || c == u'\u00a0' || c == u'\u202f';
}

// True for a digit, and for a separator or an exponent's beginning among digits.
bool isInNumber(std::u16string_view text, std::size_t at) {
    constexpr std::u16string_view separators = u".,' \u2019\u00a0\u202f";
    const auto digitAt = [&](std::size_t i) { return i < text.size() && isDigit(text[i]); };
    if (digitAt(at)) return true;
    const bool exponent = text[at] == u'E' && (digitAt(at + 1) || digitAt(at + 2));
    const bool sign = text[at] == u'-' && at > 0 && text[at - 1] == u'E';
    return exponent || ((sign || separators.find(text[at]) != separators.npos) && digitAt(at + 1));
}

bool isCurrency(std::u16string_view id) {
    return id.size() == 3 && std::all_of(id.begin(), id.end(), [](char16_t c) { return c >= u'A' && c <= u'Z'; });
}

// The blanks and the minus of programs in place of those of people.
std::string asciiSigns(std::string_view text) {
    std::u16string signs = utf16(text);
    std::replace_if(signs.begin(), signs.end(), isBlank, u' ');
    std::replace(signs.begin(), signs.end(), u'\u2212', u'-');
    return utf8(signs);
}

// The unit as the result shows it after its number; the unit's id where it shows none.
std::string unitText(std::u16string_view id, std::u16string_view shown) {
    if (isCurrency(id)) return utf8(id);
    std::size_t end = 0;
    while (end < shown.size() && !isDigit(shown[end])) ++end;
    while (end < shown.size() && isInNumber(shown, end)) ++end;
    while (end < shown.size() && isBlank(shown[end])) ++end;
    const std::u16string_view rest = shown.substr(end);
    return rest.empty() || std::any_of(rest.begin(), rest.end(), isDigit) ? utf8(id) : asciiSigns(utf8(rest));
}

std::string numberText(const DecimalNumber& number, std::optional<std::int64_t> precision) {
    const auto rounded = [&](std::int64_t digits) {
        constexpr std::int64_t most = std::numeric_limits<std::int16_t>::max();
        return number.round(static_cast<std::int16_t>(std::clamp<std::int64_t>(digits, 0, most))).toString();
    };
    if (precision) return rounded(*precision);
    std::string exact = number.toString();
    const std::size_t point = exact.find('.'), first = exact.find_first_not_of("-0.");
    if (point == exact.npos || first == exact.npos) return exact;
    const std::size_t digits = exact.size() - first - (first < point ? 1 : 0);
    if (digits <= sureDigits) return exact;
    return rounded(static_cast<std::int64_t>(exact.size() - point - 1) -
                   static_cast<std::int64_t>(digits - sureDigits));
}

}  // namespace

std::string resultText(const FormattedValue& value, bool shortTexts) {
    const auto& text = shortTexts && value.shortText ? value.shortText : value.regular;
    return text ? utf8(*text) : std::string();
}

std::string instantText(Date date) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(date);
    const auto days = std::chrono::floor<std::chrono::days>(seconds);
    const std::chrono::year_month_day day(days);
    const std::chrono::hh_mm_ss time(seconds - days);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text;
}

std::string plainResult(const Row& row) {
    return row.unit.empty() ? row.number : row.number + " " + row.unit;
}

Row rowOf(const VemoEngine::Result& result, std::size_t index, const Writing& writing) {
    const auto& line = result.lines[index];
    Row row;
    row.text = utf8(line.attributedText().compoundString());
    const FormattedValue formatted = line.formattedResult();
    row.result = resultText(formatted, writing.shortTexts);
    if (!row.result.empty()) {
        const Value value = line.value();
        if (const auto instant = result.instantOf(index)) {
            row.number = instantText(*instant);
        } else if (const auto number = value.decimal(); number && !number->notANumber()) {
            row.number = numberText(*number, writing.precision);
            if (const auto unit = value.string(Attribute::unit))
                row.unit = unitText(*unit, formatted.regular.value_or(u""));
        }
        if (writing.plain) row.result = row.number.empty() ? asciiSigns(row.result) : plainResult(row);
    }
    const auto remark = [&](const std::u16string& message) {
        row.remark += (row.remark.empty() ? "" : "; ") + utf8(message);
    };
    for (const Note& note : line.notes()) remark(note.message);
    if (const auto reason = line.reason()) remark(reason->message);
    return row;
}

std::vector<Row> rowsOf(const VemoEngine::Result& result, const Writing& writing) {
    std::vector<Row> rows;
    rows.reserve(result.lines.size());
    for (std::size_t i = 0; i < result.lines.size(); ++i) rows.push_back(rowOf(result, i, writing));
    return rows;
}

std::optional<Total> totalOf(const VemoEngine::Result& result, bool shortTexts) {
    if (result.lines.size() < 2) return std::nullopt;
    const FormattedValue* formatted = result.context->grandTotalFormatted();
    const std::string text = formatted ? resultText(*formatted, shortTexts) : std::string();
    // Durations are added to a date that comes first; any other date begins the total anew.
    std::size_t values = 0, dates = 0;
    bool dateFirst = false, failed = result.context->isGrandTotalPartial();
    for (const auto& line : result.lines) {
        if (line.reason()) failed = true;
        const Value value = line.value();
        if (value.isEmpty()) continue;
        if (value.date()) {
            dateFirst = dateFirst || values == 0;
            ++dates;
        }
        ++values;
    }
    if (text.empty()) return failed ? std::optional(Total{"no total: a line has no result", ""}) : std::nullopt;
    const bool partial = failed || (dates > 0 && values > 1 && !(dateFirst && dates == 1));
    return Total{partial ? "total of some lines" : "total", text};
}

}  // namespace vemo::session
