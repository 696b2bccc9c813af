// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "base/function_ref.h"
#include "platform/regex.h"
#include "records/element.h"

namespace vemo {

// Turns pattern matches into candidates, and candidates into the elements of a line.
class StringExtractor {
public:
    // Appends a candidate for each match of the pattern.
    static void extract(std::u16string_view text, const Regex& pattern, std::int64_t priority,
                        FunctionRef<ElementPointer(std::u16string_view)> make, std::vector<Extraction>& result);

    // Resolves overlaps and fills the gaps with plain text: the elements' texts always join to the line.
    static ElementList elements(std::u16string_view text, const std::vector<Extraction>& extractions);
};

}  // namespace vemo
