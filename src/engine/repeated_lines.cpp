// SPDX-License-Identifier: MIT
#include "engine/repeated_lines.h"

namespace vemo {

bool onlyRepeatsLines(const ElementList& written, const FunctionManager& functions) {
    bool found = false;
    for (const ElementPointer& element : written.pointers()) {
        const Value& value = element->value;
        if (value.isEmpty() || value.has(Attribute::parenthesis)) continue;
        if (found) return false;
        const auto id = value.string(Attribute::function);
        const Function* function = id ? functions.function(*id) : nullptr;
        found = function ? function->repeatsLines() : element->attributedText.runs().begin()->type == RunType::variable;
        if (!found) return false;
    }
    return found;
}

}  // namespace vemo
