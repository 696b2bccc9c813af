// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "vemo/context.h"
#include "vemo/value.h"

namespace vemo {

// What functions need of the operators: one operator applied to two values.
class Reduction {
public:
    virtual ~Reduction() = default;
    // Nothing when the operator has no meaning for these operands.
    virtual std::optional<Value> apply(std::u16string_view operatorId, const Value& left, const Value& right,
                                       Context& context) const = 0;
};

}  // namespace vemo
