// SPDX-License-Identifier: MIT
#include <array>
#include <cassert>
#include <mutex>

#include "base/hash.h"
#include "vemo/value.h"

namespace vemo {

namespace {

constexpr std::size_t blockSize = 32;

}  // namespace

// A stretch of values. Lists hold it with the number of values that are theirs; the one that first appends to
// its end writes the next slot, others that need a different value there copy what they have.
struct ValuesList::Block {
    struct Slot {
        Value value;
        std::size_t hash = 0;  // of all values up to this one
    };

    Block(std::shared_ptr<Block> before, std::size_t valuesBefore)
        : previous(std::move(before)), countBefore(valuesBefore) {}
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    ~Block() {
        // A long chain is released step by step: recursion would exhaust the stack.
        std::shared_ptr<Block> rest = std::move(previous);
        while (rest && rest.use_count() == 1) {
            std::shared_ptr<Block> next = std::move(rest->previous);
            rest = std::move(next);
        }
    }

    std::shared_ptr<Block> previous;  // full; null for the first block
    std::size_t countBefore;          // values in the blocks before
    std::mutex mutex;                 // guards what follows; a slot that is written stays as it is
    std::size_t written = 0;
    std::array<Slot, blockSize> slots;
};

std::size_t ValuesList::size() const {
    return block_ ? block_->countBefore + count_ : 0;
}

const Value& ValuesList::newest() const {
    assert(!empty());
    return block_->slots[count_ - 1].value;
}

void ValuesList::dropNewest() {
    assert(!empty());
    if (--count_ == 0) {
        std::shared_ptr<Block> previous = block_->previous;
        block_ = std::move(previous);
        count_ = block_ ? blockSize : 0;
    }
    hash_ = empty() ? 0 : block_->slots[count_ - 1].hash;
}

ValuesList ValuesList::appending(Value value) const {
    const std::size_t hash = combineHashes(hash_, value.hash());
    ValuesList result = *this;
    if (!block_ || count_ == blockSize) {
        result.block_ = std::make_shared<Block>(block_, size());
        result.count_ = 0;
    }
    {
        const std::lock_guard lock(result.block_->mutex);
        if (result.block_->written == result.count_) {
            result.block_->slots[result.count_] = {std::move(value), hash};
            result.block_->written = ++result.count_;
            result.hash_ = hash;
            return result;
        }
        // The slot is taken: often by the same value, when a document is calculated again.
        const Block::Slot& taken = result.block_->slots[result.count_];
        if (taken.hash == hash && taken.value == value) {
            ++result.count_;
            result.hash_ = hash;
            return result;
        }
    }
    auto copy = std::make_shared<Block>(block_->previous, block_->countBefore);
    for (std::size_t i = 0; i < count_; ++i) copy->slots[i] = block_->slots[i];
    copy->slots[count_] = {std::move(value), hash};
    copy->written = count_ + 1;
    result.block_ = std::move(copy);
    ++result.count_;
    result.hash_ = hash;
    return result;
}

bool ValuesList::isEqual(const ValuesList& other) const {
    if (isSameAs(other)) return true;
    if (hash_ != other.hash_ || empty() || other.empty() || size() != other.size()) return false;
    std::size_t count = count_;
    for (const Block *a = block_.get(), *b = other.block_.get(); a != b; a = a->previous.get(), b = b->previous.get()) {
        for (std::size_t i = count; i > 0; --i)
            if (!a->slots[i - 1].value.isEqual(b->slots[i - 1].value)) return false;
        count = blockSize;
    }
    return true;
}

}  // namespace vemo
