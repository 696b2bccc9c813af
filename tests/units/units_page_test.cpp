// SPDX-License-Identifier: MIT
// docs/units.md is written from the catalogue: with VEMO_WRITE_UNITS_PAGE=1 this test writes it, else it compares.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "scanning/words/localizer.h"
#include "support/calculators.h"
#include "units/prefixes.h"

namespace vemo::test {
namespace {

// The page as it is in the sources.
std::string pagePath() {
    return VEMO_TEST_DATA_DIR "/../docs/units.md";
}

constexpr std::string_view endOfIntroduction = "<!-- Below: written from the catalogue. -->\n";

class Listing : public UnitRegistry {
public:
    using UnitRegistry::UnitRegistry;
    void registerUnit(const Unit& unit, bool, bool) override { units.push_back(unit); }
    std::vector<Unit> units;
};

// True for a unit that is another one with a prefix, such as km, or an area or volume of one.
bool isDerived(const Unit& unit, const std::map<std::u16string, const Unit*>& byId, const Localizer& localizer) {
    std::u16string_view id = unit.id;
    const bool powered = id.ends_with(u"2") || id.ends_with(u"3");
    if (powered) id.remove_suffix(1);
    for (const auto& prefixes : {siPrefixes(localizer), iecPrefixes(localizer)})
        for (const Prefix& prefix : prefixes) {
            if (!id.starts_with(prefix.internationalSymbol)) continue;
            const auto base = byId.find(std::u16string(id.substr(prefix.internationalSymbol.size())));
            if (base != byId.end() && base->second->internationalSymbol) return true;
        }
    return false;
}

std::string rowOf(const Unit& unit) {
    std::vector<std::u16string> names = unit.phrases;
    for (const auto* symbol : {&unit.internationalSymbol, &unit.localizedSymbol})
        if (*symbol && std::find(names.begin(), names.end(), **symbol) == names.end()) names.push_back(**symbol);
    const std::string format = utf8(unit.format.value_or(u""));
    std::string shown = format.substr(format.find('|') == format.npos ? 0 : format.find('|') + 1);
    if (const std::size_t at = shown.find("%@"); at != shown.npos) shown.replace(at, 2, "5");
    std::string ratio;
    if (unit.baseRatio && unit.baseUnitId) ratio = unit.baseRatio->toString() + " " + utf8(*unit.baseUnitId);
    return "| " + utf8(joined(names, u", ")) + " | " + shown + " | " + ratio + " |\n";
}

TEST(UnitsPage, isTheCatalogue) {
    const auto calculator = newCalculator();
    const Localizer localizer("en");
    Listing listing(calculator->unitManager(), calculator->unitConverter());
    registerUnits(listing, localizer, {});
    std::map<std::u16string, const Unit*> byId;
    std::vector<std::u16string> bases;
    for (const Unit& unit : listing.units) {
        byId[unit.id] = &unit;
        const std::u16string base = unit.baseUnitId.value_or(u"rates");
        if (unit.id != u"date" && std::find(bases.begin(), bases.end(), base) == bases.end()) bases.push_back(base);
    }
    std::string tables;
    for (const std::u16string& base : bases) {
        tables += "\n## In " + utf8(base) + "\n\n| names | shown as | one is |\n|---|---|---|\n";
        if (base == u"rates") tables.replace(tables.rfind("## In rates"), 11, "## Rates with a name of their own");
        for (const Unit& unit : listing.units)
            if (unit.baseUnitId.value_or(u"rates") == base && !isDerived(unit, byId, localizer)) tables += rowOf(unit);
    }
    std::stringstream page;
    page << std::ifstream(pagePath()).rdbuf();
    const std::string text = page.str();
    const std::size_t end = text.find(endOfIntroduction);
    ASSERT_NE(end, text.npos);
    const std::string introduction = text.substr(0, end + endOfIntroduction.size());
    if (std::getenv("VEMO_WRITE_UNITS_PAGE"))
        std::ofstream(pagePath()) << introduction << tables;
    else
        EXPECT_TRUE(text == introduction + tables) << "docs/units.md is out of date";
}

}  // namespace
}  // namespace vemo::test
