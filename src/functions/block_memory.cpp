// SPDX-License-Identifier: MIT
#include "functions/block_memory.h"

namespace vemo {

const ValuesList* previousResults(Context& context) {
    context.addDependencyOn(context_keys::previousResults, std::nullopt, Value());
    return context.get<ValuesList>(context_keys::previousResults);
}

bool isResult(const Value& value) {
    return value.has(Attribute::decimal) || value.has(Attribute::date);
}

bool stillHold(const ContextMap& dependencies, const Context& context) {
    return dependencies.all([&](const auto& entry) {
        const IsEquatable* present = context.find(entry.key());
        return present ? present->isEqual(entry.value()) : entry.value().isEmptyValue();
    });
}

}  // namespace vemo
