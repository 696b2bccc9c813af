// SPDX-License-Identifier: MIT
#include "output/date_formatter.h"

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include "platform/icu_locale.h"
#include "records/context_map.h"

namespace vemo {

namespace {

using DateFormatPointer = std::unique_ptr<icu::DateFormat>;

// In the zone, and in the calendar of the engine, which knows no Julian days, however early.
DateFormatPointer adjusted(DateFormatPointer format, std::u16string_view timeZone) {
    if (!format) return nullptr;
    const icu::UnicodeString zone(timeZone.data(), static_cast<std::int32_t>(timeZone.size()));
    format->adoptTimeZone(icu::TimeZone::createTimeZone(zone));
    if (const auto* calendar = dynamic_cast<const icu::GregorianCalendar*>(format->getCalendar())) {
        constexpr UDate beforeAllDates = -1e15;
        std::unique_ptr<icu::GregorianCalendar> proleptic(calendar->clone());
        UErrorCode status = U_ZERO_ERROR;
        proleptic->setGregorianChange(beforeAllDates, status);
        if (U_SUCCESS(status)) format->adoptCalendar(proleptic.release());
    }
    return format;
}

DateFormatPointer makeFormat(icu::DateFormat::EStyle dateStyle, icu::DateFormat::EStyle timeStyle,
                             std::string_view locale, std::u16string_view timeZone) {
    return adjusted(DateFormatPointer(icu::DateFormat::createDateTimeInstance(dateStyle, timeStyle, icuLocale(locale))),
                    timeZone);
}

DateFormatPointer makeWeekdayFormat(std::string_view locale, std::u16string_view timeZone) {
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"EEEE"), icuLocale(locale), status);
    return U_SUCCESS(status) ? adjusted(std::move(format), timeZone) : nullptr;
}

std::u16string text(const DateFormatPointer& format, Date date) {
    constexpr double millisecondsPerSecond = 1000;
    icu::UnicodeString result;
    if (format) format->format(date.time_since_epoch().count() * millisecondsPerSecond, result);
    return {result.getBuffer(), static_cast<std::size_t>(result.length())};
}

}  // namespace

struct VemoDateFormatter::Formatters {
    DateFormatPointer dateAndTimeFormatter;
    DateFormatPointer timeFormatter;
    DateFormatPointer dateFormatter;
    DateFormatPointer weekdayFormatter;
};

VemoDateFormatter::VemoDateFormatter(std::string_view locale, std::u16string_view timeZone,
                                     std::shared_ptr<const TimeZoneRules> zone, std::function<Date()> clock)
    : zone_(std::move(zone)), clock_(std::move(clock)) {
    constexpr auto none = icu::DateFormat::kNone;
    constexpr auto brief = icu::DateFormat::kShort;
    formatters_ = std::make_unique<const Formatters>(
        Formatters{makeFormat(brief, brief, locale, timeZone), makeFormat(none, brief, locale, timeZone),
                   makeFormat(brief, none, locale, timeZone), makeWeekdayFormat(locale, timeZone)});
}

VemoDateFormatter::~VemoDateFormatter() = default;

std::u16string VemoDateFormatter::today(Context& context) const {
    if (const auto* day = context.get<std::u16string>(context_keys::currentDay)) {
        context.addDependencyOn(context_keys::currentDay);
        return *day;
    }
    if (const auto* now = context.get<Date>(context_keys::currentTime)) {
        context.addDependencyOn(context_keys::currentTime);
        return zone_->day(*now);
    }
    return zone_->day(clock_());
}

std::optional<FormattedValue> VemoDateFormatter::format(const Value& value, Context& context) const {
    const auto date = value.date();
    if (!date || !isInCalendar(*date)) return std::nullopt;
    FormattedValue result;
    const CivilTime time = zone_->civil(*date);
    const bool known = value.has(Attribute::precision);
    if (value.is(Attribute::precision, u"weekday")) {
        result.regular = text(formatters_->weekdayFormatter, *date);
    } else if (known ? value.is(Attribute::precision, u"day") : time.hour == 12 && time.minute == 0) {
        result.regular = text(formatters_->dateFormatter, *date);
    } else if (zone_->day(*date) == today(context)) {
        result.regular = text(formatters_->timeFormatter, *date);
    } else {
        result.regular = text(formatters_->dateAndTimeFormatter, *date);
        result.shortText = text(formatters_->dateFormatter, *date);
    }
    return result;
}

}  // namespace vemo
