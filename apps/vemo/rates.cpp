// SPDX-License-Identifier: MIT
#include "rates.h"

#include <nlohmann/json.hpp>

#include "files.h"
#include "vemo/engine.h"

namespace vemo::cli {

std::variant<CurrencyRatesContainer, std::string> readRates(const std::string& file) {
    const auto bytes = readFile(file);
    if (!bytes) return file + ": cannot be read";
    const auto document = nlohmann::json::parse(*bytes, nullptr, false);
    if (document.is_discarded()) return file + ": not JSON";
    if (!document.is_object() || !document.contains("rates") || !document["rates"].is_object())
        return file + ": has no object \"rates\"";
    CurrencyRatesContainer container;
    for (const auto& [code, rate] : document["rates"].items()) {
        if (!rate.is_number()) continue;
        const DecimalNumber number = DecimalNumber::fromDouble(rate.get<double>());
        if (!number.notANumber() && !number.isNegative() && !number.isZero()) container.rates[utf16(code)] = number;
    }
    return container;
}

}  // namespace vemo::cli
