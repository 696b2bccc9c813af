// SPDX-License-Identifier: MIT
#include "engine/line_changes.h"

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

// The number of line ends, of every kind that `lineRanges` knows.
std::size_t lineEnds(std::u16string_view text) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c > u'\r' && c < u'\u0085') continue;  // nearly all of them
        if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
        if (c == u'\n' || c == u'\r' || c == u'\u0085' || c == u'\u2028' || c == u'\u2029') ++count;
    }
    return count;
}

}  // namespace

std::vector<VemoDocument::LineChange> lineChanges(const Lines& before, const Lines& after, std::u16string_view text,
                                                  UntouchedEnds untouched) {
    Changes changes(before, after);
    const std::size_t most = std::min(before.size(), after.size());
    if (untouched.head >= text.size() && before.size() == after.size()) {
        changes.compare(0, 0, most);
        return changes.take();
    }
    // Only whole lines count at both ends: the line in which an edit begins or ends belongs to neither.
    const std::size_t headUnits = std::min(untouched.head, text.size());
    const std::size_t tailUnits = std::min(untouched.tail, text.size() - headUnits);
    const std::size_t endsInHead = lineEnds(text.substr(0, headUnits));
    const std::size_t notInTail =
        endsInHead + lineEnds(text.substr(headUnits, text.size() - headUnits - tailUnits)) + 1;
    std::size_t head = std::min(most, endsInHead);
    const std::size_t tail = std::min(most - head, after.size() - std::min(notInTail, after.size()));
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
