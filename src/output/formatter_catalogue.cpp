// SPDX-License-Identifier: MIT
#include "output/formatter_catalogue.h"

#include "output/date_formatter.h"

namespace vemo {

void registerFormatters(FormatterList& formatters, const FormatterParts& parts) {
    const auto unowned = [](const ValueFormatter& formatter) {
        return std::shared_ptr<const ValueFormatter>(std::shared_ptr<void>(), &formatter);
    };
    formatters.add(unowned(parts.timeFormatter), 100, u"timeFormatter");
    formatters.add(unowned(parts.decimalUnitValueFormatter), 100, u"defaultFormatter");
    formatters.add(std::make_shared<VemoDateFormatter>(parts.locale, parts.timeZone, parts.localZone, parts.clock), 100,
                   u"dateFormatter");
}

}  // namespace vemo
