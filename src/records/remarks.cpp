// SPDX-License-Identifier: MIT
#include "records/remarks.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vemo {

namespace {

// In the order of `NoteKind` and `ReasonCode`.
constexpr std::array<std::u16string_view, 23> noteKinds{
    u"unused_value",     u"unknown_word",     u"missing_operand", u"not_converted",     u"joined_digits",
    u"dropped_unit",     u"kept_unit",        u"average_length",  u"capped_shift",      u"built_in_constant",
    u"old_rates",        u"without_effect",   u"unused_argument", u"unused_percentage", u"case_decides",
    u"metric_ton",       u"no_such_date",     u"no_holidays",     u"implicit_product",  u"earlier_end",
    u"malformed_number", u"unknown_currency", u"dashed_range"};
static_assert(noteKinds.size() == static_cast<std::size_t>(NoteKind::dashedRange) + 1);

constexpr std::array<std::u16string_view, 16> reasonCodes{
    u"division_by_zero", u"different_dimensions", u"no_rates",      u"no_rate",       u"unbalanced_brackets",
    u"missing_operand",  u"missing_argument",     u"unknown_place", u"place_awaited", u"too_long",
    u"too_deep",         u"out_of_range",         u"script_failed", u"dates_added",   u"dropped_units",
    u"not_understood"};
static_assert(reasonCodes.size() == static_cast<std::size_t>(ReasonCode::notUnderstood) + 1);

}  // namespace

std::u16string_view noteKindName(NoteKind kind) {
    return noteKinds[static_cast<std::size_t>(kind)];
}

std::u16string_view reasonCodeName(ReasonCode code) {
    return reasonCodes[static_cast<std::size_t>(code)];
}

void Remarks::note(NoteKind kind, TextRange range, std::u16string_view first, Value other) {
    if (std::any_of(notes_.begin(), notes_.end(),
                    [&](const PendingNote& note) { return note.kind == kind && note.range == range; }))
        return;
    notes_.push_back({kind, range, std::u16string(first), std::move(other)});
}

bool Remarks::isBesidePrice(TextRange range) const {
    if (!price_ || range.location < price_->description.location || range.end() > price_->description.end())
        return false;
    return std::none_of(price_->amounts.begin(), price_->amounts.end(), [&](const TextRange& amount) {
        return range.location < amount.end() && amount.location < range.end();
    });
}

void Remarks::reason(ReasonCode code, std::u16string_view first, std::u16string_view second) {
    if (!reason_) reason_ = PendingReason{code, std::u16string(first), std::u16string(second)};
}

}  // namespace vemo
