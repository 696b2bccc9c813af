// SPDX-License-Identifier: MIT
#include "vemo/value.h"

#include <algorithm>
#include <array>
#include <boost/container/small_vector.hpp>
#include <cassert>
#include <variant>

#include "base/hash.h"
#include "base/text.h"

namespace vemo {

namespace {

using Mark = std::variant<std::u16string, DecimalNumber, Date, TimeZone>;

constexpr std::array<std::u16string_view, attributeCount> names{
    u"decimal", u"unit",       u"date", u"time_zone",   u"nsystem",    u"scale", u"operation",
    u"fn",      u"opPriority", u"type", u"parenthesis", u"assignment", u"error", u"date_precision"};

struct MarkText {
    std::u16string operator()(const std::u16string& text) const { return text; }
    std::u16string operator()(const DecimalNumber& number) const { return toUtf16(number.toString()); }
    std::u16string operator()(const Date& date) const {
        return toUtf16(DecimalNumber::fromDouble(date.time_since_epoch().count()).toString());
    }
    std::u16string operator()(const TimeZone& zone) const { return zone.identifier; }
};

struct MarkHash {
    std::size_t operator()(const std::u16string& text) const { return std::hash<std::u16string>{}(text); }
    std::size_t operator()(const DecimalNumber& number) const { return number.hash(); }
    std::size_t operator()(const Date& date) const { return std::hash<double>{}(date.time_since_epoch().count()); }
    std::size_t operator()(const TimeZone& zone) const { return std::hash<std::u16string>{}(zone.identifier); }
};

}  // namespace

std::u16string_view attributeName(Attribute key) {
    return names[static_cast<std::size_t>(key)];
}

// Sorted by key.
struct Value::Marks {
    boost::container::small_vector<std::pair<Attribute, Mark>, 1> entries;

    const Mark* find(Attribute key) const {
        for (const auto& entry : entries)
            if (entry.first == key) return &entry.second;
        return nullptr;
    }

    void set(Attribute key, Mark mark) {
        auto place = std::find_if(entries.begin(), entries.end(), [&](const auto& e) { return e.first >= key; });
        if (place != entries.end() && place->first == key)
            place->second = std::move(mark);
        else
            entries.emplace(place, key, std::move(mark));
    }

