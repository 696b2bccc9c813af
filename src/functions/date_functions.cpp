// SPDX-License-Identifier: MIT
#include "functions/date_functions.h"

#include "functions/date_values.h"
#include "platform/time_zones.h"
#include "records/context_map.h"

namespace vemo {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr int secondsPerHour = 3600;

std::optional<Date> currentTime(Context& context) {
    context.addDependencyOn(context_keys::currentTime, std::nullopt, Value());
    const Date* now = context.get<Date>(context_keys::currentTime);
    return now ? std::optional(*now) : std::nullopt;
}

// The day that is so many days after the present one.
class DayFunction : public Function {
public:
    explicit DayFunction(int days) : days_(days) {}
    std::size_t mostValues() const override { return 0; }

    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        const auto now = currentTime(context);
        return now ? dayValue(daysLater(*now, days_, localZone(context).get())) : Value();
    }

private:
    int days_;
};

class TimeFunction : public Function {
public:
    std::size_t mostValues() const override { return 0; }
    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        const auto now = currentTime(context);
        if (!now) return Value();
        return timeValue(*now, context.get<TimeZone>(context_keys::currentTimeZone));
    }
};

class LocalTimeZoneFunction : public Function {
public:
    std::optional<Value> evaluate(const std::vector<Value>&, Context& context) const override {
        const TimeZone* zone = context.get<TimeZone>(context_keys::currentTimeZone);
        return zone ? std::optional(Value(*zone)) : std::nullopt;
    }
};

class GmtFunction : public FunctionOfNumbers {
public:
    std::optional<Value> evaluate(const std::vector<Value>& values, Context&) const override {
        std::int64_t offset = 0;
        if (const auto hours = values.empty() ? std::nullopt : values.front().decimal()) {
            const DecimalNumber seconds = hours->multiplying(DecimalNumber::fromInt64(secondsPerHour));
            if (seconds.notANumber()) return std::nullopt;
            offset = seconds.toInt64();
        }
        auto zone = fixedTimeZone(offset);
        return zone ? std::optional(Value(*std::move(zone))) : std::nullopt;
    }
};

class FromUnixTimeFunction : public FunctionOfNumbers {
public:
    std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const override {
        const auto timestamp = values.empty() ? std::nullopt : values.front().decimal();
        if (!timestamp || timestamp->notANumber()) return std::nullopt;
        const Date instant{Seconds(static_cast<double>(timestamp->toInt64()))};
        const TimeZone* zone = context.get<TimeZone>(context_keys::currentTimeZone);
        const auto local = zone ? TimeZoneRules::find(zone->identifier) : nullptr;
        const auto utc = TimeZoneRules::find(u"UTC");
        if (!local || !utc || !isInCalendar(instant)) return std::nullopt;
        // By the offset of the time itself: with today's, a time of the other half of the year would show an hour off.
        const auto shown = local->instant(utc->civil(instant));
        const TimeZone shownZone{u"UTC"};
        return shown ? std::optional(timeValue(*shown, &shownZone)) : std::nullopt;
    }
};

}  // namespace

std::shared_ptr<const Function> todayFunction() {
    return std::make_shared<DayFunction>(0);
}
std::shared_ptr<const Function> yesterdayFunction() {
    return std::make_shared<DayFunction>(-1);
}
std::shared_ptr<const Function> tomorrowFunction() {
    return std::make_shared<DayFunction>(1);
}
std::shared_ptr<const Function> timeFunction() {
    return std::make_shared<TimeFunction>();
}
std::shared_ptr<const Function> localTimeZoneFunction() {
    return std::make_shared<LocalTimeZoneFunction>();
}
std::shared_ptr<const Function> gmtFunction() {
    return std::make_shared<GmtFunction>();
}
std::shared_ptr<const Function> fromUnixTimeFunction() {
    return std::make_shared<FromUnixTimeFunction>();
}

}  // namespace vemo
