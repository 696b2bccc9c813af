// SPDX-License-Identifier: MIT
#include "platform/icu_locale.h"

#include <algorithm>
#include <string>

namespace vemo {

namespace {

constexpr std::size_t longestIdentifier = 100;
constexpr std::size_t longestPart = 8;

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isLetterOrDigit(char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
}

}  // namespace

bool isUsableLocale(std::string_view identifier) {
    if (identifier.size() > longestIdentifier) return false;
    const std::size_t at = identifier.find('@');
    const std::string_view keywords = at == identifier.npos ? "" : identifier.substr(at + 1);
    const auto isOfKeyword = [](char c) {
        return isLetterOrDigit(c) || std::string_view("=;_-").find(c) != std::string_view::npos;
    };
    if (!std::all_of(keywords.begin(), keywords.end(), isOfKeyword)) return false;
    std::string_view rest = identifier.substr(0, at);
    for (bool language = true; !rest.empty(); language = false) {
        const std::size_t end = std::min(rest.find_first_of("_-"), rest.size());
        const std::string_view part = rest.substr(0, end);
        if (part.size() > longestPart || !std::all_of(part.begin(), part.end(), language ? isLetter : isLetterOrDigit))
            return false;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    // ICU makes no locale of a keyword without a value, and ends the process where it then needs one.
    return at == identifier.npos || !icu::Locale(std::string(identifier).c_str()).isBogus();
}

icu::Locale icuLocale(std::string_view identifier) {
    const std::string name(identifier.substr(0, identifier.find('.')));
    return isUsableLocale(name) ? icu::Locale(name.c_str()) : icu::Locale::getRoot();
}

}  // namespace vemo
