// SPDX-License-Identifier: MIT
#include "units/everyday_units.h"

#include <algorithm>

#include "scanning/words/localizer.h"
#include "units/unit_builder.h"

namespace vemo {

namespace {

// One unit: its phrases and format are in the table under its id. With prefixes or a symbol of its own, the table has
// that, too.
struct Row {
    std::u16string_view id;
    std::string_view ratio;  // base units in one of this
    std::u16string_view prefixes = {};
    std::u16string_view rate = {};  // the rate of which it is another name, in the units in which results are told
};

struct Group {
    std::u16string_view base, table;
    bool symbols;  // units have symbols, in which case counts
    std::span<const Row> rows;
};

// Sources: the SI brochure, 9th edition (SI, tables 8 and on); NIST SP 811, appendix B (US and older metric units);
// NIST handbook 44, appendix C (US trade); the British Weights and Measures Act 1985 (imperial); the IAU's resolutions
// of 2012 and 2015 (sky); the Japanese Measurement Act of 1891 (shaku of 10/33 m); the Hong Kong ordinance, cap. 68
// (tael).
constexpr Row lengths[] = {{u"fathom", "1.8288"},
                           {u"rod", "5.0292"},
                           {u"hand", "0.1016"},
                           {u"link", "0.201168"},
                           {u"cubit", "0.4572"},
                           {u"thou", "0.0000254"},
                           {u"light_year", "9460730472580800"},
                           {u"astronomical_unit", "149597870700"},
                           {u"light_second", "299792458"},
                           {u"light_minute", "17987547480"},
                           {u"light_hour", "1079252848800"},
                           {u"survey_foot", "1200/3937"},
                           {u"parsec", "30856775814913672.789139379577964715", u"kMG"},
                           {u"angstrom", "0.0000000001"},
                           {u"rack_unit", "0.04445"},
                           {u"pica", "0.0254/6"},
                           {u"twip", "0.0254/1440"},
                           {u"didot", "0.000376065"},
                           {u"cicero", "0.00451278"}};
constexpr Row areas[] = {{u"rood", "1011.7141056"},
                         {u"section", "2589988.110336"},
                         {u"dunam", "1000"},
                         {u"tsubo", "400/121"},
                         {u"tatami", "1.62"}};
constexpr Row volumes[] = {{u"fluid_ounce", "0.0000295735295625"},
                           {u"gill", "0.00011829411825"},
                           {u"fluid_dram", "0.0000036966911953125"},
                           {u"shot", "0.00004436029434375"},
                           {u"bushel", "0.03523907016688"},
                           {u"peck", "0.00880976754172"},
                           {u"dry_pint", "0.0005506104713575"},
                           {u"dry_quart", "0.001101220942715"},
                           {u"oil_barrel", "0.158987294928"},
                           {u"beer_barrel", "0.117347765304"},
                           {u"keg", "0.058673882652"},
                           {u"hundred_cubic_feet", "2.8316846592"},
                           {u"thousand_cubic_feet", "28.316846592"},
                           {u"hogshead", "0.238480942392"},
                           {u"imperial_gallon", "0.00454609"},
                           {u"imperial_quart", "0.0011365225"},
                           {u"imperial_pint", "0.00056826125"},
                           {u"imperial_cup", "0.000284130625"},
                           {u"imperial_fluid_ounce", "0.0000284130625"},
                           {u"imperial_gill", "0.0001420653125"},
                           {u"metric_cup", "0.00025"},
                           {u"metric_tablespoon", "0.000015"},
                           {u"metric_teaspoon", "0.000005"},
                           {u"australian_tablespoon", "0.00002"},
                           {u"dessertspoon", "0.00001"},
                           {u"drop", "0.00000005"},
                           {u"board_foot", "0.002359737216"},
                           {u"cord", "3.624556363776"},
                           {u"acre_foot", "1233.48183754752"},
                           {u"sho", "2.401/1331"},
                           {u"go", "0.2401/1331"}};
constexpr Row weights[] = {{u"short_ton", "907184.74"},
                           {u"long_ton", "1016046.9088"},
                           {u"hundredweight", "45359.237"},
                           {u"long_hundredweight", "50802.34544"},
                           {u"grain", "0.06479891"},
                           {u"dram", "1.7718451953125"},
                           {u"troy_ounce", "31.1034768"},
                           {u"troy_pound", "373.2417216"},
                           {u"pennyweight", "1.55517384"},
                           {u"slug", "4448.2216152605/0.3048"},
                           {u"dalton", "0.00000000000000000000000166053906660"},
                           {u"kip", "453592.37"},
                           {u"scruple", "1.2959782"},
                           {u"jin", "500"},
                           {u"catty", "604.78982"},
                           {u"momme", "3.75"},
                           {u"tael", "37.79936375"},
                           {u"metric_pound", "500"},
                           {u"half_quintal", "50000"}};
constexpr Row times[] = {{u"fortnight", "1209600"},  {u"quarter", "7776000"},        {u"decade", "315360000"},
                         {u"century", "3153600000"}, {u"millennium", "31536000000"}, {u"workday", "28800"},
                         {u"workweek", "144000"},    {u"man_hour", "3600"},          {u"man_day", "28800"},
                         {u"decimal_hour", "3600"}};
constexpr Row angles[] = {{u"arcminute", "0.00029088820866572159615394846141476878"},
                          {u"arcsecond", "0.0000048481368110953599358991410235794798"},
                          {u"gradian", "0.015707963267948966192313216916397514421"},
                          {u"turn", "6.2831853071795864769252867665590057684"},
                          {u"milliradian", "0.001"}};
constexpr Row temperatures[] = {{u"rankine", "5/9"}};
constexpr Row data[] = {{u"nibble", "4"}};
constexpr Row speeds[] = {{u"knot", "1852/3600", {}, u"km/hour"}};
constexpr Row accelerations[] = {{u"m/second2", ""}, {u"foot/second2", "0.3048"}, {u"standard_gravity", "9.80665"}};
constexpr Row pressures[] = {{u"pascal", "", u"hkMG"},
                             {u"bar", "100000", u"m"},
                             {u"psi", "4.4482216152605/0.00064516"},
                             {u"ksi", "4448.2216152605/0.00064516"},
                             {u"atmosphere", "101325"},
                             {u"mmhg", "133.322387415"},
                             {u"torr", "101325/760"},
                             {u"inhg", "3386.388640341"},
                             {u"cmh2o", "98.0665"},
                             {u"mmh2o", "9.80665"},
                             {u"inh2o", "249.08891"},
                             {u"cmhg", "1333.22387415"},
                             {u"psf", "4.4482216152605/0.09290304"},
                             {u"technical_atmosphere", "98066.5"}};
constexpr Row energies[] = {{u"joule", "", u"mkMGT"},
                            {u"calorie", "4.184", u"k"},
                            {u"watt_hour", "3600", u"mkMGT"},
                            {u"watt_second", "1"},
                            {u"btu", "1055.05585262"},
                            {u"kbtu", "1055055.85262"},
                            {u"mmbtu", "1055055852.62"},
                            {u"tonne_of_oil_equivalent", "41868000000"},
                            {u"electronvolt", "0.0000000000000000001602176634", u"mkMGT"},
                            {u"therm", "105480400"},
                            {u"erg", "0.0000001"},
                            {u"foot_pound", "1.3558179483314004"}};
// In watt hours per hour, so that two kilowatts for three hours are six kilowatt hours.
constexpr Row powers[] = {{u"watt", "1", u"\u03bcmkMGT", u"watt_hour/hour"},
                          {u"horsepower", "745.69987158227022", {}, u"watt_hour/hour"},
                          {u"metric_horsepower", "735.49875", {}, u"watt_hour/hour"},
                          {u"refrigeration_ton", "12660670.23144/3600", {}, u"watt_hour/hour"}};
constexpr Row apparentPowers[] = {{u"volt_ampere", "", u"kM"}};
constexpr Row forces[] = {{u"newton", "", u"mkM"},        {u"pound_force", "4.4482216152605"},
                          {u"kilogram_force", "9.80665"}, {u"ounce_force", "0.27801385095378125"},
                          {u"poundal", "0.138254954376"}, {u"dyne", "0.00001"}};
constexpr Row torques[] = {{u"newton_metre", "", u"kM"},
                           {u"pound_foot", "1.3558179483314004"},
                           {u"inch_pound", "0.1129848290276167"},
                           {u"kilogram_force_metre", "9.80665"}};
constexpr Row frequencies[] = {{u"hertz", "", u"mkMGT"}, {u"rpm", "1/60"}, {u"rps", "1"}, {u"bpm", "1/60"}};
constexpr Row voltages[] = {{u"volt", "", u"\u03bcmkM"}};
constexpr Row currents[] = {{u"ampere", "1", u"n\u03bcmk", u"ampere_hour/hour"}};
constexpr Row charges[] = {{u"coulomb", "", u"n\u03bcm"}, {u"ampere_hour", "3600", u"m"}};
constexpr Row resistances[] = {{u"ohm", "", u"mkMG"}};
constexpr Row capacitances[] = {{u"farad", "", u"pn\u03bcm"}};
constexpr Row inductances[] = {{u"henry", "", u"n\u03bcm"}};
constexpr Row fluxDensities[] = {{u"tesla", "", u"n\u03bcm"}, {u"gauss", "0.0001"}};
constexpr Row conductances[] = {{u"siemens", "", u"\u03bcm"}};
constexpr Row luminousFluxes[] = {{u"lumen", "", u"k"}};
constexpr Row illuminances[] = {{u"lux", "", u"k"}, {u"foot_candle", "1/0.09290304"}};
constexpr Row luminousIntensities[] = {{u"candela", "", u"m"}};
constexpr Row activities[] = {{u"becquerel", "", u"kMGT"}, {u"curie", "37000000000", u"\u03bcm"}};
constexpr Row absorbedDoses[] = {{u"gray", "", u"\u03bcmc"}};
constexpr Row equivalentDoses[] = {{u"sievert", "", u"\u03bcm"}};
constexpr Row substances[] = {{u"mole", "", u"n\u03bcmk"}};
constexpr Row doses[] = {{u"international_unit", "", u"mkM"}};
constexpr Row refractions[] = {{u"dioptre", ""}};
constexpr Row fractions[] = {{u"per_mille", "0.1"},
                             {u"ppm", "0.0001"},
                             {u"ppb", "0.0000001"},
                             {u"basis_point", "0.01"},
                             {u"percentage_point", "1"}};
constexpr Row counts[] = {{u"pair", ""}, {u"ream", "250"}, {u"quire", "12.5"}};

constexpr Group groups[] = {
    {u"m", u"Length", true, lengths},
    {u"m2", u"Area", false, areas},
    {u"m3", u"Volume", false, volumes},
    {u"gram", u"Weight", false, weights},
    {u"second", u"Time", false, times},
    {u"radian", u"Angle", false, angles},
    {u"kelvin", u"Temperature", false, temperatures},
    {u"bit", u"Data", false, data},
    {u"m/second", u"Mechanics", false, speeds},
    {u"m/second2", u"Mechanics", false, accelerations},
    {u"pascal", u"Mechanics", true, pressures},
    {u"joule", u"Mechanics", true, energies},
    {u"joule/second", u"Mechanics", true, powers},
    {u"volt_ampere", u"Mechanics", true, apparentPowers},
    {u"newton", u"Mechanics", true, forces},
    {u"newton_metre", u"Mechanics", true, torques},
    {u"hertz", u"Mechanics", true, frequencies},
    {u"volt", u"Physics", true, voltages},
    {u"coulomb/second", u"Physics", true, currents},
    {u"coulomb", u"Physics", true, charges},
    {u"ohm", u"Physics", true, resistances},
    {u"farad", u"Physics", true, capacitances},
    {u"henry", u"Physics", true, inductances},
    {u"tesla", u"Physics", true, fluxDensities},
    {u"siemens", u"Physics", true, conductances},
    {u"lumen", u"Physics", true, luminousFluxes},
    {u"lux", u"Physics", true, illuminances},
    {u"candela", u"Physics", true, luminousIntensities},
    {u"becquerel", u"Physics", true, activities},
    {u"gray", u"Physics", true, absorbedDoses},
    {u"sievert", u"Physics", true, equivalentDoses},
    {u"mole", u"Physics", true, substances},
    {u"international_unit", u"Physics", true, doses},
    {u"dioptre", u"Physics", true, refractions},
    {u"percent", u"Physics", false, fractions},
    {u"pair", u"Counts", false, counts},
};

// Rates with a name of their own, which are made of two units of the catalogue.
constexpr std::u16string_view namedRates[] = {
    u"km/hour",     u"mile/hour",    u"bit/second",    u"kbit/second",
    u"Mbit/second", u"Gbit/second",  u"mile/gallon",   u"mile/imperial_gallon",
    u"km/litre",    u"litre/minute", u"gallon/minute", u"foot3/minute",
    u"gram/m2",     u"Tbit/second",  u"litre/hour",    u"gallon/hour",
    u"gallon/day",  u"foot/minute",  u"inch/minute",   u"pound/foot3",
};

class EverydayUnits : public UnitBuilder {
public:
    EverydayUnits(UnitRegistry& registry, const Localizer& localizer)
        : UnitBuilder(registry, localizer, Offered::last),
          prefixes_(siPrefixes(localizer)),
          omitted_(localizer.variants(u"phrases.omitted", u"Aliases")) {}

