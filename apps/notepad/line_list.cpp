// SPDX-License-Identifier: MIT
#include "notepad/line_list.h"

#include <algorithm>

#include "notepad/texts.h"

namespace vemo::notepad {

namespace {

LineView viewOfLine(const VemoEngine::Result::Line& line) {
    LineView view;
    const FormattedValue formatted = line.formattedResult();
    if (formatted.regular) view.answer = toQt(*formatted.regular);
    if (formatted.shortText) view.brief = toQt(*formatted.shortText);
    if (const auto reason = line.reason()) view.reason = toQt(reason->message);
    const auto names = line.names();
    if (!names.empty() && names.front().defines)
        view.defines = toQt(line.attributedText().compoundString()).sliced(names.front().start, names.front().length);
    const Value value = line.value();
    view.hasValue = !value.isEmpty();
    view.isDate = value.has(Attribute::date);
    return view;
}

}  // namespace

void LineSpan::unite(LineSpan other) {
    if (other.empty()) return;
    if (empty()) *this = other;
    from = std::min(from, other.from);
    to = std::max(to, other.to);
}

void LineSpan::replace(int first, int removed, int inserted) {
    const auto follow = [&](int line, int inside) {
        if (line <= first) return line;
        return line >= first + removed ? line + inserted - removed : inside;
    };
    if (empty()) return;
    const int end = first + inserted;
    from = follow(from, first);
    to = follow(to, end);
}

const LineList::Line* LineList::told(int line) const {
    if (line < 0 || line >= count()) return nullptr;
    const auto& told = lines_[static_cast<std::size_t>(line)].told;
    return told ? &*told : nullptr;
}

const LineView& LineList::view(int line) {
    static const LineView none;
    if (line < 0 || line >= count()) return none;
    Entry& entry = lines_[static_cast<std::size_t>(line)];
    if (!entry.told) return none;
    if (!entry.view) {
        entry.view = std::make_shared<const LineView>(viewOfLine(*entry.told));
        count(entry, 1);
    }
    return *entry.view;
}

bool LineList::isStale(int line) const {
    if (!stale_.contains(line)) return false;
    const Entry& entry = lines_[static_cast<std::size_t>(line)];
    return entry.told && !entry.view;
}

void LineList::replace(int first, int removed, int inserted, bool pushedDown) {
    const auto at = [&](int line) { return lines_.begin() + line; };
    Entry kept = std::move(lines_[static_cast<std::size_t>(first)]);
    for (int i = 1; i < removed; ++i) count(lines_[static_cast<std::size_t>(first + i)], -1);
    lines_[static_cast<std::size_t>(first)] = {};
    if (removed > inserted) {
        lines_.erase(at(first + inserted), at(first + removed));
    } else if (removed < inserted) {
        const auto end = lines_.size();
        lines_.resize(end + static_cast<std::size_t>(inserted - removed));
        std::move_backward(at(first + removed), at(static_cast<int>(end)), lines_.end());
    }
    for (int i = 0; i < inserted; ++i) lines_[static_cast<std::size_t>(first + i)] = {};
    lines_[static_cast<std::size_t>(pushedDown ? first + inserted - 1 : first)] = std::move(kept);

    stale_.replace(first, removed, inserted);
    asked_.replace(first, removed, inserted);
    since_.replace(first, removed, inserted);
    since_.unite({first, first + inserted});
    if (removed != inserted) moves_.push_back({first, removed, inserted});
}

void LineList::requested() {
    asked_.unite(since_);
    since_ = {};
    moves_.clear();
}

int LineList::placeOf(int asked) const {
    for (const Move& move : moves_) {
        if (asked >= move.first + move.removed)
            asked += move.inserted - move.removed;
        else if (asked >= move.first)
            return -1;
    }
    return asked;
}

int LineList::askedAt(int place) const {
    for (auto move = moves_.rbegin(); move != moves_.rend(); ++move) {
        if (place >= move->first + move->inserted)
            place -= move->inserted - move->removed;
        else if (place >= move->first)
            return -1;
    }
    return place;
}

void LineList::take(const VemoDocument::Answer& answer, bool first) {
    const auto& lines = answer.result.lines;
    const int told = static_cast<int>(lines.size());
    const auto takeLine = [&](int line, int place) {
        const bool known = line >= 0 && line < told && place >= 0 && place < count();
        if (known && !since_.contains(place)) set(place, lines[static_cast<std::size_t>(line)]);
    };
    const auto takeChange = [&](std::size_t begin, std::size_t length) {
        for (std::size_t i = begin; i < begin + length; ++i)
            takeLine(static_cast<int>(i), placeOf(static_cast<int>(i)));
    };
    if (first) {
        takeChange(0, lines.size());
    } else {
        for (const auto& change : answer.changes) takeChange(change.first, change.inserted);
        for (int place = asked_.from; place < asked_.to; ++place) takeLine(askedAt(place), place);
    }
    asked_ = {};
    if (!moves_.empty()) return;
    // An empty line at the end is none of the engine's.
    for (int i = told; i < count(); ++i) {
        Entry& entry = lines_[static_cast<std::size_t>(i)];
        if (since_.contains(i)) continue;
        count(entry, -1);
        if (entry.told) stale_.unite({i, i + 1});
        entry = {};
    }
}

void LineList::take(const VemoEngine::Result& result) {
    const int most = std::min(count(), static_cast<int>(result.lines.size()));
    for (int i = 0; i < most; ++i) set(i, result.lines[static_cast<std::size_t>(i)]);
}

void LineList::forgetViews() {
    for (Entry& entry : lines_) entry.view = nullptr;
    facts_ = {};
    stale_ = {0, count()};
}

bool LineList::beginsWithDate() {
    for (int i = 0; i < count(); ++i)
        if (const LineView& shown = view(i); shown.hasValue) return shown.isDate;
    return false;
}

void LineList::set(int line, const Line& told) {
    Entry& entry = lines_[static_cast<std::size_t>(line)];
    count(entry, -1);
    entry.told = told;
    entry.view = nullptr;
    stale_.unite({line, line + 1});
}

void LineList::count(const Entry& entry, int sign) {
    if (!entry.view) return;
    facts_.values += entry.view->hasValue ? sign : 0;
    facts_.dates += entry.view->isDate ? sign : 0;
    facts_.reasons += entry.view->reason.isEmpty() ? 0 : sign;
}

}  // namespace vemo::notepad
