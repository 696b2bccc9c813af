// SPDX-License-Identifier: MIT
#include "units/usual_units.h"

#include <algorithm>

namespace vemo {

namespace {

constexpr std::u16string_view rows =
    u"cm m km mm inch foot yard mile "
    u"m2 km2 cm2 hectare foot2 inch2 acre mile2 "
    u"litre mlitre clitre cup tablespoon teaspoon fluid_ounce pint quart gallon m3 "
    u"kgram gram mgram tonne pound ounce stone "
    u"hour minute second day week month year msecond "
    u"degree radian celsius fahrenheit kelvin "
    u"Mbyte Gbyte kbyte byte Tbyte Mibyte Gibyte Kibyte bit Mbit/second Gbit/second "
    u"km/hour mile/hour m/second knot mile/gallon km/litre "
    u"bar psi kpascal hpascal atmosphere newton pound_force "
    u"kjoule kcalorie kwatt_hour joule calorie btu kwatt watt horsepower "
    u"USD EUR GBP JPY CNY CHF CAD AUD ";

std::vector<std::u16string_view> split() {
    std::vector<std::u16string_view> ids;
    for (std::size_t start = 0; start < rows.size();) {
        const std::size_t end = rows.find(u' ', start);
        ids.push_back(rows.substr(start, end - start));
        start = end + 1;
    }
    return ids;
}

}  // namespace

const std::vector<std::u16string_view>& usualUnits() {
    static const std::vector<std::u16string_view> ids = split();
    return ids;
}

int usualRank(std::u16string_view unitId) {
    const auto& ids = usualUnits();
    return static_cast<int>(ids.end() - std::find(ids.begin(), ids.end(), unitId));
}

}  // namespace vemo
