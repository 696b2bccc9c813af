// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "vemo/executor.h"

namespace vemo {

// Where an engine's work runs: the main executor, the worker's own thread, a small pool of background threads (each
// started at first use), and timers. Thread-safe. Tasks are not owned by anyone: they hold weakly what may
// be gone when they run.
class Scheduler {
public:
    using Task = std::function<void()>;

    // Destroying a timer cancels it; on the main executor's thread, no tick runs after that.
    class Timer {
    public:
        virtual ~Timer() = default;
    };

    explicit Scheduler(std::shared_ptr<Executor> main);
    // Drops what has not started off the main executor and waits for what runs there. Not on one of those threads.
    ~Scheduler();
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    void postMain(Task task);
    // One at a time, in order.
    void postWorker(Task task);
    void postBackground(Task task);
    void postBackgroundAfter(std::chrono::milliseconds delay, Task task);
    // Ticks on the main executor, the first time after `first`, which is one interval unless given.
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Task tick,
                                               std::optional<std::chrono::milliseconds> first = std::nullopt);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace vemo
