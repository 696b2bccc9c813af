// SPDX-License-Identifier: MIT
#include "functions/date_values.h"

#include <cmath>

#include "platform/time_zones.h"
#include "records/context_map.h"

namespace vemo {

Value dateValue(Date instant) {
    return Value(instant).with(u"date", Attribute::unit);
}

Value dayValue(Date instant) {
    return dateValue(instant).with(u"day", Attribute::precision);
}

Value timeValue(Date instant, const TimeZone* zone) {
    const Value time = dateValue(instant).with(u"time", Attribute::precision);
    return zone ? time.with(*zone) : time;
}

bool isDay(const Value& date) {
    return date.is(Attribute::precision, u"day") || date.is(Attribute::precision, u"weekday");
}

std::shared_ptr<const TimeZoneRules> localZone(Context& context) {
    const TimeZone* zone = context.get<TimeZone>(context_keys::currentTimeZone);
    return zone ? TimeZoneRules::find(zone->identifier) : nullptr;
}

namespace {

double count(Date instant) {
    return instant.time_since_epoch().count();
}

// Seconds that a zone's calendar and clock show, as if it were in Greenwich.
double civilSeconds(Date instant, const TimeZoneRules& zone) {
    return count(instant) + zone.offsetAt(instant);
}

Date instantOf(double civilSeconds, const TimeZoneRules& zone) {
    return zone.instantOfCivil(civilSeconds);
}

}  // namespace

Date daysLater(Date instant, double days, const TimeZoneRules* local) {
    const double shift = days * secondsPerDay;
    if (!local || !isInCalendar(instant + std::chrono::duration<double>(shift)))
        return instant + std::chrono::duration<double>(shift);
    return instantOf(civilSeconds(instant, *local) + shift, *local);
}

Date secondsLater(const Value& dateTime, double seconds, const TimeZoneRules* local) {
    const Date shown = *dateTime.date();
    const std::chrono::duration<double> shift(seconds);
    const TimeZone* zone = dateTime.timeZone();
    const auto own = zone && local ? TimeZoneRules::find(zone->identifier) : nullptr;
    if (!own || !isInCalendar(shown + shift)) return shown + shift;
    // An hour that the clocks show twice is told apart where both zones agree.
    const bool agree = own->offsetAt(shown) == local->offsetAt(shown);
    const Date real = (agree ? shown : instantOf(civilSeconds(shown, *local), *own)) + shift;
    const Date plain = shown + shift;
    // Where both zones kept their clocks this is the plain shift, exactly.
    const double civil = civilSeconds(real, *own);
    return civilSeconds(plain, *local) == civil ? plain : instantOf(civil, *local);
}

double daysBetween(Date start, Date end, const TimeZoneRules& local) {
    const auto day = [&](Date instant) { return std::floor(civilSeconds(instant, local) / secondsPerDay); };
    return day(end) - day(start);
}

std::optional<Value> placedInTimeZone(const Value& dateTime, const TimeZone& place, Context& context) {
    const auto date = dateTime.date();
    const auto local = localZone(context);
    const auto there = TimeZoneRules::find(place.identifier);
    if (!date || !local || !there || !isInCalendar(*date)) return std::nullopt;
    return timeValue(instantOf(civilSeconds(*date, *local), *there),
                     context.get<TimeZone>(context_keys::currentTimeZone));
}

std::optional<Value> movedToTimeZone(const Value& dateTime, const TimeZone& target, Context& context) {
    const auto date = dateTime.date();
    const TimeZone* source = dateTime.timeZone();
    if (!date || !source) return std::nullopt;
    const auto from = TimeZoneRules::find(source->identifier);
    const auto to = TimeZoneRules::find(target.identifier);
    if (!from || !to) return std::nullopt;
    if (const auto local = localZone(context); local && isInCalendar(*date)) {
        const TimeZone* here = context.get<TimeZone>(context_keys::currentTimeZone);
        const Date real = *source == *here ? *date : instantOf(civilSeconds(*date, *local), *from);
        const Date shown = target == *here ? real : instantOf(civilSeconds(real, *to), *local);
        return timeValue(shown, &target);
    }
    context.addDependencyOn(context_keys::currentTime, std::nullopt, Value());
    const Date* current = context.get<Date>(context_keys::currentTime);
    const Date now = current ? *current : *date;
    return timeValue(*date + std::chrono::duration<double>(to->offsetAt(now) - from->offsetAt(now)), &target);
}

}  // namespace vemo
