// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "functions/function_manager.h"
#include "units/unit_catalogue.h"

namespace vemo {

// What scripts can do to a calculator, and what they did. Under the lock of the calculator's context.
class JSVemo {
public:
    // The parts of the calculator that scripts add to; all must outlive this.
    JSVemo(Context& context, UnitRegistry& units, FunctionManager& functions)
        : context_(context), units_(units), functions_(functions) {}

    // Each gives what there is to object, and then does nothing; nothing where all is well.
    std::optional<std::u16string> setVariable(std::u16string_view name, const Value& value);
    std::optional<std::u16string> addUnit(const Unit& unit);
    void addFunction(std::u16string_view id, const std::vector<std::u16string>& phrases,
                     std::shared_ptr<const Function> function);

    // What was defined since the last call, such as "unit furlong".
    std::vector<std::u16string> takeDefined() { return std::exchange(defined_, {}); }

private:
    bool isProportional(std::u16string_view unitId);
    bool meansTheSame(const Unit& unit);

    Context& context_;
    UnitRegistry& units_;
    FunctionManager& functions_;
    std::unordered_set<std::u16string> ownUnits_;
    std::vector<std::u16string> defined_;
};

}  // namespace vemo
