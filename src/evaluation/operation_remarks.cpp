// SPDX-License-Identifier: MIT
#include "evaluation/operation_remarks.h"

#include "evaluation/date_relation_operations.h"
#include "platform/time_zones.h"
#include "records/context_map.h"
#include "records/remarks.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

constexpr std::u16string_view percent = u"percent";
constexpr std::u16string_view workday = u"workday";
constexpr double secondsOfAWeek = 7.0 * secondsPerDay;
constexpr double from1970To2001 = 978307200;
constexpr std::int64_t widestShift = 63;

bool isAverageUnit(std::u16string_view unit) {
    return unit == u"month" || unit == u"year";
}

// The time from one clock time to a later one on the same day; empty for anything else.
Value differenceOfTimes(const Value& later, const Value& earlier) {
    constexpr double secondsPerHour = 3600;
    const double seconds = std::chrono::duration<double>(*later.date() - *earlier.date()).count();
    if (!later.is(Attribute::precision, u"time") || !earlier.is(Attribute::precision, u"time") || seconds <= 0 ||
        seconds >= secondsPerDay)
        return {};
    return Value(DecimalNumber::fromDouble(seconds / secondsPerHour)).with(u"hour", Attribute::unit);
}

// True when the currency rates of the context are older than a week.
bool areRatesOld(const Context& context) {
    const double* taken = context.get<double>(context_keys::currencyRatesTime);
    const Date* now = context.get<Date>(context_keys::currentTime);
    return taken && now && now->time_since_epoch().count() - from1970To2001 - *taken > secondsOfAWeek;
}

}  // namespace

void OperationRemarks::failed(std::u16string_view id, const Value& left, const Value& right, Context& context) const {
    const auto reason = [&](ReasonCode code, std::u16string_view first = {}, std::u16string_view second = {}) {
        remarksOf(context).reason(code, first, second);
    };
    const auto divisor = right.decimal();
    if ((id == u"/" || id == u"mod") && divisor && divisor->isZero()) return reason(ReasonCode::divisionByZero);
    if (left.has(Attribute::date) || right.has(Attribute::date))
        return reason(left.has(Attribute::date) && right.has(Attribute::date) ? ReasonCode::datesAdded
                                                                              : ReasonCode::notUnderstood);
    auto from = left.string(Attribute::unit), to = right.string(Attribute::unit);
    if (from && to) {
        // "$65/h in €/h" fails for want of exchange rates.
        const auto a = unitConverter_.rate(*from), b = unitConverter_.rate(*to);
        if (a && b && unitConverter_.isConvertible(*from, *to)) from = a->upper, to = b->upper;
    }
    if (from && to && *from != *to) {
        const std::u16string* fromBase = unitConverter_.baseUnit(*from);
        const std::u16string* toBase = unitConverter_.baseUnit(*to);
        if (!fromBase || !toBase || *fromBase != *toBase) return reason(ReasonCode::differentDimensions, *from, *to);
        if (unitConverter_.isCurrency(*from)) {
            const auto* rates = context.get<std::shared_ptr<const CurrencyRatesContainer>>(context_keys::currencyRates);
            if (!rates) return reason(ReasonCode::noRates);
            const auto isMissing = [&](std::u16string_view code) {
                return code != *fromBase && !(*rates)->rates.contains(std::u16string(code));
            };
            return reason(ReasonCode::noRate, isMissing(*from) ? *from : *to);
        }
    }
    if (left.decimal() && right.decimal()) reason(ReasonCode::outOfRange);
}

Value OperationRemarks::convertedQuotient(const Value& left, const Value& right, Context& context) const {
    const auto divisor = right.decimal();
    const auto converted = unitConverter_.convert(left, *right.string(Attribute::unit), context);
    if (!converted || !converted->decimal() || converted->decimal()->notANumber() || !divisor || divisor->isZero())
        return {};
    return Value(converted->decimal()->dividing(*divisor));
}

// Of two lengths, in the square of the first one's unit; empty for other quantities.
Value OperationRemarks::area(const Value& left, const Value& right, Context& context) const {
    const auto unit = *left.string(Attribute::unit);
    const std::u16string* base = unitConverter_.baseUnit(unit);
    const std::u16string square = std::u16string(unit) + u"2";
    if (!base || *base != u"m" || !unitConverter_.baseUnit(square)) return {};
    const auto width = unitConverter_.convert(right, unit, context);
    if (!width || !width->decimal() || !left.decimal()) return {};
    return Value(left.decimal()->multiplying(*width->decimal())).with(square, Attribute::unit);
}

void OperationRemarks::applied(std::u16string_view id, const Value& left, const Value& right, TextRange range,
                               Context& context) const {
    if (range.length == 0) return;
    const auto from = left.string(Attribute::unit), to = right.string(Attribute::unit);
    if ((from || to) && isDateRelation(id)) {
        if (from == workday || to == workday) remarksOf(context).note(NoteKind::noHolidays, range);
        return;
    }
    if (id == u"-" && left.has(Attribute::date) && right.has(Attribute::date)) {
        // "9am - 5pm"
        const Value span = differenceOfTimes(right, left);
        if (!span.isEmpty()) remarksOf(context).note(NoteKind::earlierEnd, range, {}, span);
        return;
    }
    if (!to) {
        // "(4 ft)^2"
        if (id == u"^" && from && *from != percent) remarksOf(context).note(NoteKind::keptUnit, range);
        const auto count = right.decimal();
        if ((id == u"left_shift" || id == u"right_shift") && count && count->toInt64() > widestShift)
            remarksOf(context).note(NoteKind::cappedShift, range);
        return;
    }
    if (!from || *to == percent || *from == percent) return;
    const auto fromRate = unitConverter_.rate(*from), toRate = unitConverter_.rate(*to);
    if (fromRate || toRate) {
        const std::u16string_view lower = fromRate ? fromRate->lower : *from, other = toRate ? toRate->lower : *to;
        if (lower != other && (isAverageUnit(lower) || isAverageUnit(other)) &&
            unitConverter_.isConvertible(lower, other) && !UnitConverter::calendarRatio(lower, other))
            remarksOf(context).note(NoteKind::averageLength, range);
        // "240 V * 5 A": an ampere is a rate, too.
        if (id == u"*" && !unitConverter_.isConvertible(lower, other) &&
            unitConverter_.isCurrency(*from) == unitConverter_.isCurrency(*to))
            remarksOf(context).note(NoteKind::keptUnit, range);
        return;
    }
    const bool differ = *from != *to;
    if (id == u"/" && differ) {
        remarksOf(context).note(NoteKind::droppedUnit, range, {}, convertedQuotient(left, right, context));
    } else if (id == u"*" && unitConverter_.isCurrency(*from) == unitConverter_.isCurrency(*to)) {
        remarksOf(context).note(NoteKind::keptUnit, range, {}, area(left, right, context));
    } else if (differ && (id == u"in" || id == u"+" || id == u"-")) {
        if (isAverageUnit(*from) || isAverageUnit(*to))
            remarksOf(context).note(NoteKind::averageLength, range);
        else if (unitConverter_.isCurrency(*to) && areRatesOld(context))
            remarksOf(context).note(NoteKind::oldRates, range);
    }
}

}  // namespace vemo
