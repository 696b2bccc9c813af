// SPDX-License-Identifier: MIT
// Units as people write them, and rates.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <fstream>
#include <set>
#include <sstream>

#include "support/calculators.h"

namespace vemo::test {
namespace {

Calculator& calculator() {
    static const auto shared = newCalculator();
    return *shared;
}

Value valueOf(const std::string& line) {
    Context document;
    return calculator().calculate(utf16(line), document).lines.back()->value();
}

std::optional<DecimalNumber> amountIn(const Value& value, std::u16string_view unit) {
    Context context;
    context.add(calculator().context().data(), false);
    const auto converted = calculator().unitConverter().convert(value, unit, context);
    return converted && value.has(Attribute::unit) ? converted->decimal() : std::nullopt;
}

// True for numbers that agree in twelve digits.
bool agree(const DecimalNumber& a, const DecimalNumber& b) {
    const double x = a.toDouble(), y = b.toDouble();
    return std::abs(x - y) <= 5e-13 * std::max(std::abs(x), std::abs(y));
}

struct Name {
    std::string text, amount, base;
};

// "NAME, NAME = amount of a base unit"
std::vector<Name> names() {
    std::vector<Name> result;
    std::ifstream file(std::string(VEMO_TEST_DATA_DIR) + "/units/everyday.txt");
    for (std::string line; std::getline(file, line);) {
        const std::size_t equals = line.find(" = ");
        if (line.starts_with('#') || equals == line.npos) continue;
        std::istringstream meaning(line.substr(equals + 3)), list(line.substr(0, equals));
        Name name;
        meaning >> name.amount >> name.base;
        while (std::getline(list >> std::ws, name.text, ',')) result.push_back(name);
    }
    return result;
}

TEST(EverydayUnits, areReadAsWhatTheyMean) {
    const auto all = names();
    EXPECT_GE(all.size(), 1000u);
    for (const Name& name : all) {
        const DecimalNumber meant = DecimalNumber::parse(name.amount);
        const Value value = valueOf("1 " + name.text);
        const auto amount = amountIn(value, utf16(name.base));
        ASSERT_TRUE(amount) << name.text << " is " << utf8(value.description());
        EXPECT_TRUE(agree(*amount, meant)) << name.text << ": " << amount->toString() << " " << name.base;
    }
}

// Asked for by name, and shown in a way that can be read back.
TEST(EverydayUnits, areTargetsAndCanBeReadBack) {
    std::set<std::u16string> shown;
    for (const Name& name : names()) {
        const Value value = valueOf("3 " + name.text);
        const auto unit = value.string(Attribute::unit);
        ASSERT_TRUE(unit) << name.text;
        const Value same = valueOf("(3 " + name.text + ") in " + name.text);
        EXPECT_EQ(same, value) << name.text << " " << utf8(same.description());
        if (!shown.insert(std::u16string(*unit)).second) continue;
        const std::string text = result("3 " + name.text);
        if (*unit == u"kelvin" || *unit == u"pm") continue;  // "3 K" is three thousand, "3 pm" a time
        EXPECT_EQ(valueOf(text), value) << name.text << " is shown as " << text;
    }
}

// Over all pairs of units that names stand for, rates too: the amount comes back.
TEST(EverydayUnits, convertThereAndBack) {
    std::set<std::u16string> units;
    for (const Name& name : names()) units.emplace(*valueOf("1 " + name.text).string(Attribute::unit));
    const DecimalNumber amount = DecimalNumber::parse("7.25");
    std::size_t pairs = 0;
    std::string failed;
    for (const std::u16string& from : units) {
        for (const std::u16string& to : units) {
            if (from == to || !calculator().unitConverter().isConvertible(from, to)) continue;
            ++pairs;
            const auto there = amountIn(Value(amount).with(from, Attribute::unit), to);
            if (there && there->abs().toDouble() < 1e-25) continue;  // digits past the 38th are lost
            const auto back = there ? amountIn(Value(*there).with(to, Attribute::unit), from) : std::nullopt;
            if (!back || !agree(*back, amount)) failed += "\n" + utf8(from) + " " + utf8(to);
        }
    }
    EXPECT_EQ(failed, "");
    EXPECT_GE(pairs, 5000u);
}

TEST(Rates, convertThereAndBackAndUpsideDown) {
    const char* lines[] = {"60 km/h in m/s in km/h",        "7 min/km in km/h in min/km",
                           "33 mpg in l/100 km in mpg",     "100 Mbit/s in MB/s in Mbit/s",
                           "12 knots in min/mile in knots", "3 kWh/day in W in kWh/day"};
    for (const std::string line : lines) {
        const std::string amount = line.substr(0, line.find(" in "));
        const Value there = valueOf(line), given = valueOf(amount);
        ASSERT_TRUE(there.decimal()) << line;
        EXPECT_TRUE(agree(*there.decimal(), *given.decimal())) << line << " " << there.decimal()->toString();
        EXPECT_EQ(there.string(Attribute::unit), given.string(Attribute::unit)) << line;
    }
}

// Of any two pairs of units that fit: the amount comes back, and a rate times its lower unit over it is itself.
RC_GTEST_PROP(RateLaws, holdForAnyUnits, ()) {
    static const auto dimensions = [] {
        std::map<std::u16string, std::vector<std::u16string>> units;
        const std::set<std::u16string> wanted{u"m", u"m3", u"gram", u"second", u"bit", u"joule"};
        for (const auto& [unit, base] : calculator().unitConverter().baseUnits()) {
            const double ratio =
                wanted.contains(base)
                    ? amountIn(Value(DecimalNumber::fromInt64(1)).with(unit, Attribute::unit), base)->toDouble()
                    : 0;
            if (ratio > 1e-6 && ratio < 1e9) units[base].push_back(unit);
        }
        return units;
    }();
    const auto upper = *rc::gen::elementOf(dimensions);
    const auto lower = *rc::gen::elementOf(dimensions);
    const auto id = [](const std::vector<std::u16string>& over, const std::vector<std::u16string>& under) {
        return RateUnit::id(*rc::gen::elementOf(over), *rc::gen::elementOf(under), DecimalNumber::fromInt64(1));
    };
    const std::u16string from = id(upper.second, lower.second), to = id(upper.second, lower.second);
    RC_PRE(upper.first != lower.first);
    const Value rate = Value(DecimalNumber::fromInt64(*rc::gen::inRange(1, 100000))).with(from, Attribute::unit);
    const auto there = amountIn(rate, to);
    RC_ASSERT(there);
    const auto back = amountIn(Value(*there).with(to, Attribute::unit), from);
    if (!back || !agree(*back, *rate.decimal())) RC_FAIL(utf8(from) + " " + utf8(to) + " " + there->toString());
    const auto& calculate = calculator().operationCalculator();
    Context context;
    const auto parts = *calculator().unitConverter().rate(from);
    const Value time = Value(DecimalNumber::fromInt64(7)).with(parts.lower, Attribute::unit);
    const auto total = calculate.apply(u"*", rate, time, context);
    RC_ASSERT(total && total->is(Attribute::unit, parts.upper));
    const auto again = calculate.apply(u"/", *total, rate, context);
    if (!again || !again->is(Attribute::unit, parts.lower) || !agree(*again->decimal(), *time.decimal()))
        RC_FAIL(utf8(from) + " " + utf8(again ? again->description() : u""));
}

}  // namespace
}  // namespace vemo::test
