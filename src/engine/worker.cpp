// SPDX-License-Identifier: MIT
#include "engine/worker.h"

#include <utility>

namespace vemo {

VemoWorkerOperation::VemoWorkerOperation(std::shared_ptr<Calculator> calculator,
                                         std::shared_ptr<const std::u16string> text, const Context& context,
                                         std::uint64_t asker, Callback callback)
    : calculator_(std::move(calculator)),
      text_(std::move(text)),
      context_(std::make_shared<Context>(context.copyContext())),
      asker_(asker),
      callback_(std::move(callback)) {}

Calculator::MultilineResult VemoWorkerOperation::calculate() {
    // Let go here: a calculator must not outlive the engine's threads in a result that waits to be delivered.
    const auto calculator = std::move(calculator_);
    const std::lock_guard lock(calculator->context().mutex());
    return calculator->calculate(*text_, *context_, &cancelled_, asker_);
}

void VemoWorkerOperation::deliver(Calculator::MultilineResult result) {
    if (!cancelled_) callback_(std::move(result), context_);
}

bool WaitingSlot::replace(std::shared_ptr<VemoWorkerOperation> operation) {
    const std::lock_guard lock(mutex_);
    for (const auto& old : {waiting_, running_})
        if (old) old->cancel();
    const bool expected = waiting_ != nullptr;
    waiting_.swap(operation);
    return waiting_ && !expected;
}

std::shared_ptr<VemoWorkerOperation> WaitingSlot::start() {
    const std::lock_guard lock(mutex_);
    return running_ = std::exchange(waiting_, nullptr);
}

void WaitingSlot::finish(const std::shared_ptr<VemoWorkerOperation>& operation) {
    const std::lock_guard lock(mutex_);
    if (running_ == operation) running_ = nullptr;
}

VemoWorker::VemoWorker(std::optional<Scheduler> scheduler, bool onMain)
    : scheduler_(std::move(scheduler)), onMain_(onMain) {}

VemoWorker::~VemoWorker() {
    retire();
}

std::shared_ptr<WaitingSlot> VemoWorker::newSlot() {
    auto slot = std::make_shared<WaitingSlot>(++slotsMade_);
    std::erase_if(slots_, [](const auto& known) { return known.expired(); });
    slots_.push_back(slot);
    return slot;
}

void VemoWorker::calculate(const std::shared_ptr<WaitingSlot>& slot, std::shared_ptr<const std::u16string> text,
                           const Context& context, VemoWorkerOperation::Callback callback) {
    if (!calculator_) return;
    auto operation = std::make_shared<VemoWorkerOperation>(calculator_, std::move(text), context, slot->number(),
                                                           std::move(callback));
    if (!slot->replace(std::move(operation))) return;
    const auto run = [slot, scheduler = scheduler_] {
        const auto started = slot->start();
        if (!started) return;
        auto result = started->calculate();
        if (started->isCancelled()) return;
        auto deliver = [slot, started, result = std::move(result)]() mutable {
            slot->finish(started);
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
    for (const auto& known : slots_)
        if (const auto slot = known.lock()) slot->replace(nullptr);
    slots_.clear();
    if (calculator_) calculator_->retire();
    calculator_ = nullptr;
}

}  // namespace vemo
