// SPDX-License-Identifier: MIT
#include "engine/line_changes.h"

#include "base/text.h"
#include "engine/line_maker.h"

namespace vemo {

namespace {

using Lines = std::vector<VemoEngine::Result::Line>;

class Changes {
public:
    Changes(const Lines& before, const Lines& after) : before_(before), after_(after) {}

    bool same(std::size_t before, std::size_t after) const {
        return LineMaker::resultOf(before_[before]).tellsSameAs(LineMaker::resultOf(after_[after]));
    }
    void compare(std::size_t before, std::size_t after, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            if (!same(before + i, after + i)) add(after + i, 1, 1);
    }
    void add(std::size_t first, std::size_t removed, std::size_t inserted) {
        if (removed == 0 && inserted == 0) return;
        if (!list_.empty() && list_.back().first + list_.back().inserted == first) {
            list_.back().removed += removed;
            list_.back().inserted += inserted;
        } else {
            list_.push_back({first, removed, inserted});
        }
    }
    std::vector<VemoDocument::LineChange> take() { return std::move(list_); }

private:
    const Lines& before_;
    const Lines& after_;
    std::vector<VemoDocument::LineChange> list_;
};

}  // namespace

std::vector<VemoDocument::LineChange> lineChanges(const Lines& before, const Lines& after, std::u16string_view text,
                                                  UntouchedEnds untouched) {
    Changes changes(before, after);
    const std::size_t most = std::min(before.size(), after.size());
    if (untouched.head >= text.size() && before.size() == after.size()) {
        changes.compare(0, 0, most);
        return changes.take();
    }
    // The line that an end stops in is not untouched.
    const auto wholeLines = [](std::u16string_view end) {
        const std::size_t count = lineRanges(end).size();
        return count > 0 ? count - 1 : 0;
    };
    std::size_t head = std::min(most, wholeLines(text.substr(0, untouched.head)));
    const std::size_t tailUnits = std::min(untouched.tail, text.size());
    std::size_t tail = std::min(most - head, wholeLines(text.substr(text.size() - tailUnits)));
    changes.compare(0, 0, head);
    const std::size_t tailOfBefore = before.size() - tail, tailOfAfter = after.size() - tail;
    if (tailOfBefore == tailOfAfter) {
        changes.compare(head, head, tailOfAfter - head);
    } else {
        while (head < tailOfBefore && head < tailOfAfter && changes.same(head, head)) ++head;
        std::size_t alike = 0;
        while (head + alike < tailOfBefore && head + alike < tailOfAfter &&
               changes.same(tailOfBefore - alike - 1, tailOfAfter - alike - 1))
            ++alike;
        changes.add(head, tailOfBefore - alike - head, tailOfAfter - alike - head);
    }
    changes.compare(tailOfBefore, tailOfAfter, tail);
    return changes.take();
}

}  // namespace vemo
