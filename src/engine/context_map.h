// SPDX-License-Identifier: MIT
#pragma once

#include "platform/persistent_map.h"
#include "vemo/context.h"

namespace vemo {

// Entries by key.
class ContextMap : public PersistentMap<IsEquatable> {};

// Prefixes and keys the engine reserves.
namespace context_keys {
inline constexpr std::u16string_view variable = u"var_";
inline constexpr std::u16string_view hiddenVariable = u"hidden_var_";
inline constexpr std::u16string_view precision = u"precision";
inline constexpr std::u16string_view previousResult = u"prev_result";
inline constexpr std::u16string_view previousResults = u"prev_results";
inline constexpr std::u16string_view grandTotal = u"grand_total";
inline constexpr std::u16string_view grandTotalFormatted = u"grand_total_formatted";
inline constexpr std::u16string_view currentTime = u"current_time";
inline constexpr std::u16string_view currentTimeZone = u"current_time_zone";
}  // namespace context_keys

inline std::u16string variableKey(std::u16string_view name) {
    return std::u16string(context_keys::variable).append(name);
}

}  // namespace vemo
