// SPDX-License-Identifier: MIT
#include "scanning/power_extractor.h"

#include "platform/locale_info.h"
#include "records/number_words.h"
#include "scanning/extraction_priorities.h"
#include "vemo/context.h"

namespace vemo {

namespace {

constexpr std::u16string_view raisedDigits = u"\u2070\u00b9\u00b2\u00b3\u2074\u2075\u2076\u2077\u2078\u2079";
constexpr char16_t raisedMinus = u'\u207b';
constexpr std::size_t mostDigits = 6;

// True after a digit, a closing bracket or a name of an earlier line.
bool followsOperand(std::u16string_view text, std::size_t i, const Context& context) {
    if (i == 0) return false;
    const char16_t before = text[i - 1];
    if (before == u')' || digitValue(before) >= 0) return true;
    std::size_t start = i;
    while (start > 0 && isLetter(text[start - 1])) --start;
    return start < i && context.getVariable(lowercased(text.substr(start, i - start)));
}

}  // namespace

void PowerExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'!') {
            const bool more = i + 1 < text.size() && (text[i + 1] == u'=' || text[i + 1] == u'!' ||
                                                      isLetter(text[i + 1]) || digitValue(text[i + 1]) >= 0);
            if (more || !followsOperand(text, i, context)) continue;
            result.push_back({{i, 1},
                              priority::usual,
                              0,
                              makeElement(Value(Attribute::type, number_word::factorial), AttributedText(u"!"))});
        } else if (c >= raisedDigits[2] && (c == raisedMinus || raisedDigits.find(c) != raisedDigits.npos)) {
            const std::size_t start = i;
            std::int64_t exponent = 0;
            if (c == raisedMinus) ++i;
            const std::size_t digits = i;
            for (; i < text.size() && raisedDigits.find(text[i]) != raisedDigits.npos; ++i)
                exponent = exponent * 10 + static_cast<std::int64_t>(raisedDigits.find(text[i]));
            const std::size_t end = i--;
            if (end == digits || end - digits > mostDigits || !followsOperand(text, start, context)) continue;
            const auto number = DecimalNumber::fromInt64(c == raisedMinus ? -exponent : exponent);
            result.push_back({{start, end - start},
                              priority::usual,
                              0,
                              makeElement(Value(number).with(number_word::power, Attribute::type),
                                          AttributedText(text.substr(start, end - start)))});
        }
    }
}

}  // namespace vemo
