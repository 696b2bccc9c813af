// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "base/function_ref.h"
#include "records/element.h"
#include "vemo/remarks.h"

namespace vemo {

class Localizer;

struct MistakeNote {
    NoteKind kind;
    TextRange range;
    std::u16string first = {};  // what the message names
};

// Tells a word in lower case that is nearly the name of a unit.
using MisspeltUnit = FunctionRef<bool(std::u16string_view)>;

// What is missing or unknown in a line as it was written, where no step of its evaluation would notice: "days until",
// "of 250", "price * quantity", "7 flurbs * 3 in kg", "$12..50 * 2", "0xZZ + 1",
// "8 divded by 2", "rent =", "5 kilometrs + 3 km", "2-3 cups".
std::vector<MistakeNote> mistakeNotes(const ElementList& written, const Localizer& localizer, MisspeltUnit misspelt);

}  // namespace vemo
