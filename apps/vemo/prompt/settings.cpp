// SPDX-License-Identifier: MIT
#include "prompt/settings.h"

#include <charconv>

#include "session/configuration.h"
#include "session/nearest.h"

namespace vemo::cli {

namespace {

struct Setting {
    std::string_view name;
    std::string_view values;
    std::string (*shown)(Session& session);
    // Changes the setting; false for a value that it can't have.
    bool (*take)(Session& session, const std::string& value);
};

template <bool& (*flag)(Session&)>
std::string shownFlag(Session& session) {
    return flag(session) ? "on" : "off";
}

template <bool& (*flag)(Session&)>
bool takeFlag(Session& session, const std::string& value) {
    if (value == "on" || value == "off") flag(session) = value == "on";
    return value == "on" || value == "off";
}

bool& notes(Session& session) {
    return session.layout().remarks;
}

bool& plain(Session& session) {
    return session.layout().writing.plain;
}

bool& shortTexts(Session& session) {
    return session.layout().writing.shortTexts;
}

std::string shownPrecision(Session& session) {
    const auto& digits = session.layout().writing.precision;
    return digits ? std::to_string(*digits) : "auto";
}

bool takePrecision(Session& session, const std::string& value) {
    int digits = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), digits);
    const bool isNumber = error == std::errc() && end == value.data() + value.size();
    if (value != "auto" && (!isNumber || digits < 0 || digits > session::mostPrecision)) return false;
    session.setPrecision(isNumber ? std::optional<std::int64_t>(digits) : std::nullopt);
    return true;
}

constexpr Setting settings[] = {
    {"precision", "a number of digits from 0 to 999, or auto", shownPrecision, takePrecision},
    {"notes", "on or off", shownFlag<notes>, takeFlag<notes>},
    {"plain", "on or off", shownFlag<plain>, takeFlag<plain>},
    {"short", "on or off", shownFlag<shortTexts>, takeFlag<shortTexts>},
};

void show(Session& session, const Setting& setting) {
    session.say("  " + std::string(setting.name) + " " + setting.shown(session) + "  (" + std::string(setting.values) +
                ")");
}

}  // namespace

std::vector<std::string> settingNames() {
    std::vector<std::string> names;
    for (const Setting& setting : settings) names.emplace_back(setting.name);
    return names;
}

void changeSetting(Session& session, const std::string& words) {
    const std::size_t blank = std::min(words.find(' '), words.size());
    const std::string name = words.substr(0, blank);
    const std::string value = words.substr(std::min(words.find_first_not_of(' ', blank), words.size()));
    for (const Setting& setting : settings) {
        if (!name.empty() && setting.name != name) continue;
        if (!value.empty() && !setting.take(session, value))
            return session.say(name + " is " + std::string(setting.values));
        show(session, setting);
        if (!name.empty()) return;
    }
    if (!name.empty())
        session.say("there is no setting " + name + "; the nearest is " + session::nearest(name, settingNames()));
}

}  // namespace vemo::cli
