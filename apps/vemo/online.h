// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "options.h"
#include "vemo/engine.h"

namespace vemo::cli {

bool isUrl(const std::string& source);

// An engine's main loop in a command that calculates once: it waits a little for what the engine fetches.
class Online : public VemoEngineDelegate {
public:
    // Null when the options name nothing to be fetched.
    static std::shared_ptr<Online> forOptions(const Options& options);

    Sources sources() const { return sources_; }
    const std::shared_ptr<RunLoop>& loop() const { return loop_; }
    // To be told every message of the engine's log.
    void hear(std::string_view message);
    // Calculates once the rates are there, at the latest after some seconds.
    VemoEngine::Result calculate(VemoEngine& engine, std::u16string_view text, const Context& context);

    void engineInitialized() override { initialized_ = true; }
    void engineContextUpdated(const Context&) override { updated_ = true; }

private:
    void runUntil(const std::function<bool()>& done, std::chrono::milliseconds atMost);

    Sources sources_;
    std::shared_ptr<RunLoop> loop_ = std::make_shared<RunLoop>();
    int downloads_ = 0;  // under way
    int unread_ = 0;     // files to be read: the copy of an earlier run, and what was downloaded
    bool initialized_ = false;
    bool updated_ = false;
};

}  // namespace vemo::cli
