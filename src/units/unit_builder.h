// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "units/prefixes.h"
#include "units/unit_catalogue.h"

namespace vemo {

// A unit of the catalogue: what is not in the phrase tables.
struct UnitRow {
    std::u16string_view id;
    std::string_view ratio;        // base units in one of this, "1852/3600" too; empty for a base unit
    bool si = false;               // has a symbol, to which prefixes are joined
    std::u16string_view key = {};  // of the phrases; the id when empty
};

// Makes units of rows and phrase tables, and registers them.
class UnitBuilder {
public:
    // Units are completions like any other, or offered last.
    enum class Offered { always, last };

    UnitBuilder(UnitRegistry& registry, const Localizer& localizer, Offered offered = Offered::always);

    Unit make(const UnitRow& row, std::u16string_view base, std::u16string_view table, bool lowercase) const;
    // Registers the unit with the aliases of its id, and without symbols that are words first.
    void add(Unit unit) const;
    void addAll(std::span<const UnitRow> rows, std::u16string_view base, std::u16string_view table,
                bool lowercase = true) const;
    std::vector<Unit> prefixed(const Unit& unit, const std::vector<Prefix>& prefixes, int factorBase,
                               bool includeNegative) const;

protected:
    UnitRegistry& registry_;
    const Localizer& localizer_;

private:
    std::vector<std::u16string> aliases(const std::u16string& id) const;

    // False for a unit whose symbol would be read as something else; its name is shown instead.
    bool isShown(const Unit& unit) const;

    const std::vector<std::u16string> omittedSymbols_;
    const std::vector<std::u16string> unshownSymbols_;  // those that mean something else after some numbers
    const Offered offered_;
};

}  // namespace vemo
