// SPDX-License-Identifier: MIT
#include "platform/scheduler.h"

#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <asio/thread_pool.hpp>
#include <atomic>
#include <mutex>

#include "platform/signals_blocked.h"

namespace vemo {

namespace {

constexpr std::size_t backgroundThreads = 2;

// What the owner's handle and the ticks on their way share: they may outlive the scheduler.
struct Ticker {
    explicit Ticker(Scheduler::Task task) : tick(std::move(task)) {}

    Scheduler::Task tick;
    std::atomic<bool> cancelled = false;
};

// Kept alive by the pending wait.
class RepeatingTimer : public std::enable_shared_from_this<RepeatingTimer> {
public:
    RepeatingTimer(asio::thread_pool& pool, std::shared_ptr<Executor> main, std::chrono::milliseconds first,
                   std::chrono::milliseconds interval, std::shared_ptr<Ticker> ticker)
        : timer_(pool, first), main_(std::move(main)), interval_(interval), ticker_(std::move(ticker)) {}

    void wait() {
        timer_.async_wait([self = shared_from_this()](const auto& error) {
            if (error || self->ticker_->cancelled) return;
            self->main_->post([ticker = self->ticker_] {
                if (!ticker->cancelled) ticker->tick();
            });
            self->timer_.expires_at(self->timer_.expiry() + self->interval_);
            self->wait();
        });
    }

private:
    asio::steady_timer timer_;
    std::shared_ptr<Executor> main_;
    std::chrono::milliseconds interval_;
    std::shared_ptr<Ticker> ticker_;
};

class TimerHandle : public Scheduler::Timer {
public:
    explicit TimerHandle(std::shared_ptr<Ticker> ticker) : ticker_(std::move(ticker)) {}
    ~TimerHandle() override { ticker_->cancelled = true; }

private:
    std::shared_ptr<Ticker> ticker_;
};

}  // namespace

struct Scheduler::State {
    std::shared_ptr<Executor> main;
    std::mutex mutex;  // guards what follows
    bool closed = false;
    std::unique_ptr<asio::thread_pool> background;  // started at first use, as is the worker
    std::unique_ptr<asio::thread_pool> worker;

    // With the pool, unless it has ended. No task runs within: the pool's threads take them.
    template <class Use>
    void withPool(std::unique_ptr<asio::thread_pool> State::*pool, std::size_t threads, Use&& use) {
        const std::lock_guard lock(mutex);
        if (closed) return;
        if (!(this->*pool)) {
            const SignalsBlocked blocked;
            this->*pool = std::make_unique<asio::thread_pool>(threads);
        }
        use(*(this->*pool));
    }
    template <class Use>
    void inBackground(Use&& use) {
        withPool(&State::background, backgroundThreads, use);
    }
};

void Scheduler::postMain(Task task) const {
    {
        const std::lock_guard lock(state_->mutex);
        if (state_->closed) return;
    }
    state_->main->post(std::move(task));
}

void Scheduler::postWorker(Task task) const {
    state_->withPool(&State::worker, 1, [&](asio::thread_pool& pool) { asio::post(pool, std::move(task)); });
}

void Scheduler::postBackground(Task task) const {
    state_->inBackground([&](asio::thread_pool& pool) { asio::post(pool, std::move(task)); });
}

void Scheduler::postBackgroundAfter(std::chrono::milliseconds delay, Task task) const {
    state_->inBackground([&](asio::thread_pool& pool) {
        auto timer = std::make_shared<asio::steady_timer>(pool, delay);
        timer->async_wait([timer, task = std::move(task)](const auto& error) {
            if (!error) task();
        });
    });
}

std::unique_ptr<Scheduler::Timer> Scheduler::every(std::chrono::milliseconds interval, Task tick,
                                                   std::optional<std::chrono::milliseconds> first) const {
    auto ticker = std::make_shared<Ticker>(std::move(tick));
    state_->inBackground([&](asio::thread_pool& pool) {
        std::make_shared<RepeatingTimer>(pool, state_->main, first.value_or(interval), interval, ticker)->wait();
    });
    return std::make_unique<TimerHandle>(std::move(ticker));
}

SchedulerThreads::SchedulerThreads(std::shared_ptr<Executor> main) : Scheduler(std::make_shared<State>()) {
    state_->main = std::move(main);
}

void SchedulerThreads::close() {
    std::unique_ptr<asio::thread_pool> pools[2];
    {
        const std::lock_guard lock(state_->mutex);
        state_->closed = true;
        pools[0] = std::move(state_->worker);
        pools[1] = std::move(state_->background);
    }
    // Without the lock: tasks that end, or are dropped, may still post something.
    for (const auto& pool : pools) {
        if (!pool) continue;
        pool->stop();
        pool->join();
    }
}

}  // namespace vemo
