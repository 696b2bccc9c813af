// SPDX-License-Identifier: MIT
#include "prompt/unit_lists.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>

#include "characters.h"
#include "prompt/raw_terminal.h"
#include "session/printable.h"

namespace vemo::cli {

namespace {

// Kinds, each with one of its units.
constexpr std::pair<std::string_view, std::string_view> kinds[] = {
    {"acceleration", "m/s²"},  {"angle", "radian"},    {"area", "hectare"},        {"charge", "coulomb"},
    {"current", "ampere"},     {"data", "byte"},       {"energy", "joule"},        {"force", "newton"},
    {"frequency", "hertz"},    {"length", "metre"},    {"mass", "kilogram"},       {"money", "USD"},
    {"power", "watt"},         {"pressure", "pascal"}, {"resistance", "ohm"},      {"speed", "km/h"},
    {"temperature", "kelvin"}, {"time", "second"},     {"torque", "newton metre"}, {"voltage", "volt"},
    {"volume", "litre"},       {"weight", "kilogram"},
};

// Every word that the vocabulary completes: it tells five at a time.
std::vector<std::u16string> wordsOf(const QuickTypeEngine& vocabulary) {
    constexpr std::u16string_view letters = u"abcdefghijklmnopqrstuvwxyz '-./²³µåäéèöüßóíáñ";
    constexpr std::size_t longest = 30;
    std::vector<std::u16string> words;
    const std::function<void(const std::u16string&)> walk = [&](const std::u16string& beginning) {
        const auto hints = vocabulary.hintsFor(QuickTypeEngine::Context{beginning, false});
        for (const QuickTypeHint& hint : hints) words.push_back(hint.string);
        if (hints.size() < QuickTypeEngine::maxElementsInArray || beginning.size() >= longest) return;
        for (const char16_t letter : letters) walk(beginning + letter);
    };
    walk(u"");
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

std::vector<std::u16string> unitsOf(Session& session, const std::vector<std::u16string>& lines) {
    std::u16string text;
    for (const std::u16string& line : lines) text += line + u"\n";
    const auto result = session.calculate(text);
    std::vector<std::u16string> units(lines.size());
    for (std::size_t i = 0; result && i < std::min(units.size(), result->lines.size()); ++i) {
        const auto& line = result->lines[i];
        const Value value = line.value();
        const auto unit = value.string(Attribute::unit);
        if (unit && !line.reason() && line.notes().empty()) units[i] = *unit;
    }
    return units;
}

// The names of each unit that amounts of this one convert into, the shortest first.
std::vector<std::string> unitsLike(Session& session, const std::u16string& unit) {
    const std::vector<std::u16string> words = wordsOf(*session.vocabulary());
    std::vector<std::u16string> alone, converted;
    for (const std::u16string& word : words) {
        alone.push_back(u"2 " + word);
        converted.push_back(u"2 " + unit + u" in " + word);
    }
    const auto ids = unitsOf(session, alone), targets = unitsOf(session, converted);
    std::map<std::u16string, std::vector<std::u16string>> names;
    for (std::size_t i = 0; i < words.size(); ++i)
        if (!ids[i].empty() && ids[i] == targets[i]) names[ids[i]].push_back(words[i]);
    std::vector<std::string> rows;
    for (auto& [id, each] : names) {
        std::stable_sort(each.begin(), each.end(), [](const auto& a, const auto& b) { return a.size() < b.size(); });
        rows.push_back(utf8(each.front()) + (each.size() > 1 ? " (" + utf8(each.back()) + ")" : ""));
    }
    return rows;
}

void printColumns(const std::vector<std::string>& texts) {
    std::size_t widest = 0;
    for (const std::string& text : texts) widest = std::max(widest, displayWidth(text));
    const std::size_t columns = std::max<std::size_t>((RawTerminal::size().columns - 1) / (widest + 2), 1);
    const std::size_t rows = (texts.size() + columns - 1) / columns;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string line;
        for (std::size_t i = row; i < texts.size(); i += rows)
            line += "  " + session::printable(texts[i]) + std::string(widest - displayWidth(texts[i]), ' ');
        std::cout << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
    std::cout << std::flush;
}

}  // namespace

std::vector<std::string> unitKinds() {
    std::vector<std::string> names;
    for (const auto& [name, unit] : kinds) names.emplace_back(name);
    return names;
}

void listUnits(Session& session, const std::string& kindOrUnit) {
    if (kindOrUnit.empty()) {
        session.say("the kinds of units; \":units length\" shows those of one");
        return printColumns(unitKinds());
    }
    std::string kind = kindOrUnit;
    for (char& c : kind)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    const auto known =
        std::find_if(std::begin(kinds), std::end(kinds), [&](const auto& each) { return each.first == kind; });
    const auto units = unitsLike(session, utf16(known == std::end(kinds) ? kindOrUnit : known->second));
    if (units.empty())
        return session.say(kindOrUnit + " is neither a kind of units nor a unit; :units shows the kinds");
    printColumns(units);
}

}  // namespace vemo::cli
