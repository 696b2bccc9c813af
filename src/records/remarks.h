// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "vemo/remarks.h"

namespace vemo {

// What the evaluation of one line remarked, before it is put into the user's words.
class Remarks {
public:
    struct PendingNote {
        NoteKind kind;
        TextRange range;
        std::u16string first, second;  // what the message names
    };
    struct PendingReason {
        ReasonCode code;
        std::u16string first, second;
    };

    // Of notes of one kind on one range, the first is kept.
    void note(NoteKind kind, TextRange range, std::u16string_view first = {}, std::u16string_view second = {});
    // The first reason is the cause of those that follow.
    void reason(ReasonCode code, std::u16string_view first = {}, std::u16string_view second = {});

    const std::vector<PendingNote>& notes() const { return notes_; }
    const std::optional<PendingReason>& reason() const { return reason_; }

private:
    std::vector<PendingNote> notes_;
    std::optional<PendingReason> reason_;
};

// What a line tells beside its value, in the user's words.
struct LineRemarks {
    std::vector<Note> notes;
    std::optional<Reason> reason;
};

}  // namespace vemo
