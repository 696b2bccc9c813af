// SPDX-License-Identifier: MIT
#include "scripting/js_vemo.h"

namespace vemo {

namespace {

std::u16string joinedText(std::initializer_list<std::u16string_view> parts) {
    std::u16string text;
    for (const std::u16string_view part : parts) text += part;
    return text;
}

}  // namespace

std::optional<std::u16string> JSVemo::setVariable(std::u16string_view name, const Value& value) {
    const std::u16string key = lowercased(trimmed(name));  // as lines write and look up names
    if (key.empty()) return u"setVariable: the name is empty";
    if (value.isEmpty()) return joinedText({u"setVariable: '", key, u"' is given neither an amount nor a unit"});
    context_.setValue(value, key);
    defined_.push_back(joinedText({u"variable ", key}));
    return std::nullopt;
}

std::optional<std::u16string> JSVemo::addUnit(const Unit& unit) {
    const bool known = units_.converter().baseUnit(unit.id) != nullptr;
    const bool converts = unit.baseRatio || unit.baseUnitId;
    if (known && converts && !ownUnits_.contains(unit.id))
        return joinedText({u"addUnit: '", unit.id, u"' is a built-in unit, which keeps its ratio"});
    if (unit.baseRatio && (unit.baseRatio->notANumber() || unit.baseRatio->isZero()))
        return joinedText({u"addUnit: the ratio of '", unit.id, u"' must be a number other than 0"});
    units_.registerUnit(unit, false);
    if (!known) ownUnits_.insert(unit.id);
    defined_.push_back(joinedText({u"unit ", unit.id}));
    return std::nullopt;
}

void JSVemo::addFunction(std::u16string_view id, const std::vector<std::u16string>& phrases,
                         std::shared_ptr<const Function> function) {
    functions_.add(std::u16string(id), phrases, std::move(function));
    defined_.push_back(joinedText({u"function ", id}));
    // Here the words of the phrases, lower-cased, become proposals of kind 10.
}

}  // namespace vemo
