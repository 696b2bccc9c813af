// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "vemo/executor.h"

namespace vemo {

// Where an engine's work runs beside its calculations: the main executor, a small pool of background threads
// (started at first use), and timers. Thread-safe. Tasks are not owned by anyone: they hold weakly what may
// be gone when they run.
class Scheduler {
public:
    using Task = std::function<void()>;

    // Destroying a timer cancels it: no tick runs after that, and one that runs on another thread is waited for. A
    // timer must go before its scheduler.
    class Timer {
    public:
        virtual ~Timer() = default;
    };

    explicit Scheduler(std::shared_ptr<Executor> main);
    // Drops what has not started in the background and waits for what runs there. Not on a background thread.
    ~Scheduler();
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    void postMain(Task task);
    void postBackground(Task task);
    void postBackgroundAfter(std::chrono::milliseconds delay, Task task);
    // Ticks on the main executor, the first time after `first`, or after one interval.
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Task tick,
                                               std::optional<std::chrono::milliseconds> first = std::nullopt);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace vemo
