// SPDX-License-Identifier: MIT
#include "evaluation/written_numbers.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace vemo {

namespace {

constexpr std::size_t digitsOfAGroup = 3;
constexpr std::size_t digitsOfCents = 2;

bool isDigit(char16_t c) {
    return digitValue(c) >= 0;
}

// True for digits with one decimal separator among them at the most.
bool isPlainNumber(std::u16string_view literal, std::u16string_view decimalSeparator) {
    const auto other = std::find_if_not(literal.begin(), literal.end(), isDigit);
    return other == literal.end() ||
           (decimalSeparator == std::u16string_view(&*other, 1) && std::all_of(other + 1, literal.end(), isDigit));
}

// The lengths of the runs of digits in a text.
std::vector<std::size_t> groupsOf(std::u16string_view text) {
    std::vector<std::size_t> groups;
    bool inside = false;
    for (const char16_t c : text) {
        if (isDigit(c)) {
            if (!inside) groups.push_back(0);
            ++groups.back();
        }
        inside = isDigit(c);
    }
    return groups;
}

bool areThrees(const std::vector<std::size_t>& groups) {
    return groups.front() <= digitsOfAGroup &&
           std::all_of(groups.begin() + 1, groups.end(), [](std::size_t size) { return size == digitsOfAGroup; });
}

// True for groups that are set off by another mark than the locale's: "1.250" before a decimal comma in French, which
// groups with blanks.
bool hasForeignGroups(std::u16string_view whole, const LocaleInfo& locale) {
    const std::size_t mark = whole.find_first_of(u".,");
    return mark != whole.npos && whole.substr(mark, 1) != locale.groupingSeparator;
}

}  // namespace

bool isDigits(std::u16string_view text, std::size_t shortest, std::size_t longest) {
    return text.size() >= shortest && text.size() <= longest && std::all_of(text.begin(), text.end(), isDigit);
}

bool isYear(std::u16string_view text) {
    return isDigits(text, 4, 4) && (text.starts_with(u"19") || text.starts_with(u"20") || text.starts_with(u"21"));
}

bool isOddlyJoined(std::u16string_view literal, const LocaleInfo& locale) {
    if (isPlainNumber(literal, locale.decimalSeparator) || literal.find_first_of(u"_/") != literal.npos) return false;
    const std::size_t point = literal.find(locale.decimalSeparator);
    const std::u16string_view whole = literal.substr(0, point);
    if (point != literal.npos) {
        const std::u16string_view decimals = literal.substr(point + locale.decimalSeparator.size());
        if (groupsOf(decimals).size() > 1 || (!decimals.empty() && isWhitespace(decimals.front()))) return true;
        if (hasForeignGroups(whole, locale)) return true;
    }
    for (std::size_t i = 1; i < whole.size(); ++i)
        if (!isDigit(whole[i]) && !isDigit(whole[i - 1]) && i + 1 < whole.size()) return true;  // a comma and a blank
    const std::vector<std::size_t> groups = groupsOf(whole);
    if (groups.size() < 2) return false;
    // Lakhs and crores are grouped in twos.
    const bool twos = groups.front() <= digitsOfAGroup && groups.back() == digitsOfAGroup &&
                      std::all_of(groups.begin() + 1, groups.end() - 1, [](std::size_t size) { return size == 2; });
    return !areThrees(groups) && !twos;
}

std::optional<DecimalNumber> foreignAmount(std::u16string_view literal, const LocaleInfo& locale) {
    const std::size_t mark = literal.find_last_of(u".,");
    if (mark == literal.npos || mark == 0 || !isDigits(literal.substr(mark + 1), digitsOfCents, digitsOfCents))
        return std::nullopt;
    const std::u16string_view whole = literal.substr(0, mark);
    if (literal.substr(mark, 1) == locale.decimalSeparator && !hasForeignGroups(whole, locale)) return std::nullopt;
    if (whole.find(literal[mark]) != whole.npos || !isDigit(whole.front())) return std::nullopt;
    const std::vector<std::size_t> groups = groupsOf(whole);
    if (groups.size() > 1 && !areThrees(groups)) return std::nullopt;
    std::u16string digits;
    std::copy_if(whole.begin(), whole.end(), std::back_inserter(digits), isDigit);
    return DecimalNumber::parse(digits.append(u".").append(literal.substr(mark + 1)), u".");
}

}  // namespace vemo