    void addGroup(const Group& group) const {
        for (const Row& row : group.rows) {
            const bool symbol = group.symbols && hasSymbol(row, group.table);
            Unit unit = make({row.id, row.ratio, symbol}, group.base, group.table, true);
            unit.rate = row.rate;
            std::erase_if(unit.phrases, [&](const std::u16string& phrase) { return isOmitted(phrase); });
            add(unit);
            if (!row.prefixes.empty()) addPrefixed(unit, row.prefixes);
        }
    }

    void addNamedRate(std::u16string_view id) const {
        Unit unit;
        unit.id = id;
        unit.phrases = localizer_.variants(unit.id + u".variants", u"Rates");
        unit.format = localizer_.translationOrBase(unit.id + u".format", u"Rates");
        add(unit);
    }

private:
    bool hasSymbol(const Row& row, std::u16string_view table) const {
        const std::u16string key = std::u16string(row.id) + u".symbol";
        return localizer_.base(key, table) != key;
    }

    bool isOmitted(std::u16string_view phrase) const {
        return std::find(omitted_.begin(), omitted_.end(), phrase) != omitted_.end();
    }

    void addPrefixed(const Unit& unit, std::u16string_view symbols) const {
        std::vector<Prefix> wanted;
        for (const Prefix& prefix : prefixes_)
            if (symbols.find(prefix.internationalSymbol) != symbols.npos) wanted.push_back(prefix);
        for (Unit& variant : prefixed(unit, wanted, 10, true)) {
            const std::u16string prefix = variant.id.substr(0, 1);
            if (!unit.rate.empty()) variant.rate = prefix + unit.rate;
            // The micro sign of keyboards, and the letter that stands for it where there is none.
            if (prefix == u"\u03bc" && unit.internationalSymbol)
                for (const char16_t* micro : {u"\u00b5", u"u"})
                    variant.phrases.push_back(micro + *unit.internationalSymbol);
            add(std::move(variant));
        }
    }

