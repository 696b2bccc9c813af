// SPDX-License-Identifier: MIT
#include "scripting/js_vemo.h"

#include <cmath>

namespace vemo {

namespace {

std::u16string joinedText(std::initializer_list<std::u16string_view> parts) {
    std::u16string text;
    for (const std::u16string_view part : parts) text += part;
    return text;
}

// True for words that a line can write: with no digit at the beginning, and none of the signs that mean something else
// there.
bool isUsableName(std::u16string_view name) {
    return (name.front() < u'0' || name.front() > u'9') && name.find_first_of(u"+-*/^()=:\"#") == name.npos &&
           name.find(u"//") == name.npos;
}

}  // namespace

// True when nothing of the unit is nothing of its base: no temperature scale.
bool JSVemo::isProportional(std::u16string_view unitId) {
    const auto zero = units_.converter().convert(Value(DecimalNumber()).with(unitId, Attribute::unit),
                                                 *units_.converter().baseUnit(unitId), context_);
    return zero && zero->decimal() && zero->decimal()->isZero();
}

// True for a unit that has the ratio given already, in twelve digits: scripts may have been written before it was built
// in.
bool JSVemo::meansTheSame(const Unit& unit) {
    constexpr double tolerance = 1e-12;
    if (!unit.baseUnitId || !unit.baseRatio || unit.baseRatio->notANumber()) return false;
    const auto own = units_.converter().convert(Value(DecimalNumber::fromInt64(1)).with(unit.id, Attribute::unit),
                                                *unit.baseUnitId, context_);
    if (!own || !own->decimal() || !isProportional(unit.id)) return false;
    const double ratio = own->decimal()->toDouble();
    return std::abs(ratio - unit.baseRatio->toDouble()) <= tolerance * std::abs(ratio);
}

std::optional<std::u16string> JSVemo::setVariable(std::u16string_view name, const Value& value) {
    const std::u16string key = lowercased(trimmed(name));  // as lines write and look up names
    if (key.empty()) return u"setVariable: the name is empty";
    if (!isUsableName(key)) return joinedText({u"setVariable: no line can use the name '", key, u"'"});
    if (value.isEmpty()) return joinedText({u"setVariable: '", key, u"' is given neither an amount nor a unit"});
    context_.setValue(value, key);
    defined_.push_back(joinedText({u"variable ", key}));
    return std::nullopt;
}

std::optional<std::u16string> JSVemo::addUnit(const Unit& unit) {
    const bool known = units_.converter().baseUnit(unit.id) != nullptr;
    const bool converts = unit.baseRatio || unit.baseUnitId;
    const bool builtIn = known && !ownUnits_.contains(unit.id);
    if (builtIn && converts && !meansTheSame(unit))
        return joinedText({u"addUnit: '", unit.id, u"' is a built-in unit, which keeps its ratio"});
    if (unit.baseRatio && (unit.baseRatio->notANumber() || unit.baseRatio->isZero()))
        return joinedText({u"addUnit: the ratio of '", unit.id, u"' must be a number other than 0"});
    Unit own = unit;
    if (builtIn) {
        own.baseRatio.reset();
        own.baseUnitId.reset();
    }
    const std::u16string* base = own.baseUnitId ? units_.converter().baseUnit(*own.baseUnitId) : nullptr;
    if (base && *base != *unit.baseUnitId) {
        const std::u16string resolved = *base;
        const Value ratio = Value(unit.baseRatio.value_or(DecimalNumber::fromInt64(1)));
        const auto inBase =
            isProportional(*unit.baseUnitId)
                ? units_.converter().convert(ratio.with(*unit.baseUnitId, Attribute::unit), resolved, context_)
                : std::nullopt;
        if (!inBase || !inBase->decimal() || inBase->decimal()->notANumber())
            return joinedText(
                {u"addUnit: '", *unit.baseUnitId, u"' can't be the base of '", unit.id, u"'; '", resolved, u"' can"});
        own.baseRatio = inBase->decimal();
        own.baseUnitId = resolved;
    }
    // An amount of a unit without a format is shown with the unit's name.
    if (!own.format && !own.phrases.empty() && !known) own.format = own.phrases.front();
    units_.registerUnit(own, false);
    if (!known) ownUnits_.insert(unit.id);
    defined_.push_back(joinedText({u"unit ", unit.id}));
    return std::nullopt;
}

void JSVemo::addFunction(std::u16string_view id, const std::vector<std::u16string>& phrases,
                         std::shared_ptr<const Function> function) {
    functions_.add(std::u16string(id), phrases, std::move(function));
    defined_.push_back(joinedText({u"function ", id}));
}

}  // namespace vemo
