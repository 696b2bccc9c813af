// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "lsp/framing.h"
#include "vemo/executor.h"

namespace vemo::lsp {

// Reads a stream of messages on a thread of its own and hands them to a loop, all that have come together in one task.
// Reads no further while much of it waits.
class Input {
public:
    // `take` and `end` run on the loop; the end is told once.
    Input(int descriptor, std::shared_ptr<RunLoop> loop, std::function<void(Frame)> take, std::function<void()> ended);
    ~Input();  // nothing runs after it
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    // Watches a process without which nobody listens: its death is an end.
    void follow(int process);

private:
    struct State;
    std::shared_ptr<State> state_;
    std::thread thread_;
};

}  // namespace vemo::lsp
