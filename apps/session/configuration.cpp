// SPDX-License-Identifier: MIT
#include "session/configuration.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include "session/nearest.h"
#include "session/sources.h"
#include "vemo/environment.h"

namespace vemo::session {

namespace {

// Takes a value. Says what was expected when the value is of another kind.
struct Setter {
    std::string_view table;  // empty: the keys before all tables
    std::string_view key;
    std::string (*take)(const toml::node& node, Configuration& values);
};

template <std::string Configuration::*member>
std::string text(const toml::node& node, Configuration& values) {
    const auto value = node.value_exact<std::string>();
    if (!value) return "a text";
    values.*member = *value;
    return "";
}

std::string precision(const toml::node& node, Configuration& values) {
    const auto digits = node.value_exact<std::int64_t>();
    if (!digits || *digits < 0 || *digits > mostPrecision) return "a number from 0 to " + std::to_string(mostPrecision);
    values.precision = *digits;
    return "";
}

std::string timeZone(const toml::node& node, Configuration& values) {
    const auto zone = node.value_exact<std::string>();
    if (!zone || !isKnownTimeZone(*zone)) return "a time zone such as Europe/Berlin";
    values.timeZone = *zone;
    return "";
}

// Takes one of three words.
std::string word(const toml::node& node, std::string& member, const std::string& a, const std::string& b,
                 const std::string& c) {
    const auto value = node.value_exact<std::string>();
    if (!value || (*value != a && *value != b && *value != c)) return a + ", " + b + " or " + c;
    member = *value;
    return "";
}

constexpr std::string_view notepad = "notepad";

constexpr Setter setters[] = {
    {"", "locale", text<&Configuration::locale>},
    {"", "language", text<&Configuration::language>},
    {"", "timezone", timeZone},
    {"", "precision", precision},
    {"", "extensions", text<&Configuration::extensions>},
    {"", "rates", text<&Configuration::rates>},
    {"", "coins", text<&Configuration::coins>},
    {"", "places", text<&Configuration::places>},
    {"", "color",
     [](const toml::node& node, Configuration& values) { return word(node, values.color, "auto", "always", "never"); }},
    {notepad, "font", text<&Configuration::font>},
    {notepad, "theme",
     [](const toml::node& node, Configuration& values) {
         return word(node, values.theme, "light", "dark", "desktop");
     }},
};

class Reader {
public:
    explicit Reader(const std::string& file) : file_(file) {}

    void read(const toml::table& table, std::string_view name = {}) {
        for (const auto& [key, node] : table) {
            if (name.empty() && key.str() == notepad && node.is_table()) {
                read(*node.as_table(), notepad);
                continue;
            }
            const std::string_view word = key.str();
            const auto setter = std::find_if(std::begin(setters), std::end(setters), [&](const Setter& each) {
                return each.table == name && each.key == word;
            });
            if (setter == std::end(setters)) {
                complain(key.source(), "there is no key '" + std::string(key.str()) + "'; the nearest is " +
                                           nearest(key.str(), keysOf(name)));
                continue;
            }
            const std::string expected = setter->take(node, result.values);
            if (!expected.empty())
                complain(node.source(), "'" + std::string(key.str()).append("' takes ").append(expected));
        }
    }

    void complain(const toml::source_region& where, std::string_view what) {
        const auto line = where.begin.line;
        result.problems.push_back(
            {file_ + ":" + std::to_string(line) + ": " + std::string(what), static_cast<int>(line)});
    }

    ReadConfiguration result;

private:
    static std::vector<std::string> keysOf(std::string_view table) {
        std::vector<std::string> keys;
        for (const Setter& each : setters)
            if (each.table == table) keys.emplace_back(each.key);
        std::sort(keys.begin(), keys.end());
        return keys;
    }

    const std::string& file_;
};

// Finds a file or folder from the folder of the configuration, or from home; URLs stay as they are.
void resolve(std::string& name, const std::filesystem::path& folder) {
    if (name.empty() || isUrl(name)) return;
    const char* home = std::getenv("HOME");
    if (name.starts_with("~/") && home)
        name = home + name.substr(1);
    else
        name = (folder / name).string();
}

}  // namespace

std::string configurationFile() {
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder && *folder == '/') return std::string(folder) + "/vemo/config.toml";
    const char* home = std::getenv("HOME");
    return home && *home ? std::string(home) + "/.config/vemo/config.toml" : "";
}

ReadConfiguration readConfiguration(const std::string& file) {
    Reader reader(file);
    std::error_code error;
    if (file.empty() || !std::filesystem::exists(file, error)) return reader.result;
    if (!std::filesystem::is_regular_file(file, error)) return {{}, {Failure{file + ": is no file"}}};
    const toml::parse_result parsed = toml::parse_file(file);
    if (parsed)
        reader.read(parsed.table());
    else
        reader.complain(parsed.error().source(), parsed.error().description());
    Configuration& values = reader.result.values;
    const std::filesystem::path folder = std::filesystem::path(file).parent_path();
    for (std::string* name : {&values.extensions, &values.rates, &values.coins}) resolve(*name, folder);
    return reader.result;
}

}  // namespace vemo::session
