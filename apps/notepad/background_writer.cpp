// SPDX-License-Identifier: MIT
#include "notepad/background_writer.h"

#include <utility>

namespace vemo::notepad {

BackgroundWriter::~BackgroundWriter() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
}

void BackgroundWriter::post(const std::string& file, std::function<void()> job) {
    const std::lock_guard lock(mutex_);
    jobs_[file] = std::move(job);
    if (!thread_.joinable()) thread_ = std::thread(&BackgroundWriter::work, this);
    changed_.notify_all();
}

void BackgroundWriter::flush() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return jobs_.empty() && !busy_; });
}

void BackgroundWriter::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [&] { return ends_ || !jobs_.empty(); });
        if (jobs_.empty()) return;
        const auto job = jobs_.extract(jobs_.begin()).mapped();
        busy_ = true;
        lock.unlock();
        job();
        lock.lock();
        busy_ = false;
        changed_.notify_all();
    }
}

}  // namespace vemo::notepad
