// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vemo/attributed_text.h"
#include "vemo/context.h"
#include "vemo/environment.h"
#include "vemo/executor.h"
#include "vemo/quick_type.h"

namespace vemo {

class LineResult;

// Hears what happens beside the answers to requests. Every call comes on the main executor.
class VemoEngineDelegate {
public:
    virtual ~VemoEngineDelegate() = default;
    // What every document sees changed outside a calculation (the minute, rates, a place that was looked up):
    // usually the document is calculated again. `context` is a copy of the calculator's own.
    virtual void engineContextUpdated(const Context& /*context*/) {}
    // What user scripts logged, at start-up or during a calculation.
    virtual void engineLog(std::string_view /*text*/) {}
    virtual void engineInitialized() {}
    // Crypto-currencies became known.
    virtual void engineCryptoInitialized() {}
};

// What an application holds: calculates documents of one calculation per line, off the caller's thread.
// All calls, but those marked, belong to the thread of the main executor; so does destruction, which drops what is
// queued and waits for the line being calculated.
class VemoEngine {
public:
    struct Config {
        bool enableQuickTypeHints = true;
        bool testMode = false;  // no timers
        bool debug = false;     // print the per-line trace
    };

    struct Result {
        // A handle that shares what it shows, which is kept packed: each call makes a copy. Safe to read from several
        // threads.
        class Line {
        public:
            explicit Line(std::shared_ptr<const LineResult> result) : result_(std::move(result)) {}
            AttributedText attributedText() const;  // joins to the line's text
            FormattedValue formattedResult() const;
            QuickTypeData quickTypeData() const;

        private:
            std::shared_ptr<const LineResult> result_;
        };
        std::vector<Line> lines;
        std::shared_ptr<Context> context;  // the context given, with what the document set
    };
    using Callback = std::function<void(Result)>;

    enum class WorkerThread { main, background };

    // Without a main executor there are no timers and no downloads, and everything is done before a call returns.
    explicit VemoEngine(Environment environment = {}, std::shared_ptr<Executor> main = nullptr);
    ~VemoEngine();
    VemoEngine(const VemoEngine&) = delete;
    VemoEngine& operator=(const VemoEngine&) = delete;

    // Not owned: a delegate that is gone hears nothing.
    void setDelegate(std::weak_ptr<VemoEngineDelegate> delegate);

    // Sets up a calculator, replacing an earlier one with whatever it was doing. On the background thread, this
    // returns at once, and calculations run there; the delegate's `engineInitialized` tells when it is ready.
    void buildVemoWorker(const Config& config, WorkerThread thread = WorkerThread::main);
    void buildVemoWorker() { buildVemoWorker(Config()); }

    // Calculates with a copy of `context`. A newer request takes the place of one that is not answered yet, whose
    // callback then never runs. A request made before the worker is ready waits for it.
    void calculate(std::u16string_view text, const Context& context, Callback callback);
    // Calculates on the caller's thread and changes `context`, which the result points to. Nothing before a worker was
    // built; no lines while it is being set up in the background.
    std::optional<Result> calculateSync(std::u16string_view text, Context& context);

    // Completions of what the engine knows now. On the background thread this returns at once, and the callback runs on
    // the main executor. It never runs when there is no calculator.
    void buildQuickTypeEngine(WorkerThread thread, std::function<void(std::shared_ptr<QuickTypeEngine>)> callback);

    // A first document for a new user, in the nearest language there is. On any thread.
    static std::u16string welcomeSample(std::string_view language = {});

    // The version of the library, such as "1.2.3". On any thread.
    static std::string_view version();

private:
    struct State;
    std::unique_ptr<State> state_;
};

// Text conversion for callers, on any thread: ill-formed input becomes U+FFFD.
std::u16string utf16(std::string_view utf8);
std::string utf8(std::u16string_view text);

}  // namespace vemo
