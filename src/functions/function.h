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
    // True when several values may stand in brackets right after the name: "max(3, 7)".
    virtual bool takesSeveral() const { return false; }
    virtual std::optional<Value> evaluateSeveral(const std::vector<Value>& values, Context& context) const {
        return evaluate(values, context);
    }
    // True when the name is a word first: it counts right before a bracket, or where nothing but a label, the sign of
    // an assignment or an operator is beside it.
    virtual bool isWord() const { return false; }
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
