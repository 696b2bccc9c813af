// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "scanning/element.h"
#include "scanning/string_range_detector.h"

namespace vemo {

// Turns pattern matches into candidates, and candidates into the elements of a line.
class StringExtractor {
public:
    explicit StringExtractor(StringRangeDetector& stringRangeDetector) : stringRangeDetector_(stringRangeDetector) {}

    StringRangeDetector& stringRangeDetector() const { return stringRangeDetector_; }

    // Appends a candidate for each match of the pattern (with `groups`, for each group too).
    void extract(const std::u16string& text, const Regex& pattern, bool groups, std::int64_t priority,
                 const std::function<ElementPointer(std::u16string_view)>& make, std::vector<Extraction>& result) const;

    // Resolves overlaps and fills the gaps with plain text: the elements' texts always join to the line.
    static ElementList elements(std::u16string_view text, const std::vector<Extraction>& extractions);

private:
    StringRangeDetector& stringRangeDetector_;
};

}  // namespace vemo
