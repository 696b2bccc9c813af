// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vemo/attributed_text.h"
#include "vemo/completions.h"
#include "vemo/context.h"
#include "vemo/environment.h"
#include "vemo/executor.h"
#include "vemo/quick_type.h"
#include "vemo/remarks.h"

namespace vemo {

class LineResult;  // what the handle of a line refers to
class LineMaker;   // makes those handles

// How much user scripts may take. One that takes more is stopped.
struct ScriptLimits {
    std::chrono::milliseconds evaluation{2000};   // of processor time, for one file
    std::chrono::milliseconds call{100};          // of processor time, for one call in a line
    std::size_t memory = std::size_t{256} << 20;  // bytes by which the process may grow in a run, and all may keep
    std::chrono::milliseconds calculation{2000};  // of processor time, for all calls of one calculation
};

// What became of a script file.
struct Extension {
    std::string file;                  // the path below the folder
    std::string log;                   // its messages, each with a line feed after it
    std::vector<std::string> defined;  // such as "unit furlong", in the order of definition
    bool failed = false;               // it ended before its last statement
    bool skipped = false;              // it can't be read as text; no log
};

// Hears what happens beside the answers to requests. Every call comes on the main executor.
class VemoEngineDelegate {
public:
    virtual ~VemoEngineDelegate() = default;
    // What every document sees has changed outside of a calculation: the minute, rates, or a place that was looked up.
    // Usually the documents are then calculated again. `context` is a copy of the calculator's own.
    virtual void engineContextUpdated(const Context& /*context*/) {}
    // What user scripts logged, at start-up or during a calculation.
    virtual void engineLog(std::string_view /*text*/) {}
    // The worker is ready.
    virtual void engineInitialized() {}
    // The first rates of crypto-currencies came: lines can use these from now on.
    virtual void engineCryptoInitialized() {}
    // Rates or a place could not be fetched, or a copy could not be kept.
    virtual void engineOnlineProblem(const OnlineProblem& /*problem*/) {}
};

// What an application holds. It calculates documents of one calculation per line, off the caller's thread. Unless
// marked otherwise, a call belongs to the thread of the main executor; so does the destruction, which drops what is
// queued and waits for the line being calculated.
class VemoEngine {
public:
    // How a worker is set up.
    struct Config {
        bool enableQuickTypeHints = true;
        bool testMode = false;             // no timers, nothing fetched, and the time stays that of the set-up
        bool debug = false;                // print the per-line trace
        std::filesystem::path extensions;  // folder of user scripts; empty: none
        ScriptLimits scriptLimits;
    };

    // A name in a line: `start` and `length` in UTF-16 units, without blanks around; the name in lower case.
    struct NameUse {
        std::u16string name;
        std::uint32_t start = 0;
        std::uint32_t length = 0;
        bool defines = false;
        friend bool operator==(const NameUse&, const NameUse&) = default;
    };

    // What a calculation gave.
    struct Result {
        // A handle of the result of a line. Copies share the result, which is kept packed: each call takes a part of it
        // out. Safe to read from several threads.
        class Line {
        public:
            AttributedText attributedText() const;  // joins to the line's text
            FormattedValue formattedResult() const;
            QuickTypeData quickTypeData() const;
            // Remarks on parts of the line, in the order in which they were made. Most lines have none.
            std::vector<Note> notes() const;
            // Why there is no result, where the line asks for one.
            std::optional<Reason> reason() const;
            // The result itself: a number with its unit's id, or a date-time; without attributes when there is none. A
            // date-time of another zone is shifted, so that the local time zone shows what the clocks there show:
            // `instantOf` gives the true instant.
            Value value() const;
            // The names that the line defines and uses, from the left to the right.
            std::vector<NameUse> names() const;
            std::u16string extensionsLog() const;  // what user scripts logged while it was calculated

        private:
            friend class LineMaker;
            explicit Line(std::shared_ptr<const LineResult> result) : result_(std::move(result)) {}

            std::shared_ptr<const LineResult> result_;
        };
        std::vector<Line> lines;
        std::shared_ptr<Context> context;  // the context given, with what the document set

        // The true instant of a line whose result is a date-time; nothing for another result or an unknown zone.
        std::optional<Date> instantOf(std::size_t line) const;
        // The line whose definition of a name holds in a line: the nearest one above that defines it. Nothing when
        // there is none.
        std::optional<std::size_t> definitionOf(std::u16string_view name, std::size_t line) const;
    };
    using Callback = std::function<void(Result)>;

    // Where something is done: within the call, or on a background thread.
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

    // A line of a document as it is calculated, counted from 0: fully bracketed, with every implicit step and the
    // values of names, such as "2 × (3 + 4)" for "2 (3 + 4)". Nothing for a line that has no result. Calculates the
    // lines above on the caller's thread; `context` is as for `calculate`.
    std::optional<std::u16string> readingOf(std::size_t line, std::u16string_view text, const Context& context) const;

    // The text that a line with this value shows, with the settings of `context`, such as its precision. Nothing before
    // a worker was built or while it is being set up. Waits for a calculation under way.
    std::optional<FormattedValue> format(const Value& value, const Context& context) const;

    // What is being read or fetched, and will be told to the delegate where it changes something.
    struct Pending {
        bool rates = false;
        bool places = false;  // those of the latest calculation
    };
    // Nothing is pending before a worker was built or while it is being set up.
    Pending pending() const;

    // Completions of what the engine knows now. On the background thread this returns at once, and the callback runs on
    // the main executor. It never runs when there is no calculator.
    void buildQuickTypeEngine(WorkerThread thread, std::function<void(std::shared_ptr<QuickTypeEngine>)> callback);

    // The same vocabulary with its kinds: phrases as they are written, constants, and places.
    void buildCompletions(WorkerThread thread, std::function<void(std::shared_ptr<const Completions>)> callback);
    // The units into which amounts of this unit convert, each by a name that a line can use, with the usual ones first.
    // `unit` is an id, as in a value. None before a worker was built or while it is being set up. Waits for a
    // calculation under way.
    std::vector<Completion> conversionsOf(std::u16string_view unit) const;

    enum class RatesFile { currency, crypto };
    // Takes the JSON text of a rates file, as if it had been fetched: an object "rates" with the amount per US dollar
    // by currency code. Says what is wrong with it, and changes nothing then; an empty text means that it was taken.
    // Waits for a calculation under way.
    std::string takeRates(RatesFile file, std::string_view json);

    // A first document for a new user, in the nearest language there is. On any thread.
    static std::u16string welcomeSample(std::string_view language = {});

    // What the building of the worker and the loading of the user scripts said.
    const std::string& startUpLog() const;
    // The user scripts, in the order of their loading.
    const std::vector<Extension>& extensions() const;

    // The version of the library, such as "1.2.3". On any thread.
    static std::string_view version();

private:
    friend class VemoDocument;
    struct State;
    std::unique_ptr<State> state_;
};

// Text conversion for callers, on any thread: ill-formed input becomes U+FFFD.
std::u16string utf16(std::string_view utf8);
std::string utf8(std::u16string_view text);

}  // namespace vemo
