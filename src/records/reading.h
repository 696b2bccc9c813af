// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "vemo/value.h"

namespace vemo {

// One step of a calculation as the evaluation made it, from which the reading of a line is written.
struct ReadingStep {
    struct Operand {
        Value value;      // empty for one that is missing
        TextRange range;  // where it stands in the line
    };

    std::u16string name;  // the operator's id, or the function's name as it was written
    std::vector<Operand> operands;
    Value result;
    TextRange range;  // what the result stands for
    bool isFunction = false;
};

}  // namespace vemo
