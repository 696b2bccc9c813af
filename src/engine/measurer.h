// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vemo {

// Named durations of a set-up, in seconds, in the order measured.
class Measurer {
public:
    using Log = std::function<void(std::string_view)>;

    explicit Measurer(std::string name, Log log = {}) : name_(std::move(name)), log_(std::move(log)) {}

    template <class Step>
    void measure(std::string_view step, Step&& run) {
        const auto start = std::chrono::steady_clock::now();
        run();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        info_.emplace_back(step, elapsed.count());
        if (log_) log_("Measure " + std::string(step) + ": " + std::to_string(elapsed.count()));
    }

    const std::string& name() const { return name_; }
    const std::vector<std::pair<std::string, double>>& info() const { return info_; }

private:
    std::string name_;
    Log log_;
    std::vector<std::pair<std::string, double>> info_;
};

}  // namespace vemo
