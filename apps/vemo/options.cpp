// SPDX-License-Identifier: MIT
#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>

#include "config_file.h"
#include "document.h"
#include "output.h"
#include "session/configuration.h"
#include "session/nearest.h"
#include "session/printable.h"
#include "session/sources.h"
#include "vemo/engine.h"

namespace vemo::cli {

namespace {

constexpr int usageError = 2;

constexpr const char* description =
    "Calculates what people write: one calculation per line, with a value for each.\n"
    "An argument that names a file is read, any other is calculated; without one,\n"
    "standard input is read, or on a terminal, lines at a prompt.";

constexpr const char* examples =
    "Examples:\n"
    "  vemo '5 inch in cm'               a line with its result\n"
    "  vemo -r '20% of 50'               the result alone\n"
    "  vemo budget.vemo                  a document with its total\n"
    "  vemo --watch budget.vemo          the same, whenever it is saved\n"
    "  vemo --format csv budget.vemo     a table for a spreadsheet\n"
    "  vemo                              a prompt\n"
    "  vemo lsp                          a language server, for editors\n"
    "'man vemo' tells all of it, 'man 7 vemo' what can be written.";

const std::map<std::string, Options::Format, std::less<>>& formats() {
    using Format = Options::Format;
    static const std::map<std::string, Format, std::less<>> names{
        {"table", Format::table},       {"csv", Format::csv},   {"tsv", Format::tsv},
        {"markdown", Format::markdown}, {"html", Format::html}, {"json", Format::json}};
    return names;
}

[[noreturn]] void refuse(const std::string& option, const std::string& name, const std::vector<std::string>& known) {
    throw CLI::ValidationError(option, "'" + name + "' is not known; the nearest is " + session::nearest(name, known));
}

template <class Table>
auto named(const Table& table, const std::string& option, const std::string& name) {
    const auto found = table.find(name);
    if (found != table.end()) return found->second;
    std::vector<std::string> known;
    known.reserve(table.size());
    for (const auto& [each, unused] : table) known.push_back(each);
    refuse(option, name, known);
}

// The options by their groups, in the order in which they were added.
std::string helpText(const CLI::App* app, const std::string&, CLI::AppFormatMode) {
    constexpr std::size_t column = 28;
    std::string text = std::string(description) + "\n\nUsage: vemo [OPTIONS] [FILE | CALCULATION]\n";
    std::string group;
    for (const CLI::Option* option : app->get_options()) {
        if (option->nonpositional() && option->get_group() != group) {
            group = option->get_group();
            text += "\n" + group + ":\n";
        }
        if (!option->nonpositional()) continue;
        const auto& letters = option->get_snames();
        std::string row = letters.empty() ? "      " : "  -" + letters.front() + ", ";
        row += "--" + option->get_lnames().front();
        if (option->get_items_expected_max() > 0) row += " " + option->get_type_name();
        row.resize(std::max(column, row.size() + 2), ' ');
        text += row + option->get_description() + "\n";
    }
    return text + "\n" + examples + "\n";
}

// An argument such as "-5 + 3" is a calculation, unless it is an option's value.
std::vector<std::string> argumentsOf(const CLI::App& app, int argc, char** argv) {
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        const bool calculation = argument.size() > 1 && argument[0] == '-' &&
                                 std::string_view("0123456789.( ").find(argument[1]) != std::string_view::npos;
        const CLI::Option* before = i > 1 ? app.get_option_no_throw(argv[i - 1]) : nullptr;
        const bool value = before && before->nonpositional() && before->get_items_expected_max() > 0;
        arguments.push_back(calculation && !value ? " " + argument : argument);
    }
    std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
    return arguments;
}

void takeArguments(const std::vector<std::string>& arguments, Options& options) {
    if (arguments.empty()) return;
    if (!options.expressions.empty()) throw CLI::ValidationError("FILE", "give a file or --expression, not both");
    std::string line;
    for (const std::string& argument : arguments) line += (line.empty() ? "" : " ") + argument;
    if (line.starts_with(" -")) line.erase(0, 1);
    std::error_code error;
    if (arguments.size() == 1 && (options.interactive || line == "-" || line.empty() ||
                                  std::filesystem::exists(line, error) || looksLikeFile(line))) {
        options.file = line;
        return;
    }
    options.expressions = {line};
    options.argument = true;
}

// What is wrong with the command line, in words of our own where the parser's don't help.
std::string problemOf(const CLI::App& app, const CLI::ParseError& error, int argc, char** argv) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::ExtrasError)) return error.what();
    std::vector<std::string> known;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames()) known.push_back("--" + name);
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i], name = argument.substr(0, argument.find('='));
        if (name.starts_with("-") && !app.get_option_no_throw(name))
            return "there is no option " + name + "; the nearest is " + session::nearest(name, known);
    }
    return error.what();
}

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
    const Result<Options> configured = readConfig(session::configurationFile(), Options());
    Options options = configured ? *configured : Options();
    std::string now, checked, format, color;
    std::vector<std::string> arguments;
    bool json = false;
    CLI::App app{"", "vemo"};
    app.set_help_flag();                 // comes last
    app.option_defaults()->take_last();  // an alias may give what the command line gives anew
    app.formatter_fn(helpText);
    app.add_option("FILE", arguments, "A document, or a line to calculate; '-' is standard input")
        ->type_name("")
        ->take_all();

    app.add_option("-e,--expression", options.expressions, "A line to calculate instead of FILE; may be repeated")
        ->type_name("TEXT")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_flag("--watch", options.watch, "Print the results of FILE anew whenever it is saved");
    app.add_flag("-i,--interactive", options.interactive, "Go on at a prompt, with the lines of FILE");
    for (const char* option : {"--expression", "--watch", "--interactive"})
        app.get_option(option)->group("What is calculated");

    app.add_flag("-r,--results", options.results, "Print results only; fail where one is missing");
    app.add_flag("--plain", options.plain, "Print exact numbers for programs, the unit apart");
    app.add_option("--format", format, "table, csv, tsv, markdown, html or json")->type_name("NAME");
    app.add_flag("--json", json, "Print all that is known of each line as JSON");
    app.add_flag("--short", options.shortTexts, "Print short result texts");
    app.add_option("--precision", options.precision, "Most fraction digits of results (2 unless given)")
        ->type_name("N")
        ->check(CLI::Range(0, session::mostPrecision).description(""));
    app.add_option("--color", color, "auto, always or never")->type_name("WHEN");
    app.add_flag("-q,--quiet", options.quiet, "Say nothing about lines read in part or not at all");
    app.add_flag("--explain", options.explain, "Tell under each line how it was calculated");
    for (const char* option :
         {"--results", "--plain", "--format", "--json", "--short", "--precision", "--color", "--quiet", "--explain"})
        app.get_option(option)->group("What is printed");

    app.add_option("--locale", options.locale, "How numbers are written, such as de_DE")->type_name("ID");
    app.add_option("--language", options.language, "Language of the words, such as de")->type_name("CODE");
    app.add_option("--timezone", options.timeZone, "Local time zone, such as Europe/Berlin")->type_name("ZONE");
    app.add_option("--now", now, "The current instant, such as 2026-11-24T12:00:00Z")->type_name("RFC3339");
    for (const char* option : {"--locale", "--language", "--timezone", "--now"})
        app.get_option(option)->group("How lines are read");

    app.add_option("--rates", options.rates, "JSON file of rates per US dollar, or its URL")->type_name("FILE");
    app.add_option("--coins", options.coins, "The same for crypto-currencies")->type_name("FILE");
    app.add_option("--places", options.places, "URL of a service that knows the time zones of places")
        ->type_name("URL");
    app.add_flag("--offline", options.offline, "Fetch nothing, whatever URLs there are");
    for (const char* option : {"--rates", "--coins", "--places", "--offline"})
        app.get_option(option)->group("Rates and places");

    app.add_option("--extensions", options.extensions, "Folder of scripts (.js) to load")->type_name("DIR");
    app.add_option("--check-extensions", checked, "Load scripts, and print what each defines")->type_name("DIR");
    app.add_flag("--debug", options.debug, "Print how each line is calculated");
    app.set_help_flag("-h,--help", "Print this");
    app.set_version_flag("--version", "vemo " + std::string(VemoEngine::version()), "Print the version");
    for (const char* option : {"--extensions", "--check-extensions", "--debug", "--help", "--version"})
        app.get_option(option)->group("What else there is");
    try {
        app.parse(argumentsOf(app, argc, argv));
        if (!now.empty() && !(options.now = parseInstant(now)))
            throw CLI::ValidationError("--now", "'" + now + "' is no instant such as 2026-11-24T12:00:00Z");
        if (!options.timeZone.empty() && !isKnownTimeZone(options.timeZone))
            refuse("--timezone", options.timeZone, knownTimeZones());
        if (!isKnownLocale(options.locale)) refuse("--locale", options.locale, knownLocales());
        if (!isKnownLanguage(options.language)) refuse("--language", options.language, knownLanguages());
        if (!options.places.empty() && !session::isUrl(options.places))
            throw CLI::ValidationError("--places", "'" + options.places + "' is no URL");
        takeArguments(arguments, options);
        if (!color.empty()) options.color = named(colors(), "--color", color);
        if (!format.empty()) options.format = named(formats(), "--format", format);
        if (app.count("--extensions") > 0 && !checked.empty())
            throw CLI::ValidationError("--check-extensions", "takes the place of --extensions");
        if (json) options.format = Options::Format::json;
        if (options.watch && (options.file.empty() || options.file == "-"))
            throw CLI::ValidationError("--watch", "needs a FILE");
        if (options.interactive && (options.watch || options.results || options.format != Options::Format::table))
            throw CLI::ValidationError("--interactive", "gives no output for programs");
        options.checkExtensions = !checked.empty();
        if (options.checkExtensions) options.extensions = checked;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            complain(problemOf(app, error, argc, argv) + " ('vemo --help' lists the options)");
            return usageError;
        }
        std::ostringstream said;
        app.exit(error, said, said);
        return writeOutput(said.str()) ? 0 : 1;
    }
    if (configured) return options;
    complain(configured.failure().message);
    return usageError;
}

}  // namespace vemo::cli
