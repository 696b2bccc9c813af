// SPDX-License-Identifier: MIT
#include "evaluation/labelled_result_evaluator.h"

#include "evaluation/element_tests.h"
#include "records/context_map.h"

namespace vemo {

std::optional<ElementList> LabelledResultEvaluator::evaluate(const ElementList& elements, Context& context,
                                                             const EvaluationContext&) const {
    if (elements.size() != 1 || runTypeOf(elements[0]) != RunType::label) return std::nullopt;
    const Value& value = elements[0].value;
    if ((!value.has(Attribute::decimal) && !value.has(Attribute::date)) || value.isNotANumber()) return std::nullopt;
    const std::u16string_view label =
        std::u16string_view(elements[0].text()).substr(0, elements[0].attributedText.runs()[0].length);
    const std::u16string_view words = trimmed(label);
    const std::u16string key = labelKey(words.substr(0, words.size() - 1));
    if (!key.empty()) context.set(key, value);
    return std::nullopt;
}

}  // namespace vemo
