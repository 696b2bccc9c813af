// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "vemo/documents.h"

namespace vemo::notepad {

// What is shown beside a line's text.
struct LineView {
    QString answer;
    QString brief;    // a shorter text of the answer, where there is one
    QString reason;   // why there is none
    QString defines;  // the name that the line defines, as it is written there
    bool hasValue = false, isDate = false;
};

// A stretch of lines, from one on and up to another.
struct LineSpan {
    int from = 0, to = 0;

    bool empty() const { return from >= to; }
    bool contains(int line) const { return from <= line && line < to; }
    void unite(LineSpan other);
    // Follows lines that took the place of others.
    void replace(int first, int removed, int inserted);
};

// The lines of a page with what the engine told of each. Lines move with the text while it is edited, before the answer
// to the edits comes; what an answer changes is only noted, and made into views where it is looked at.
class LineList {
public:
    using Line = VemoEngine::Result::Line;

    int count() const { return static_cast<int>(lines_.size()); }
    // Null where nothing was told.
    const Line* told(int line) const;
    const LineView& view(int line);
    bool isStale(int line) const;

    // `inserted` lines took the place of `removed` ones. What the first of these showed stays with the first, or where
    // it was pushed down as a whole, with the last.
    void replace(int first, int removed, int inserted, bool pushedDown);
    // Tells that an answer to the text as it is now is asked for.
    void requested();
    // Takes an answer, which may be one to an earlier text: what was edited since waits for the next.
    void take(const VemoDocument::Answer& answer, bool first);
    // Takes what was stored, for a text that has no answer yet.
    void take(const VemoEngine::Result& result);

    // The lines that have no view yet.
    const LineSpan& stale() const { return stale_; }
    void setStaleFrom(int line) { stale_.from = line; }
    void settled() { stale_ = {}; }
    // Makes all views stale.
    void forgetViews();

    // The sums of what views tell.
    struct Facts {
        int values = 0, dates = 0, reasons = 0;
    };
    const Facts& facts() const { return facts_; }
    bool beginsWithDate();
    // Calls `visit(line, name)` for the names that the page defines, as far as there are views.
    template <class Visit>
    void visitNames(const Visit& visit) const {
        for (std::size_t i = 0; i < lines_.size(); ++i)
            if (const auto& view = lines_[i].view; view && !view->defines.isEmpty())
                visit(static_cast<int>(i), view->defines);
    }

private:
    struct Entry {
        std::optional<Line> told;
        std::shared_ptr<const LineView> view;
    };

    // Lines that were added or removed while an answer is awaited.
    struct Move {
        int first, removed, inserted;
    };

    void set(int line, const Line& told);
    void count(const Entry& entry, int sign);
    // Where a line of the text that was asked for is now, and the other way round; -1 where it is no more.
    int placeOf(int asked) const;
    int askedAt(int place) const;

    std::vector<Entry> lines_ = std::vector<Entry>(1);
    LineSpan stale_;
    LineSpan asked_, since_;  // lines that were edited: before the latest request, and after
    std::vector<Move> moves_;
    Facts facts_;
};

}  // namespace vemo::notepad
