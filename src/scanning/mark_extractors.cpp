// SPDX-License-Identifier: MIT
#include "scanning/mark_extractors.h"

#include "scanning/extraction_priorities.h"
#include "scanning/fraction_extractor.h"

namespace vemo {

namespace {

constexpr char16_t quote = u'"', apostrophe = u'\'';
constexpr char16_t curvedQuote = u'\u201d', curvedApostrophe = u'\u2019';
constexpr std::u16string_view quoteOpenings = u"\u201c\u201e", apostropheOpenings = u"\u2018\u201a";
constexpr std::u16string_view signs = u"+-*/^()=;,\u00d7\u00f7\u2212";
constexpr std::size_t groupLength = 3;  // digits

bool followsNumber(std::u16string_view text, std::size_t i) {
    return i > 0 && (isDigitAt(text, i - 1) || isFractionSign(text[i - 1]));
}

bool endsQuantity(std::u16string_view text, std::size_t i) {
    return i == text.size() || isWhitespace(text[i]) || signs.find(text[i]) != signs.npos;
}

bool isInches(std::u16string_view text, std::size_t i) {
    return followsNumber(text, i) && endsQuantity(text, i + 1);
}

// Calls `comment(range)` for what stands between two quotation marks, `inches(place)` for those that are inches.
template <class Comment, class Inches>
void readQuotes(std::u16string_view text, Comment comment, Inches inches) {
    std::size_t open = text.npos;
    for (std::size_t i = text.find(quote); i != text.npos; i = text.find(quote, i + 1)) {
        if (open != text.npos) {
            comment(TextRange{open, i + 1 - open});
            open = text.npos;
        } else if (isInches(text, i)) {
            inches(i);
        } else {
            open = i;
        }
    }
}

Extraction unitAt(std::u16string_view text, std::size_t mark, std::u16string_view unit) {
    const auto arc = arcUnit(text, mark);
    return {{mark, 1},
            priority::usual,
            0,
            makeElement(Value(Attribute::unit, arc ? std::u16string_view(*arc) : unit),
                        AttributedText(text.substr(mark, 1), RunType::unit))};
}

}  // namespace

std::optional<std::u16string> arcUnit(std::u16string_view text, std::size_t mark) {
    constexpr std::u16string_view minutes = u"\u2032'\u2019", seconds = u"\u2033\"\u201d";
    constexpr char16_t degrees = u'\u00b0';
    const bool isMinutes = minutes.find(text[mark]) != minutes.npos;
    if (!isMinutes && seconds.find(text[mark]) == seconds.npos) return std::nullopt;
    const auto signBefore = [&](std::size_t end) {
        const std::size_t found = text.substr(0, end).find_last_not_of(u"0123456789., ");
        return found == text.npos ? std::size_t(0) : found;
    };
    std::size_t place = signBefore(mark);
    if (!isMinutes && minutes.find(text[place]) != minutes.npos) place = signBefore(place);
    if (text[place] != degrees) return std::nullopt;
    return isMinutes ? u"arcminute" : u"arcsecond";
}

void QuotedCommentExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    readQuotes(
        text,
        [&](TextRange range) {
            result.push_back(
                {range, priority::comment, 0, makeElement({}, AttributedText(range.in(text), RunType::comment))});
        },
        [](std::size_t) {});
}

bool FeetAndInchesExtractor::isFeet(std::u16string_view text, std::size_t mark) const {
    if (!followsNumber(text, mark)) return false;
    std::size_t digits = 0;
    while (isDigitAt(text, mark + 1 + digits)) ++digits;
    if (digits == 0) return endsQuantity(text, mark + 1);
    const bool groups = locale_.groupingSeparator == u"'" || locale_.groupingSeparator == u"\u2019";
    return !(groups && digits == groupLength);
}

void FeetAndInchesExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    bool quotes = false, opened = false;  // a mark after "size 5" may close these
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == quote) {
            quotes = true;
        } else if (quoteOpenings.find(c) != quoteOpenings.npos ||
                   apostropheOpenings.find(c) != apostropheOpenings.npos) {
            opened = true;
        } else if (c == apostrophe || c == curvedApostrophe) {
            opened = opened || (c == apostrophe && (i == 0 || isWhitespace(text[i - 1])));
            if (!opened && isFeet(text, i)) result.push_back(unitAt(text, i, u"foot"));
        } else if (c == curvedQuote && !opened && isInches(text, i)) {
            result.push_back(unitAt(text, i, u"inch"));
        }
    }
    if (!quotes) return;
    readQuotes(
        text, [](TextRange) {}, [&](std::size_t i) { result.push_back(unitAt(text, i, u"inch")); });
}

}  // namespace vemo
