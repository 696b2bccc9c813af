// SPDX-License-Identifier: MIT
// Calendar arithmetic against a model that counts on its fingers, day by day.

#include <chrono>

#include "evaluation/calendar_arithmetic.h"
#include "functions/date_values.h"
#include "platform/time_zones.h"
#include "records/context_map.h"
#include "support/calculators.h"
#include "support/laws.h"

namespace vemo::test {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year_month_day;

class Model {
public:
    Model() : calculator_(newCalculator()), context_(calculator_->context().copyContext()) {}

    static Value day(sys_days date) {
        return dayValue(Date(std::chrono::duration<double>(date.time_since_epoch() + std::chrono::hours(12))));
    }
    static sys_days dayOf(const Value& value) {
        return std::chrono::floor<days>(
            std::chrono::sys_seconds(std::chrono::seconds(std::int64_t(value.date()->time_since_epoch().count()))));
    }
    sys_days shifted(sys_days date, int count, std::u16string_view unit, int sign = 1) {
        const Value duration = Value(DecimalNumber::fromInt64(count)).with(unit, Attribute::unit);
        return dayOf(*shiftedByCalendar(day(date), duration, sign, calculator_->unitConverter(), context_));
    }
    std::string difference(sys_days from, sys_days to, std::u16string_view unit) {
        const auto value = calendarDifference(day(from), day(to), unit, calculator_->unitConverter(), context_);
        return value->decimal()->round(9).toString();
    }
    std::string years(sys_days from, sys_days to) { return number(fullYears(day(from), day(to), context_)); }
    std::string week(sys_days date) { return number(weekNumber(day(date), context_)); }

private:
    static std::string number(const std::optional<Value>& value) { return value ? value->decimal()->toString() : "-"; }

    std::unique_ptr<Calculator> calculator_;
    Context context_;
};

Model& model() {
    static Model instance;
    return instance;
}

sys_days anyDay() {
    return sys_days(std::chrono::January / 1 / 1990) + days(anyOf(0, 25'000));
}

std::string shown(sys_days date) {
    const year_month_day day(date);
    std::ostringstream text;
    text << int(day.year()) << '-' << unsigned(day.month()) << '-' << unsigned(day.day());
    return text.str();
}

template <class T>
void requireEqual(const std::string& what, const T& given, const T& expected) {
    std::ostringstream text;
    text << what << " is " << expected << ", and not " << given;
    if (!(given == expected)) RC_FAIL(text.str());
}

bool isWorkday(sys_days date) {
    return weekday(date) != std::chrono::Saturday && weekday(date) != std::chrono::Sunday;
}

TEST(CalendarModel, workdaysAreThoseFromMondayToFriday) {
    holds([] {
        const sys_days from = anyDay();
        const int count = anyOf(1, 60), sign = anyOf(0, 1) == 0 ? 1 : -1;
        sys_days to = from;
        for (int left = count; left > 0;) {
            to += days(sign);
            if (isWorkday(to)) --left;
        }
        const std::string what = std::to_string(sign * count) + " workdays from " + shown(from);
        requireEqual(what, shown(model().shifted(from, count, u"workday", sign)), shown(to));
        // Those after the first day, up to the last one.
        int between = 0;
        for (sys_days day = std::min(from, to) + days(1); day <= std::max(from, to); day += days(1))
            between += isWorkday(day);
        if (sign > 0) requireEqual(what, model().difference(from, to, u"workday"), std::to_string(between));
    });
}

TEST(CalendarModel, monthsEndAtTheLastDayOfShorterOnes) {
    holds([] {
        const sys_days from = anyDay();
        const int count = anyOf(0, 400), sign = anyOf(0, 1) == 0 ? 1 : -1;
        // To the same day of the month that many months away, found by walking through the days of that month.
        const year_month_day start(from);
        int month = int(start.year()) * 12 + int(unsigned(start.month())) - 1 + sign * count;
        sys_days to(std::chrono::year(month / 12) / std::chrono::month(unsigned(month % 12) + 1) / 1);
        while (year_month_day(to).day() < start.day() &&
               year_month_day(to + days(1)).month() == year_month_day(to).month())
            to += days(1);
        const std::string what = std::to_string(sign * count) + " months from " + shown(from);
        requireEqual(what, shown(model().shifted(from, count, u"month", sign)), shown(to));
        if (count % 12 == 0) requireEqual(what, shown(model().shifted(from, count / 12, u"year", sign)), shown(to));
        if (count % 3 == 0) requireEqual(what, shown(model().shifted(from, count / 3, u"quarter", sign)), shown(to));
    });
}

TEST(CalendarModel, differencesAreTheDaysBetween) {
    holds([] {
        const sys_days from = anyDay();
        const int count = anyOf(-900, 900);
        const sys_days to = from + days(count);
        const std::string what = "from " + shown(from) + " to " + shown(to);
        requireEqual(what, model().difference(from, to, u"day"), std::to_string(count));
        requireEqual(what, model().difference(from, from + days(7 * count), u"week"), std::to_string(count));
        requireEqual(what, shown(model().shifted(from, std::abs(count), u"day", count < 0 ? -1 : 1)), shown(to));
        requireEqual(what, model().difference(to, from, u"day"), std::to_string(-count));
    });
}

TEST(CalendarModel, monthsBetweenAreWholeOnesAndDaysOfThirty) {
    holds([] {
        const sys_days from = anyDay();
        const sys_days to = from + days(anyOf(0, 3'000));
        int months = 0;
        while (model().shifted(from, months + 1, u"month") <= to) ++months;
        const auto rest = (to - model().shifted(from, months, u"month")).count();
        const auto expected = DecimalNumber::fromInt64(months).adding(
            DecimalNumber::fromInt64(rest).dividing(DecimalNumber::fromInt64(30)));
        requireEqual("from " + shown(from) + " to " + shown(to) + " in months", model().difference(from, to, u"month"),
                     expected.round(9).toString());
    });
}

TEST(CalendarModel, anAgeGrowsOnBirthdays) {
    holds(
        [] {
            const sys_days born = anyDay();
            const sys_days then = born + days(anyOf(0, 36'000));
            int age = 0;
            const year_month_day birth(born);
            for (sys_days day = born + days(1); day <= then; day += days(1)) {
                const year_month_day date(day);
                const bool leapling = birth.month() == std::chrono::February && unsigned(birth.day()) == 29;
                const bool birthday = date.month() == birth.month() && date.day() == birth.day();
                // Who was born on the last of a leap year's February is a year older when other years' one ends.
                const bool ending = leapling && !date.year().is_leap() && date.month() == std::chrono::February &&
                                    unsigned(date.day()) == 28;
                age += birthday || ending;
            }
            requireEqual("the age of " + shown(born) + " at " + shown(then), model().years(born, then),
                         std::to_string(age));
        },
        100);
}

TEST(CalendarModel, weeksAreNumberedFromTheOneWithTheFourthOfJanuary) {
    holds([] {
        const sys_days date = anyDay();
        // The week's Thursday tells its year; count the Thursdays of that year up to it.
        sys_days thursday = date;
        while (weekday(thursday) != std::chrono::Monday) thursday -= days(1);
        thursday += days(3);
        int week = 0;
        for (sys_days day = thursday; year_month_day(day).year() == year_month_day(thursday).year(); day -= days(7))
            ++week;
        requireEqual("the week of " + shown(date), model().week(date), std::to_string(week));
    });
}

}  // namespace
}  // namespace vemo::test
