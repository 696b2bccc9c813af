// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <variant>

#include "vemo/context.h"

namespace vemo::cli {

// Reads the object "rates" of a JSON file: amounts per US dollar by currency code. Members that are no positive
// number are skipped. Otherwise a message that names the file.
std::variant<CurrencyRatesContainer, std::string> readRates(const std::string& file);

}  // namespace vemo::cli
