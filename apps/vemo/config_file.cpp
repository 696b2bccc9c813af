// SPDX-License-Identifier: MIT
#include "config_file.h"

#include <cstdlib>
#include <filesystem>
#include <functional>

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include "online.h"
#include "session/nearest.h"
#include "vemo/engine.h"

namespace vemo::cli {

namespace {

// Takes a value; says what was expected when it is none of that.
using Setter = std::function<std::string(const toml::node&, Options&)>;

template <class Member>
Setter text(Member Options::*member) {
    return [member](const toml::node& node, Options& options) -> std::string {
        const auto value = node.value_exact<std::string>();
        if (!value) return "a text";
        options.*member = *value;
        return "";
    };
}

std::string setPrecision(const toml::node& node, Options& options) {
    const auto digits = node.value_exact<std::int64_t>();
    if (!digits || *digits < 0 || *digits > mostPrecision) return "a number from 0 to " + std::to_string(mostPrecision);
    options.precision = *digits;
    return "";
}

std::string setTimeZone(const toml::node& node, Options& options) {
    const auto zone = node.value_exact<std::string>();
    if (!zone || !isKnownTimeZone(*zone)) return "a time zone such as Europe/Berlin";
    options.timeZone = *zone;
    return "";
}

std::string setColor(const toml::node& node, Options& options) {
    const auto value = node.value_exact<std::string>();
    const auto found = value ? colors().find(*value) : colors().end();
    if (found == colors().end()) return "auto, always or never";
    options.color = found->second;
    return "";
}

const std::map<std::string, Setter, std::less<>>& setters() {
    static const std::map<std::string, Setter, std::less<>> table{
        {"locale", text(&Options::locale)},
        {"language", text(&Options::language)},
        {"timezone", setTimeZone},
        {"precision", setPrecision},
        {"extensions", text(&Options::extensions)},
        {"rates", text(&Options::rates)},
        {"coins", text(&Options::coins)},
        {"places", text(&Options::places)},
        {"color", setColor},
    };
    return table;
}

// A file or folder that is named from where the configuration is, or from home; URLs stay as they are.
void resolve(std::string& name, const std::filesystem::path& folder) {
    if (name.empty() || isUrl(name)) return;
    const char* home = std::getenv("HOME");
    if (name.starts_with("~/") && home)
        name = home + name.substr(1);
    else
        name = (folder / name).string();
}

std::string at(const std::string& file, const toml::source_region& where) {
    return file + ":" + std::to_string(where.begin.line) + ": ";
}

}  // namespace

std::string configFile() {
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder && *folder == '/') return std::string(folder) + "/vemo/config.toml";
    const char* home = std::getenv("HOME");
    return home && *home ? std::string(home) + "/.config/vemo/config.toml" : "";
}

Result<Options> readConfig(const std::string& file, Options options) {
    std::error_code error;
    if (file.empty() || !std::filesystem::exists(file, error)) return options;
    if (!std::filesystem::is_regular_file(file, error)) return Failure{file + ": is no file"};
    const toml::parse_result parsed = toml::parse_file(file);
    if (!parsed) {
        const toml::source_region& where = parsed.error().source();
        return Failure{at(file, where) + std::string(parsed.error().description()), static_cast<int>(where.begin.line)};
    }
    for (const auto& [key, node] : parsed.table()) {
        const std::string name(key.str());
        const auto setter = setters().find(name);
        if (setter == setters().end()) {
            std::vector<std::string> known;
            for (const auto& [each, unused] : setters()) known.push_back(each);
            return Failure{at(file, key.source()) + "there is no key '" + name + "'; the nearest is " +
                               session::nearest(name, known),
                           static_cast<int>(key.source().begin.line)};
        }
        const std::string expected = setter->second(node, options);
        if (!expected.empty()) {
            return Failure{at(file, node.source()).append("'").append(name).append("' takes ").append(expected),
                           static_cast<int>(node.source().begin.line)};
        }
    }
    const std::filesystem::path folder = std::filesystem::path(file).parent_path();
    for (std::string* name : {&options.extensions, &options.rates, &options.coins}) resolve(*name, folder);
    return options;
}

}  // namespace vemo::cli
