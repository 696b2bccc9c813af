// SPDX-License-Identifier: MIT
#include "prompt/unit_lists.h"

#include <algorithm>
#include <iostream>

#include "prompt/raw_terminal.h"
#include "session/characters.h"
#include "session/nearest.h"
#include "session/printable.h"

namespace vemo::cli {

namespace {

// The kinds of units, each with one of its units.
constexpr std::pair<std::string_view, std::string_view> kinds[] = {
    {"acceleration", "m/s²"},  {"angle", "radian"},    {"area", "hectare"},        {"charge", "coulomb"},
    {"current", "ampere"},     {"data", "byte"},       {"energy", "joule"},        {"force", "newton"},
    {"frequency", "hertz"},    {"length", "metre"},    {"mass", "kilogram"},       {"money", "USD"},
    {"power", "watt"},         {"pressure", "pascal"}, {"resistance", "ohm"},      {"speed", "km/h"},
    {"temperature", "kelvin"}, {"time", "second"},     {"torque", "newton metre"}, {"voltage", "volt"},
    {"volume", "litre"},       {"weight", "kilogram"},
};

// The id of a unit as a line has it; empty for what is none.
std::u16string unitIn(Session& session, const std::u16string& name) {
    const auto result = session.calculate(u"1 " + name);
    if (!result || result->lines.empty() || !result->lines[0].notes().empty()) return {};
    const Value value = result->lines[0].value();
    return std::u16string(value.string(Attribute::unit).value_or(u""));
}

// The names of the units that amounts of this one convert into, its own for one, the usual ones first.
std::vector<std::string> unitsLike(Session& session, const std::u16string& name) {
    const std::u16string unit = unitIn(session, name);
    auto units = unit.empty() ? std::vector<Completion>() : session.engine().conversionsOf(unit);
    if (!units.empty()) {
        // It is among those of another.
        for (const Completion& each : session.engine().conversionsOf(unitIn(session, units.front().text)))
            if (std::find(units.begin(), units.end(), each) == units.end()) units.push_back(each);
        std::stable_sort(units.begin(), units.end(), [](const auto& a, const auto& b) { return a.weight > b.weight; });
    }
    std::vector<std::string> names;
    names.reserve(units.size());
    for (const Completion& each : units) names.push_back(utf8(each.text));
    return names;
}

void printColumns(const std::vector<std::string>& texts) {
    std::size_t widest = 0;
    for (const std::string& text : texts) widest = std::max(widest, session::displayWidth(text));
    const std::size_t columns = std::max<std::size_t>((RawTerminal::size().columns - 1) / (widest + 2), 1);
    const std::size_t rows = (texts.size() + columns - 1) / columns;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string line;
        for (std::size_t i = row; i < texts.size(); i += rows)
            line += "  " + session::printable(texts[i]) + std::string(widest - session::displayWidth(texts[i]), ' ');
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
        return session.say(kindOrUnit + " is neither a kind of units nor a unit; the nearest kind is " +
                           session::nearest(kind, unitKinds()));
    printColumns(units);
}

}  // namespace vemo::cli
