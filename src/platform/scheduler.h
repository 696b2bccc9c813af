// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "vemo/executor.h"

namespace vemo {

// Where an engine's work runs: the main executor, the worker's own thread, a small pool of background threads (each
// started at first use), and timers. A handle, which may outlive the threads: what is posted after their end is
// dropped. Thread-safe. Tasks are not owned by anyone: they hold weakly what may be gone when they run.
class Scheduler {
public:
    using Task = std::function<void()>;

    // Destroying a timer cancels it; on the main executor's thread, no tick runs after that.
    class Timer {
    public:
        virtual ~Timer() = default;
    };

    void postMain(Task task) const;
    // One at a time, in order.
    void postWorker(Task task) const;
    void postBackground(Task task) const;
    void postBackgroundAfter(std::chrono::milliseconds delay, Task task) const;
    // Ticks on the main executor, the first time after `first`, which is one interval unless given.
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Task tick,
                                               std::optional<std::chrono::milliseconds> first = std::nullopt) const;

protected:
    struct State;
    explicit Scheduler(std::shared_ptr<State> state) : state_(std::move(state)) {}

    std::shared_ptr<State> state_;
};

// Owns the threads of a scheduler.
class SchedulerThreads : public Scheduler {
public:
    explicit SchedulerThreads(std::shared_ptr<Executor> main);
    ~SchedulerThreads() { close(); }
    SchedulerThreads(const SchedulerThreads&) = delete;
    SchedulerThreads& operator=(const SchedulerThreads&) = delete;

    // Drops what has not started off the main executor and waits for what runs there. Not on one of those threads.
    void close();
};

}  // namespace vemo
