// SPDX-License-Identifier: MIT
// What is shown can be typed as a line, and gives what it shows.
#include <gtest/gtest.h>
#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>

#include <random>
#include <set>

#include "support/calculators.h"

namespace vemo::test {
namespace {

constexpr const char* plainNumbers[] = {
    "0",        "1",       "-1",         "0.5",         "1234.5",        "-98765.43",
    "12345",    "1234567", "0.0025",     "-0.00000012", "99999999999.9", "100",
    "0.000012", "3.14",    "1000000000", "1e30"};

std::string digitsOf(const icu::DecimalFormatSymbols& symbols) {
    std::string text;
    for (const auto which :
         {icu::DecimalFormatSymbols::kZeroDigitSymbol, icu::DecimalFormatSymbols::kDecimalSeparatorSymbol,
          icu::DecimalFormatSymbols::kGroupingSeparatorSymbol, icu::DecimalFormatSymbols::kExponentialSymbol,
          icu::DecimalFormatSymbols::kMinusSignSymbol})
        symbols.getSymbol(which).toUTF8String(text) += "|";
    return text;
}

// One locale of each way to write numbers.
std::vector<std::string> locales() {
    std::vector<std::string> names;
    std::set<std::string> known;
    std::int32_t count = 0;
    const icu::Locale* all = icu::Locale::getAvailableLocales(count);
    for (std::int32_t i = 0; i < count; ++i) {
        UErrorCode status = U_ZERO_ERROR;
        if (known.insert(digitsOf(icu::DecimalFormatSymbols(all[i], status))).second) names.push_back(all[i].getName());
    }
    return names;
}

Environment environment(const std::string& locale, const std::string& language) {
    Environment environment = fixedEnvironment();
    environment.locale = locale;
    environment.language = language;
    return environment;
}

class Reader {
public:
    Reader(const std::string& locale, const std::string& language)
        : name_(locale + " " + language), calculator_(newCalculator(environment(locale, language))) {}

    Calculator& calculator() { return *calculator_; }

    void check(const Value& value) {
        Context context;
        calculator_->calculate(u"", context);  // with the constants
        const auto shown = calculator_->format(value, context).regular;
        ASSERT_TRUE(shown);
        const auto line = calculator_->calculateLine(*shown, context, false);
        const Value read = line->value();
        const std::u16string again = line->formattedValue().regular.value_or(u"");
        if (again == *shown && read.string(Attribute::unit) == value.string(Attribute::unit)) return;
        // Cents are for amounts that are not scientific, and 0.005 has a digit that is not tiny.
        const auto number = read.decimal();
        const bool scientificMoney = value.is(Attribute::nsystem, u"sci") && read.is(Attribute::nsystem, u"sci");
        if ((scientificMoney || value.decimal()->round(3).abs() == DecimalNumber::parse("0.005")) && number &&
            read.string(Attribute::unit) == value.string(Attribute::unit) && isNear(*number, *value.decimal()))
            return;
        // Days and hours are read in the smaller unit.
        if (isDuration(value) && isDuration(read) && seconds(read, context) == seconds(value, context)) return;
        ADD_FAILURE() << name_ << ": " << utf8(*shown) << " is read as " << utf8(again) << ' '
                      << utf8(read.string(Attribute::unit).value_or(u"")) << ", not in "
                      << utf8(value.string(Attribute::unit).value_or(u""));
    }

private:
    static bool isNear(const DecimalNumber& a, const DecimalNumber& b) {
        const DecimalNumber limit = b.abs().multiplying(DecimalNumber::parse("0.011"));
        return DecimalNumber::compare(a.subtracting(b).abs(), limit).value_or(1) <= 0;
    }
    bool isDuration(const Value& value) const {
        const auto unit = value.string(Attribute::unit);
        const std::u16string* base = unit ? calculator_->unitConverter().baseUnit(*unit) : nullptr;
        return base && *base == u"second";
    }
    DecimalNumber seconds(const Value& value, Context& context) const {
        return calculator_->unitConverter().convert(value, u"second", context)->decimal()->round(0);
    }

    std::string name_;
    std::unique_ptr<Calculator> calculator_;
};

Value quantity(const DecimalNumber& number, std::u16string_view unit) {
    return Value(number).with(unit, Attribute::unit);
}

TEST(ReadBack, numbersInEveryLocale) {
    std::mt19937_64 source(1);
    for (const std::string& locale : locales()) {
        Reader reader(locale, "en");
        std::vector<DecimalNumber> numbers;
        for (const char* text : plainNumbers) numbers.push_back(DecimalNumber::parse(text));
        for (int i = 0; i < 60; ++i)
            numbers.push_back(DecimalNumber::fromParts(0, source() >> source() % 60, -static_cast<int>(source() % 20),
                                                       source() % 4 == 0));
        for (const DecimalNumber& number : numbers) {
            reader.check(Value(number));
            reader.check(Value(number).with(u"sci", Attribute::nsystem));
            reader.check(Value(number).with(u"hex", Attribute::nsystem));
            for (const char16_t* unit : {u"m", u"percent", u"USD", u"CHF", u"kelvin", u"hour", u"km/hour"}) {
                reader.check(quantity(number, unit));
                reader.check(quantity(number, unit).with(u"sci", Attribute::nsystem));
            }
        }
    }
}

TEST(ReadBack, unitsInEveryLanguage) {
    const std::pair<const char*, const char*> languages[] = {{"en_US", "en"}, {"en_GB", "en"}, {"de_DE", "de"},
                                                             {"fr_FR", "fr"}, {"es_ES", "es"}, {"ja_JP", "ja"}};
    for (const auto& [locale, language] : languages) {
        Reader reader(locale, language);
        for (const auto& [unit, base] : reader.calculator().unitConverter().baseUnits()) {
            if (unit == u"date") continue;
            for (const char* text : plainNumbers) reader.check(quantity(DecimalNumber::parse(text), unit));
        }
    }
}

}  // namespace
}  // namespace vemo::test
