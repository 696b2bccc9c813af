// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>
#include <map>
#include <set>

#include "platform/time_zones.h"
#include "scanning/dates/time_zone_abbreviations.h"
#include "scanning/words/compiled_tables.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

Calculator& calculator() {
    static const auto shared = newCalculator();
    return *shared;
}

std::optional<Value> convert(const Value& value, std::u16string_view unit) {
    Context context;
    context.add(calculator().context().data(), false);
    return calculator().unitConverter().convert(value, unit, context);
}

Value quantity(std::string_view amount, std::u16string_view unit) {
    return Value(DecimalNumber::parse(amount)).with(unit, Attribute::unit);
}

// What one of each unit is in its base unit: from NIST Special Publication 811 (2008), appendix B.8, BIPM's SI
// Brochure (2019) and, where this catalogue rounds or differs (point, cable, nautical mile, pint …), worked out
// by hand from the definition named in the comment.
const std::map<std::u16string, const char*> ratios{{u"inch", "0.0254"},
                                                   {u"foot", "0.3048"},
                                                   {u"yard", "0.9144"},
                                                   {u"mile", "1609.344"},
                                                   {u"point", "0.00035277777"},  // 1/72 in, cut at 11 digits
                                                   {u"cable", "185.3184"},       // 608 ft
                                                   {u"league", "4828.032"},      // 3 mi
                                                   {u"furlong", "201.168"},
                                                   {u"nautical_mile", "1853.184"},  // 6080 ft
                                                   {u"chain", "20.1168"},
                                                   {u"km", "1000"},
                                                   {u"mm", "0.001"},
                                                   {u"\u03bcm", "0.000001"},
                                                   {u"Ym", "1e24"},
                                                   {u"dam", "10"},
                                                   {u"acre", "4046.86"},
                                                   {u"hectare", "10000"},
                                                   {u"are", "100"},
                                                   {u"ping", "3.306"},
                                                   {u"km2", "1000000"},
                                                   {u"inch2", "0.00064516"},
                                                   {u"foot2", "0.09290304"},
                                                   {u"mile2", "2589988.110336"},
                                                   {u"cm3", "0.000001"},
                                                   {u"inch3", "0.000016387064"},
                                                   {u"foot3", "0.028316846592"},
                                                   {u"litre", "0.001"},
                                                   {u"mlitre", "0.000001"},
                                                   {u"cup", "0.000236588237"},
                                                   {u"quart", "0.000946352946"},
                                                   {u"pint", "0.000473176473"},
                                                   {u"gallon", "0.00378541178"},
                                                   {u"tablespoon", "0.0000147867648"},
                                                   {u"teaspoon", "0.00000492892159"},
                                                   {u"byte", "8"},
                                                   {u"kbyte", "8000"},
                                                   {u"Kibyte", "8192"},
                                                   {u"Mibit", "1048576"},
                                                   {u"Yibyte", "9671406556917033397649408"},
                                                   {u"degree", "0.017453292519943295"},
                                                   {u"minute", "60"},
                                                   {u"hour", "3600"},
                                                   {u"day", "86400"},
                                                   {u"week", "604800"},
                                                   {u"month", "2592000"},
                                                   {u"year", "31536000"},
                                                   {u"msecond", "0.001"},
                                                   {u"tonne", "1000000"},
                                                   {u"kgram", "1000"},
                                                   {u"carat", "0.2"},
                                                   {u"pound", "453.59237"},
                                                   {u"centner", "100000"},
                                                   {u"ounce", "28.349523125"},
                                                   {u"stone", "6350.29318"}};

TEST(UnitCatalogue, hasTheRatiosOfTheStandards) {
    for (const auto& [unit, ratio] : ratios) {
        const std::u16string* base = calculator().unitConverter().baseUnit(unit);
        ASSERT_NE(base, nullptr) << utf8(unit);
        EXPECT_EQ(convert(quantity("1", unit), *base), quantity(ratio, *base)) << utf8(unit);
    }
}

