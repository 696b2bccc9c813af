// SPDX-License-Identifier: MIT
#include "scripting/script_context.h"

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "base/text.h"

namespace vemo {

namespace {

constexpr double watchInterval = 0.01;  // seconds between two looks at a running script
constexpr auto memoryMoment = std::chrono::milliseconds(20);
constexpr std::size_t mostRunsUnseen = 16;
constexpr std::size_t longestText = 1u << 20;  // of what a script hands over, in UTF-16 units
constexpr std::size_t longestMessage = 1u << 10;

constexpr std::u16string_view cancelledCalculation = u"stopped, for the calculation was cancelled";
constexpr std::u16string_view ofCalculation = u"not called, for the calls of this calculation were ";

// What would escape the bounds: jobs that run after the script, waiting, big memory in one step.
constexpr std::u16string_view withdrawn =
    uR"js(
for (const name of ["Promise", "WebAssembly", "Atomics", "SharedArrayBuffer", "FinalizationRegistry", "WeakRef",
                    "ArrayBuffer", "DataView", "Int8Array", "Uint8Array", "Uint8ClampedArray", "Int16Array",
                    "Uint16Array", "Int32Array", "Uint32Array", "Float16Array", "Float32Array", "Float64Array",
                    "BigInt64Array", "BigUint64Array"])
    delete globalThis[name];
delete Array.fromAsync;
)js";

std::chrono::nanoseconds threadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// Bytes the process has in memory.
std::size_t residentMemory() {
    std::array<char, 128> buffer{};
    const int file = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0) return 0;
    const ssize_t count = read(file, buffer.data(), buffer.size() - 1);
    close(file);
    unsigned long total = 0, resident = 0;
    if (count <= 0 || std::sscanf(buffer.data(), "%lu %lu", &total, &resident) != 2) return 0;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::u16string tookMore(std::u16string_view what, std::size_t limit, std::u16string_view unit) {
    return std::u16string(u"stopped, for it took more ")
        .append(what)
        .append(u" than ")
        .append(toUtf16(std::to_string(limit)))
        .append(u" ")
        .append(unit);
}

const JSChar* characters(std::u16string_view text) {
    return reinterpret_cast<const JSChar*>(text.data());
}

}  // namespace

ScriptText::ScriptText(const JavaScriptCore& js, std::u16string_view text)
    : js_(&js), text_(js.JSStringCreateWithCharacters(characters(text), text.size())) {}

ScriptText::~ScriptText() {
    if (text_) js_->JSStringRelease(text_);
}

std::u16string ScriptText::string(std::size_t longest) const {
    const JSChar* start = js_->JSStringGetCharactersPtr(text_);
    return std::u16string(reinterpret_cast<const char16_t*>(start), std::min(size(), longest));
}

thread_local ScriptContext* ScriptContext::current_ = nullptr;

ScriptContext::ScriptContext(std::shared_ptr<const JavaScriptCore> js, std::size_t memory, JSRunner& runner)
    : js_(std::move(js)), memory_(memory), runner_(runner) {
    group_ = js_->JSContextGroupCreate();
    context_ = js_->JSGlobalContextCreateInGroup(group_, nullptr);
    double_.emplace(*js_, u"double");
    unitId_.emplace(*js_, u"unitId");
    JSValueRef exception = nullptr;
    evaluate(withdrawn, u"", &exception);
    // Code made from texts could hide what `refusal` looks for.
    const ScriptText reason(*js_, u"no code is made from texts here");
    js_->JSGlobalContextSetEvalEnabled(context_, false, reason);
    armWatch(watchInterval);
}

ScriptContext::~ScriptContext() {
    double_.reset();
    unitId_.reset();
    js_->JSGlobalContextRelease(context_);
    js_->JSContextGroupRelease(group_);
}

void ScriptContext::armWatch(double seconds) {
    js_->JSContextGroupSetExecutionTimeLimit(group_, seconds, shouldTerminate, this);
}

bool ScriptContext::shouldTerminate(JSContextRef, void* data) {
    auto& script = *static_cast<ScriptContext*>(data);
    if (!script.stopReason_.empty()) return true;
    if (script.isCancelled()) {
        script.stopReason_ = cancelledCalculation;
        return true;
    }
    if (threadTime() > script.deadline_) {
        script.stopReason_ = tookMore(u"time", static_cast<std::size_t>(script.limit_.count()), u"ms");
        return true;
    }
    const std::size_t memory = residentMemory();
    if (memory > script.memoryBefore_ && memory - script.memoryBefore_ > script.memory_) {
        script.stopReason_ = tookMore(u"memory", script.memory_ >> 20, u"MB");
        return true;
    }
    script.armWatch(watchInterval);  // it watches once each time
    return false;
}