    std::uint16_t mask() const {
        std::uint16_t mask = 0;
        for (const auto& entry : entries) mask = static_cast<std::uint16_t>(mask | bit(entry.first));
        return mask;
    }
};

Value::Value(const DecimalNumber& decimal) : decimal_(decimal), mask_(bit(Attribute::decimal)) {}
Value::Value(Attribute key, std::u16string_view text) {
    *this = Value().with(text, key);
}
Value::Value(Attribute key, const DecimalNumber& number) {
    *this = Value().with(number, key);
}
Value::Value(Date date) {
    *this = Value().with(date);
}
Value::Value(TimeZone zone) {
    *this = Value().with(std::move(zone));
}

std::optional<std::u16string_view> Value::heldText(Attribute key) const {
    if (!marks_) return std::nullopt;
    const Mark* mark = marks_->find(key);
    const auto* text = mark ? std::get_if<std::u16string>(mark) : nullptr;
    return text ? std::optional<std::u16string_view>(*text) : std::nullopt;
}

std::optional<DecimalNumber> Value::decimal(Attribute key) const {
    if (!has(key)) return std::nullopt;
    if (key == Attribute::decimal) return decimal_;
    const auto* number = std::get_if<DecimalNumber>(marks_->find(key));
    return number ? std::optional<DecimalNumber>(*number) : std::nullopt;
}

std::optional<Date> Value::date() const {
    if (!has(Attribute::date)) return std::nullopt;
    return std::get<Date>(*marks_->find(Attribute::date));
}

const TimeZone* Value::timeZone() const {
    return has(Attribute::timeZone) ? std::get_if<TimeZone>(marks_->find(Attribute::timeZone)) : nullptr;
}

Value::Marks& Value::ownMarks() {
    auto marks = marks_ ? std::make_shared<Marks>(*marks_) : std::make_shared<Marks>();
    Marks& result = *marks;
    marks_ = std::move(marks);
    return result;
}

Value Value::with(const DecimalNumber& number, Attribute key) const {
    Value result = *this;
    if (key == Attribute::decimal) {
        result.decimal_ = number;
    } else {
        assert(key == Attribute::opPriority || key == Attribute::assignment);
        result.ownMarks().set(key, number);
    }
    result.mask_ = static_cast<std::uint16_t>(result.mask_ | bit(key));
    return result;
}

Value Value::with(std::u16string_view text, Attribute key) const {
    assert(key != Attribute::decimal && key != Attribute::date && key != Attribute::timeZone);
    if (is(key, text)) return *this;
    Value result = *this;
    result.ownMarks().set(key, std::u16string(text));
    result.mask_ = static_cast<std::uint16_t>(result.mask_ | bit(key));
    return result;
}

Value Value::with(Date date) const {
    Value result = *this;
    result.ownMarks().set(Attribute::date, date);
    result.mask_ = static_cast<std::uint16_t>(result.mask_ | bit(Attribute::date));
    return result;
}

Value Value::with(TimeZone zone) const {
    Value result = *this;
    result.ownMarks().set(Attribute::timeZone, std::move(zone));
    result.mask_ = static_cast<std::uint16_t>(result.mask_ | bit(Attribute::timeZone));
    return result;
}

Value Value::without(Attribute key) const {
    if (!has(key)) return *this;
    Value result = *this;
    result.mask_ = static_cast<std::uint16_t>(result.mask_ & ~bit(key));
    if (key == Attribute::decimal) {
        result.decimal_ = {};
        return result;
    }
    Marks& marks = result.ownMarks();
    auto& entries = marks.entries;
    entries.erase(std::remove_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.first == key; }),
                  entries.end());
    if (marks.entries.empty()) result.marks_.reset();
    return result;
}

Value Value::merging(const Value& other) const {
    Value result = *this;
    if (other.has(Attribute::decimal)) result.decimal_ = other.decimal_;
    if (other.marks_ && other.marks_ != marks_) {
        const unsigned ours = marks_ ? marks_->mask() : 0u;
        if ((ours & ~unsigned{other.marks_->mask()}) == 0) {
            result.marks_ = other.marks_;
        } else {
            Marks& marks = result.ownMarks();
            for (const auto& [key, mark] : other.marks_->entries) marks.set(key, mark);
        }
    }
    result.mask_ = static_cast<std::uint16_t>(mask_ | other.mask_);
    return result;
}

bool Value::isEqual(const Value& other) const {
    if (mask_ != other.mask_) return false;
    if (has(Attribute::decimal) && decimal_ != other.decimal_) return false;
    return marks_ == other.marks_ || (marks_ && other.marks_ && marks_->entries == other.marks_->entries);
}

std::size_t Value::hash() const {
    std::size_t result = mask_;
    if (has(Attribute::decimal)) result = combineHashes(result, decimal_.hash());
    if (marks_)
        for (const auto& entry : marks_->entries) result = combineHashes(result, std::visit(MarkHash{}, entry.second));
    return result;
}

std::u16string Value::description() const {
    std::u16string fields;
    if (has(Attribute::decimal)) fields += u"decimal: " + toUtf16(decimal_.toString()) + u"\n";
    if (marks_) {
        for (const auto& [key, mark] : marks_->entries)
            fields += std::u16string(attributeName(key)) + u": " + std::visit(MarkText{}, mark) + u"\n";
    }
    return u"Value: {\n" + indentLines(fields) + u"}";
}

std::u16string Value::shortDescription() const {
    std::u16string result = u"{";
    if (has(Attribute::decimal)) result += u"decimal: " + toUtf16(decimal_.toString());
    if (marks_) {
        for (const auto& [key, mark] : marks_->entries) {
            if (result.size() > 1) result += u", ";
            result += std::u16string(attributeName(key)) + u": " + std::visit(MarkText{}, mark);
        }
    }
    return result + u"}";
}

}  // namespace vemo
