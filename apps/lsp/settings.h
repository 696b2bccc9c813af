// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "lsp/json_text.h"
#include "vemo/environment.h"

namespace vemo::lsp {

// What the command line, the configuration file and the client say of how lines are read.
struct Settings {
    std::string locale;
    std::string language;
    std::string timeZone;
    std::optional<std::int64_t> precision;
    std::string rates;  // file or URL of exchange rates; empty: none
    std::string coins;
    std::string places;
    bool offline = false;
    std::string extensions;   // folder of user scripts; empty: none
    std::optional<Date> now;  // what the clocks show at the start; nothing: the system's

    // True when an engine made for one serves the other.
    bool sameEngine(const Settings& other) const;
    friend bool operator==(const Settings&, const Settings&) = default;
};

// The settings with those of an object, which may lie under "vemo". What is null goes back to `base`; what is no use is
// left out, and a sentence is added to `problems`.
Settings withJson(const Settings& base, const Json& object, std::vector<std::string>& problems);

Environment environmentFor(const Settings& settings);

}  // namespace vemo::lsp