TEST(UnitCatalogue, hasNoOtherDataPrefixesNorStolenSymbols) {
    const UnitConverter& converter = calculator().unitConverter();
    EXPECT_EQ(converter.baseUnit(u"mbyte"), nullptr);
    for (const char16_t* id : {u"ft", u"pt", u"ct"}) {
        const std::u16string* unit = calculator().unitManager().phraseDetector().find(id);
        EXPECT_TRUE(!unit || unit->find(u"tonne") == unit->npos) << utf8(id);
    }
}

TEST(UnitConverter, distinguishesWhatItCannotConvert) {
    EXPECT_EQ(convert(Value(DecimalNumber::fromInt64(3)), u"inch"), quantity("3", u"inch"));
    EXPECT_EQ(convert(quantity("100", u"celsius"), u"fahrenheit"), quantity("212", u"fahrenheit"));
    EXPECT_EQ(convert(quantity("1", u"m"), u"kelvin"), Value(DecimalNumber::notANumberValue()));
    EXPECT_EQ(convert(quantity("1", u"no such unit"), u"m"), std::nullopt);
    EXPECT_EQ(convert(quantity("1", u"USD"), u"EUR"), quantity("NaN", u"USD"));  // no rates are known
}

TEST(UnitConverter, dependsOnTheMeasuresOfTheScreen) {
    EXPECT_EQ(results("1 in in px\nppi = 200\n1 in in px")[2], "200 px");
    EXPECT_EQ(results("em = 20 px\n2 em in px")[1], "40 px");
    EXPECT_EQ(results("em = 2 em\n2 em in px")[1], "");
}

// There and back, for every pair of units of a dimension: the amount, but for what steps rounded at 38 fraction
// digits can lose. (A cubic metre is 10^-72 cubic yottametres: nothing of it is left to come back from.)
RC_GTEST_PROP(UnitConverterLaws, returnsTheAmount, ()) {
    static const auto dimensions = [] {
        std::map<std::u16string, std::vector<std::u16string>> units;
        for (const auto& [unit, base] : calculator().unitConverter().baseUnits())
            if (base != u"USD" && base != u"kelvin") units[base].push_back(unit);
        return units;
    }();
    const auto dimension = *rc::gen::elementOf(dimensions);
    const auto from = *rc::gen::elementOf(dimension.second);
    const auto to = *rc::gen::elementOf(dimension.second);
    const auto inBase = [&](const std::u16string& unit) {
        return convert(quantity("1", unit), dimension.first)->decimal()->toDouble();
    };
    const DecimalNumber amount = DecimalNumber::fromInt64(*rc::gen::inRange<std::int64_t>(1, 1000000000));
    const auto there = convert(quantity("1", from).with(amount), to);
    const auto back = there ? convert(*there, from) : std::nullopt;
    RC_ASSERT(back && back->decimal());
    const double bound = 4e-38 * (inBase(to) + 1) / inBase(from) + amount.toDouble() * 1e-34;
    if (std::abs(back->decimal()->subtracting(amount).toDouble()) > bound)
        RC_FAIL(utf8(from) + " " + utf8(to) + " " + amount.toString() + " " + back->decimal()->toString());
}

TEST(UnitConverter, returnsTemperatures) {
    for (const char16_t* from : {u"kelvin", u"celsius", u"fahrenheit"}) {
        for (const char16_t* to : {u"kelvin", u"celsius", u"fahrenheit"}) {
            const auto back = convert(*convert(quantity("36.6", from), to), from);
            EXPECT_EQ(back->decimal()->round(30), DecimalNumber::parse("36.6")) << utf8(from) << utf8(to);
        }
    }
}

std::vector<std::string> languages() {
    std::set<std::string> codes;
    for (std::size_t t = 0; t < compiledTableCount; ++t) codes.insert(utf8(compiledTables[t].language));
    return {codes.begin(), codes.end()};
}

Environment environmentIn(const std::string& language) {
    Environment environment = fixedEnvironment();
    if (language != "Base") environment.language = language;
    return environment;
}