    const std::vector<Prefix> prefixes_;
    const std::vector<std::u16string> omitted_;
};

void registerRateWords(UnitManager& manager, const Localizer& localizer) {
    constexpr std::u16string_view table = u"Operations";
    constexpr struct {
        std::u16string_view key;
        RateWord kind;
    } rows[] = {{u"rate.variants", RateWord::per},
                {u"rate_product.variants", RateWord::product},
                {u"rate_lot.variants", RateWord::lot},
                {u"rate_after.variants", RateWord::after},
                {u"article.variants", RateWord::article}};
    for (const auto& row : rows)
        for (const std::u16string& word : localizer.variants(row.key, table)) manager.addRateWord(row.kind, word);
    for (const std::u16string_view unit : {u"hour", u"minute", u"second", u"day", u"month"})
        for (std::u16string& word : localizer.variants(u"per_" + std::u16string(unit) + u".variants", table))
            manager.addRatePrefix(std::move(word), unit);
}

}  // namespace

void registerEverydayUnits(UnitRegistry& registry, const Localizer& localizer) {
    const EverydayUnits units(registry, localizer);
    for (const Group& group : groups) units.addGroup(group);
    for (const std::u16string_view id : namedRates) units.addNamedRate(id);
    UnitManager& manager = registry.manager();
    for (std::u16string& phrase : localizer.variants(u"after_numbers.variants", u"Aliases"))
        manager.restrictToNumbers(std::move(phrase));
    registerRateWords(manager, localizer);
    // "PS ps": the first is noted, the second is what it would be in another case.
    for (const std::u16string& pair : localizer.variants(u"case.variants", u"Aliases")) {
        const std::size_t blank = pair.find(u' ');
        manager.addNote({pair.substr(0, blank), NoteKind::caseDecides, pair.substr(blank + 1)});
    }
    for (const std::u16string& row : localizer.variants(u"homonyms.variants", u"Aliases")) {
        std::vector<std::u16string> words;
        for (std::size_t i = 0, end = 0; i < row.size(); i = end + 1) {
            end = std::min(row.find(u' ', i), row.size());
            words.push_back(row.substr(i, end - i));
        }
        constexpr std::size_t fewest = 3;
        if (words.size() < fewest) continue;
        const bool convertedTo = words[2] == u"in";
        manager.addHomonym({words[0], words[1], convertedTo, {words.begin() + (convertedTo ? 3 : 2), words.end()}});
    }
}

}  // namespace vemo
