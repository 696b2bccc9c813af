// SPDX-License-Identifier: MIT
#include "platform/javascript_core.h"

#include <dlfcn.h>

#include <csignal>
#include <mutex>

namespace vemo {

namespace {

// How an engine inside somebody else's process should behave. Only for the one who brings the library into the
// process, and before any script runs: the library's settings hold for all its users. Where it is there already,
// scripts run with the settings it has.
void configure(void* library) {
    struct Setting {
        const char* name;
        int value;
    };
    constexpr Setting settings[] = {
        {"usePollingTraps", 1},  // time limits without handlers for SIGSEGV
        {"useBaselineJIT", 0},   // scripts are short; regular expressions are still compiled
        {"useConcurrentGC", 0},  // no thread that collects in the background
    };
    if (const auto set = reinterpret_cast<int (*)(const char*, int)>(dlsym(library, "jsc_options_set_boolean")))
        for (const Setting& setting : settings) set(setting.name, setting.value);
    // It stops threads by a signal to look at their stacks; SIGUSR1, its usual choice, is the application's.
    constexpr int belowLast = 3;
    if (const auto use = reinterpret_cast<bool (*)(int)>(dlsym(library, "JSConfigureSignalForGC")))
        use(SIGRTMAX - belowLast);
}

}  // namespace

Result<std::shared_ptr<const JavaScriptCore>> JavaScriptCore::load(const std::string& library) {
    static std::mutex firstUse;  // of a library, so that its settings are made once and before its first script
    const std::lock_guard lock(firstUse);
    constexpr int flags = RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE;  // its threads can't be unloaded
    void* handle = dlopen(library.c_str(), flags | RTLD_NOLOAD);
    const bool present = handle != nullptr;
    if (!handle) handle = dlopen(library.c_str(), flags);
    if (!handle) {
        const char* reason = dlerror();
        return Failure{reason ? reason : library + " cannot be loaded"};
    }
    auto table = std::make_shared<JavaScriptCore>();
    std::string problem;
    const auto find = [&]<class Pointer>(const char* name, Pointer& function) {
        function = reinterpret_cast<Pointer>(dlsym(handle, name));
        if (!function) problem = library + ": no function " + name;
    };
#define VEMO_FIND(name) find(#name, table->name);
    VEMO_JAVASCRIPT_CORE_FUNCTIONS(VEMO_FIND)
#undef VEMO_FIND
    if (!problem.empty()) return Failure{std::move(problem)};
    if (!present) configure(handle);
    return std::shared_ptr<const JavaScriptCore>(std::move(table));
}

}  // namespace vemo