const CompiledEntry* entryOf(const CompiledTable& table, std::u16string_view key) {
    const auto* end = table.entries + table.count;
    const auto* found = std::find_if(table.entries, end, [&](const CompiledEntry& entry) { return entry.key == key; });
    return found != end ? found : nullptr;
}

// A phrase of the tables that no line can match, or that another unit took, is a mistake in the tables.
class LanguageTables : public testing::TestWithParam<std::string> {};

TEST_P(LanguageTables, giveEveryUnitItsPhrases) {
    StringRangeDetector detector;
    const auto calculator = newCalculator(environmentIn(GetParam()));
    const auto& phrases = calculator->unitManager().phraseDetector();
    const std::u16string_view unitTables[] = {u"Length",  u"Area",      u"Volume",  u"Data",   u"Temperature",
                                              u"Angle",   u"Time",      u"Weight",  u"Css",    u"Currency",
                                              u"Percent", u"Mechanics", u"Physics", u"Counts", u"Rates"};
    for (std::size_t t = 0; t < compiledTableCount; ++t) {
        const CompiledTable& table = compiledTables[t];
        if (utf8(table.language) != GetParam() ||
            std::find(std::begin(unitTables), std::end(unitTables), table.table) == std::end(unitTables))
            continue;
        const bool asWritten = table.table == u"Data";
        for (std::size_t i = 0; i < table.count; ++i) {
            std::u16string_view key = table.entries[i].key;
            if (!key.ends_with(u".variants") || key.starts_with(u"percent_") || key.starts_with(u"as_a_")) continue;
            key.remove_suffix(std::u16string_view(u".variants").size());
            std::u16string id(key == u"meter" ? u"m" : key == u"cbinch" ? u"inch3" : key == u"cbcm" ? u"cm3" : key);
            std::u16string_view list = table.entries[i].value;
            while (!list.empty()) {
                const std::size_t comma = std::min(list.find(u','), list.size());
                const std::u16string phrase(trimmed(list.substr(0, comma)));
                list.remove_prefix(std::min(comma + 1, list.size()));
                const std::u16string* owner = phrases.find(phrase);
                if (!owner && !asWritten) owner = phrases.find(lowercased(phrase));
                ASSERT_NE(owner, nullptr) << utf8(phrase);
                EXPECT_EQ(utf8(*owner), utf8(id)) << utf8(phrase);
                // Found in a line as it is written.
                const auto matches = phrases.detect(phrase);
                ASSERT_EQ(matches.size(), 1u) << utf8(phrase);
                EXPECT_EQ(matches[0].range.length, phrase.size()) << utf8(phrase);
            }
        }
    }
}

// True for units, scales, zones and currencies, of which languages name some that English does not.
bool isKnown(Calculator& calculator, std::u16string_view table, std::u16string_view key) {
    const std::u16string_view id = key.substr(0, key.rfind(u'.'));
    if (table == u"Places") return TimeZoneRules::find(id) != nullptr;
    if (table == u"Aliases" || table == u"Currency")
        return calculator.unitConverter().baseUnits().contains(std::u16string(id));
    if (table == u"Scales") return calculator.scaleManager().scale(id) != nullptr;
    return table == u"Dates";  // languages have date words of their own
}

TEST_P(LanguageTables, haveNoKeyThatNothingAsksFor) {
    const auto calculator = newCalculator(environmentIn(GetParam()));
    for (std::size_t t = 0; t < compiledTableCount; ++t) {
        const CompiledTable& table = compiledTables[t];
        if (utf8(table.language) != GetParam()) continue;
        const auto* end = compiledTables + compiledTableCount;
        const auto* base = std::find_if(compiledTables, end, [&](const CompiledTable& other) {
            return other.language == u"Base" && other.table == table.table;
        });
        ASSERT_NE(base, end) << utf8(table.table);
        for (std::size_t i = 0; i < table.count; ++i) {
            const std::u16string_view key = table.entries[i].key;
            EXPECT_TRUE(entryOf(*base, key) || isKnown(*calculator, table.table, key)) << utf8(key);
        }
    }
}

