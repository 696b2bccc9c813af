// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "functions/function_manager.h"
#include "scripting/script_context.h"

namespace vemo {

// A function whose body is a script's.
class JavaScriptFunction : public Function {
public:
    using Report = std::function<void(std::u16string_view message)>;

    // `function` must be callable. `report` hears what goes wrong in a call.
    JavaScriptFunction(std::shared_ptr<ScriptContext> script, JSObjectRef function, std::chrono::milliseconds limit,
                       Report report);
    ~JavaScriptFunction() override;

    // Calls the function with one array, of an object for each value.
    std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const override;
    bool takesSeveral() const override { return true; }

private:
    std::shared_ptr<ScriptContext> script_;
    JSObjectRef function_;
    std::chrono::milliseconds limit_;
    Report report_;
};

}  // namespace vemo
