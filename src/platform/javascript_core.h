// SPDX-License-Identifier: MIT
#pragma once

#include <JavaScriptCore/JavaScript.h>

#include <memory>
#include <string>

#include "vemo/result.h"

// The library exports these beside what its public headers declare.
extern "C" {
using JSShouldTerminateCallback = bool (*)(JSContextRef context, void* data);
void JSContextGroupSetExecutionTimeLimit(JSContextGroupRef group, double seconds, JSShouldTerminateCallback callback,
                                         void* data);
void JSGlobalContextSetEvalEnabled(JSGlobalContextRef context, bool enabled, JSStringRef message);
// An object with the bytes in use under "heapSize", and more.
JSObjectRef JSGetMemoryUsageStatistics(JSContextRef context);
void JSLock(JSContextRef context);
void JSUnlock(JSContextRef context);
}

namespace vemo {

// The functions used of the JavaScript engine's library, one a line.
#define VEMO_JAVASCRIPT_CORE_FUNCTIONS(each)                                                                           \
    each(JSCheckScriptSyntax) each(JSGetMemoryUsageStatistics) each(JSContextGetGlobalObject)                          \
        each(JSContextGroupCreate) each(JSContextGroupRelease) each(JSContextGroupSetExecutionTimeLimit)               \
            each(JSClassCreate) each(JSClassRelease) each(JSEvaluateScript) each(JSGarbageCollect)                     \
                each(JSGlobalContextCreateInGroup) each(JSGlobalContextRelease) each(JSGlobalContextSetEvalEnabled)    \
                    each(JSLock) each(JSObjectCallAsFunction) each(JSObjectGetProperty) each(JSObjectIsFunction)       \
                        each(JSObjectMake) each(JSObjectMakeArray) each(JSObjectMakeConstructor)                       \
                            each(JSObjectMakeError) each(JSObjectMakeFunctionWithCallback) each(JSObjectSetProperty)   \
                                each(JSObjectSetPropertyAtIndex) each(JSStringCreateWithCharacters)                    \
                                    each(JSStringGetCharactersPtr) each(JSStringGetLength) each(JSStringRelease)       \
                                        each(JSUnlock) each(JSValueIsNumber) each(JSValueIsObject) each(JSValueIsNull) \
                                            each(JSValueIsUndefined) each(JSValueMakeNumber) each(JSValueMakeString)   \
                                                each(JSValueMakeUndefined) each(JSValueProtect) each(JSValueToNumber)  \
                                                    each(JSValueToStringCopy) each(JSValueUnprotect)

// The library of the JavaScript engine, opened when the first script needs it: a process without scripts neither
// loads nor starts it. Once opened it stays. (Were it linked, `vemo -e 1` would take 18.7 ms of processor time instead
// of 13.2: LD_PRELOAD=libjavascriptcoregtk-4.1.so.0 perf stat -r 20 vemo -e 1.)
struct JavaScriptCore {
#define VEMO_DECLARE(name) decltype(&::name) name = nullptr;
    VEMO_JAVASCRIPT_CORE_FUNCTIONS(VEMO_DECLARE)
#undef VEMO_DECLARE

    static constexpr const char* defaultLibrary = "libjavascriptcoregtk-4.1.so.0";

    // Fails when the library or one of its functions is missing. Any thread may call it.
    static Result<std::shared_ptr<const JavaScriptCore>> load(const std::string& library);
};

}  // namespace vemo
