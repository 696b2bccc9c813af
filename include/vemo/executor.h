// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace vemo {

// An application's main thread, as an engine sees it: callbacks and notifications run there. An application with a
// loop of its own implements this; others use a RunLoop.
class Executor {
public:
    virtual ~Executor() = default;
    // Runs the task later, after those posted before it, one at a time. Returns at once; any thread may call it.
    virtual void post(std::function<void()> task) = 0;
};

// A loop that runs what is posted to it on the thread that calls `run`, `runFor` or `poll`; only one thread may do so
// at a time.
class RunLoop : public Executor {
public:
    RunLoop();
    ~RunLoop() override;  // what has not run is dropped

    void post(std::function<void()> task) override;
    // Runs tasks until `stop`.
    void run();
    // Runs tasks until `stop`, but for `duration` at the most.
    void runFor(std::chrono::milliseconds duration);
    // Runs the tasks that are there now, without waiting for others.
    void poll();
    // Ends the present `run`, or the next one when none is under way. Any thread may call it.
    void stop();

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace vemo