// Every unit that claims a phrase or symbol, derived ones too.
class Claims : public UnitRegistry {
public:
    using UnitRegistry::UnitRegistry;
    void registerUnit(const Unit& unit, bool, bool) override {
        for (const std::u16string& phrase : unit.phrases) units_[phrase].insert(unit.id);
        for (const auto* symbol : {&unit.internationalSymbol, &unit.localizedSymbol})
            if (*symbol) units_[**symbol].insert(unit.id);
    }
    std::set<std::string> contested() const {
        std::set<std::string> result;
        for (const auto& [phrase, ids] : units_) {
            std::string line = utf8(phrase) + ":";
            for (const std::u16string& id : ids) line += " " + utf8(id);
            if (ids.size() > 1) result.insert(line);
        }
        return result;
    }

private:
    std::map<std::u16string, std::set<std::u16string>> units_;
};

TEST_P(LanguageTables, giveNoPhraseToTwoUnits) {
    const Environment environment = environmentIn(GetParam());
    const auto calculator = newCalculator(environment);
    Claims claims(calculator->unitManager(), calculator->unitConverter());
    const Localizer localizer(environment.language);
    registerUnits(claims, localizer, {});
    registerCurrencies(claims, localizer, environment.language, environment.locale);
    Context context;
    registerScreenUnits(claims, localizer, context);
    // Lines like "phrase: one other" go in here when two units share a phrase on purpose.
    const std::set<std::string> intended{};
    EXPECT_EQ(claims.contested(), intended);
}

// Two phrases that differ in their case alone and name units of different dimensions: "PS" and "ps".
std::set<std::string> toldByCaseAlone(Calculator& calculator) {
    std::map<std::u16string, std::map<std::u16string, std::u16string>> byLetters;  // phrases by dimension
    for (const auto& [phrase, unit] : calculator.unitManager().phraseDetector().phrases()) {
        const std::u16string* base = calculator.unitConverter().baseUnit(unit);
        if (base) byLetters[lowercased(phrase)].emplace(*base, phrase + u" " + unit);
    }
    std::set<std::string> result;
    for (const auto& [letters, dimensions] : byLetters) {
        if (dimensions.size() < 2) continue;
        std::string line = "case";
        for (const auto& [base, phrase] : dimensions) line += (line.size() > 4 ? ", " : " ") + utf8(phrase);
        result.insert(line);
    }
    return result;
}

// What is a unit's name and a word of another kind, each with what decides: tests/units/collisions.txt. A line that is
// not there is a collision that nobody looked at. Lines of "all" hold in every language.
TEST_P(LanguageTables, shareWordsOnlyOnPurpose) {
    std::set<std::string> inAll, inThis;
    std::ifstream file(std::string(VEMO_TEST_DATA_DIR) + "/units/collisions.txt");
    for (std::string line; std::getline(file, line);) {
        const std::string collision = line.substr(0, line.find(" => "));
        if (line.starts_with("all ")) inAll.insert(collision.substr(4));
        if (line.starts_with(GetParam() + " ")) inThis.insert(collision.substr(GetParam().size() + 1));
    }
    const auto calculator = newCalculator(environmentIn(GetParam()));
    std::set<std::string> found = toldByCaseAlone(*calculator);
    const std::pair<const char*, const PhraseDetector<std::u16string>*> others[] = {
        {"operator", &calculator->operatorCollection().phraseDetector()},
        {"function", &calculator->functionManager().phraseDetector()},
        {"scale", &calculator->scaleManager().phraseDetector()}};
    const auto& units = calculator->unitManager().phraseDetector();
    for (const auto& [phrase, unit] : units.phrases())
        for (const auto& [kind, phrases] : others)
            if (const std::u16string* other = phrases->find(phrase))
                found.insert(utf8(phrase) + ": " + utf8(unit) + ", " + kind + " " + utf8(*other));
    for (const TimeZoneAbbreviation& zone : timeZoneAbbreviations()) {
        const std::u16string* unit = units.find(zone.abbreviation);
        if (!unit) unit = units.find(lowercased(zone.abbreviation));
        if (unit) found.insert(utf8(zone.abbreviation) + ": " + utf8(*unit) + ", zone");
    }
    for (const std::string& collision : found)
        EXPECT_TRUE(inAll.contains(collision) || inThis.contains(collision)) << GetParam() << " " << collision;
    for (const std::string& collision : inThis) EXPECT_TRUE(found.contains(collision)) << collision;
    if (GetParam() == "Base") {
        for (const std::string& collision : inAll) EXPECT_TRUE(found.contains(collision)) << collision;
    }
}

