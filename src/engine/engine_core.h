// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/calculator.h"
#include "engine/worker.h"
#include "platform/scheduler.h"
#include "vemo/engine.h"

namespace vemo {

// What was asked for and is not answered yet.
struct EngineRequest {
    using Callback = std::function<void(Calculator::MultilineResult, std::shared_ptr<Context>)>;

    std::shared_ptr<const std::u16string> text;
    Context context;
    Callback callback;
};

// One who asks for calculations, such as a document: its latest request takes the place of an earlier one.
struct EngineClient {
    std::shared_ptr<EngineRequest> request;  // null when all is answered
    std::shared_ptr<WaitingSlot> slot;       // of `worker`
    std::weak_ptr<VemoWorker> worker;

    // Drops what it asked for.
    void drop() {
        request = nullptr;
        if (slot) slot->replace(nullptr);
    }
};

VemoEngine::Result resultOf(Calculator::MultilineResult calculated, std::shared_ptr<Context> context);

// The engine itself. Tasks of the main executor hold it weakly: they may run when it is gone.
class EngineCore : public CalculatorDelegate, public std::enable_shared_from_this<EngineCore> {
public:
    EngineCore(Environment environment, const std::shared_ptr<Executor>& main);

    void setDelegate(std::weak_ptr<VemoEngineDelegate> delegate) { delegate_ = std::move(delegate); }
    void buildWorker(const VemoEngine::Config& config, VemoEngine::WorkerThread thread);
    // Null before a worker was built and while it is being set up.
    std::shared_ptr<Calculator> calculator() const { return worker_ ? worker_->calculator() : nullptr; }

    std::shared_ptr<EngineClient> newClient();
    void calculate(const std::shared_ptr<EngineClient>& client, std::shared_ptr<const std::u16string> text,
                   const Context& context, EngineRequest::Callback callback);
    // For an application that has no documents.
    void calculate(std::u16string_view text, const Context& context, VemoEngine::Callback callback);
    std::optional<VemoEngine::Result> calculateSync(std::u16string_view text, Context& context);
    std::optional<std::u16string> readingOf(std::size_t line, std::u16string_view text, const Context& context) const;

    // Runs `make` with the calculator, in the background if that is wanted and possible, and hands what it made to the
    // callback on the main executor. Nothing without a calculator.
    template <class Make, class Callback>
    void build(VemoEngine::WorkerThread thread, Make make, Callback callback) {
        auto calculator = this->calculator();
        if (!calculator) return;
        if (!scheduler_ || thread == VemoEngine::WorkerThread::main) {
            auto built = make(*calculator);
            if (callback) callback(std::move(built));
            return;
        }
        scheduler_->postBackground([calculator = std::move(calculator), scheduler = *scheduler_,
                                    core = weak_from_this(), make, callback = std::move(callback)] {
            scheduler.postMain([core, callback, built = make(*calculator)] {
                if (core.lock() && callback) callback(built);
            });
        });
    }

    std::string takeRates(VemoEngine::RatesFile file, std::string_view json);
    const std::string& startUpLog() const { return startUpLog_; }
    const std::vector<Extension>& extensions() const { return extensions_; }

    // After this, nothing of the engine's runs off the main executor.
    void close();

    void calculatorContextUpdated(const Context& context) override;
    void calculatorCryptoInitialized() override;
    void calculatorOnlineProblem(const OnlineProblem& problem) override;

private:
    struct Built {
        std::shared_ptr<Calculator> calculator;
        std::vector<Extension> extensions;
    };

    // Where a calculator that was built in the background waits. A task of the main executor must not own it, for it
    // owns the executor, which owns the task.
    struct Delivery {
        std::mutex mutex;
        std::optional<Built> built;
    };

    static Built buildCalculator(const Environment& environment, const VemoEngine::Config& config,
                                 const std::optional<Scheduler>& scheduler);
    void onMain(const std::function<void()>& task) const;
    template <class Notify>
    static void tell(const std::weak_ptr<EngineCore>& core, Notify notify) {
        const auto engine = core.lock();
        const auto delegate = engine ? engine->delegate_.lock() : nullptr;
        if (delegate) notify(*delegate);
    }
    void adopt(std::shared_ptr<VemoWorker> worker, Built built);
    void start(const std::shared_ptr<EngineClient>& client);
    void log(const Calculator::MultilineResult& calculated, const std::function<bool()>& wanted);

    Environment environment_;
    std::weak_ptr<VemoEngineDelegate> delegate_;
    // Empty without a main executor: everything is done before a call returns then. Any thread may read it, for it
    // never changes.
    std::unique_ptr<SchedulerThreads> threads_;
    std::optional<Scheduler> scheduler_;
    std::shared_ptr<VemoWorker> worker_;
    std::shared_ptr<Delivery> delivery_;  // of the worker, while it is being set up
    std::string startUpLog_;
    std::vector<Extension> extensions_;
    std::vector<std::weak_ptr<EngineClient>> clients_;
    std::shared_ptr<EngineClient> application_;
};

struct VemoEngine::State {
    std::shared_ptr<EngineCore> core;
};

}  // namespace vemo
