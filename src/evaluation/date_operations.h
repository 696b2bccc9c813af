// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/operation_collection.h"

namespace vemo {

class UnitConverter;

// Date plus or minus a duration: a shift by whole seconds; whole days and weeks keep the time of day across clock
// changes. A day stays a day when whole days are added, a time keeps its zone. The result is not-a-number where it lies
// outside the years of the calendar. Anything that is no duration is declined; a bare number is one in seconds.
class DateAndDecimalAdditionOperation : public Operation {
public:
    explicit DateAndDecimalAdditionOperation(const UnitConverter& unitConverter) : unitConverter_(unitConverter) {}
    // The date may stand on either side; two dates give not-a-number.
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& unitConverter_;
};

class DateAndDecimalSubtractionOperation : public Operation {
public:
    explicit DateAndDecimalSubtractionOperation(const UnitConverter& unitConverter) : unitConverter_(unitConverter) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& unitConverter_;
};

// The time between two dates, whole days between two days, in the largest unit of which there is at least one.
class DateSubtractionOperation : public Operation {
public:
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;
};

// The sum or difference of two durations, in the larger one's unit: 45 min + 2 h is 2 h 45 min.
class DurationAdditionOperation : public Operation {
public:
    DurationAdditionOperation(const UnitConverter& unitConverter, bool subtracts)
        : unitConverter_(unitConverter), subtracts_(subtracts) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& unitConverter_;
    bool subtracts_;
};

// "in": a date-time that knows its zone, told in another one.
class TimeZoneConversionOperation : public Operation {
public:
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;
};

}  // namespace vemo
