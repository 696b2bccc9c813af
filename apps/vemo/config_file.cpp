// SPDX-License-Identifier: MIT
#include "config_file.h"

#include "session/configuration.h"

namespace vemo::cli {

Result<Options> readConfig(const std::string& file, Options options) {
    const auto [values, problems] = session::readConfiguration(file);
    if (!problems.empty()) return problems.front();
    options.locale = values.locale;
    options.language = values.language;
    options.timeZone = values.timeZone;
    options.precision = values.precision;
    options.extensions = values.extensions;
    options.rates = values.rates;
    options.coins = values.coins;
    options.places = values.places;
    if (!values.color.empty()) options.color = colors().at(values.color);
    return options;
}

}  // namespace vemo::cli
