// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

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
    // The one that runs on this thread. What the engine calls back finds it in no other way.
    static ScriptContext& current() { return *current_; }

    // All calls until the next one may take so long together, and are stopped once `cancelled` is set. It is read as
    // long as calls are made.
    void beginCalculation(std::chrono::milliseconds limit, const std::atomic<bool>* cancelled);
    // Why no call is made any more in this calculation; nothing as long as they are.
    std::optional<std::u16string> refusalOfCalls();
    // True when a call since the last question was not made, or was stopped, for what is no fault of its own.
    bool takeCutShort() { return std::exchange(cutShort_, false); }

    enum class Kind { file, call };
    // What a script does while one of these lives is bounded: past the time (of this thread) or the memory it is
    // stopped. They nest; the outermost counts.
    class Run {
    public:
        Run(ScriptContext& script, std::chrono::milliseconds limit, Kind kind);
        ~Run();
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        ScriptContext& script_;
        ScriptContext* before_;  // on this thread
        bool outermost_;
        Kind kind_;
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
    // True for a source that could be evaluated. Nothing of it runs.
    bool isWellFormed(std::u16string_view source, JSValueRef* exception);
    void set(JSObjectRef object, std::u16string_view name, JSValueRef value, JSPropertyAttributes attributes = 0);

private:
    static bool shouldTerminate(JSContextRef, void* data);
    void armWatch(double seconds);
    void recover();
    void lookAtMemory();
    std::size_t heapSize();
    bool isCancelled() const { return cancelled_ && *cancelled_; }

    static thread_local ScriptContext* current_;

    std::shared_ptr<const JavaScriptCore> js_;
    std::size_t memory_;
    JSRunner& runner_;
    JSContextGroupRef group_ = nullptr;
    JSGlobalContextRef context_ = nullptr;
    std::optional<ScriptText> double_, unitId_;  // names, made once

    std::size_t runs_ = 0;
    std::chrono::nanoseconds started_{};  // on the clock of the thread
    std::chrono::nanoseconds deadline_{};
    std::chrono::milliseconds limit_{};
    std::size_t memoryBefore_ = 0;
    std::chrono::steady_clock::time_point memorySeen_{};
    std::size_t runsUnseen_ = 0;
    std::size_t memoryAtCollection_ = 0;  // of the process, when the scripts' own was looked at
    bool keepsTooMuch_ = false;

    std::chrono::milliseconds calculationLimit_{};
    std::chrono::nanoseconds calculationLeft_{};
    const std::atomic<bool>* cancelled_ = nullptr;
    bool cutShort_ = false;
    std::u16string stopReason_;
};

}  // namespace vemo
