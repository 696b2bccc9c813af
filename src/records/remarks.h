// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "records/reading.h"
#include "vemo/context.h"
#include "vemo/remarks.h"

namespace vemo {

class Context;

// What the evaluation of one line remarked, before it is put into the user's words.
class Remarks {
public:
    struct PendingNote {
        NoteKind kind;
        TextRange range;
        std::u16string first;  // what the message names
        Value other;           // what another reading would give; empty where the message tells none
    };
    struct PendingReason {
        ReasonCode code;
        std::u16string first, second;
    };

    // Of notes of one kind on one range, the first is kept.
    void note(NoteKind kind, TextRange range, std::u16string_view first = {}, Value other = {});
    // The first reason is the cause of those that follow.
    void reason(ReasonCode code, std::u16string_view first = {}, std::u16string_view second = {});

    // The part of the line that describes a price, and the amounts of money in it. What else it holds takes no part in
    // the result: there is nothing to tell of how it was read.
    struct Price {
        TextRange description;
        std::vector<TextRange> amounts;
    };
    void setPrice(Price price) { price_ = std::move(price); }
    bool isBesidePrice(TextRange range) const;

    const std::vector<PendingNote>& notes() const { return notes_; }
    const std::optional<PendingReason>& reason() const { return reason_; }

    // The steps of the calculation, kept only where its reading was asked for.
    void keepSteps() { steps_.emplace(); }
    bool keepsSteps() const { return steps_.has_value(); }
    void step(ReadingStep step) { steps_->push_back(std::move(step)); }
    const std::vector<ReadingStep>& steps() const { return *steps_; }

private:
    std::vector<PendingNote> notes_;
    std::optional<PendingReason> reason_;
    std::optional<Price> price_;
    std::optional<std::vector<ReadingStep>> steps_;
};

// The remarks on the line that is being evaluated. The first makes them where there are none, the second then gives
// null.
Remarks& remarksOf(Context& context);
const Remarks* remarksIfAny(const Context& context);

// Adds what `step` makes, where the reading of the line was asked for.
template <class Step>
void keepStep(Context& context, Step step) {
    const Remarks* remarks = remarksIfAny(context);
    if (remarks && remarks->keepsSteps()) remarksOf(context).step(step());
}

// What a line tells beside its value, in the user's words.
struct LineRemarks {
    std::vector<Note> notes;
    std::optional<Reason> reason;
};

}  // namespace vemo
