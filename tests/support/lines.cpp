// SPDX-License-Identifier: MIT
#include "support/lines.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>

namespace vemo::test {

namespace {

constexpr Tongue allTongues[] = {{"en", "en_US", '.', ","},
                                 {"de", "de_DE", ',', "."},
                                 {"fr", "fr_FR", ',', "\u202f"},
                                 {"es", "es_ES", ',', "."},
                                 {"ja", "ja_JP", '.', ","}};

// Those of forms.txt, by language.
const std::vector<std::string>& formsOf(const Tongue& tongue) {
    static const auto all = [] {
        std::map<std::string, std::vector<std::string>> forms;
        std::ifstream file(VEMO_TEST_DATA_DIR "/support/forms.txt");
        std::string language;
        for (std::string row; std::getline(file, row);) {
            if (row.starts_with('#')) continue;
            if (row.starts_with('['))
                language = row.substr(1, 2);
            else
                forms[language].push_back(row);
        }
        return forms;
    }();
    return all.at(tongue.language);
}

constexpr const char* lengths[] = {"km", "m", "cm", "miles", "feet", "inches", "yards"};
constexpr const char* months[][12] = {{"January", "February", "March", "April", "May", "June", "July", "August",
                                       "September", "October", "November", "December"},
                                      {"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August",
                                       "September", "Oktober", "November", "Dezember"},
                                      {"janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août",
                                       "septembre", "octobre", "novembre", "décembre"},
                                      {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto",
                                       "septiembre", "octubre", "noviembre", "diciembre"}};

std::size_t indexOf(const Tongue& tongue) {
    return static_cast<std::size_t>(&tongue - allTongues);
}

std::string twoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string money(int hundredths, const Tongue& tongue) {
    switch (indexOf(tongue)) {
        case 0:
            return "$" + written(hundredths, tongue);
        case 4:
            return std::to_string(hundredths / 100) + "円";
        default:
            return written(hundredths, tongue) + " €";
    }
}

std::string euros(int hundredths, const Tongue& tongue) {
    switch (indexOf(tongue)) {
        case 0:
            return "€" + written(hundredths, tongue);
        case 4:
            return written(hundredths, tongue) + "ユーロ";
        default:
            return written(hundredths, tongue) + " €";
    }
}

int anyAmount() {
    const int whole = anyOf(1, 5000), digits = anyOf(0, 2);
    return whole * 100 + (digits == 0 ? 0 : digits == 1 ? 10 * anyOf(1, 9) : anyOf(1, 99));
}

// Days and times are numbers, too: of the day from the first of 2027 on, and of the minute.
int drawn(char blank) {
    switch (blank) {
        case 'n':
        case 'm':
        case 'e':
            return anyAmount();
        case 'w':
            return anyOf(2, 60);
        case 'p':
            return anyOf(1, 95);
        case 'l':
            return anyOf(0, static_cast<int>(std::size(lengths)) - 1);
        case 'd':
            return anyOf(0, 2900);
        case 't':
            return anyOf(61, 1439);
        default:
            std::abort();  // a form with a blank of no kind
    }
}

std::string writtenBlank(char blank, int value, const Tongue& tongue) {
    switch (blank) {
        case 'n':
            return written(value, tongue);
        case 'm':
            return money(value, tongue);
        case 'e':
            return euros(value, tongue);
        case 'l':
            return lengths[value];
        case 'd': {
            const std::chrono::year_month_day day{std::chrono::sys_days(std::chrono::January / 1 / 2027) +
                                                  std::chrono::days(value)};
            return writtenDay(int(day.year()), static_cast<int>(unsigned(day.month())),
                              static_cast<int>(unsigned(day.day())), tongue);
        }
        case 't':
            return std::to_string(value / 60) + ":" + twoDigits(value % 60);
        default:
            return std::to_string(value);
    }
}

std::string remarksOf(const LineRemarks& remarks) {
    std::string text;
    for (const Note& note : remarks.notes) text += "; " + utf8(note.message);
    if (remarks.reason) text += "; " + utf8(remarks.reason->message);
    return text;
}

using Sameness = bool (*)(const Told& a, const Told& b);

void require(const Tongue& tongue, const std::string& document, const std::string& other, Sameness isSame) {
    Notepad& notepad = Notepad::in(tongue);
    const Told a = notepad.last(document), b = notepad.last(other);
    const bool same = !a.value.isEmpty() && isSame(a, b);
    if (same || (!b.remarks.empty() && a.remarks != b.remarks)) return;
    RC_FAIL("\n  " + document + "\n    gives " + a.shown + a.remarks + "\n  " + other + "\n    gives " + b.shown +
            b.remarks + "\n");
}

}  // namespace

std::span<const Tongue> tongues() {
    return allTongues;
}

std::string written(int hundredths, const Tongue& tongue, bool grouped) {
    std::string text = std::to_string(hundredths / 100);
    if (grouped && text.size() > 3) text.insert(text.size() - 3, tongue.group);
    const int fraction = hundredths % 100;
    if (fraction == 0) return text;
    text += tongue.decimal;
    return text + (fraction % 10 == 0 ? std::to_string(fraction / 10) : twoDigits(fraction));
}

std::string writtenDay(int year, int month, int day, const Tongue& tongue) {
    const std::size_t index = indexOf(tongue);
    const std::string y = std::to_string(year), d = std::to_string(day);
    if (index == 4) return y + "年" + std::to_string(month) + "月" + d + "日";
    const std::string name = months[index][month - 1];
    switch (index) {
        case 0:
            return name + " " + d + ", " + y;
        case 1:
            return d + ". " + name + " " + y;
        case 3:
            return d + " de " + name + " de " + y;
        default:
            return d + " " + name + " " + y;
    }
}

std::string filled(std::string_view form, const Tongue& tongue, Filling& filling) {
    std::string text;
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (form[i] != '{') {
            text += form[i];
            continue;
        }
        const std::string blank(form.substr(i + 1, form.find('}', i) - i - 1));
        i += blank.size() + 1;
        const auto known = blank.size() > 1 ? filling.find(blank) : filling.end();
        const int value = known == filling.end() ? drawn(blank[0]) : known->second;
        if (blank.size() > 1) filling[blank] = value;
        text += writtenBlank(blank[0], value, tongue);
    }
    return text;
}

