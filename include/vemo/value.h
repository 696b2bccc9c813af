// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vemo/decimal_number.h"
#include "vemo/time.h"

namespace vemo {

// The attributes a value can carry. Each key has one type of value, given here.
enum class Attribute : std::uint8_t {
    decimal,      // number: the magnitude
    unit,         // text: id of the unit, "percent" for a percentage
    date,         // date: an instant
    timeZone,     // time zone
    nsystem,      // text: "hex", "oct", "bin", "sci", "fraction", or the least number of fraction digits shown; absent
                  // means decimal notation
    scale,        // text: id of a scale word
    operation,    // text: id of an operator
    function,     // text: id of a function
    opPriority,   // number: priority override of an operator
    type,         // text: an element type code
    parenthesis,  // text: "(" or ")"
    assignment,   // number: 1 on an assignment sign
    error,        // text: present, and empty, on what could not be reduced
    precision,    // text: "day", "time" or "weekday", what a date stands for; absent where that is not known. Of a sum
                  // of durations: its months, days and seconds. Of a quantity in several units: the smaller ones
};
inline constexpr std::size_t attributeCount = 14;

// The key's text in descriptions: "decimal", "time_zone", "fn"…
std::u16string_view attributeName(Attribute key);

// An immutable set of attributes. Copying shares; a plain number needs no allocation, and changing
// the number of a quantity allocates nothing either. Safe to read from several threads.
class Value {
public:
    Value() = default;
    explicit Value(const DecimalNumber& decimal);
    Value(Attribute key, std::u16string_view text);
    Value(Attribute key, const DecimalNumber& number);
    explicit Value(Date date);
    explicit Value(TimeZone zone);

    bool isEmpty() const { return mask_ == 0; }
    bool has(Attribute key) const { return (mask_ & bit(key)) != 0; }
    // One bit per attribute present, in the order of `Attribute`.
    std::uint16_t mask() const { return mask_; }
    static constexpr std::uint16_t bit(Attribute key) {
        return static_cast<std::uint16_t>(1u << static_cast<unsigned>(key));
    }

    // Nothing when the key is absent or of another type. A text stays valid as long as this value.
    std::optional<std::u16string_view> string(Attribute key) const { return has(key) ? heldText(key) : std::nullopt; }
    std::optional<DecimalNumber> decimal(Attribute key = Attribute::decimal) const;
    std::optional<Date> date() const;
    const TimeZone* timeZone() const;
    bool isNotANumber() const { return has(Attribute::decimal) && decimal_.notANumber(); }
    // True when the key holds exactly this text.
    bool is(Attribute key, std::u16string_view text) const { return has(key) && heldText(key) == text; }

    // Copies with an attribute set, which must be of the type that the key has, or without one.
    Value with(const DecimalNumber& number, Attribute key = Attribute::decimal) const;
    Value with(std::u16string_view text, Attribute key) const;
    Value with(Date date) const;
    Value with(TimeZone zone) const;
    Value without(Attribute key) const;
    // This value's attributes, then every attribute of `other`, which wins where both have one.
    Value merging(const Value& other) const;

    // True for the same attributes with equal content; not-a-number equals itself.
    bool isEqual(const Value& other) const;
    friend bool operator==(const Value& a, const Value& b) { return a.isEqual(b); }
    std::size_t hash() const;  // equal values hash equal
    // For debugging.
    std::u16string description() const;
    std::u16string shortDescription() const;

private:
    struct Marks;  // every attribute but the number

    std::optional<std::u16string_view> heldText(Attribute key) const;
    Marks& ownMarks();

    [[no_unique_address]] DecimalNumber decimal_;
    std::uint16_t mask_ = 0;  // lies in the number's padding
    std::shared_ptr<const Marks> marks_;
};

// An immutable list of values, oldest first. Appending takes amortised constant time and shares the older part;
// lists with a common beginning compare in time proportional to the rest. Safe to read, and to append to, from
// several threads, each with a list of its own.
class ValuesList {
public:
    // This list with one value more; this one stays as it is.
    [[nodiscard]] ValuesList appending(Value value) const;
    std::size_t size() const;
    bool empty() const { return count_ == 0; }

    // The latest value, and the list without it. The list must not be empty.
    const Value& newest() const;
    void dropNewest();

    // True for the same part of the same storage: a quick way to tell that nothing can differ.
    bool isSameAs(const ValuesList& other) const { return block_ == other.block_ && count_ == other.count_; }
    // True for equal values in the same order.
    bool isEqual(const ValuesList& other) const;
    friend bool operator==(const ValuesList& a, const ValuesList& b) { return a.isEqual(b); }

private:
    struct Block;

    std::shared_ptr<Block> block_;
    std::size_t count_ = 0;  // of the block's values that belong to this list
    std::size_t hash_ = 0;   // of all values: lists that differ are told apart without a look at their blocks
};

}  // namespace vemo
