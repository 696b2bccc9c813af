// SPDX-License-Identifier: MIT
#include "scripting/js_runner.h"

#include <algorithm>
#include <exception>

#include "scripting/javascript_function.h"

namespace vemo {

namespace {

constexpr std::size_t longestLog = 1u << 16;  // UTF-16 units; the rest is dropped
constexpr std::size_t longestMessage = 1u << 12;
constexpr JSClassDefinition emptyClass = {};

std::vector<std::u16string> splitAtCommas(std::u16string_view text) {
    std::vector<std::u16string> parts;
    for (std::size_t start = 0;;) {
        const std::size_t comma = text.find(u',', start);
        parts.emplace_back(text.substr(start, comma - start));
        if (comma == text.npos) return parts;
        start = comma + 1;
    }
}

struct Word {
    std::u16string_view word, other;
};

// Jobs that a script leaves for later would run outside of every bound, as they do in each other's wake without end; so
// what makes them is not let in. A text in which the word is another one is no longer well-formed where the word is
// used as a keyword; in comments, texts and names of properties it makes no difference.
constexpr Word keywords[] = {
    {u"async", u"a$ync"},    // a name like any other
    {u"import", u"export"},  // a keyword that makes no expression
};

bool isPartOfName(char16_t c) {
    return c == u'_' || c == u'$' || (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

// The text with the other word everywhere; nothing where the word does not occur.
std::optional<std::u16string> exchanged(std::u16string_view source, const Word& keyword) {
    std::optional<std::u16string> result;
    for (std::size_t i = source.find(keyword.word); i != source.npos; i = source.find(keyword.word, i + 1)) {
        const std::size_t end = i + keyword.word.size();
        if ((i > 0 && isPartOfName(source[i - 1])) || (end < source.size() && isPartOfName(source[end]))) continue;
        if (!result) result.emplace(source);
        result->replace(i, keyword.word.size(), keyword.other);
    }
    return result;
}

// Why a text is not evaluated. One that is not well-formed says so itself when it is.
std::optional<std::u16string> refusal(ScriptContext& script, std::u16string_view source) {
    for (const Word& keyword : keywords) {
        const auto other = exchanged(source, keyword);
        JSValueRef exception = nullptr;
        if (!other || script.isWellFormed(*other, &exception)) continue;
        JSValueRef fault = nullptr, failure = nullptr;
        if (!script.isWellFormed(source, &fault)) return std::nullopt;
        const auto line = script.js().JSValueIsObject(script.context(), exception)
                              ? script.number(const_cast<JSObjectRef>(exception), u"line", &failure)
                              : std::nullopt;
        return std::u16string(u"Error on line ")
            .append(line ? toUtf16(std::to_string(static_cast<long>(*line))) : u"")
            .append(u": the word '")
            .append(keyword.word)
            .append(u"' is not accepted, for a line needs its result at once");
    }
    return std::nullopt;
}

}  // namespace

// What scripts call. One of these lives on the stack of a call; nothing it does leaves as a C++ exception.
struct JSRunner::Callbacks {
    JSRunner& runner;
    ScriptContext& script;
    std::size_t count;
    const JSValueRef* arguments;
    JSValueRef* exception;

    using Method = void (Callbacks::*)();

    template <Method method>
    static JSValueRef call(JSContextRef context, JSObjectRef, JSObjectRef, std::size_t count,
                           const JSValueRef arguments[], JSValueRef* exception);
    static JSObjectRef construct(JSContextRef context, JSObjectRef constructor, std::size_t count,
                                 const JSValueRef arguments[], JSValueRef* exception);

    JSObjectRef objectArgument(std::size_t index) const {
        if (index >= count || !script.js().JSValueIsObject(script.context(), arguments[index])) return nullptr;
        return const_cast<JSObjectRef>(arguments[index]);
    }
    void fail(std::u16string_view message) { *exception = script.error(message); }
    // False in the middle of a calculation, where a definition would make the lines above and below differ.
    bool mayDefine() {
        if (!runner.scriptEvaluation_) fail(u"definitions are made while the script is loaded, not in a calculation");
        return runner.scriptEvaluation_;
    }
    void say(const std::optional<std::u16string>& objection) {
        if (objection) runner.append(*objection);
    }

    void log() {
        JSValueRef undefined = script.js().JSValueMakeUndefined(script.context());
        if (const auto text = script.string(count > 0 ? arguments[0] : undefined, exception)) runner.append(*text);
    }

    void setVariable() {
        if (count < 1 || !mayDefine()) return;
        const auto name = script.string(arguments[0], exception);
        if (!name) return;
        const Value value = count > 1 ? script.value(arguments[1], exception) : Value();
        if (!*exception) say(runner.jsVemo_.setVariable(*name, value));
    }

    void addUnit() {
        const JSObjectRef object = objectArgument(0);
        if (!object || !mayDefine()) return;
        Unit unit;
        const auto text = [&](std::u16string_view name) -> std::optional<std::u16string> {
            return *exception ? std::nullopt : script.text(object, name, exception);
        };
        const auto id = text(u"id");
        if (!id) return;
        unit.id = *id;
        if (const auto phrases = text(u"phrases")) unit.phrases = splitAtCommas(*phrases);
        unit.baseUnitId = text(u"baseUnitId");
        unit.format = text(u"format");
        unit.internationalSymbol = text(u"internationalSymbol");
        if (*exception) return;
        if (const auto ratio = script.number(object, u"ratio", exception))
            unit.baseRatio = DecimalNumber::fromDouble(*ratio);
        if (!*exception) say(runner.jsVemo_.addUnit(unit));
    }

    void addFunction() {
        const JSObjectRef object = objectArgument(0);
        if (!object || !mayDefine()) return;
        const auto id = script.text(object, u"id", exception);
        if (!id) return;
        const auto phrases = script.text(object, u"phrases", exception);
        if (!phrases) return;
        const JSObjectRef function = objectArgument(1);
        if (!function || !script.js().JSObjectIsFunction(script.context(), function))
            return runner.append(std::u16string(u"addFunction: '").append(*id).append(u"' comes without a function"));
        // The calculator holds both, so the function does not outlive the runner in use.
        const auto report = [&log = runner](std::u16string_view message) { log.append(message); };
        runner.jsVemo_.addFunction(
            *id, splitAtCommas(*phrases),
            std::make_shared<JavaScriptFunction>(runner.jsvmContext_, function, runner.limits_.call, report));
    }

    void refuse() { fail(u"objects of this class come from the calculator"); }
};

template <JSRunner::Callbacks::Method method>
JSValueRef JSRunner::Callbacks::call(JSContextRef context, JSObjectRef, JSObjectRef, std::size_t count,
                                     const JSValueRef arguments[], JSValueRef* exception) {
    ScriptContext& script = ScriptContext::current();
    Callbacks callbacks{script.runner(), script, count, arguments, exception};
    try {
        (callbacks.*method)();
    } catch (const std::exception& error) {  // memory is short
        callbacks.fail(toUtf16(error.what()));
    }
    return script.js().JSValueMakeUndefined(context);
}

JSObjectRef JSRunner::Callbacks::construct(JSContextRef context, JSObjectRef constructor, std::size_t count,
                                           const JSValueRef arguments[], JSValueRef* exception) {
    call<&Callbacks::refuse>(context, constructor, nullptr, count, arguments, exception);
    return constructor;
}

// The globals of the scripts: "log", "JSVemo", "vemo", "Context".
void JSRunner::defineGlobals() {
    ScriptContext& script = *jsvmContext_;
    const JavaScriptCore& js = script.js();
    const JSContextRef context = script.context();
    const auto function = [&](std::u16string_view name, JSObjectCallAsFunctionCallback callback) {
        const ScriptText text(js, name);
        return js.JSObjectMakeFunctionWithCallback(context, text, callback);
    };
    const JSObjectRef global = js.JSContextGetGlobalObject(context);

    constexpr JSPropertyAttributes fixed = kJSPropertyAttributeReadOnly | kJSPropertyAttributeDontDelete;
    const JSStaticFunction methods[] = {
        {"setVariable", Callbacks::call<&Callbacks::setVariable>, fixed},
        {"addUnit", Callbacks::call<&Callbacks::addUnit>, fixed},
        {"addFunction", Callbacks::call<&Callbacks::addFunction>, fixed},
        {"log", Callbacks::call<&Callbacks::log>, fixed},
        {nullptr, nullptr, 0},
    };
    const auto makeClass = [&](const char* name, const JSStaticFunction* functions) {
        JSClassDefinition definition = emptyClass;
        definition.className = name;
        definition.staticFunctions = functions;
        return js.JSClassCreate(&definition);
    };
    const JSClassRef hostClass = makeClass("JSVemo", methods);
    const JSClassRef contextClass = makeClass("Context", nullptr);
    globals_ = {{u"log", function(u"log", Callbacks::call<&Callbacks::log>)},
                {u"Context", js.JSObjectMakeConstructor(context, contextClass, Callbacks::construct)}};
    for (const auto& [name, object] : globals_) js.JSValueProtect(context, object);
    // No file can take these from the ones after it.
    script.set(global, u"JSVemo", js.JSObjectMakeConstructor(context, hostClass, Callbacks::construct), fixed);
    script.set(global, u"vemo", js.JSObjectMake(context, hostClass, nullptr), fixed);
    js.JSClassRelease(hostClass);
    js.JSClassRelease(contextClass);
}

void JSRunner::offerGlobals() {
    ScriptContext& script = *jsvmContext_;
    const JSObjectRef global = script.js().JSContextGetGlobalObject(script.context());
    for (const auto& [name, object] : globals_) script.set(global, name, object);
}

JSRunner::Calculation::Calculation(JSRunner* runner, const std::atomic<bool>* cancelled) {
    if (!runner) return;
    runner->clearLog();
    script_ = runner->jsvmContext_.get();
    limit_ = runner->limits_.calculation;
    if (script_) script_->beginCalculation(limit_, cancelled);
}

JSRunner::Calculation::~Calculation() {
    if (script_) script_->beginCalculation(limit_, nullptr);
}

bool JSRunner::takeCutShort() {
    return jsvmContext_ && jsvmContext_->takeCutShort();
}

JSRunner::JSRunner(JSVemo& jsVemo, const ScriptLimits& limits, Log systemLog, std::string library)
    : jsVemo_(jsVemo), limits_(limits), systemLog_(std::move(systemLog)), library_(std::move(library)) {
    if (library_.empty()) library_ = JavaScriptCore::defaultLibrary;
}

JSRunner::~JSRunner() = default;

bool JSRunner::start() {
    if (jsvmContext_) return true;
    auto js = JavaScriptCore::load(library_);
    if (!js) {
        append(std::u16string(u"Scripts need the JavaScript engine: ").append(toUtf16(js.failure().message)));
        return false;
    }
    jsvmContext_ = std::make_shared<ScriptContext>(*std::move(js), limits_.memory, *this);
    const ScriptContext::Run run(*jsvmContext_, limits_.evaluation, ScriptContext::Kind::file);
    defineGlobals();
    return true;
}

bool JSRunner::evaluate(std::u16string_view text, std::string_view fileName) {
    if (!start()) return false;
    ScriptContext& script = *jsvmContext_;
    const ScriptContext::Run run(script, limits_.evaluation, ScriptContext::Kind::file);
    if (const auto reason = refusal(script, text)) {
        append(*reason);
        return false;
    }
    offerGlobals();  // whatever the files before did to them
    JSValueRef exception = nullptr;
    scriptEvaluation_ = true;
    script.evaluate(text, toUtf16(fileName), &exception);
    const bool succeeded = !exception && script.stopReason().empty();
    if (!succeeded) append(script.message(exception));
    scriptEvaluation_ = false;
    return succeeded;
}

void JSRunner::append(std::u16string_view message) {
    const std::u16string_view shown = message.substr(0, longestMessage);
    if (systemLog_) systemLog_(toUtf8(shown));
    if (log_.size() + shown.size() < longestLog) log_.append(shown).append(u"\n");
}

}  // namespace vemo
