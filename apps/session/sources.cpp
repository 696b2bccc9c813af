// SPDX-License-Identifier: MIT
#include "session/sources.h"

#include "session/files.h"

namespace vemo::session {

std::string takeRates(VemoEngine& engine, VemoEngine::RatesFile kind, const std::string& source) {
    if (source.empty() || isUrl(source)) return "";
    constexpr std::size_t largest = std::size_t(16) << 20;  // bytes; no file of rates is larger
    const auto json = readFile(source, largest);
    const std::string problem = json ? engine.takeRates(kind, *json) : "cannot be read";
    return problem.empty() ? "" : source + ": " + problem;
}

}  // namespace vemo::session
