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

// Threads that start at first use.
class LazyPool {
public:
    explicit LazyPool(std::size_t threads) : threads_(threads) {}
    ~LazyPool() {
        if (!pool_) return;
        pool_->stop();
        pool_->join();
    }

    asio::thread_pool& get() {
        std::call_once(started_, [&] {
            const SignalsBlocked blocked;
            pool_ = std::make_unique<asio::thread_pool>(threads_);
        });
        return *pool_;
    }

private:
    std::size_t threads_;
    std::once_flag started_;
    std::unique_ptr<asio::thread_pool> pool_;
};

}  // namespace

struct Scheduler::State {
    std::shared_ptr<Executor> main;
    LazyPool background{backgroundThreads};
    LazyPool worker{1};
};

Scheduler::Scheduler(std::shared_ptr<Executor> main) : state_(std::make_unique<State>()) {
    state_->main = std::move(main);
}

Scheduler::~Scheduler() = default;

void Scheduler::postMain(Task task) {
    state_->main->post(std::move(task));
}

void Scheduler::postWorker(Task task) {
    asio::post(state_->worker.get(), std::move(task));
}

void Scheduler::postBackground(Task task) {
    asio::post(state_->background.get(), std::move(task));
}

void Scheduler::postBackgroundAfter(std::chrono::milliseconds delay, Task task) {
    auto timer = std::make_shared<asio::steady_timer>(state_->background.get(), delay);
    timer->async_wait([timer, task = std::move(task)](const auto& error) {
        if (!error) task();
    });
}

std::unique_ptr<Scheduler::Timer> Scheduler::every(std::chrono::milliseconds interval, Task tick,
                                                   std::optional<std::chrono::milliseconds> first) {
    auto ticker = std::make_shared<Ticker>(std::move(tick));
    std::make_shared<RepeatingTimer>(state_->background.get(), state_->main, first.value_or(interval), interval, ticker)
        ->wait();
    return std::make_unique<TimerHandle>(std::move(ticker));
}

}  // namespace vemo
