// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "options.h"
#include "vemo/engine.h"

namespace vemo::cli {

bool isUrl(const std::string& source);

// How long a calculation waits for rates: five seconds, or as many as VEMO_WAIT says.
std::chrono::milliseconds waitForRates();

// Has a process of its own fetch what the options name, for the next call, with a longer wait.
void fetchBehind(const Options& options);

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
    // What went wrong since the last call, each thing once.
    std::vector<std::string> takeProblems();
    // True when rates did not come in time; another process may still fetch them.
    bool isLate() const { return downloads_ > 0; }

    void engineInitialized() override { initialized_ = true; }
    void engineContextUpdated(const Context& context) override;

private:
    void hearOfPlaces(std::string_view message);
    bool awaitsPlaces();
    void complainOf(std::string problem);
    void runUntil(const std::function<bool()>& done, std::chrono::milliseconds atMost);

    Sources sources_;
    std::shared_ptr<RunLoop> loop_ = std::make_shared<RunLoop>();
    int downloads_ = 0;  // under way
    int unread_ = 0;     // files to be read: the copy of an earlier run, and what was downloaded
    bool initialized_ = false;
    bool resolved_ = false;        // a place has become known since the document was calculated
    std::mutex mutex_;             // guards what follows
    std::set<std::string> asked_;  // places that were asked for, and have not been answered by name
    std::set<std::string> found_;  // those that have a zone, which documents do not see yet
    std::size_t failed_ = 0;       // answers that name no place
    std::vector<std::string> problems_;
};

}  // namespace vemo::cli
