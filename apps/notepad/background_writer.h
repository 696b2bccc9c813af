// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace vemo::notepad {

// Writes files on a thread of its own, one after the other, since a disk may take its time. Of several jobs for one
// file that wait, only the last is done.
class BackgroundWriter {
public:
    BackgroundWriter() = default;
    ~BackgroundWriter();  // does first what waits
    BackgroundWriter(const BackgroundWriter&) = delete;
    BackgroundWriter& operator=(const BackgroundWriter&) = delete;

    void post(const std::string& file, std::function<void()> job);
    // Returns when everything posted before is done.
    void flush();

private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, std::function<void()>> jobs_;
    bool busy_ = false, ends_ = false;
    std::thread thread_;
};

}  // namespace vemo::notepad
