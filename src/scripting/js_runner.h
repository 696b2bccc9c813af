// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scripting/js_vemo.h"
#include "vemo/engine.h"

struct OpaqueJSValue;  // of the JavaScript engine

namespace vemo {

class ScriptContext;

// Runs a calculator's scripts. The JavaScript engine is loaded and started by the first of them. Used under the
// lock of the calculator's context.
class JSRunner {
public:
    // `systemLog` hears every message too. `library` is the JavaScript engine's.
    JSRunner(JSVemo& jsVemo, const ScriptLimits& limits, Log systemLog, std::string library = {});
    ~JSRunner();
    JSRunner(const JSRunner&) = delete;
    JSRunner& operator=(const JSRunner&) = delete;

    // Evaluates a file's text. False when it did not come to its end; what it did before stays, and the log
    // says why.
    bool evaluate(std::u16string_view script, std::string_view fileName);

    // The messages since it was cleared, each with a line feed after it.
    const std::u16string& log() const { return log_; }
    void clearLog() { log_.clear(); }
    void append(std::u16string_view message);

    // The calls made while one lives are bounded together, and are stopped once `cancelled` is set. The runner may be
    // null.
    class Calculation {
    public:
        Calculation(JSRunner* runner, const std::atomic<bool>* cancelled);
        ~Calculation();
        Calculation(const Calculation&) = delete;
        Calculation& operator=(const Calculation&) = delete;

    private:
        ScriptContext* script_ = nullptr;
        std::chrono::milliseconds limit_{};
    };
    // True when, since the last question, a call came to no result through what was no fault of its own: what depends
    // on it may come out otherwise the next time.
    bool takeCutShort();

private:
    struct Callbacks;

    bool start();
    void defineGlobals();
    void offerGlobals();

    JSVemo& jsVemo_;
    ScriptLimits limits_;
    Log systemLog_;
    std::string library_;
    std::u16string log_;
    bool scriptEvaluation_ = false;
    std::shared_ptr<ScriptContext> jsvmContext_;
    std::vector<std::pair<std::u16string_view, OpaqueJSValue*>> globals_;  // those that a file may replace
};

}  // namespace vemo
