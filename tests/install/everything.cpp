// SPDX-License-Identifier: MIT
// Calls everything that the installed headers declare, as an application would; says which line disagrees.
#include <vemo/archive.h>
#include <vemo/attributed_text.h>
#include <vemo/cache.h>
#include <vemo/context.h>
#include <vemo/context_keys.h>
#include <vemo/decimal_number.h>
#include <vemo/engine.h>
#include <vemo/environment.h>
#include <vemo/executor.h>
#include <vemo/number_formatter.h>
#include <vemo/number_parsers.h>
#include <vemo/quick_type.h>
#include <vemo/rates_copy.h>
#include <vemo/remarks.h>
#include <vemo/result.h>
#include <vemo/result_serializer.h>
#include <vemo/sorted_list.h>
#include <vemo/time.h>
#include <vemo/value.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>

namespace {

using namespace vemo;

int failures = 0;

void check(bool holds, int line = __builtin_LINE()) {
    if (holds) return;
    ++failures;
    std::fprintf(stderr, "line %d\n", line);
}

DecimalNumber number(const char* text) {
    return DecimalNumber::parse(std::string_view(text));
}

void decimals() {
    const DecimalNumber a = number("-2.5"), two = DecimalNumber::fromInt64(2);
    check(DecimalNumber::fromUInt64(2) == two && DecimalNumber::fromDouble(2) == two && a != two);
    check(DecimalNumber::fromParts(0, 2, 0, false) == two && DecimalNumber::parse(u"2,0", u",") == two);
    check(DecimalNumber::notANumberValue().notANumber() && DecimalNumber().isZero() && a.isNegative());
    check(a.toString() == "-2.5" && a.toDouble() == -2.5 && a.toInt64() == -2 && two.toUInt64() == 2);
    check(a.mantissaLow() == 25 && a.mantissaHigh() == 0 && a.exponent() == -1);
    check(a.adding(two) == number("-0.5") && a.subtracting(two) == number("-4.5"));
    check(a.multiplying(two) == number("-5") && a.dividing(two) == number("-1.25"));
    check(two.raising(10) == number("1024") && two.multiplyingByPowerOf10(2) == number("200"));
    DecimalStatus status = DecimalStatus::exact;
    check(a.rounding({RoundingMode::up, 0}, &status) == number("-2") && status == DecimalStatus::lossOfPrecision);
    check(a.negative() == a.abs() && a.round(0) == number("-3") && a.integer() == number("-3"));
    check(a.fraction() == number("0.5") && a.fractionDigitsCount() == 1);
    check(DecimalNumber::compare(a, two) == -1 && two.hash() == number("2.0").hash());
}

void values() {
    const Date now{std::chrono::duration<double>(1)};
    const Value metres = Value(number("5")).with(u"m", Attribute::unit);
    check(!metres.isEmpty() && metres.has(Attribute::unit) && metres.mask() != 0 && metres.is(Attribute::unit, u"m"));
    check(metres.string(Attribute::unit) == u"m" && metres.decimal() == number("5") &&
          attributeName(Attribute::function) == u"fn");
    check(Value(now).date() == now && Value(TimeZone{u"UTC"}).timeZone()->identifier == u"UTC");
    check(Value(Attribute::type, u"x")
              .with(now)
              .with(TimeZone{u"UTC"})
              .without(Attribute::date)
              .has(Attribute::timeZone));
    check(
        Value(Attribute::opPriority, number("1")).with(number("2"), Attribute::opPriority).has(Attribute::opPriority));
    check(Value(number("5")).merging(Value(Attribute::unit, u"m")).isEqual(metres));
    check(metres == metres && metres.hash() == Value(metres).hash());
    check(metres.description().starts_with(u"Value: {") && !metres.shortDescription().empty());
    ValuesList list = ValuesList().appending(metres).appending(Value());
    check(list.size() == 2 && !list.empty() && list.newest().isEmpty() && list.isSameAs(list));
    list.dropNewest();
    check(list.isEqual(ValuesList().appending(metres)) && list == list);
    check(isKnownTimeZone("Europe/Berlin"));
}

void texts() {
    AttributedText text(u"1 ", RunType::number);
    text.reserve(3, 2);
    text.append(AttributedText(u"m", RunType::unit));
    check(text.elementsCount() == 2 && text.elementAt(1) == AttributedTextElement{u"m", RunType::unit});
    check(text.compoundString() == u"1 m" && text.hasAttributeOf(RunType::unit) && text.usedAttributes().size() == 2);
    check(text.runs().size() == 2 && text.runs()[0].length == 2 && text.runs() == text.runs());
    AttributedText::Runs runs;
    runs.reserve(4);
    runs.push_back({1, RunType::none});
    runs.append(text.runs());
    check(runs.end() - runs.begin() == 3);
    std::size_t units = 0;
    text.enumerate([&](std::u16string_view part, RunType type, std::size_t at) {
        units += part.size() + at;
        check(runTypeCode(type).size() > 1);
    });
    check(units == 5 && text.description().starts_with(u"AttributedText: {\n"));
    const FormattedValue value{u"1 m", std::nullopt};
    check(unarchivedText(archived(text)) == text && unarchivedValue(archived(value)) == value);
    check(unarchivedElement(archived(text.elementAt(0))) == text.elementAt(0) && !unarchivedText(archived(value)));
    check(noteKindName(NoteKind::unusedValue) == u"unused_value" && !reasonCodeName(ReasonCode::noRates).empty());
    check(utf8(utf16("\xc3\xa9")) == "\xc3\xa9");
}

struct Counter : ContextDelegate {
    int calls = 0;
    void contextUpdated(Context&) override { ++calls; }
};

void contexts() {
    Context context(ContextEntries{{u"a", std::int64_t{1}}, {variableKey(u"width"), Value(number("5"))}});
    Counter counter;
    context.setDelegate(&counter);
    context.set(u"b", 2.5);
    context.beginUpdates();
    context.set(u"c", true);
    context.endUpdates(true);
    context.syncUpdate([&] { context.set(u"a", std::nullopt); });
    context.notifyDelegate();
    check(counter.calls == 4);
    context.setDelegate(nullptr);
    check(context.find(u"b") && *context.get<double>(u"b") == 2.5 && !context.find(u"a"));
    check(context.getVariable(u"width")->decimal() == number("5") && context.longestVariableName() == 5);
    check(context.mayNameVariable(u'w') && !context.mayNameVariable(u'x'));
    context.setValue(Value(number("6")), u"height");
    context.setPrecision(4);
    check(context.precision() == 4 && !context.grandTotalFormatted());
    context.addDependencyOn(u"b");
    check(context.hasDependencyOn(u"b") && *context.dependencyFor(u"b") == IsEquatable(2.5));
    check(context.data().size() == 5 && context.updates().size() == 4 && context.dependencies().contains(u"b"));
    check(context.data().at(u"c").isEqual(IsEquatable(true)) && !context.data().at(u"c").isEmptyValue());
    Context copy = context.copyContext();
    check(!copy.isEqual(context) && copy.data() == context.data());
    copy.add(ContextEntries{{u"b", 3.5}}, true);
    copy.addDependencies(context.dependencies());
    check(copy.hasUpdatesFor(context.dependencies()));
    copy.addQuickTypeToken(u"t");
    copy.addQuickTypeExpression(u"e");
    check(copy.quickTypeData() == QuickTypeData{{u"t"}, {u"e"}});
    const std::lock_guard lock(copy.mutex());
    check(geoNameKey(u"Rome") == u"geo_nameRome");
}

void helpers() {
    SortedList<int> list;
    list.add(1);
    list.add(2, 50, u"early");
    check(list.items().front() == 2 && list.itemsUnsorted().front() == 1 && list[0] == 2);
    check(list.has(u"early") && list.size() == 2 && list.entries()[1].order == 50);
    Cache<std::string, int> cache(100);
    cache.enablePersistentCache();
    cache.set("a", 1);
    cache.add(std::map<std::string, int>{{"b", 2}});
    check(*cache.find("a") == 1 && cache.hasEntry("b") && cache.enabled() && cache.persistentCache().size() == 2);
    cache.clear();
    cache.disablePersistentCache();
    cache.setEnabled(false);
    check(!cache.find("a"));
    Result<std::string> good(std::string("a"));
    const Result<std::string> bad(Failure{"no", 3});
    check(good && *good == "a" && good->size() == 1 && !bad && bad.failure().line == 3);
    const DecimalParser german("de_DE");
    check(german.decimalNumber(u"1.234,5") == number("1234.5"));
    check(DecimalParser::enUSParser().decimalNumber(u"1,234.5") == number("1234.5"));
    check(ScientificParser(german).decimalNumber(u"1,5e3") == number("1500"));
    const VemoEngineNumberFormatter formatter("de_DE", "de");
    using NumeralSystem = VemoEngineNumberFormatter::NumeralSystem;
    check(formatter.stringFrom(number("1234.5"), NumeralSystem::decimal, 2, 2) == u"1.234,50");
    check(formatter.stringFrom(number("255"), NumeralSystem::hexadecimal, 0, 0) == u"0xff");
    check(formatter.isSingular(number("1")) && !formatter.isSingular(number("2")));
    QuickTypeEngine hints;
    hints.registerHint(u"square", 1);
    hints.registerHint(QuickTypeHint{u"squat", 2});
    hints.registerHints({{u"sum", 3}});
    check(hints.hintsFor({u"squ", false}).front().string == u"squat");
    check(hints.hintsFor(u"squ", {u"squid"}, 5).front().string == u"squid");
}

struct Delegate : VemoEngineDelegate {
    int calls = 0;
    void engineContextUpdated(const Context& context) override {
        calls += context.get<double>(context_keys::currencyRatesTime) ? 1 : 0;
    }
    void engineLog(std::string_view text) override { calls += text.empty() ? 0 : 1; }
    void engineInitialized() override { ++calls; }
    void engineCryptoInitialized() override { ++calls; }
    void engineOnlineProblem(const OnlineProblem& problem) override { calls += problem.source.empty() ? 0 : 100; }
};

void engines(const std::filesystem::path& folder) {
    check(isKnownLocale("de_DE") && isKnownLanguage("de") && !knownLocales().empty());
    check(!knownLanguages().empty() && !knownTimeZones().empty());
    Environment environment;
    environment.locale = "en_US";
    environment.language = "en";
    environment.timeZone = "UTC";
    environment.caches = folder;
    const auto loop = std::make_shared<RunLoop>();
    VemoEngine engine(environment, loop);
    const auto delegate = std::make_shared<Delegate>();
    engine.setDelegate(delegate);
    check(!engine.format(Value(), Context()) && !engine.pending().rates);
    engine.buildVemoWorker();
    check(delegate->calls == 2 && !engine.startUpLog().empty() && engine.extensions().empty());
    check(engine.takeRates(VemoEngine::RatesFile::currency, R"({"rates":{"EUR":0.5}})").empty());
    check(!ratesFetched("https://rates.example.com/latest.json", folder));
    check(engine.takeRates(VemoEngine::RatesFile::crypto, R"({"rates":{"QQQ":0.25}})").empty());
    loop->post([&] { loop->stop(); });
    loop->run();
    loop->poll();
    loop->runFor(std::chrono::milliseconds(1));
    check(delegate->calls >= 4);
    Context context;
    std::optional<VemoEngine::Result> result;
    engine.calculate(u"width = 5 m\nwidth in cm\nnow\n$10 in EUR\nRent * 2\n1 / 0", context,
                     [&](VemoEngine::Result answer) {
                         result = std::move(answer);
                         loop->stop();
                     });
    loop->run();
    check(result && result->lines.size() == 6);
    const auto& line = result->lines[1];
    check(line.attributedText().compoundString() == u"width in cm" && line.formattedResult().regular == u"500 cm");
    check(engine.format(line.value(), *result->context) == line.formattedResult());
    check(!line.quickTypeData().tokens.empty() || line.extensionsLog().empty());
    check(line.names().size() == 1 && !line.names()[0].defines && result->definitionOf(u"width", 1) == 0u);
    check(result->instantOf(2) && result->lines[4].notes().size() == 1 && result->lines[5].reason());
    check(result->lines[3].formattedResult().regular == u"\u20ac5");
    check(!engine.pending().places && !VemoEngine::version().empty() && !VemoEngine::welcomeSample("de").empty());
    check(engine.calculateSync(u"1 + 1", context)->lines[0].formattedResult().regular == u"2");
    const VemoEngineResultSerializer serializer;
    serializer.serialize(*result, folder / "result");
    check(serializer.deserialize(folder / "result")->lines[1].formattedResult().regular == u"500 cm");
    engine.buildQuickTypeEngine(VemoEngine::WorkerThread::main, [&](std::shared_ptr<QuickTypeEngine> hints) {
        check(!hints->hintsFor({u"squ", false}).empty());
    });
}

}  // namespace

// everything FOLDER, an empty one
int main(int, char** arguments) {
    decimals();
    values();
    texts();
    contexts();
    helpers();
    engines(arguments[1]);
    if (failures == 0) std::puts("everything");
    return failures;
}
