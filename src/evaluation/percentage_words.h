// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "records/element.h"

namespace vemo {

class Localizer;

// Words beside which a percentage is to be applied, such as "discount" and "tip", or is part of an amount already, such
// as "including".
class PercentageWords {
public:
    explicit PercentageWords(const Localizer& localizer);

    // True for "$80 10%" and "$1000 at 5% for 3 years": a percentage of the line was meant to be applied. "milk 2%
    // $3.79" has one in its description.
    bool mayApply(const ElementList& elements) const;
    // True for a text with a word such as "rebate".
    bool isDiscount(std::u16string_view text) const;
    // True for one with a word such as "incl.".
    bool isIncluding(std::u16string_view text) const;

private:
    std::vector<std::u16string> applying_, discounts_, including_;
};

}  // namespace vemo
