// SPDX-License-Identifier: MIT
// Scripts that fail, by mistake or on purpose: each ends in a message or a defined result, and the calculator and
// the other scripts go on.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "scripting/js_runner.h"
#include "support/scripted.h"

namespace vemo::test {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::Not;

constexpr ScriptLimits strict{milliseconds(150), milliseconds(50), std::size_t{48} << 20};

struct Hostile {
    const char* script;
    const char* message;  // part of the log; empty: no log at all
};

void expectContained(const Hostile& hostile) {
    SCOPED_TRACE(hostile.script);
    Scripted scripted(
        {{"a.js", hostile.script}, {"b.js", "vemo.addFunction({id: 'twice', phrases: 'twice'}, a => 2 * a[0].double)"}},
        strict);
    const std::string log = scripted.log();
    if (*hostile.message)
        EXPECT_THAT(log, HasSubstr(hostile.message));
    else
        EXPECT_EQ(log, "");
    EXPECT_EQ(scripted.engine.extensions()[1].log, "");
    EXPECT_EQ(scripted.results("twice 21\n2 km in m\n1 inch in cm"),
              (std::vector<std::string>{"42", "2,000 m", "2.54 cm"}));
}

TEST(HostileScripts, areStopped) {
    for (const Hostile& hostile : {
             Hostile{"for (;;);", "Error on line : stopped, for it took more time than 150 ms\n"},
             Hostile{"try { for (;;); } catch (e) { for (;;); } finally { for (;;); }", "more time than 150 ms"},
             Hostile{"function f() { return f() + 1 }\nf()", "Error on line 1: RangeError: Maximum call stack"},
             Hostile{"let a = 'x'; for (;;) a += a", "Out of memory"},
             Hostile{"const a = []; for (;;) a.push({})", "stopped"},
             Hostile{"const a = []; for (let i = 0;; i++) a.push('x'.repeat(1e6) + i, ('y' + i).repeat(1e6))",
                     "stopped"},
             Hostile{"for (let i = 0;; i++) log('x'.repeat(1e5))", "xxx"},
             Hostile{"for (let i = 0;; i++) vemo.addUnit({id: 'u' + i, phrases: 'u' + i})", "stopped"},
             Hostile{"vemo.addUnit({id: 'x', phrases: 'x'.repeat(2e6)})", "text is too long"},
             Hostile{"throw {get line() { for (;;); }, toString() { for (;;); }}", "more time than 150 ms"},
             Hostile{"/(a+)+$/.test('a'.repeat(40) + 'b')", "stopped"},
         })
        expectContained(hostile);
}

// Nothing runs after a script, out of reach of its limits.
TEST(HostileScripts, leaveNothingForLater) {
    for (const Hostile& hostile : {
             Hostile{"\nasync function f() { for (;;) await 0 }\nf()",
                     "Error on line 2: the word 'async' is not accepted"},
             Hostile{"const o = {async*f() {}}", "'async'"},
             Hostile{"class C { static async f() { for (;;) await 0 } }", "'async'"},
             Hostile{"const f = async x => { for (;;) await x }; f(1)", "'async'"},
             Hostile{"/* async */ (async () => { for (;;) await 0 })()", "'async'"},
             Hostile{"`${(async function () {})()}`", "'async'"},
             Hostile{"import('x').then(log)", "Error on line 1: the word 'import'"},
             Hostile{"const o = {import: import('x')}", "'import'"},
             Hostile{"async function", "SyntaxError"},
             // Only as keywords.
             Hostile{
                 "// async import\nconst o = {async: 1, import: 2, async_: '; async () => 1'}; /async|import/.test('');"
                 "const async = o.async + o.import; log(`import ${async} `)",
                 "import 3 \n"},
             Hostile{"new Promise(f => f())", "Can't find variable: Promise"},
             Hostile{"eval('1')", "no code is made from texts here"},
             Hostile{"(function () {}).constructor('for (;;);')", "no code is made from texts here"},
             Hostile{"const asynchronous = 1, $async = 2; log(asynchronous + $async + {important: 3}.important)",
                     "6\n"},
             // Nothing that is left makes a promise.
             Hostile{R"js(
const seen = new Set();
(function walk(o, depth) {
    if (o === null || (typeof o != "object" && typeof o != "function") || seen.has(o) || depth > 6) return;
    seen.add(o);
    for (const key of Reflect.ownKeys(o)) {
        if (/promise|fromAsync|disposeAsync|microtask/i.test(String(key))) log(String(key));
        const property = Object.getOwnPropertyDescriptor(o, key);
        if ("value" in property) walk(property.value, depth + 1);
    }
    walk(Object.getPrototypeOf(o), depth + 1);
})(globalThis, 0))js",
                     ""},
         })
        expectContained(hostile);
}

