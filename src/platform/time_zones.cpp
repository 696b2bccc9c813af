// SPDX-License-Identifier: MIT
#include "platform/time_zones.h"

#include <unicode/basictz.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "base/text.h"

namespace vemo {

namespace {

constexpr double mostDays = 11'000'000;
constexpr int millisecondsPerSecond = 1000;

class IcuRules : public TimeZoneRules {
public:
    explicit IcuRules(std::unique_ptr<icu::TimeZone> zone) : zone_(std::move(zone)) {}

    int offsetAt(Date instant) const override {
        return offset(instant.time_since_epoch().count(), UCAL_TZ_LOCAL_FORMER, false);
    }

private:
    int offsetAtCivil(double secondsAsIfUtc) const override {
        return offset(secondsAsIfUtc, UCAL_TZ_LOCAL_FORMER, true);
    }

    int offset(double seconds, UTimeZoneLocalOption option, bool civil) const {
        std::int32_t raw = 0, dst = 0;
        UErrorCode status = U_ZERO_ERROR;
        const UDate milliseconds = seconds * millisecondsPerSecond;
        const auto* rules = civil ? dynamic_cast<const icu::BasicTimeZone*>(zone_.get()) : nullptr;
        if (rules)
            rules->getOffsetFromLocal(milliseconds, option, option, raw, dst, status);
        else
            zone_->getOffset(milliseconds, static_cast<UBool>(civil), raw, dst, status);
        return U_SUCCESS(status) ? (raw + dst) / millisecondsPerSecond : 0;
    }

    std::unique_ptr<icu::TimeZone> zone_;
};

}  // namespace

std::shared_ptr<const TimeZoneRules> TimeZoneRules::find(std::u16string_view identifier) {
    const icu::UnicodeString name(identifier.data(), static_cast<std::int32_t>(identifier.size()));
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(name));
    if (!zone || *zone == icu::TimeZone::getUnknown()) return nullptr;
    return std::make_shared<const IcuRules>(std::move(zone));
}

bool isKnownTimeZone(std::string_view identifier) {
    return TimeZoneRules::find(toUtf16(identifier)) != nullptr;
}

bool isInCalendar(Date instant) {
    return std::abs(instant.time_since_epoch().count()) <= mostDays * secondsPerDay;
}

std::optional<TimeZone> fixedTimeZone(std::int64_t offset) {
    if (offset == 0) return TimeZone{u"GMT"};
    if (offset <= -secondsPerDay || offset >= secondsPerDay) return std::nullopt;
    const int magnitude = std::abs(static_cast<int>(offset));
    char text[16];
    std::snprintf(text, sizeof text, "GMT%c%02d:%02d:%02d", offset < 0 ? '-' : '+', magnitude / 3600,
                  magnitude / 60 % 60, magnitude % 60);
    std::string_view shown = text;
    if (magnitude % 60 == 0) shown.remove_suffix(3);
    return TimeZone{toUtf16(shown)};
}

std::u16string TimeZoneRules::day(Date instant) const {
    const CivilTime time = civil(instant);
    char text[24];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", time.year, time.month, time.day);
    return toUtf16(text);
}

CivilTime TimeZoneRules::civil(Date instant) const {
    const double wanted = instant.time_since_epoch().count();
    const double known =
        std::isnan(wanted) ? 0 : std::clamp(wanted, -mostDays * secondsPerDay, mostDays * secondsPerDay);
    const double seconds = known + offsetAt(Date(std::chrono::duration<double>(known)));
    double days = std::floor(seconds / secondsPerDay);
    double rest = std::max(seconds - days * secondsPerDay, 0.0);
    if (rest >= secondsPerDay) {  // so close to midnight that the difference is a whole day
        ++days;
        rest = 0;
    }
    const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(static_cast<int>(days)))};
    CivilTime civil{static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                    static_cast<unsigned>(date.day())};
    civil.hour = static_cast<int>(rest / 3600);
    rest -= civil.hour * 3600;
    civil.minute = static_cast<int>(rest / 60);
    civil.second = rest - civil.minute * 60;
    return civil;
}

std::optional<Date> TimeZoneRules::instant(const CivilTime& civil) const {
    const std::chrono::year_month_day date{std::chrono::year(civil.year), std::chrono::month(civil.month),
                                           std::chrono::day(civil.day)};
    if (!date.ok() || civil.hour < 0 || civil.hour > 23 || civil.minute < 0 || civil.minute > 59 ||
        !(civil.second >= 0) || civil.second >= 60)
        return std::nullopt;
    const std::chrono::duration<double> midnight = std::chrono::sys_days(date).time_since_epoch();
    const double seconds = midnight.count() + civil.hour * 3600 + civil.minute * 60 + civil.second;
    return instantOfCivil(seconds);
}

}  // namespace vemo
