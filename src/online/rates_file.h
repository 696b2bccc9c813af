// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "vemo/context.h"
#include "vemo/result.h"

namespace vemo {

// Reads a file of rates: a JSON object with an object "rates", the amount per US dollar by currency code. Other
// members are ignored, as are rates that are no number from 10^-12 to 10^15; of two rates for one code the last
// counts. Or says in a few words what is wrong, also with a file that leaves no rates.
Result<CurrencyRatesContainer> parseRates(std::string_view json);

}  // namespace vemo
