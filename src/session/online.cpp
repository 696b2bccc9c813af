// SPDX-License-Identifier: MIT
#include "session/online.h"

namespace vemo::session {

bool isUrl(const std::string& source) {
    return source.starts_with("http://") || source.starts_with("https://");
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
