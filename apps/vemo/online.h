// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "options.h"
#include "vemo/engine.h"

namespace vemo::cli {

// How long a calculation waits for rates: five seconds, or as many as VEMO_WAIT says.
std::chrono::milliseconds waitForRates();

// Starts another process that fetches what the options name, with a longer wait: for the next call of the command.
void fetchAfterwards(const Options& options);

// An engine's main loop in a command that calculates once: it waits a little for what the engine fetches.
class Online : public VemoEngineDelegate {
public:
    // Null when the options name nothing to be fetched.
    static std::shared_ptr<Online> forOptions(const Options& options);

    Sources sources() const { return sources_; }
    const std::shared_ptr<RunLoop>& loop() const { return loop_; }
    // Calculates once the rates are there, at the latest after some seconds.
    VemoEngine::Result calculate(VemoEngine& engine, std::u16string_view text, const Context& context);
    // What went wrong since the last call, each thing once.
    std::vector<std::string> takeProblems();
    // True when rates did not come in time; another process may still fetch them.
    bool isLate() const { return late_; }

    void engineInitialized() override { initialized_ = true; }
    void engineContextUpdated(const Context&) override { changed_ = true; }
    void engineOnlineProblem(const OnlineProblem& problem) override;

private:
    void complainOf(std::string problem);
    void runUntil(const std::function<bool()>& done, std::chrono::milliseconds atMost);

    Sources sources_;
    std::shared_ptr<RunLoop> loop_ = std::make_shared<RunLoop>();
    bool initialized_ = false;
    bool late_ = false;     // the latest calculation did not get the rates it waited for
    bool changed_ = false;  // since the document was calculated: a place has become known, or the like
    std::vector<std::string> problems_;
};

}  // namespace vemo::cli