Line anyLine(const Tongue& tongue) {
    return *rc::gen::exec([&tongue] {
        const std::string& form = anyRow(formsOf(tongue));
        return Line{form, filled(form, tongue)};
    });
}

Notepad::Notepad(const Environment& environment) : calculator_(newCalculator(environment)) {}

Notepad& Notepad::in(const Tongue& tongue) {
    static std::map<std::string_view, Notepad> notepads;
    const auto known = notepads.find(tongue.language);
    if (known != notepads.end()) return known->second;
    Environment environment = fixedEnvironment();
    environment.language = tongue.language;
    environment.locale = tongue.locale;
    return notepads.try_emplace(tongue.language, environment).first->second;
}

Context Notepad::context() {
    static const auto rates = [] {
        auto container = std::make_shared<CurrencyRatesContainer>();
        for (const auto& [code, rate] : {std::pair(u"EUR", "0.8"), {u"JPY", "150"}, {u"GBP", "0.75"}, {u"CHF", "0.9"}})
            container->rates[code] = DecimalNumber::parse(rate);
        return std::shared_ptr<const CurrencyRatesContainer>(std::move(container));
    }();
    constexpr double today = 817218000;
    Context context;
    context.set(context_keys::currencyRates, rates);
    context.set(context_keys::currencyRatesTime, today);
    return context;
}

std::string Notepad::reading(const std::string& document) {
    Context context = Notepad::context();
    const auto line = static_cast<std::size_t>(std::count(document.begin(), document.end(), '\n'));
    return utf8(calculator_->reading(utf16(document), context, line).value_or(u""));
}

std::vector<Told> Notepad::lines(const std::string& document) {
    Context context = Notepad::context();
    std::vector<Told> lines;
    for (const LineResultPointer& line : calculator_->calculate(utf16(document), context).lines) {
        const LineRemarks remarks = line->remarks();
        lines.push_back({plainSpaces(utf8(line->formattedValue().regular.value_or(u""))), line->value(), remarks.notes,
                         remarksOf(remarks), ""});
    }
    if (const FormattedValue* total = context.grandTotalFormatted())
        lines.back().total = plainSpaces(utf8(total->regular.value_or(u"")));
    return lines;
}

void requireSame(const Tongue& tongue, const std::string& document, const std::string& other) {
    require(tongue, document, other,
            [](const Told& a, const Told& b) { return a.value == b.value && a.shown == b.shown; });
}

void requireSameValue(const Tongue& tongue, const std::string& document, const std::string& other) {
    require(tongue, document, other, [](const Told& a, const Told& b) { return a.value == b.value; });
}

void requireSameUpToRounding(const Tongue& tongue, const std::string& document, const std::string& other) {
    require(tongue, document, other, [](const Told& a, const Told& b) {
        const auto x = a.value.decimal(), y = b.value.decimal();
        if (!x || !y) return a.value == b.value;
        const DecimalNumber limit = x->abs().multiplying(DecimalNumber::parse("1e-30"));
        return DecimalNumber::compare(x->subtracting(*y).abs(), limit).value_or(1) <= 0 &&
               a.value.string(Attribute::unit) == b.value.string(Attribute::unit) && a.shown == b.shown;
    });
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

}  // namespace vemo::test
