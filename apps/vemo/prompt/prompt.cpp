// SPDX-License-Identifier: MIT
#include "prompt/prompt.h"

#include "prompt/session.h"

namespace vemo::cli {

int runPrompt(const PromptSetting& setting, const Options& options) {
    constexpr int unusable = 2;
    Session session(setting, options);
    return session.begin(options) ? session.run() : unusable;
}

}  // namespace vemo::cli
