// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "vemo/result.h"

namespace vemo::session {

// A key, such as "rates" or "notepad.font", with its new value; nothing takes the key out.
struct ConfigurationChange {
    std::string key;
    std::optional<std::variant<std::string, std::int64_t>> value;
};

// The text of a configuration file with the changes: every other key and, where that can be, every comment, blank line
// and order of it stay as they were written. A failure tells what is wrong with a text that can't be read.
Result<std::string> changedConfiguration(std::string_view text, const std::vector<ConfigurationChange>& changes);

// Makes the changes in the file, which is made where it is missing, with its folder. Says what is wrong; nothing is
// written then.
std::string changeConfiguration(const std::string& file, const std::vector<ConfigurationChange>& changes);

}  // namespace vemo::session
