// SPDX-License-Identifier: MIT
#include "platform/calendar_names.h"

#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>

#include <algorithm>
#include <memory>

#include "platform/icu_locale.h"
#include "platform/locale_info.h"

namespace vemo {

namespace {

using Symbols = icu::DateFormatSymbols;

icu::Locale gregorian(std::string_view identifier) {
    icu::Locale locale = icuLocale(identifier);
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("calendar", "gregorian", status);
    return locale;
}

std::u16string text(const icu::UnicodeString& string) {
    return {string.getBuffer(), static_cast<std::size_t>(string.length())};
}

void add(std::vector<std::u16string>& names, const icu::UnicodeString& name) {
    std::u16string added = text(name);
    if (added.empty() || digitValue(added.front()) >= 0) return;
    if (std::find(names.begin(), names.end(), added) == names.end()) names.push_back(std::move(added));
}

}  // namespace

CalendarNames CalendarNames::forLocale(std::string_view identifier) {
    CalendarNames result;
    UErrorCode status = U_ZERO_ERROR;
    const Symbols symbols(gregorian(identifier), status);
    if (U_FAILURE(status)) return result;
    for (const auto context : {Symbols::FORMAT, Symbols::STANDALONE}) {
        for (const auto width : {Symbols::WIDE, Symbols::ABBREVIATED}) {
            const auto member = width == Symbols::WIDE ? &Names::full : &Names::abbreviated;
            std::int32_t count = 0;
            const icu::UnicodeString* months = symbols.getMonths(count, context, width);
            for (std::size_t i = 0; i < 12 && i < static_cast<std::size_t>(count); ++i)
                add(result.months[i].*member, months[i]);
            // The first weekday has the index 1.
            const icu::UnicodeString* weekdays = symbols.getWeekdays(count, context, width);
            for (std::size_t i = 0; i < 7 && i + 1 < static_cast<std::size_t>(count); ++i)
                add(result.weekdays[i].*member, weekdays[i + 1]);
        }
    }
    std::int32_t count = 0;
    const icu::UnicodeString* halves = symbols.getAmPmStrings(count);
    for (std::size_t i = 0; i < 2 && i < static_cast<std::size_t>(count); ++i) result.halves[i] = text(halves[i]);
    return result;
}

DateOrder dateOrder(std::string_view localeIdentifier) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(gregorian(localeIdentifier), status));
    if (U_FAILURE(status)) return DateOrder::dayMonthYear;
    const std::u16string pattern = text(generator->getBestPattern(u"yMd", status));
    const auto year = pattern.find(u'y'), month = pattern.find_first_of(u"ML"), day = pattern.find(u'd');
    if (year < month && year < day) return DateOrder::yearMonthDay;
    return month < day ? DateOrder::monthDayYear : DateOrder::dayMonthYear;
}

}  // namespace vemo
