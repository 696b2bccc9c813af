// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "c/options.h"
#include "vemo/documents.h"
#include "vemo/engine.h"

namespace vemo::c {

// A text that is calculated again and again, as its handle and the engine's thread share it.
struct LiveDocument {
    std::function<void()> answered;          // never changed
    std::unique_ptr<VemoDocument> document;  // on the engine's thread only; null before a text and after the end
    std::mutex mutex;                        // of all below
    std::condition_variable changed;
    std::int64_t version = 0;  // of the latest text that was set
    std::u16string text;       // that text
    bool ended = false;        // nothing more is calculated
    std::shared_ptr<const VemoDocument::Answer> latest;
    std::u16string answeredText;  // what `latest` answers
};

// An engine on a thread of its own, which is the engine's main executor: what other threads want of it is run there.
class Host {
public:
    // Ready when this returns.
    explicit Host(const vemo_options& options);
    ~Host();

    // Ends the thread, and the engine on it. Throws when called on that thread.
    void close();

    bool isOwnThread() const { return std::this_thread::get_id() == ownThread_; }
    // Runs the task on the engine's thread and waits for it. Throws when the engine is closed, and what the task
    // throws.
    void run(const std::function<void(VemoEngine&)>& task);
    template <class Answer, class Act>
    Answer ask(Act act) {
        std::optional<Answer> answer;
        run([&](VemoEngine& engine) { answer.emplace(act(engine)); });
        return *std::move(answer);
    }

    VemoEngine::Result calculate(std::u16string_view text);
    std::optional<std::u16string> readingOf(std::size_t line, std::u16string_view text);
    void takeRates(VemoEngine::RatesFile kind, std::string_view json);
    // Waits for what is being fetched; `problem` says what did not come.
    vemo_status wait(std::chrono::milliseconds atMost, std::string& problem);
    // The vocabulary of what the engine knows now. On the engine's thread.
    const Completions& completions(VemoEngine& engine);
    const std::string& startUpLog() const { return startUpLog_; }

    std::shared_ptr<LiveDocument> open(std::function<void()> answered);
    void setText(const std::shared_ptr<LiveDocument>& live, std::u16string text);
    // When this returns, nothing of the document runs any more.
    void end(const std::shared_ptr<LiveDocument>& live);

private:
    class Listener;

    void live(const vemo_options& options);
    void post(std::function<void()> task);
    void calculate(const std::shared_ptr<LiveDocument>& live);
    void contextChanged();
    Context settings() const;
    static void endHere(LiveDocument& live);

    std::shared_ptr<RunLoop> loop_ = std::make_shared<RunLoop>();
    std::optional<std::int64_t> precision_;
    // Never changed once the engine is ready.
    std::string startUpLog_;
    std::thread::id ownThread_;

    std::mutex mutex_;  // of what follows
    std::condition_variable changed_;
    bool ready_ = false;
    bool closed_ = false;
    std::string failure_;   // of the start
    std::string problems_;  // of fetching, since somebody asked

    // On the engine's thread only.
    std::unique_ptr<VemoEngine> engine_;
    std::shared_ptr<Listener> listener_;
    std::shared_ptr<const Completions> completions_;
    std::vector<std::shared_ptr<LiveDocument>> documents_;

    std::thread thread_;
};

}  // namespace vemo::c
