// SPDX-License-Identifier: MIT
#pragma once

#include "scanning/dates/date_vocabulary.h"

namespace vemo {

// Where the phrase tables hold the words of dates. Names of months and weekdays come from the locale.
struct DateWordRow {
    std::u16string_view key;
    DateWord word;
    int value = 0;
    std::u16string_view table = u"Dates";
};

constexpr int shifted(DateUnit unit, int flag = 0) {
    return static_cast<int>(unit) + flag;
}

inline constexpr DateWordRow dateWordRows[] = {
    {u"today.variants", DateWord::day, 0},
    {u"tomorrow.variants", DateWord::day, 1},
    {u"yesterday.variants", DateWord::day, -1},
    {u"after_tomorrow.variants", DateWord::day, 2},
    {u"before_yesterday.variants", DateWord::day, -2},
    {u"tonight.variants", DateWord::partOfToday, 20},
    {u"this_morning.variants", DateWord::partOfToday, 9},
    {u"last_night.variants", DateWord::lastNight, 20},
    {u"next.variants", DateWord::next, 1},
    {u"last.variants", DateWord::next, -1},
    {u"this.variants", DateWord::next, 0},
    {u"next_after.variants", DateWord::nextAfter, 1},
    {u"last_after.variants", DateWord::nextAfter, -1},
    {u"this_week.variants", DateWord::shiftedUnit, shifted(DateUnit::week, thisUnit)},
    {u"next_week.variants", DateWord::shiftedUnit, shifted(DateUnit::week, nextUnit)},
    {u"last_week.variants", DateWord::shiftedUnit, shifted(DateUnit::week)},
    {u"next_month.variants", DateWord::shiftedUnit, shifted(DateUnit::month, nextUnit)},
    {u"last_month.variants", DateWord::shiftedUnit, shifted(DateUnit::month)},
    {u"next_year.variants", DateWord::shiftedUnit, shifted(DateUnit::year, nextUnit)},
    {u"last_year.variants", DateWord::shiftedUnit, shifted(DateUnit::year)},
    {u"weekend.variants", DateWord::weekend},
    {u"this_weekend.variants", DateWord::weekendOf, 0},
    {u"next_weekend.variants", DateWord::weekendOf, 1},
    {u"last_weekend.variants", DateWord::weekendOf, -1},
    {u"weekday.variants", DateWord::weekdayName},
    {u"end_of.variants", DateWord::edge, 1},
    {u"beginning_of.variants", DateWord::edge, -1},
    {u"end_edge.variants", DateWord::edge, 1},
    {u"beginning_edge.variants", DateWord::edge, -1},
    {u"end_of_month.variants", DateWord::edgeOfUnit, shifted(DateUnit::month, nextUnit)},
    {u"end_of_year.variants", DateWord::edgeOfUnit, shifted(DateUnit::year, nextUnit)},
    {u"beginning_of_month.variants", DateWord::edgeOfUnit, shifted(DateUnit::month)},
    {u"beginning_of_year.variants", DateWord::edgeOfUnit, shifted(DateUnit::year)},
    {u"in_time.variants", DateWord::ahead},
    {u"from_now.variants", DateWord::aheadAfter},
    {u"ago_before.variants", DateWord::ago},
    {u"ago.variants", DateWord::agoAfter},
    {u"within.variants", DateWord::within},
    {u"in_month.variants", DateWord::inMonth},
    {u"one.variants", DateWord::count, 1},
    {u"two.variants", DateWord::count, 2},
    {u"three.variants", DateWord::count, 3},
    {u"four.variants", DateWord::count, 4},
    {u"five.variants", DateWord::count, 5},
    {u"six.variants", DateWord::count, 6},
    {u"seven.variants", DateWord::count, 7},
    {u"eight.variants", DateWord::count, 8},
    {u"nine.variants", DateWord::count, 9},
    {u"ten.variants", DateWord::count, 10},
    {u"eleven.variants", DateWord::count, 11},
    {u"twelve.variants", DateWord::count, 12},
    {u"half_hour.variants", DateWord::duration},
    {u"quarter_hour.variants", DateWord::duration},
    {u"three_quarter_hour.variants", DateWord::duration},
    {u"hour_and_a_half.variants", DateWord::duration},
    {u"workday.variants", DateWord::businessDay, 0, u"Time"},
    {u"duration_symbol.variants", DateWord::unitSymbol},
    {u"at.variants", DateWord::at},
    {u"at_hour.variants", DateWord::atHour},
    {u"on.variants", DateWord::on},
    {u"of.variants", DateWord::of},
    {u"article.variants", DateWord::article},
    {u"ordinal.variants", DateWord::ordinal},
    {u"joint.variants", DateWord::joint},
    {u"hour_letter.variants", DateWord::hourLetter},
    {u"oclock.variants", DateWord::oclock},
    {u"half.variants", DateWord::halfPast},
    {u"half_past.variants", DateWord::minutesBefore, 30},
    {u"quarter_past.variants", DateWord::minutesBefore, 15},
    {u"half_to.variants", DateWord::minutesBefore, -30},
    {u"quarter_to.variants", DateWord::minutesBefore, -15},
    {u"and_half.variants", DateWord::minutesAfter, 30},
    {u"and_quarter.variants", DateWord::minutesAfter, 15},
    {u"less_quarter.variants", DateWord::minutesAfter, -15},
    {u"minute_mark.variants", DateWord::minuteMark},
    {u"second_mark.variants", DateWord::secondMark},
    {u"year_mark.variants", DateWord::yearMark},
    {u"month_mark.variants", DateWord::monthMark},
    {u"day_mark.variants", DateWord::dayMark},
    {u"first_year.variants", DateWord::firstYear},
    {u"reiwa.variants", DateWord::era, 2018},
    {u"heisei.variants", DateWord::era, 1988},
    {u"showa.variants", DateWord::era, 1925},
    {u"taisho.variants", DateWord::era, 1911},
    {u"meiji.variants", DateWord::era, 1867},
    {u"before_era.variants", DateWord::eraAfter, 0},
    {u"of_era.variants", DateWord::eraAfter, 1},
    {u"before_era_before.variants", DateWord::eraBefore, 0},
    {u"of_era_before.variants", DateWord::eraBefore, 1},
    {u"am.variants", DateWord::half, 0},
    {u"pm.variants", DateWord::half, 1},
    {u"night_half.variants", DateWord::half, 2},
    {u"noon.variants", DateWord::timeOfDay, 12},
    {u"midnight.variants", DateWord::timeOfDay, 0},
    {u"morning.variants", DateWord::dayPart, 9},
    {u"afternoon.variants", DateWord::dayPart, 15},
    {u"evening.variants", DateWord::dayPart, 20},
    {u"night.variants", DateWord::dayPart, 20},
    {u"before.variants", DateWord::before},
    {u"after.variants", DateWord::after},
    {u"until.variants", DateWord::until},
    {u"since.variants", DateWord::since},
    {u"range_from.variants", DateWord::rangeFrom},
    {u"range_to.variants", DateWord::rangeTo},
    {u"range_and.variants", DateWord::rangeAnd},
    {u"current_time.variants", DateWord::present},
    {u"age_of.variants", DateWord::ageOf},
    {u"how_long_until.variants", DateWord::howLong, 1},
    {u"how_long_since.variants", DateWord::howLong, -1},
    {u"weekday_of.variants", DateWord::weekdayOf},
    {u"week_number_of.variants", DateWord::weekNumberOf},
    {u"day_count.variants", DateWord::dayCount},
    {u"placing.variants", DateWord::placing},
    {u"clock_hour.variants", DateWord::clockHour},
    {u"new_year.variants", DateWord::namedDay, 101},
    {u"valentines_day.variants", DateWord::namedDay, 1402},
    {u"halloween.variants", DateWord::namedDay, 3110},
    {u"christmas_eve.variants", DateWord::namedDay, 2412},
    {u"christmas.variants", DateWord::namedDay, 2512},
    {u"new_years_eve.variants", DateWord::namedDay, 3112},
    {u"march.variants", DateWord::month, 3},
    {u"september.variants", DateWord::month, 9},
    {u"tuesday.variants", DateWord::weekday, 2},
    {u"wednesday.variants", DateWord::weekday, 3},
    {u"thursday.variants", DateWord::weekday, 4},
    {u"saturday.variants", DateWord::weekday, 6},
};

inline constexpr std::u16string_view unitKeys[] = {u"second.variants", u"minute.variants", u"hour.variants",
                                                   u"day.variants",    u"week.variants",   u"month.variants",
                                                   u"year.variants"};

// True for words one of which every date has that is more than numbers.
constexpr bool isTelling(DateWord word) {
    switch (word) {
        case DateWord::month:
        case DateWord::weekday:
        case DateWord::day:
        case DateWord::timeOfDay:
        case DateWord::dayPart:
        case DateWord::partOfToday:
        case DateWord::lastNight:
        case DateWord::half:
        case DateWord::unit:
        case DateWord::shiftedUnit:
        case DateWord::weekend:
        case DateWord::weekendOf:
        case DateWord::weekdayName:
        case DateWord::edgeOfUnit:
        case DateWord::aheadAfter:
        case DateWord::ago:
        case DateWord::agoAfter:
        case DateWord::duration:
        case DateWord::businessDay:
        case DateWord::hourLetter:
        case DateWord::oclock:
        case DateWord::minutesBefore:
        case DateWord::yearMark:
        case DateWord::monthMark:
        case DateWord::namedDay:
            return true;
        default:
            return false;
    }
}

// True for words that make a date of the number after them: "at" 12.30, "in" 3 h.
constexpr bool isTellingBeforeDigits(DateWord word) {
    return word == DateWord::at || word == DateWord::atHour || word == DateWord::ahead || word == DateWord::howLong;
}

}  // namespace vemo
