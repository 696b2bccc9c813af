// SPDX-License-Identifier: MIT
#include "session/sources.h"

#include "session/files.h"

namespace vemo::session {

bool isUrl(const std::string& source) {
    return source.starts_with("http://") || source.starts_with("https://");
}

std::string takeRates(VemoEngine& engine, VemoEngine::RatesFile kind, const std::string& source) {
    if (source.empty() || isUrl(source)) return "";
    constexpr std::size_t largest = std::size_t(16) << 20;  // bytes; no file of rates is larger
    const auto json = readFile(source, largest);
    const std::string problem = json ? engine.takeRates(kind, *json) : "cannot be read";
    return problem.empty() ? "" : source + ": " + problem;
}

std::string problemText(const OnlineProblem& problem) {
    switch (problem.kind) {
        case OnlineProblem::Kind::ratesNotFetched:
            return "no rates came from " + problem.source + ": " + problem.message;
        case OnlineProblem::Kind::ratesNotKept:
            return "no copy can be kept of " + problem.source;
        case OnlineProblem::Kind::copyUnusable:
            return "the copy of rates is no use: " + problem.message;
        case OnlineProblem::Kind::placeNotFetched:
            return "the service for places " + problem.message;
    }
    return "";
}

}  // namespace vemo::session
