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

// Knows what is missing or unknown in a line as it was written, where no step of its evaluation would notice: "days
// until", "of 250", "price * quantity", "7 flurbs * 3 in kg", "$12..50 * 2", "0xZZ + 1", "8 divded by 2", "rent =",
// "5 kilometrs + 3 km", "2-3 cups".
class MistakeNotes {
public:
    explicit MistakeNotes(const Localizer& localizer);

    std::vector<MistakeNote> of(const ElementList& written, MisspeltUnit misspelt) const;

    struct Words {
        std::vector<std::u16string> articles, rangeAnd, untilOrSince;
        std::vector<std::u16string> relations;  // that a day or time must follow
    };

private:
    const Words words_;
};

}  // namespace vemo
