// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>

namespace vemo {

// Counts what is under way, for those who ask. A handle: copies count together. Thread-safe.
class PendingWork {
public:
    // Something is under way until the last copy of its token is gone.
    using Token = std::shared_ptr<const void>;

    Token begin() const {
        ++*count_;
        return {count_.get(), [count = count_](const void*) { --*count; }};
    }
    bool any() const { return *count_ > 0; }

private:
    std::shared_ptr<std::atomic<int>> count_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace vemo
