// SPDX-License-Identifier: MIT
#pragma once

#include "base/function_ref.h"
#include "engine/mistake_notes.h"
#include "evaluation/percentage_words.h"
#include "platform/locale_info.h"
#include "records/element.h"
#include "records/remarks.h"
#include "units/unit_manager.h"
#include "vemo/context.h"

namespace vemo {

class Localizer;

// The user's words for what messages name.
struct RemarkWords {
    const Localizer& localizer;
    const MistakeNotes& mistakes;
    FunctionRef<std::u16string(std::u16string_view)> unitName;
    FunctionRef<std::u16string(const Value&)> valueText;
    FunctionRef<bool(std::u16string_view)> isNearlyUnit;
};

// Remarks on what was written, before it is evaluated: dates that do not exist, constants that nobody assigned, and
// units that may be meant otherwise. `constants` holds the built-in ones.
void remarkOnText(const ElementList& elements, const UnitManager& units, const Context& constants, Context& context);

// Remarks on values that evaluation left over, where only signs and blanks stand between one and the value before it:
// beside words it is prose.
void remarkOnUnused(const ElementList& written, const ElementList& reduced, const PercentageWords& percentageWords,
                    Context& context);

// `written` are the elements before evaluation; a line that shows a result, or that asks for none, has no reason.
LineRemarks spokenRemarks(const Context& context, const ElementList& written, bool hasResult, const RemarkWords& words);

}  // namespace vemo
