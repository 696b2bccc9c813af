// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "engine/calculator.h"
#include "platform/scheduler.h"

namespace vemo {

// One calculation asked for: made on the main executor, carried out on the worker's thread, answered on the main
// executor unless it was cancelled.
class VemoWorkerOperation {
public:
    using Callback = std::function<void(Calculator::MultilineResult, std::shared_ptr<Context>)>;

    VemoWorkerOperation(std::shared_ptr<Calculator> calculator, std::shared_ptr<const std::u16string> text,
                        const Context& context, std::uint64_t asker, Callback callback);

    void cancel() { cancelled_ = true; }
    bool isCancelled() const { return cancelled_; }

    // On the worker's thread; nothing is kept of a cancelled operation.
    Calculator::MultilineResult calculate();
    // On the main executor.
    void deliver(Calculator::MultilineResult result);

private:
    std::shared_ptr<Calculator> calculator_;
    std::shared_ptr<const std::u16string> text_;
    std::shared_ptr<Context> context_;
    std::uint64_t asker_;
    Callback callback_;
    std::atomic<bool> cancelled_ = false;
};

// The place where the operation of one client waits: a newer one cancels the one that runs and takes the place of the
// one that waits. Those of other slots are left alone. Thread-safe, for tasks on their way may outlive the client.
class WaitingSlot {
public:
    // The number is the slot's among those of its worker.
    explicit WaitingSlot(std::uint64_t number) : number_(number) {}

    std::uint64_t number() const { return number_; }
    // Cancels what there is and puts the operation, which may be null, in its place. True when a task must be posted
    // that starts it.
    bool replace(std::shared_ptr<VemoWorkerOperation> operation);
    // The operation that waited; null when there is none any more.
    std::shared_ptr<VemoWorkerOperation> start();
    void finish(const std::shared_ptr<VemoWorkerOperation>& operation);

private:
    const std::uint64_t number_;
    std::mutex mutex_;
    std::shared_ptr<VemoWorkerOperation> waiting_;
    std::shared_ptr<VemoWorkerOperation> running_;  // until its result is delivered
};

// A calculator with what it has to do: an operation a slot, in the order in which they were asked for. Used on the main
// executor.
class VemoWorker : public std::enable_shared_from_this<VemoWorker> {
public:
    // Operations run on the scheduler's worker thread, or as tasks of the main executor; without a scheduler at once.
    VemoWorker(std::optional<Scheduler> scheduler, bool onMain);
    ~VemoWorker();

    bool onMain() const { return onMain_; }
    // Null while it is being set up.
    const std::shared_ptr<Calculator>& calculator() const { return calculator_; }
    void setCalculator(std::shared_ptr<Calculator> calculator) { calculator_ = std::move(calculator); }

    // A slot whose operations this worker cancels when it retires.
    std::shared_ptr<WaitingSlot> newSlot();
    void calculate(const std::shared_ptr<WaitingSlot>& slot, std::shared_ptr<const std::u16string> text,
                   const Context& context, VemoWorkerOperation::Callback callback);
    // Cancels everything and lets the calculator go; what it still does has no effect any more.
    void retire();

private:
    std::optional<Scheduler> scheduler_;
    bool onMain_;
    std::shared_ptr<Calculator> calculator_;
    std::vector<std::weak_ptr<WaitingSlot>> slots_;
    std::uint64_t slotsMade_ = 0;
};

}  // namespace vemo
