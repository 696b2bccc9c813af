// SPDX-License-Identifier: MIT
// clang-format off: first, for Asio looks for what the standard library defines: it must find the same in every source.
#include "vemo/executor.h"
// clang-format on

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>

namespace vemo {

struct RunLoop::State {
    asio::io_context context{1};
    asio::executor_work_guard<asio::io_context::executor_type> work = asio::make_work_guard(context);

    // A stopped loop can be run again.
    template <class Run>
    void during(Run run) {
        run();
        if (context.stopped()) context.restart();
    }
};

RunLoop::RunLoop() : state_(std::make_unique<State>()) {}
RunLoop::~RunLoop() = default;

void RunLoop::post(std::function<void()> task) {
    asio::post(state_->context, std::move(task));
}

void RunLoop::run() {
    state_->during([&] { state_->context.run(); });
}

void RunLoop::runFor(std::chrono::milliseconds duration) {
    state_->during([&] { state_->context.run_for(duration); });
}

void RunLoop::poll() {
    state_->during([&] { state_->context.poll(); });
}

void RunLoop::stop() {
    state_->context.stop();
}

}  // namespace vemo
