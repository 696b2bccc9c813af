// SPDX-License-Identifier: MIT
#include "functions/date_values.h"

#include "platform/time_zones.h"
#include "records/context_map.h"

namespace vemo {

Value dateValue(Date instant) {
    return Value(instant).with(u"date", Attribute::unit);
}

std::optional<Value> movedToTimeZone(const Value& dateTime, const TimeZone& target, Context& context) {
    const auto date = dateTime.date();
    const TimeZone* source = dateTime.timeZone();
    if (!date || !source) return std::nullopt;
    const auto from = TimeZoneRules::find(source->identifier);
    const auto to = TimeZoneRules::find(target.identifier);
    if (!from || !to) return std::nullopt;
    context.addDependencyOn(context_keys::currentTime, std::nullopt, Value());
    const Date* current = context.get<Date>(context_keys::currentTime);
    const Date now = current ? *current : *date;
    return dateValue(*date + std::chrono::duration<double>(to->offsetAt(now) - from->offsetAt(now))).with(target);
}

}  // namespace vemo
