// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "vemo/time.h"

namespace vemo::cli {

struct Options {
    enum class Color { automatic, always, never };
    enum class Format { table, csv, tsv, markdown, html, json };

    std::vector<std::string> expressions;
    bool argument = false;  // the only expression is an argument that names no file
    std::string file;       // empty or "-": standard input
    Format format = Format::table;
    bool results = false;      // nothing but results
    bool plain = false;        // numbers for programs
    bool interactive = false;  // at a prompt
    bool watch = false;        // calculate the file whenever it is saved
    bool shortTexts = false;
    bool quiet = false;    // without notes and reasons
    bool explain = false;  // with each line as it was calculated
    std::string locale;
    std::string language;
    std::string timeZone;
    std::optional<Date> now;
    std::optional<std::int64_t> precision;
    std::string rates;             // file or URL of exchange rates; empty: none
    std::string coins;             // the same for crypto-currencies
    std::string places;            // URL of a service that knows the time zones of places; empty: the built-in ones
    bool offline = false;          // nothing is fetched
    std::string extensions;        // folder; empty: no scripts
    bool checkExtensions = false;  // of this folder, instead of a document
    bool debug = false;
    Color color = Color::automatic;

    bool json() const { return format == Format::json; }
    // True for lines that were asked for alone, whose failure is that of the command.
    bool strict() const { return results || argument; }
};

// By the words that name them.
const std::map<std::string, Options::Color, std::less<>>& colors();

// The options of the configuration file and the command line, or the exit status of a command line that asks for help
// or is wrong (what there is to say has been printed).
std::variant<Options, int> parseOptions(int argc, char** argv);

// An instant in RFC 3339, such as 2026-11-24T13:16:00Z; nothing when it is none.
std::optional<Date> parseInstant(const std::string& text);

}  // namespace vemo::cli
