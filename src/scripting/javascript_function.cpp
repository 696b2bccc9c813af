// SPDX-License-Identifier: MIT
#include "scripting/javascript_function.h"

#include "records/remarks.h"

namespace vemo {

JavaScriptFunction::JavaScriptFunction(std::shared_ptr<ScriptContext> script, JSObjectRef function,
                                       std::chrono::milliseconds limit, Report report)
    : script_(std::move(script)), function_(function), limit_(limit), report_(std::move(report)) {
    script_->js().JSValueProtect(script_->context(), function_);
}

JavaScriptFunction::~JavaScriptFunction() {
    script_->js().JSValueUnprotect(script_->context(), function_);
}

std::optional<Value> JavaScriptFunction::evaluate(const std::vector<Value>& values, Context& evaluation) const {
    const auto fail = [&](const std::u16string& message) {
        report_(message);
        remarksOf(evaluation).reason(ReasonCode::scriptFailed, message);
        return std::nullopt;
    };
    if (const auto refusal = script_->refusalOfCalls())
        return fail(std::u16string(u"Error on line : ").append(*refusal));
    const ScriptContext::Run run(*script_, limit_, ScriptContext::Kind::call);
    const JavaScriptCore& js = script_->js();
    const JSContextRef context = script_->context();
    JSValueRef exception = nullptr;
    const JSObjectRef array = js.JSObjectMakeArray(context, 0, nullptr, &exception);
    for (std::size_t i = 0; array && i < values.size(); ++i)
        js.JSObjectSetPropertyAtIndex(context, array, static_cast<unsigned>(i), script_->object(values[i]), &exception);
    std::optional<Value> result;
    if (!exception) {
        const JSValueRef argument = array;
        const JSValueRef returned = js.JSObjectCallAsFunction(context, function_, nullptr, 1, &argument, &exception);
        if (!exception && !script_->isAbsent(returned)) result = script_->value(returned, &exception);
    }
    if (exception || !script_->stopReason().empty()) return fail(script_->message(exception));
    // A text, for example.
    if (result && result->isEmpty()) remarksOf(evaluation).reason(ReasonCode::scriptFailed);
    return result;
}

}  // namespace vemo
