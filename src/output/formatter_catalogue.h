// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "output/value_formatter.h"
#include "platform/time_zones.h"
#include "vemo/sorted_list.h"

namespace vemo {

using FormatterList = SortedList<std::shared_ptr<const ValueFormatter>>;

// What formatters use; the two formatters must outlive them.
struct FormatterParts {
    const ValueFormatter& timeFormatter;
    const ValueFormatter& decimalUnitValueFormatter;
    std::string locale;
    std::u16string timeZone;
    std::shared_ptr<const TimeZoneRules> localZone;
    std::function<Date()> clock;
};

// Adds every formatter, in the order in which they are asked.
void registerFormatters(FormatterList& formatters, const FormatterParts& parts);

}  // namespace vemo
