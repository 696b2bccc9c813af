// SPDX-License-Identifier: MIT
#include "platform/scheduler.h"

#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <asio/thread_pool.hpp>
#include <atomic>
#include <mutex>

namespace vemo {

namespace {

constexpr std::size_t backgroundThreads = 2;

// Kept alive by the pending wait; the owner's handle and the ticks on their way share the flag.
class RepeatingTimer : public std::enable_shared_from_this<RepeatingTimer> {
public:
    RepeatingTimer(asio::thread_pool& pool, std::shared_ptr<Executor> main, std::chrono::milliseconds interval,
                   Scheduler::Task tick)
        : timer_(pool), main_(std::move(main)), interval_(interval), tick_(std::move(tick)) {}

    void start(std::chrono::milliseconds first) {
        timer_.expires_after(first);
        wait();
    }

    void cancel() {
        const std::lock_guard lock(ticking_);
        cancelled_ = true;
    }

private:
    void wait() {
        timer_.async_wait([self = shared_from_this()](const auto& error) {
            if (error || self->cancelled_) return;
            self->main_->post([self] {
                const std::lock_guard lock(self->ticking_);
                if (!self->cancelled_) self->tick_();
            });
            self->timer_.expires_at(self->timer_.expiry() + self->interval_);
            self->wait();
        });
    }

    asio::steady_timer timer_;
    std::shared_ptr<Executor> main_;
    std::chrono::milliseconds interval_;
    Scheduler::Task tick_;
    std::recursive_mutex ticking_;  // a tick may destroy its own timer
    std::atomic<bool> cancelled_ = false;
};

class TimerHandle : public Scheduler::Timer {
public:
    explicit TimerHandle(std::shared_ptr<RepeatingTimer> timer) : timer_(std::move(timer)) {}
    ~TimerHandle() override { timer_->cancel(); }

private:
    std::shared_ptr<RepeatingTimer> timer_;
};

}  // namespace

struct Scheduler::State {
    std::shared_ptr<Executor> main;
    std::once_flag started;
    std::unique_ptr<asio::thread_pool> pool;

    asio::thread_pool& background() {
        std::call_once(started, [&] { pool = std::make_unique<asio::thread_pool>(backgroundThreads); });
        return *pool;
    }
};

Scheduler::Scheduler(std::shared_ptr<Executor> main) : state_(std::make_unique<State>()) {
    state_->main = std::move(main);
}

Scheduler::~Scheduler() {
    if (!state_->pool) return;
    state_->pool->stop();
    state_->pool->join();
}

void Scheduler::postMain(Task task) { state_->main->post(std::move(task)); }

void Scheduler::postBackground(Task task) { asio::post(state_->background(), std::move(task)); }

void Scheduler::postBackgroundAfter(std::chrono::milliseconds delay, Task task) {
    auto timer = std::make_shared<asio::steady_timer>(state_->background(), delay);
    timer->async_wait([timer, task = std::move(task)](const auto& error) {
        if (!error) task();
    });
}

std::unique_ptr<Scheduler::Timer> Scheduler::every(std::chrono::milliseconds interval, Task tick,
                                                   std::optional<std::chrono::milliseconds> first) {
    auto timer = std::make_shared<RepeatingTimer>(state_->background(), state_->main, interval, std::move(tick));
    timer->start(first.value_or(interval));
    return std::make_unique<TimerHandle>(std::move(timer));
}

}  // namespace vemo
