// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "output/value_formatter.h"
#include "platform/time_zones.h"

namespace vemo {

// Dates and times in the locale's short style, as the local time zone shows them. A day shows the date only, and so
// does noon of a value that doesn't know whether it is a day. A time of today shows the time only, another one the date
// too (the date is its short text).
class VemoDateFormatter : public ValueFormatter {
public:
    // The clock tells today for a context that doesn't know it.
    VemoDateFormatter(std::string_view locale, std::u16string_view timeZone, std::shared_ptr<const TimeZoneRules> zone,
                      std::function<Date()> clock);
    ~VemoDateFormatter() override;
    std::optional<FormattedValue> format(const Value& value, Context& context) const override;

private:
    struct Formatters;

    std::u16string today(Context& context) const;

    std::unique_ptr<const Formatters> formatters_;
    std::shared_ptr<const TimeZoneRules> zone_;
    std::function<Date()> clock_;
};

}  // namespace vemo