TEST(HostileScripts, failWithAMessage) {
    for (const Hostile& hostile : {
             Hostile{"vemo.addUnit({get id() {\nthrow new Error('no') }})", "Error on line 2: Error: no\n"},
             Hostile{"vemo.addUnit({id: {toString() { throw 'no' }}})", "Error on line : no\n"},
             Hostile{"vemo.setVariable('a', {get double() { throw new Error('no') }})", "Error: no"},
             Hostile{"vemo.addUnit(new Proxy({}, {get() { throw new Error('trap') }}))", "Error: trap"},
             Hostile{"throw {toString() { throw 1 }}", "Error on line : what was thrown has no text\n"},
             Hostile{"throw null", "Error on line : null\n"},
             Hostile{"log(Symbol())", "TypeError"},
             Hostile{"new JSVemo()", "come from the calculator"},
             Hostile{"new Context()", "come from the calculator"},
             Hostile{"vemo.addUnit({id: 'z', phrases: 'z', baseUnitId: 'm', ratio: 0})", "ratio of 'z'"},
             Hostile{"vemo.addUnit({id: 'z', phrases: 'z', baseUnitId: 'm', ratio: Infinity})", "ratio of 'z'"},
             Hostile{"vemo.addUnit({id: 'z', phrases: 'z', baseUnitId: 'm', ratio: {}})", "ratio of 'z'"},
             Hostile{"vemo.addUnit({id: 'm', phrases: 'm', baseUnitId: 'second', ratio: 5})", "'m' is a built-in unit"},
             Hostile{"vemo.addFunction({id: 'f', phrases: 'f'}, 5)", "'f' comes without a function"},
             Hostile{"vemo.setVariable('', 5); vemo.setVariable(' ', 5)", "the name is empty"},
             Hostile{"vemo.setVariable('a', 'text')", "'a' is given neither an amount nor a unit"},
             // What lacks an id is passed over in silence, and an empty phrase names nothing.
             Hostile{"vemo.addUnit(); vemo.addUnit(5); vemo.addUnit({phrases: 'z'}); vemo.addUnit({id: null})", ""},
             Hostile{
                 "vemo.addFunction({id: 'f'}, () => 1); vemo.addFunction({phrases: 'f'}, () => 1); vemo.setVariable()",
                 ""},
             Hostile{"vemo.addFunction({id: 'f', phrases: ''}, () => 1); vemo.addUnit({id: 'z', phrases: ',,'})", ""},
             Hostile{"vemo.addUnit({id: '', phrases: 'zz', internationalSymbol: '', format: '%@%@%d', baseUnitId: ''})",
                     ""},
             Hostile{"if (!(vemo instanceof JSVemo)) throw 1; const {log: say} = vemo; say.call(5, 'said')", "said\n"},
         })
        expectContained(hostile);
}

TEST(HostileScripts, failInACallWithoutBreakingTheLine) {
    Scripted scripted(R"js(
const add = (phrases, f) => vemo.addFunction({id: phrases, phrases}, f);
add("endless", () => { for (;;); });
add("deep", function f() { return f() + 1 });
add("hungry", () => { const a = []; for (;;) a.push(new Array(1000).fill(1)) });
add("thrower", () => { null.x });
add("trap", () => ({get double() { for (;;); }}));
add("text", () => "5");
add("nothing", () => {});
add("nan", () => NaN);
add("huge", () => 1e300);
add("strange", () => ({double: 3, unitId: "nonsense"}));
add("chatty", a => { log("called with " + a.length); return 1 });
add("meddling", () => { vemo.setVariable("x", 1); return 2 });
add("breeding", () => { vemo.addFunction({id: "breeding", phrases: "breeding"}, () => 3); return 2 });
add("growing", () => { vemo.addUnit({id: "q", phrases: "q"}); return 2 });
add("sqrt", () => 77);
)js",
                      strict);
    ASSERT_EQ(scripted.log(), "");
    const auto line = [&](const std::string& text) {
        const std::string shown = scripted.result(text);
        return shown + "|" + scripted.logs.back();
    };
    EXPECT_EQ(line("endless 5"), "|Error on line : stopped, for it took more time than 50 ms\n");
    EXPECT_THAT(line("deep 5"), HasSubstr("RangeError"));
    EXPECT_THAT(line("hungry 5"), HasSubstr("stopped"));
    EXPECT_THAT(line("thrower 5"), HasSubstr("Error on line 6: TypeError"));
    const auto reason = [&](const std::string& text) {
        Context context;
        const auto told = scripted.engine.calculateSync(utf16(text), context)->lines.back().reason();
        return told ? utf8(told->message) : "";
    };
    EXPECT_THAT(reason("thrower 5"), HasSubstr("the script failed: Error on line 6: TypeError"));
    EXPECT_EQ(reason("text 5"), "the script’s function returned no value");
    EXPECT_THAT(line("trap 5"), HasSubstr("more time than 50 ms"));
    EXPECT_EQ(line("text 5"), "|");
    EXPECT_EQ(line("nothing 5"), "|");
    EXPECT_EQ(line("nan 5"), "|");
    EXPECT_EQ(line("huge 5"), "|");
    EXPECT_EQ(line("strange 5"), "3|");
    EXPECT_EQ(line("chatty (1; 2)"), "1|called with 2\n");
    for (const char* meddler : {"meddling 5", "breeding 5", "growing 5"})
        EXPECT_THAT(line(meddler), HasSubstr("definitions are made while the script is loaded"));
    EXPECT_EQ(line("breeding 6").substr(0, 1), "|");
    EXPECT_EQ(line("x"), "|");
    EXPECT_EQ(line("sqrt 16"), "77|");
    EXPECT_EQ(scripted.results("chatty 1\n1+1\nthrower 2\n1 + 1")[3], "2");
    EXPECT_EQ(scripted.logs[1], "");
    EXPECT_THAT(scripted.logs[2], Not(HasSubstr("called")));
}

