// SPDX-License-Identifier: MIT
#include "options.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>

#include "config_file.h"
#include "vemo/engine.h"

namespace vemo::cli {

namespace {

constexpr int usageError = 2;

}  // namespace

std::optional<Date> parseInstant(const std::string& text) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, read = 0;
    double second = 0;
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d%*1[Tt ]%2d:%2d:%lf%n", &year, &month, &day, &hour, &minute, &second,
                    &read) != 6)
        return std::nullopt;
    const std::string zone = text.substr(static_cast<std::size_t>(read));
    int offset = 0;
    if (zone != "Z" && zone != "z") {
        int hours = 0, minutes = 0, length = 0;
        if (std::sscanf(zone.c_str(), "%*1[+-]%2d:%2d%n", &hours, &minutes, &length) != 2 ||
            length != static_cast<int>(zone.size()))
            return std::nullopt;
        offset = (zone[0] == '-' ? -60 : 60) * (hours * 60 + minutes);
    }
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok() || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second >= 61)
        return std::nullopt;
    const auto seconds = hour * 3600 + minute * 60 - offset + second;
    return Date(std::chrono::sys_days(date)) + std::chrono::duration<double>(seconds);
}

const std::map<std::string, Options::Color, std::less<>>& colors() {
    static const std::map<std::string, Options::Color, std::less<>> names{
        {"auto", Options::Color::automatic}, {"always", Options::Color::always}, {"never", Options::Color::never}};
    return names;
}

std::variant<Options, int> parseOptions(int argc, char** argv) {
    Options options;
    const std::string problem = readConfig(configFile(), options);
    std::string now, checked;
    CLI::App app{"A notepad-style calculator: one calculation per line, with a value for every line.", "vemo"};
    app.add_option("file", options.file, "Document to calculate; '-' or none reads standard input")->type_name("FILE");
    app.add_option("-e,--expression", options.expressions, "A line to calculate; may be repeated, instead of FILE")
        ->type_name("TEXT")
        ->expected(1)
        ->take_all();
    app.add_flag("--json", options.json, "Print one JSON object");
    app.add_flag("--short", options.shortTexts, "Print short result texts");
    app.add_flag("-q,--quiet", options.quiet, "Say nothing about lines that were read in part, or not at all");
    app.add_option("--locale", options.locale, "How numbers are written, such as de_DE")->type_name("ID");
    app.add_option("--language", options.language, "Language of the words, such as de")->type_name("CODE");
    app.add_option("--timezone", options.timeZone, "Local time zone, such as Europe/Berlin")->type_name("ZONE");
    app.add_option("--now", now, "The current instant, such as 2026-11-24T12:00:00Z")->type_name("RFC3339");
    app.add_option("--precision", options.precision, "Most fraction digits of results (2 unless given)")
        ->type_name("N")
        ->check(CLI::Range(0, mostPrecision));
    app.add_option("--rates", options.rates, "JSON file of exchange rates per US dollar, or its URL")
        ->type_name("FILE");
    app.add_option("--coins", options.coins, "The same for crypto-currencies")->type_name("FILE");
    auto* extensions =
        app.add_option("--extensions", options.extensions, "Folder of scripts (.js) to load")->type_name("DIR");
    app.add_option("--check-extensions", checked, "Load the scripts of a folder and print what each defines")
        ->type_name("DIR")
        ->excludes(extensions);
    app.add_flag("--debug", options.debug, "Print how each line is calculated");
    app.add_option("--color", options.color, "auto, always or never")
        ->type_name("WHEN")
        ->transform(CLI::CheckedTransformer(std::map<std::string, Options::Color>(colors().begin(), colors().end())));
    app.set_version_flag("--version", "vemo " + std::string(VemoEngine::version()));
    try {
        app.parse(argc, argv);
        if (!now.empty() && !(options.now = parseInstant(now)))
            throw CLI::ValidationError("--now", "'" + now + "' is no instant such as 2026-11-24T12:00:00Z");
        if (!options.timeZone.empty() && !isKnownTimeZone(options.timeZone))
            throw CLI::ValidationError("--timezone",
                                       "'" + options.timeZone + "' is no time zone such as Europe/Berlin");
        if (!options.expressions.empty() && !options.file.empty())
            throw CLI::ValidationError("FILE", "give a file or --expression, not both");
        options.checkExtensions = !checked.empty();
        if (options.checkExtensions) options.extensions = checked;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usageError;
    }
    if (problem.empty()) return options;
    std::fprintf(stderr, "vemo: %s\n", problem.c_str());
    return usageError;
}

}  // namespace vemo::cli
