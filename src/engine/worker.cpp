// SPDX-License-Identifier: MIT
#include "engine/worker.h"

#include <mutex>

namespace vemo {

VemoWorkerOperation::VemoWorkerOperation(std::shared_ptr<Calculator> calculator,
                                         std::shared_ptr<const std::u16string> text, const Context& context,
                                         Callback callback)
    : calculator_(std::move(calculator)),
      text_(std::move(text)),
      context_(std::make_shared<Context>(context.copyContext())),
      callback_(std::move(callback)) {}

Calculator::MultilineResult VemoWorkerOperation::calculate() {
    // Let go here: a calculator must not outlive the engine's threads in a result that waits to be delivered.
    const auto calculator = std::move(calculator_);
    const std::lock_guard lock(calculator->context().mutex());
    return calculator->calculate(*text_, *context_, &cancelled_);
}

void VemoWorkerOperation::deliver(Calculator::MultilineResult result) {
    if (!cancelled_) callback_(std::move(result), context_);
}

// Shared with the tasks on their way, which may run when the worker is gone.
struct VemoWorker::Queue {
    std::mutex mutex;
    std::shared_ptr<VemoWorkerOperation> waiting;
    std::shared_ptr<VemoWorkerOperation> running;  // until its result is delivered

    // Cancels what there is and puts the operation in its place. True when a task must come for it.
    bool replace(std::shared_ptr<VemoWorkerOperation> operation) {
        const std::lock_guard lock(mutex);
        for (const auto& old : {waiting, running})
            if (old) old->cancel();
        const bool expected = waiting != nullptr;
        waiting.swap(operation);
        return waiting && !expected;
    }

    std::shared_ptr<VemoWorkerOperation> start() {
        const std::lock_guard lock(mutex);
        return running = std::exchange(waiting, nullptr);
    }

    void finish(const std::shared_ptr<VemoWorkerOperation>& operation) {
        const std::lock_guard lock(mutex);
        if (running == operation) running = nullptr;
    }
};

VemoWorker::VemoWorker(std::optional<Scheduler> scheduler, bool onMain)
    : scheduler_(std::move(scheduler)), onMain_(onMain), queue_(std::make_shared<Queue>()) {}

VemoWorker::~VemoWorker() {
    retire();
}

void VemoWorker::calculate(std::shared_ptr<const std::u16string> text, const Context& context,
                           VemoWorkerOperation::Callback callback) {
    if (!calculator_) return;
    auto operation = std::make_shared<VemoWorkerOperation>(calculator_, std::move(text), context, std::move(callback));
    if (!queue_->replace(std::move(operation))) return;
    const auto run = [queue = queue_, scheduler = scheduler_] {
        const auto started = queue->start();
        if (!started) return;
        auto result = started->calculate();
        if (started->isCancelled()) return;
        auto deliver = [queue, started, result = std::move(result)]() mutable {
            queue->finish(started);
            started->deliver(std::move(result));
        };
        if (scheduler)
            scheduler->postMain(std::move(deliver));
        else
            deliver();
    };
    if (!scheduler_)
        run();
    else if (onMain_)
        scheduler_->postMain(run);
    else
        scheduler_->postWorker(run);
}

void VemoWorker::retire() {
    queue_->replace(nullptr);
    if (calculator_) calculator_->retire();
    calculator_ = nullptr;
}

}  // namespace vemo
