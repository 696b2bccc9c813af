// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/javascript_core.h"
#include "vemo/value.h"

namespace vemo {

class JSRunner;

// Text of the JavaScript engine, released with this.
class ScriptText {
public:
    ScriptText(const JavaScriptCore& js, std::u16string_view text);
    // Takes over what a call of the engine returned.
    ScriptText(const JavaScriptCore& js, JSStringRef text) : js_(&js), text_(text) {}
    ~ScriptText();
    ScriptText(const ScriptText&) = delete;
    ScriptText& operator=(const ScriptText&) = delete;

    explicit operator bool() const { return text_ != nullptr; }
    operator JSStringRef() const { return text_; }
    std::size_t size() const { return js_->JSStringGetLength(text_); }
    std::u16string string(std::size_t longest = std::u16string::npos) const;

private:
    const JavaScriptCore* js_;
    JSStringRef text_;
};

// One virtual machine with one global object, and the bounds within which scripts run there. One thread at a
// time, which may change.
class ScriptContext {
public:
    // `memory` bounds, in bytes, by how much a run may make the process grow.
    ScriptContext(std::shared_ptr<const JavaScriptCore> js, std::size_t memory, JSRunner& runner);
    ~ScriptContext();
    ScriptContext(const ScriptContext&) = delete;
    ScriptContext& operator=(const ScriptContext&) = delete;

    const JavaScriptCore& js() const { return *js_; }
    JSGlobalContextRef context() const { return context_; }
    JSRunner& runner() const { return runner_; }
    // The one that runs on this thread: what the engine calls back has no other way to find it.
    static ScriptContext& current() { return *current_; }

    // What a script does while one of these lives is bounded: past the time (of this thread) or the memory it is
    // stopped. They nest; the outermost counts.
    class Run {
    public:
        Run(ScriptContext& script, std::chrono::milliseconds limit);
        ~Run();
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        ScriptContext& script_;
        ScriptContext* before_;  // on this thread
        bool outermost_;
    };

    // Why the present run was stopped; empty when it wasn't.
    const std::u16string& stopReason() const { return stopReason_; }
    // "Error on line 3: TypeError: …" for what a script threw.
    std::u16string message(JSValueRef exception);

    // The functions below return nothing and set `exception` where the script throws meanwhile.
    JSValueRef property(JSObjectRef object, std::u16string_view name, JSValueRef* exception);
    // The text of a property that is there.
    std::optional<std::u16string> text(JSObjectRef object, std::u16string_view name, JSValueRef* exception);
    std::optional<double> number(JSObjectRef object, std::u16string_view name, JSValueRef* exception);
    std::optional<std::u16string> string(JSValueRef value, JSValueRef* exception);
    // A number is an amount; an object may have an amount under "double" and the id of its unit under "unitId".
    // Everything else gives a value without attributes.
    Value value(JSValueRef value, JSValueRef* exception);
    // The same the other way: an object with "double" and "unitId".
    JSObjectRef object(const Value& value);

    bool isAbsent(JSValueRef value) const;
    JSValueRef error(std::u16string_view message);
    JSValueRef evaluate(std::u16string_view source, std::u16string_view name, JSValueRef* exception);
    void set(JSObjectRef object, std::u16string_view name, JSValueRef value, JSPropertyAttributes attributes = 0);

private:
    static bool shouldTerminate(JSContextRef, void* data);
    void armWatch(double seconds);
    void recover();

    static thread_local ScriptContext* current_;

    std::shared_ptr<const JavaScriptCore> js_;
    std::size_t memory_;
    JSRunner& runner_;
    JSContextGroupRef group_ = nullptr;
    JSGlobalContextRef context_ = nullptr;
    std::optional<ScriptText> double_, unitId_;  // names, made once

    std::size_t runs_ = 0;
    std::chrono::nanoseconds deadline_{};  // on the clock of the thread
    std::chrono::milliseconds limit_{};
    std::size_t memoryBefore_ = 0;
    std::chrono::steady_clock::time_point memorySeen_{};
    std::u16string stopReason_;
};

}  // namespace vemo