void ScriptContext::beginCalculation(std::chrono::milliseconds limit, const std::atomic<bool>* cancelled) {
    calculationLimit_ = limit;
    calculationLeft_ = limit;
    cancelled_ = cancelled;
    cutShort_ = false;
}

std::optional<std::u16string> ScriptContext::refusalOfCalls() {
    if (runs_ > 0) return std::nullopt;
    std::u16string reason;
    if (isCancelled())
        reason = cancelledCalculation;
    else if (calculationLeft_ <= std::chrono::nanoseconds(0))
        reason = std::u16string(ofCalculation)
                     .append(tookMore(u"time", static_cast<std::size_t>(calculationLimit_.count()), u"ms"));
    else if (keepsTooMuch_)
        reason = std::u16string(u"not called, for scripts keep more memory than ")
                     .append(toUtf16(std::to_string(memory_ >> 20)))
                     .append(u" MB");
    else
        return std::nullopt;
    cutShort_ = true;
    return reason;
}

ScriptContext::Run::Run(ScriptContext& script, std::chrono::milliseconds limit, Kind kind)
    : script_(script), before_(current_), outermost_(script.runs_ == 0), kind_(kind) {
    current_ = &script;
    ++script_.runs_;
    if (!outermost_) return;
    script_.js_->JSLock(script_.context_);
    script_.stopReason_.clear();
    script_.limit_ = limit;
    script_.started_ = threadTime();
    script_.deadline_ = script_.started_ + limit;
    if (kind == Kind::call && script_.calculationLeft_ < limit) {
        script_.limit_ = script_.calculationLimit_;
        script_.deadline_ = script_.started_ + script_.calculationLeft_;
    }
    // Asking for the memory costs more than a short call; what it was a moment ago will do.
    const auto now = std::chrono::steady_clock::now();
    if (++script_.runsUnseen_ < mostRunsUnseen && now - script_.memorySeen_ < memoryMoment) return;
    script_.runsUnseen_ = 0;
    script_.memorySeen_ = now;
    script_.lookAtMemory();
}

ScriptContext::Run::~Run() {
    if (outermost_) {
        if (kind_ == Kind::call) {
            script_.calculationLeft_ -= threadTime() - script_.started_;
            if (!script_.stopReason_.empty())
                script_.cutShort_ = script_.cutShort_ || script_.isCancelled() ||
                                    script_.calculationLeft_ <= std::chrono::nanoseconds(0);
        }
        if (!script_.stopReason_.empty()) script_.recover();
        script_.js_->JSUnlock(script_.context_);
    }
    --script_.runs_;
    current_ = before_;
}

// What a single call takes does not show calls that each keep a little. Therefore the memory of the scripts is looked
// at once the process has grown much.
void ScriptContext::lookAtMemory() {
    memoryBefore_ = residentMemory();
    if (memoryAtCollection_ == 0) memoryAtCollection_ = memoryBefore_;
    if (memoryBefore_ < memoryAtCollection_ + memory_ / 4) return;
    js_->JSGarbageCollect(context_);
    keepsTooMuch_ = heapSize() > memory_;
    memoryBefore_ = memoryAtCollection_ = residentMemory();
}

std::size_t ScriptContext::heapSize() {
    JSValueRef exception = nullptr;
    const auto size = number(js_->JSGetMemoryUsageStatistics(context_), u"heapSize", &exception);
    return size && *size > 0 ? static_cast<std::size_t>(*size) : 0;
}

// A script that was stopped inside a host function leaves the order to stop in force, and the next one would run into
// it.
void ScriptContext::recover() {
    stopReason_.clear();
    deadline_ = threadTime() + limit_;
    JSValueRef exception = nullptr;
    evaluate(u"0", u"", &exception);
    js_->JSGarbageCollect(context_);
    memorySeen_ = {};
}

JSValueRef ScriptContext::evaluate(std::u16string_view source, std::u16string_view name, JSValueRef* exception) {
    const ScriptText text(*js_, source);
    const ScriptText url(*js_, name);
    return js_->JSEvaluateScript(context_, text, nullptr, url, 1, exception);
}