// What is shown for three of any unit is read as the same, in every language.
TEST_P(LanguageTables, showUnitsAsTheyAreRead) {
    const auto calculator = newCalculator(environmentIn(GetParam()));
    // What is another word first: "3 K", "3 pm", "3 as", "3 ct".
    std::set<std::u16string> exceptions{u"kelvin", u"percent", u"date", u"decimal_hour"};
    for (const std::u16string prefix : {u"a", u"p", u"P"})
        for (const char16_t* power : {u"m", u"m2", u"m3"}) exceptions.insert(prefix + power);
    for (const char16_t* unit : {u"asecond", u"Esecond", u"Msecond", u"Psecond", u"dasecond", u"atonne", u"ctonne",
                                 u"ftonne", u"ptonne", u"alitre", u"Elitre"})
        exceptions.insert(unit);
    if (GetParam() == "es") exceptions.insert(u"hsecond");
    if (GetParam() == "fr") exceptions.insert(u"joule");  // "3 J" are days
    std::string failed;
    for (const auto& [unit, base] : calculator->unitConverter().baseUnits()) {
        if (exceptions.contains(unit) || base == u"USD") continue;
        const Value value = Value(DecimalNumber::fromInt64(3)).with(unit, Attribute::unit);
        Context context, document;
        const std::u16string text = calculator->format(value, context).regular.value_or(u"");
        const auto lines = calculator->calculate(text, document).lines;
        if (lines.empty() || lines.back()->value() != value) failed += "\n" + utf8(unit) + ": " + utf8(text);
    }
    EXPECT_EQ(failed, "");
}

TEST_P(LanguageTables, welcomeWithAResultOnEveryLine) {
    const std::string document = utf8(VemoEngine::welcomeSample(environmentIn(GetParam()).language));
    const auto shown = results(document, environmentIn(GetParam()));
    EXPECT_GE(shown.size(), 10u);
    EXPECT_THAT(shown, testing::Each(testing::Not(testing::IsEmpty()))) << document;
}

INSTANTIATE_TEST_SUITE_P(All, LanguageTables, testing::ValuesIn(languages()),
                         [](const auto& language) { return language.param; });

// Every key that the set-up asks for is in the base tables: a missing one comes back as the phrase itself.
TEST(PhraseTables, lackNoKey) {
    const auto missing = [](std::u16string_view text) {
        return text.ends_with(u".variants") || text.ends_with(u".format") || text.ends_with(u".prefix") ||
               text.ends_with(u".symbol") || text.ends_with(u".templates") || text.ends_with(u".aliases");
    };
    for (const auto& [phrase, unit] : calculator().unitManager().phraseDetector().phrases())
        EXPECT_FALSE(missing(phrase)) << utf8(phrase);
    for (const auto& [phrase, id] : calculator().functionManager().phraseDetector().phrases())
        EXPECT_FALSE(missing(phrase)) << utf8(phrase);
    for (const auto& [phrase, id] : calculator().operatorCollection().phraseDetector().phrases())
        EXPECT_FALSE(missing(phrase)) << utf8(phrase);
    for (const auto& [phrase, id] : calculator().scaleManager().phraseDetector().phrases())
        EXPECT_FALSE(missing(phrase)) << utf8(phrase);
    for (const auto& [unit, base] : calculator().unitConverter().baseUnits()) {
        const std::u16string* format = calculator().unitManager().format(unit);
        if (unit == u"date") continue;
        ASSERT_NE(format, nullptr) << utf8(unit);
        EXPECT_FALSE(missing(*format)) << utf8(unit);
    }
}

}  // namespace
}  // namespace vemo::test
