// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vemo/result.h"

namespace vemo::session {

// What the configuration file says, for every program that reads it. Empty texts for what it leaves open.
struct Configuration {
    std::string locale;
    std::string language;
    std::string timeZone;
    std::optional<std::int64_t> precision;
    std::string rates;       // file or URL
    std::string coins;       // file or URL
    std::string places;      // URL
    std::string extensions;  // folder
    std::string color;       // of the command: auto, always or never
    std::string font;        // of the notepad, such as "Noto Sans 12"
    std::string theme;       // of the notepad: light, dark or desktop

    friend bool operator==(const Configuration&, const Configuration&) = default;
};

constexpr int mostPrecision = 999;

// What could be read, and what is wrong with the rest, each in one line: file, line and key.
struct ReadConfiguration {
    Configuration values;
    std::vector<Failure> problems;
};

// $XDG_CONFIG_HOME/vemo/config.toml, else ~/.config/vemo/config.toml; empty without a home.
std::string configurationFile();

// Files that the file names are found from its folder. A missing file is no fault.
ReadConfiguration readConfiguration(const std::string& file);

}  // namespace vemo::session
