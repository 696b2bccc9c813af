// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "vemo/context.h"
#include "vemo/value.h"

namespace vemo {

// A named operation on the values written after its name.
class Function {
public:
    virtual ~Function() = default;
    // Nothing when the arguments don't suit the function. Never fails: what can't be computed is not-a-number.
    virtual std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const = 0;
    // True when a sign between the name and a number belongs to the number: "abs -5", but not "sum -5".
    virtual bool takesSigns() const { return false; }
    // How many values it uses; further ones are ignored.
    virtual std::size_t mostValues() const { return SIZE_MAX; }
    // True when it tells what lines above gave: a line of nothing else adds nothing to the grand total.
    virtual bool repeatsLines() const { return false; }
};

class FunctionOfNumbers : public Function {
public:
    bool takesSigns() const final { return true; }
};

}  // namespace vemo
