// SPDX-License-Identifier: MIT
#pragma once

#include "scanning/extractor.h"

namespace vemo {

// Words that are the label of a line above, where a calculation asks for a value: "hours * rate" below "hours: 37.5"
// and "rate: $28". They stand beside a sign, or after "20% of", and every operand without a number must be a label:
// labels are no names, and elsewhere words stay words. Looks at what others have found, and so comes last.
class LabelWordsExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"LabelWordsExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

}  // namespace vemo