// Many calls, each within its limits.
TEST(HostileScripts, areStoppedWhenAllTheirCallsTakeTooLong) {
    ScriptLimits limits = strict;
    limits.calculation = milliseconds(200);
    Scripted scripted(R"js(
vemo.addFunction({id: "slow", phrases: "slow"}, a => { const end = Date.now() + 30; while (Date.now() < end); return a[0].double });
)js",
                      limits);
    std::string document;
    for (int i = 0; i < 40; ++i) document += "slow " + std::to_string(i) + "\n";
    const auto first = scripted.results(document);
    EXPECT_EQ(first[0], "0");
    EXPECT_EQ(first[39], "");
    EXPECT_THAT(scripted.logs[39], HasSubstr("more time than 200 ms"));
    // What was not reached is calculated the next time, and nothing else.
    const auto count = [](const std::vector<std::string>& results) {
        return std::count_if(results.begin(), results.end(), [](const std::string& text) { return !text.empty(); });
    };
    const auto before = count(first);
    EXPECT_GT(count(scripted.results(document)), before);
    std::string line = "0";
    for (int i = 0; i < 40; ++i) line += " + slow " + std::to_string(i);
    EXPECT_EQ(scripted.result(line), "");
}

TEST(HostileScripts, areStoppedWhenTheirCallsKeepTooMuch) {
    Scripted scripted(R"js(
const kept = [];
vemo.addFunction({id: "keep", phrases: "keep"}, a => kept.push(new Array(1e5).fill(a[0].double + 0.5)));
vemo.addFunction({id: "drop", phrases: "drop"}, a => new Array(1e5).fill(a[0].double).length);
)js",
                      ScriptLimits{milliseconds(1000), milliseconds(1000), std::size_t{48} << 20, milliseconds(60000)});
    std::string document;
    for (int i = 0; i < 300; ++i) document += "drop " + std::to_string(i) + "\n";
    EXPECT_EQ(scripted.results(document).back(), "100,000");  // garbage does not count
    document.clear();
    for (int i = 0; i < 300; ++i) document += "keep " + std::to_string(i) + "\n";
    EXPECT_EQ(scripted.results(document).back(), "");
    EXPECT_THAT(scripted.logs.back(), HasSubstr("scripts keep more memory than 48 MB"));
    EXPECT_EQ(scripted.results("2 km in m"), std::vector<std::string>{"2,000 m"});
}

TEST(HostileScripts, takeTheHostFromNoFileAfterThem) {
    Scripted scripted(
        {{"a.js", "delete globalThis.vemo; vemo = null; delete vemo.log; delete globalThis.log; JSVemo = 1"},
         {"b.js", "globalThis.log = null; globalThis.Context = null"},
         {"c.js", "log('heard'); if (!(vemo instanceof JSVemo)) throw 1; vemo.log(Context !== null)"}});
    EXPECT_EQ(scripted.engine.extensions()[2].log, "heard\ntrue\n");
}

// Loaded on one thread, calculated on others, destroyed on a third, several calculators at a time.
TEST(HostileScripts, moveBetweenThreads) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([] {
            auto scripted = std::make_unique<Scripted>(R"js(
vemo.addFunction({id: "work", phrases: "work"}, a => { let t = []; for (let i = 0; i < 2e4; i++) t.push({i}); return t.length + a[0].double });
vemo.addFunction({id: "endless", phrases: "endless"}, () => { for (;;); });
)js",
                                                       strict);
            for (int k = 0; k < 3; ++k) {
                std::thread([&] { EXPECT_EQ(scripted->results("work 1\nendless 1\nwork 2")[2], "20,002"); }).join();
                scripted->result("work " + std::to_string(k));
            }
            std::thread([&] { scripted.reset(); }).join();
        });
    }
    for (std::thread& thread : threads) thread.join();
}

TEST(JSRunner, saysThatTheLibraryIsMissing) {
    const auto calculator = newCalculator();
    UnitRegistry units(calculator->unitManager(), calculator->unitConverter());
    JSVemo vemo(calculator->context(), units, calculator->functionManager());
    JSRunner runner(vemo, {}, {}, "libvemo-none.so.0");
    EXPECT_FALSE(runner.evaluate(u"log(1)", "a.js"));
    EXPECT_THAT(utf8(runner.log()), HasSubstr("Scripts need the JavaScript engine: libvemo-none.so.0"));
    JSRunner other(vemo, {}, {}, "libm.so.6");
    EXPECT_FALSE(other.evaluate(u"log(1)", "a.js"));
    EXPECT_THAT(utf8(other.log()), HasSubstr("libm.so.6: no function JS"));
}

}  // namespace
}  // namespace vemo::test