bool ScriptContext::isWellFormed(std::u16string_view source, JSValueRef* exception) {
    const ScriptText text(*js_, source);
    return js_->JSCheckScriptSyntax(context_, text, nullptr, 1, exception);
}

bool ScriptContext::isAbsent(JSValueRef value) const {
    return !value || js_->JSValueIsUndefined(context_, value) || js_->JSValueIsNull(context_, value);
}

JSValueRef ScriptContext::error(std::u16string_view message) {
    const ScriptText text(*js_, message);
    const JSValueRef argument = js_->JSValueMakeString(context_, text);
    return js_->JSObjectMakeError(context_, 1, &argument, nullptr);
}

void ScriptContext::set(JSObjectRef object, std::u16string_view name, JSValueRef value,
                        JSPropertyAttributes attributes) {
    const ScriptText key(*js_, name);
    js_->JSObjectSetProperty(context_, object, key, value, attributes, nullptr);
}

JSValueRef ScriptContext::property(JSObjectRef object, std::u16string_view name, JSValueRef* exception) {
    const ScriptText key(*js_, name);
    const JSValueRef value = js_->JSObjectGetProperty(context_, object, key, exception);
    return *exception || isAbsent(value) ? nullptr : value;
}

std::optional<std::u16string> ScriptContext::text(JSObjectRef object, std::u16string_view name, JSValueRef* exception) {
    const JSValueRef value = property(object, name, exception);
    return value ? string(value, exception) : std::nullopt;
}

std::optional<double> ScriptContext::number(JSObjectRef object, std::u16string_view name, JSValueRef* exception) {
    const JSValueRef value = property(object, name, exception);
    if (!value) return std::nullopt;
    const double number = js_->JSValueToNumber(context_, value, exception);
    return *exception ? std::nullopt : std::optional(number);
}

std::optional<std::u16string> ScriptContext::string(JSValueRef value, JSValueRef* exception) {
    const ScriptText text(*js_, js_->JSValueToStringCopy(context_, value, exception));
    if (*exception || !text) return std::nullopt;
    if (text.size() > longestText) {
        *exception = error(u"the text is too long");
        return std::nullopt;
    }
    return text.string();
}

std::u16string ScriptContext::message(JSValueRef exception) {
    std::u16string line, description;
    if (!stopReason_.empty()) {
        description = stopReason_;
    } else {
        JSValueRef failure = nullptr;
        // Both ways to describe it may run the script's own code, and fail in turn.
        if (js_->JSValueIsObject(context_, exception)) {
            const JSValueRef lineNumber = property(const_cast<JSObjectRef>(exception), u"line", &failure);
            const double number = lineNumber ? js_->JSValueToNumber(context_, lineNumber, &failure) : 0;
            if (!failure && number >= 1 && number <= 1e9) line = toUtf16(std::to_string(static_cast<long>(number)));
        }
        failure = nullptr;
        const ScriptText text(*js_, js_->JSValueToStringCopy(context_, exception, &failure));
        description = text && !failure      ? text.string(longestMessage)
                      : stopReason_.empty() ? u"what was thrown has no text"
                                            : stopReason_;
    }
    return std::u16string(u"Error on line ").append(line).append(u": ").append(description);
}

Value ScriptContext::value(JSValueRef value, JSValueRef* exception) {
    if (js_->JSValueIsNumber(context_, value))
        return Value(DecimalNumber::fromDouble(js_->JSValueToNumber(context_, value, exception)));
    Value result;
    if (!js_->JSValueIsObject(context_, value)) return result;
    const auto object = const_cast<JSObjectRef>(value);
    if (const auto amount = number(object, u"double", exception))
        result = result.with(DecimalNumber::fromDouble(*amount));
    if (*exception) return result;
    if (const auto unit = text(object, u"unitId", exception)) result = result.with(*unit, Attribute::unit);
    return result;
}

JSObjectRef ScriptContext::object(const Value& value) {
    const JSObjectRef result = js_->JSObjectMake(context_, nullptr, nullptr);
    if (const auto amount = value.decimal()) {
        js_->JSObjectSetProperty(context_, result, *double_, js_->JSValueMakeNumber(context_, amount->toDouble()), 0,
                                 nullptr);
    }
    if (const auto unit = value.string(Attribute::unit)) {
        const ScriptText text(*js_, *unit);
        js_->JSObjectSetProperty(context_, result, *unitId_, js_->JSValueMakeString(context_, text), 0, nullptr);
    }
    return result;
}

}  // namespace vemo
