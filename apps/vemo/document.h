// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "options.h"

namespace vemo::cli {

// True for a word that can only mean a file, whether there is one or not.
bool looksLikeFile(const std::string& argument);

// The text to calculate, without a byte order mark. Nothing when it can't be read; the person has been told then.
std::optional<std::string> readDocument(const Options& options);

}  // namespace vemo::cli
