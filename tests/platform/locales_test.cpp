// SPDX-License-Identifier: MIT
// What every locale of the system says of numbers and dates, and what identifiers are taken.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>

#include <cstdlib>
#include <map>
#include <set>

#include "platform/calendar_names.h"
#include "platform/icu_locale.h"
#include "platform/locale_info.h"
#include "platform/system.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

std::vector<std::string> allLocales() {
    std::int32_t count = 0;
    const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < count; ++i) names.emplace_back(locales[i].getName());
    return names;
}

TEST(Locales, tellTheirSignsApart) {
    const auto names = allLocales();
    EXPECT_GT(names.size(), 500u);
    for (const std::string& name : names) {
        EXPECT_TRUE(isUsableLocale(name)) << name;
        const LocaleInfo info = LocaleInfo::forIdentifier(name);
        EXPECT_EQ(info.identifier, name);
        EXPECT_FALSE(info.decimalSeparator.empty() || info.exponentSign.empty()) << name;
        EXPECT_NE(info.decimalSeparator, info.groupingSeparator) << name;
        for (const std::u16string* sign : {&info.decimalSeparator, &info.groupingSeparator})
            for (const char16_t c : *sign) EXPECT_LT(digitValue(c), 0) << name;
        const std::u16string currency = currencyOfLocale(name);
        EXPECT_TRUE(currency.empty() || currency.size() == 3) << name;
    }
}

// Each month and weekday has a name, which no other has in the same form.
TEST(Locales, nameTheirDays) {
    for (const std::string& name : allLocales()) {
        const CalendarNames names = CalendarNames::forLocale(name);
        std::set<std::u16string> months, days;
        for (const auto& month : names.months) {
            // Some languages number their months: "1-р сар", "1月".
            if (!month.full.empty()) {
                EXPECT_TRUE(months.insert(month.full.front()).second) << name;
            }
            for (const auto* list : {&month.full, &month.abbreviated})
                for (const std::u16string& word : *list) EXPECT_LT(digitValue(word.front()), 0) << name;
        }
        for (const auto& day : names.weekdays) {
            ASSERT_FALSE(day.full.empty()) << name;
            EXPECT_TRUE(days.insert(day.full.front()).second) << name;
        }
        EXPECT_FALSE(names.halves[0].empty() || names.halves[1].empty()) << name;
    }
}

TEST(Locales, orderTheirDates) {
    const std::pair<const char*, DateOrder> cases[] = {
        {"en_US", DateOrder::monthDayYear},      {"en_GB", DateOrder::dayMonthYear}, {"de_DE", DateOrder::dayMonthYear},
        {"ja_JP", DateOrder::yearMonthDay},      {"sv_SE", DateOrder::yearMonthDay}, {"fa_IR", DateOrder::yearMonthDay},
        {"de-CH.UTF-8", DateOrder::dayMonthYear}};
    for (const auto& [name, order] : cases) EXPECT_EQ(dateOrder(name), order) << name;
    // A calendar of its own changes no names: all are the Gregorian one's.
    EXPECT_EQ(CalendarNames::forLocale("fa_IR@calendar=persian").months[0].full,
              CalendarNames::forLocale("fa_IR@calendar=gregorian").months[0].full);
}

TEST(Locales, areTakenAsSystemsWriteThem) {
    for (const char* name : {"de_DE", "de-DE", "de_DE.UTF-8", "de_DE.iso88591@euro"}) {
        const LocaleInfo info = LocaleInfo::forIdentifier(name);
        EXPECT_EQ(info.decimalSeparator, u",") << name;
        EXPECT_EQ(info.groupingSeparator, u".") << name;
        EXPECT_EQ(currencyOfLocale(name), u"EUR") << name;
    }
    for (const char* name : {"", "root", "xx_YY", "tlh"})
        EXPECT_EQ(LocaleInfo::forIdentifier(name).decimalSeparator, u".");
    for (const char* name : {"", "root", "de", "xx_QQ"}) EXPECT_EQ(currencyOfLocale(name), u"") << name;
}

// Identifiers that would make ICU write past its buffers, or that are none.
TEST(Locales, refuseWhatIsNoIdentifier) {
    for (const char* name :
         {"", "de", "de_DE", "zh-Hant-TW", "de_DE@euro", "de@currency=EUR;calendar=gregorian", "de_", "__"})
        EXPECT_TRUE(isUsableLocale(name)) << name;
    for (const std::string& name :
         {std::string("d3"), std::string("de DE"), std::string("deutschland"), std::string("de_DE@a b"),
          std::string("\xc3\xa4"), std::string("../de"), std::string("de_DE@="), std::string("de@calendar="),
          "de_" + std::string(9, 'A'), std::string(101, '_'), std::string("de\0x", 4)}) {
        EXPECT_FALSE(isUsableLocale(name)) << name;
        EXPECT_EQ(icuLocale(name), icu::Locale::getRoot()) << name;
        EXPECT_EQ(LocaleInfo::forIdentifier(name).decimalSeparator, u".") << name;
        EXPECT_EQ(currencyOfLocale(name), u"") << name;
        EXPECT_EQ(CalendarNames::forLocale(name).weekdays[0].full, CalendarNames::forLocale("").weekdays[0].full);
    }
}

