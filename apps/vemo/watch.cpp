// SPDX-License-Identifier: MIT
#include "watch.h"

#include <unistd.h>

#include <chrono>
#include <thread>

#include "document.h"
#include "output.h"
#include "session/files.h"

namespace vemo::cli {

namespace {

constexpr std::chrono::milliseconds interval(100);
constexpr std::string_view clearScreen = "\033[H\033[2J\033[3J";

}  // namespace

int watch(const Options& options, const std::string& text, const std::function<int(const std::string&)>& answer) {
    const bool terminal = isatty(STDOUT_FILENO) != 0;
    std::string shown = text;
    session::FileStamp seen = session::stampOf(options.file);
    for (bool first = true;; first = false) {
        // Answers that go elsewhere stand one after the other, an empty row between them.
        if (terminal ? !writeOutput(clearScreen) : !first && !writeOutput("\n")) return 1;
        // A line without a result ends nothing here.
        if (const int status = answer(shown); status != 0 && !options.strict()) return status;
        for (;;) {
            std::this_thread::sleep_for(interval);
            const session::FileStamp now = session::stampOf(options.file);
            // An editor may remove the file for a moment.
            if (now == seen || now == session::FileStamp()) continue;
            seen = now;
            auto changed = readDocument(options);
            if (!changed || *changed == shown) continue;
            shown = *std::move(changed);
            break;
        }
    }
}

}  // namespace vemo::cli
