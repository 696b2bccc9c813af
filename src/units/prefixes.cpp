// SPDX-License-Identifier: MIT
#include "units/prefixes.h"

#include <span>

#include "scanning/words/localizer.h"

namespace vemo {

namespace {

struct PrefixRow {
    std::u16string_view key;
    std::u16string_view symbol;
    int factor;
};

constexpr PrefixRow siRows[] = {
    {u"yocto", u"y", -24}, {u"zepto", u"z", -21},     {u"atto", u"a", -18}, {u"femto", u"f", -15}, {u"pico", u"p", -12},
    {u"nano", u"n", -9},   {u"micro", u"\u03bc", -6}, {u"milli", u"m", -3}, {u"centi", u"c", -2},  {u"deci", u"d", -1},
    {u"deca", u"da", 1},   {u"hecto", u"h", 2},       {u"kilo", u"k", 3},   {u"mega", u"M", 6},    {u"giga", u"G", 9},
    {u"tera", u"T", 12},   {u"peta", u"P", 15},       {u"exa", u"E", 18},   {u"zetta", u"Z", 21},  {u"yotta", u"Y", 24},
};

constexpr PrefixRow iecRows[] = {
    {u"kibi", u"Ki", 1}, {u"mebi", u"Mi", 2}, {u"gibi", u"Gi", 3}, {u"tebi", u"Ti", 4},
    {u"pebi", u"Pi", 5}, {u"exbi", u"Ei", 6}, {u"zebi", u"Zi", 7}, {u"yobi", u"Yi", 8},
};

std::vector<Prefix> translated(std::span<const PrefixRow> rows, std::u16string_view table, const Localizer& localizer) {
    std::vector<Prefix> prefixes;
    prefixes.reserve(rows.size());
    for (const PrefixRow& row : rows) {
        prefixes.push_back({localizer.variants(std::u16string(row.key) + u".prefix", table), std::u16string(row.symbol),
                            localizer.translationOrBase(std::u16string(row.key) + u".symbol", table), row.factor});
    }
    return prefixes;
}

}  // namespace

std::vector<Prefix> siPrefixes(const Localizer& localizer) {
    return translated(siRows, u"SIPrefixes", localizer);
}
std::vector<Prefix> iecPrefixes(const Localizer& localizer) {
    return translated(iecRows, u"IECPrefixes", localizer);
}

}  // namespace vemo