RC_GTEST_PROP(LocaleLaws, survivesAnyIdentifier, ()) {
    const auto name = *rc::gen::container<std::string>(
        rc::gen::element('d', 'e', 'D', 'E', '_', '-', '.', '@', '=', ';', '9', ' ', '\0', '\xff'));
    const std::string longer = *rc::gen::arbitrary<bool>() ? name : name + std::string(name.size() * 20, 'x');
    LocaleInfo::forIdentifier(longer);
    CalendarNames::forLocale(longer);
    dateOrder(longer);
    RC_ASSERT(currencyOfLocale(longer).size() <= 3u);
}

TEST(Digits, areThoseOfEveryScript) {
    for (int unit = 0; unit < 0x10000; ++unit) {
        const auto c = static_cast<char16_t>(unit);
        EXPECT_EQ(digitValue(c), u_charDigitValue(c)) << unit;
    }
    EXPECT_TRUE(isDigitAt(u"a\u0665", 1));
    EXPECT_FALSE(isDigitAt(u"5", 1));
}

// Variables of the process, which are as before in the end.
class Variables {
public:
    explicit Variables(std::map<std::string, const char*> values) {
        for (const auto& [name, value] : values) {
            const char* before = std::getenv(name.c_str());
            before_[name] = before ? std::optional<std::string>(before) : std::nullopt;
            set(name, value);
        }
    }
    ~Variables() {
        for (const auto& [name, value] : before_) set(name, value ? value->c_str() : nullptr);
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

private:
    static void set(const std::string& name, const char* value) {
        if (value)
            ::setenv(name.c_str(), value, 1);
        else
            ::unsetenv(name.c_str());
    }
    std::map<std::string, std::optional<std::string>> before_;
};

TEST(SystemDefaults, fillWhatIsLeftOpen) {
    struct Case {
        const char *all, *numeric, *lang, *expected;
    };
    for (const Case& c : {Case{"de_DE.UTF-8", "fr_FR", "en_GB", "de_DE"}, Case{"", "fr_FR.utf8", "en_GB", "fr_FR"},
                          Case{nullptr, nullptr, "en_GB", "en_GB"}, Case{"C.UTF-8", "fr_FR", nullptr, "en_US"},
                          Case{nullptr, "POSIX", nullptr, "en_US"}, Case{nullptr, nullptr, nullptr, "en_US"}}) {
        const Variables variables({{"LC_ALL", c.all}, {"LC_NUMERIC", c.numeric}, {"LANG", c.lang}});
        const Environment environment = withDefaults({});
        EXPECT_EQ(environment.locale, c.expected);
        EXPECT_EQ(environment.language, c.expected);
        EXPECT_TRUE(environment.clock);
        EXPECT_FALSE(environment.timeZone.empty());
    }
    const Variables variables({{"XDG_CACHE_HOME", "/caches"}, {"HOME", "/home/me"}, {"LC_ALL", "de_DE"}});
    EXPECT_EQ(withDefaults({}).caches, "/caches/vemo");
    ::setenv("XDG_CACHE_HOME", "not/absolute", 1);
    EXPECT_EQ(withDefaults({}).caches, "/home/me/.cache/vemo");
    ::setenv("HOME", "", 1);
    EXPECT_EQ(withDefaults({}).caches, "");
}

TEST(SystemDefaults, leaveWhatIsGivenAndSayWhatIsNoUse) {
    Environment given;
    given.locale = "ja_JP.UTF-8";
    given.language = "de";
    given.timeZone = "Asia/Tokyo";
    given.caches = "/somewhere";
    std::vector<std::string> log;
    given.log = [&](std::string_view line) { log.emplace_back(line); };
    Environment filled = withDefaults(given);
    EXPECT_EQ(filled.locale + filled.language + filled.timeZone + filled.caches.string(),
              "ja_JPdeAsia/Tokyo/somewhere");
    EXPECT_TRUE(log.empty());
    given.language = std::string(1000, 'x');
    given.timeZone = "Mars/Olympus";
    filled = withDefaults(given);
    EXPECT_EQ(filled.language + " " + filled.timeZone, "root UTC");
    ASSERT_EQ(log.size(), 2u);
    EXPECT_LT(log[0].size(), 120u);  // of the name, a part is enough
    EXPECT_THAT(log[1], testing::HasSubstr("Mars/Olympus"));
}

}  // namespace
}  // namespace vemo::test
