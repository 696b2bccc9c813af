// SPDX-License-Identifier: MIT
#include "scanning/vocabulary_extractors.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>

#include "evaluation/operator_collection.h"
#include "platform/locale_info.h"
#include "scanning/extraction_priorities.h"
#include "scanning/fraction_extractor.h"
#include "scanning/mark_extractors.h"
#include "scanning/number_parsers.h"
#include "units/unit_manager.h"
#include "vemo/context.h"

namespace vemo {

namespace {

// A candidate whose value is the id stored under the phrase.
Extraction phraseExtraction(std::u16string_view text, const PhraseMatch<std::u16string>& match, Attribute attribute,
                            RunType type) {
    return {match.range, priority::usual, 0,
            makeElement(Value(attribute, match.object), AttributedText(match.range.in(text), type))};
}

// True for a text that ends with a sign of money and digits: "$20".
bool endsWithMoney(std::u16string_view text) {
    const std::size_t place = text.find_last_not_of(u"0123456789.,");
    return place != text.npos && u_charType(text[place]) == U_CURRENCY_SYMBOL;
}

bool endsWithNumber(std::u16string_view text) {
    if (text.size() > 1 && text.back() == u'_') text.remove_suffix(1);
    return !text.empty() && (digitValue(text.back()) >= 0 || isFractionSign(text.back()));
}

// True when nothing but a sign or a label stands before the number at the end.
bool isAloneNumber(std::u16string_view text) {
    const std::size_t label = text.rfind(u':');
    std::u16string_view rest = trimmed(label == text.npos ? text : text.substr(label + 1));
    if (!rest.empty() && (rest.front() == u'-' || rest.front() == u'+')) rest = trimmed(rest.substr(1));
    const std::vector<DecimalLiteral> literals = decimalLiterals(rest);
    if (literals.size() == 1 && literals[0].digits.length == rest.size()) return true;
    // "3E2 K"
    return literals.size() == 2 && literals[0].digits.location == 0 && literals[1].whole.end() == rest.size() &&
           literals[1].whole.location == literals[0].digits.end() + 1 &&
           (rest[literals[0].digits.end()] | 0x20) == u'e';
}

}  // namespace

// True for a sign that is written twice but stands alone: "2**10" is one operator only because both sides touch it.
bool OperatorExtractor::isLooseDouble(std::u16string_view text, std::size_t start, std::size_t length) {
    const std::size_t end = start + length;
    return length == 2 && text[start] == text[start + 1] &&
           (start == 0 || isWhitespace(text[start - 1]) || end == text.size() || isWhitespace(text[end]));
}

void OperatorExtractor::prepare() {
    for (const auto& op : operators_.operators()) {
        for (const std::u16string& symbol : op->symbols) {
            symbols_.insert_or_assign(symbol, Value(Attribute::operation, op->id));
            if (symbol.front() < asciiStarts_.size()) asciiStarts_[symbol.front()] = true;
            longestSymbol_ = std::max(longestSymbol_, symbol.size());
        }
    }
}

void OperatorExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    for (std::size_t i = 0; i < text.size();) {
        std::size_t used = 1;
        if (text[i] < asciiStarts_.size() && !asciiStarts_[text[i]]) {
            ++i;
            continue;
        }
        for (std::size_t length = std::min(longestSymbol_, text.size() - i); length > 0; --length) {
            const auto found = symbols_.find(std::u16string_view(text).substr(i, length));
            if (found == symbols_.end() || isLooseDouble(text, i, length)) continue;
            result.push_back({{i, length},
                              priority::operatorSymbol,
                              0,
                              makeElement(found->second, AttributedText(found->first, RunType::operatorSymbol))});
            context.addQuickTypeToken(found->first);
            used = length;
            break;
        }
        i += used;
    }
    for (const auto& match : operators_.phraseDetector().detect(text)) {
        result.push_back(phraseExtraction(text, match, Attribute::operation, RunType::operatorWord));
        context.addQuickTypeToken(match.range.in(text));
    }
}

// The words of operators beside units. Those of the whole line are looked for once, when a unit first asks: a line may
// name a thousand units.
class UnitExtractor::OperatorWords {
public:
    using Match = PhraseMatch<std::u16string>;

    OperatorWords(const PhraseDetector<std::u16string>& operators, std::u16string_view text)
        : operators_(operators), text_(text) {}

    // The operator whose word stands right before the range, or right after it; nothing where there is none.
    std::optional<Match> before(TextRange range) {
        std::size_t end = range.location;
        while (end > 0 && isWhitespace(text_[end - 1])) --end;
        if (!isApart(range)) {
            const auto words = operators_.detect(text_.substr(0, end));
            return words.empty() || words.back().range.end() < end ? std::nullopt : std::optional(words.back());
        }
        const auto after = firstFrom(range.location);
        if (after == all_->begin() || std::prev(after)->range.end() != end) return std::nullopt;
        return *std::prev(after);
    }
    std::optional<Match> after(TextRange range) {
        std::size_t start = range.end();
        while (start < text_.size() && isWhitespace(text_[start])) ++start;
        if (!isApart(range)) {
            auto words = operators_.detect(text_.substr(start));
            if (words.empty() || words.front().range.location > 0) return std::nullopt;
            words.front().range.location = start;
            return words.front();
        }
        const auto found = firstFrom(start);
        return found == all_->end() || found->range.location != start ? std::nullopt : std::optional(*found);
    }

private:
    using Place = std::vector<Match>::const_iterator;

    // The first word that begins there or later.
    Place firstFrom(std::size_t place) const {
        return std::lower_bound(all_->begin(), all_->end(), place,
                                [](const Match& match, std::size_t at) { return match.range.location < at; });
    }
    // True where no longer operator takes the range in: the words on its sides are then what they are in the line.
    bool isApart(TextRange range) {
        if (!all_) all_ = operators_.detect(text_);
        const Place next = firstFrom(range.location);
        if (next != all_->begin() && std::prev(next)->range.end() > range.location) return false;
        return next == all_->end() || next->range.location >= range.end() || next->range == range;
    }

    const PhraseDetector<std::u16string>& operators_;
    std::u16string_view text_;
    std::optional<std::vector<Match>> all_;
};

void UnitExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    OperatorWords words(operators_.phraseDetector(), text);
    bool temperature = false;
    for (auto& match : units_.phraseDetector().detect(text)) {
        if (isWord(text, match.range, words) || !hasItsPlace(text, match.range, words)) continue;
        if (const auto arc = match.range.length == 1 ? arcUnit(text, match.range.location) : std::nullopt)
            match.object = *arc;
        result.push_back(phraseExtraction(text, match, Attribute::unit, RunType::unit));
        if (displacesOperator(text, match.range, words) || displacesFraction(text, match, words))
            result.back().secondaryPriority = priority::unitOverOperator;
        if (displacesName(text, match.range, context)) result.back().secondaryPriority = priority::unitOverVariable;
        context.addQuickTypeToken(match.range.in(text));
        constexpr std::u16string_view temperatures[] = {u"celsius", u"fahrenheit", u"kelvin", u"rankine"};
        temperature = temperature || std::find(std::begin(temperatures), std::end(temperatures), match.object) !=
                                         std::end(temperatures);
    }
    for (std::size_t k = text.find(u'K'); k != text.npos; k = text.find(u'K', k + 1)) {
        if (!isKelvin(text, k, temperature, words)) continue;
        result.push_back(phraseExtraction(text, {u"kelvin", {k, 1}}, Attribute::unit, RunType::unit));
        result.back().secondaryPriority = priority::unitOverOperator;
    }
    if (!units_.homonyms().empty()) chooseHomonyms(text, result);
}

void UnitExtractor::chooseHomonyms(std::u16string_view text, std::vector<Extraction>& extractions) const {
    // "$50 in pounds": what stands after a conversion word.
    const auto isTarget = [&](const Extraction& extraction) {
        return std::any_of(extractions.begin(), extractions.end(), [&](const Extraction& other) {
            const std::size_t end = other.range.end();
            return other.element->value.is(Attribute::operation, u"in") && end <= extraction.range.location &&
                   trimmed(text.substr(end, extraction.range.location - end)).empty();
        });
    };
    for (Extraction& extraction : extractions) {
        if (!extraction.element->value.has(Attribute::unit)) continue;
        const std::u16string& written = extraction.element->text();
        for (const UnitManager::Homonym& homonym : units_.homonyms()) {
            if (homonym.phrase.size() != written.size() || homonym.phrase != lowercased(written)) continue;
            if (homonym.convertedTo && !isTarget(extraction)) continue;
            const bool beside = std::any_of(extractions.begin(), extractions.end(), [&](const Extraction& other) {
                const auto unit = other.element->value.string(Attribute::unit);
                return unit && std::find(homonym.companions.begin(), homonym.companions.end(), *unit) !=
                                   homonym.companions.end();
            });
            if (!beside) continue;
            extraction.element = makeElement(Value(Attribute::unit, homonym.unit), extraction.element->attributedText);
            break;  // what was written went with the element
        }
    }
}

// True for a K after a number and a blank, on a line with a temperature or with nothing else, and for one that a
// temperature is converted from or to: elsewhere it is a thousand.
bool UnitExtractor::isKelvin(std::u16string_view text, std::size_t k, bool temperature, OperatorWords& words) const {
    if (k + 1 < text.size() && (isLetter(text[k + 1]) || digitValue(text[k + 1]) >= 0)) return false;
    const std::u16string_view before = trimmed(text.substr(0, k)), after = trimmed(text.substr(k + 1));
    const bool afterNumber = endsWithNumber(before);
    if (afterNumber && before.size() < k) {
        const bool comment = after.empty() || after.starts_with(u"//") || after.front() == u'"';
        if (temperature || (comment && isAloneNumber(before))) return true;
    }
    if (!temperature) return false;
    const auto last = words.before({k, 1});
    if (last && last->object == u"in") return true;
    if (!afterNumber) return false;
    const auto next = words.after({k, 1});
    return next && next->object == u"in";
}

// True for a word that is a currency's code only in a conversion, and stands in none.
bool UnitExtractor::isWord(std::u16string_view text, TextRange range, OperatorWords& words) const {
    const std::u16string written(range.in(text));
    const std::u16string lower = lowercased(written);
    const bool capitals =
        std::none_of(written.begin(), written.end(), [](char16_t c) { return c >= u'a' && c <= u'z'; });
    if (capitals || !units_.isForConversionsOnly(lower)) return false;
    const auto last = words.before(range);
    if (last && last->object == u"in") return false;
    if (!endsWithNumber(trimmed(text.substr(0, range.location)))) return true;
    const auto next = words.after(range);
    return !next || next->object != u"in";
}

// False for a unit whose name is a word first, unless it stands after a number, a conversion word, or the sign or word
// of a rate.
bool UnitExtractor::hasItsPlace(std::u16string_view text, TextRange range, OperatorWords& words) const {
    if (!units_.isForNumbersOnly(range.in(text))) return true;
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    if (before.empty()) return false;
    const char16_t last = before.back();
    if (last == u')' || last == u'/' || u_charType(last) == U_OTHER_NUMBER || digitValue(last) >= 0) return true;
    if (const auto conversion = words.before(range); conversion && conversion->object == u"in") {
        // "meet in bar 5"
        const std::u16string_view after = trimmed(text.substr(range.end()));
        return !trimmed(text.substr(0, conversion->range.location)).empty() &&
               (after.empty() || digitValue(after.front()) < 0);
    }
    if (before.find_first_of(u"0123456789") == before.npos) return false;
    const auto multipliers = scales_.detect(before);
    const bool multiplied = !multipliers.empty() && multipliers.back().range.end() == before.size();
    return multiplied || units_.isRateWord(before.substr(before.find_last_of(u' ') + 1));
}

// True after a number, where a unit's name is that even if an earlier line gave it a value.
bool UnitExtractor::displacesName(std::u16string_view text, TextRange range, const Context& context) const {
    return context.longestVariableName() > 0 && endsWithNumber(trimmed(text.substr(0, range.location))) &&
           context.getVariable(lowercased(range.in(text)));
}

bool UnitExtractor::displacesOperator(std::u16string_view text, TextRange range, OperatorWords& words) const {
    if (!operators_.phraseDetector().find(lowercased(range.in(text)))) return false;
    // "lb/in", "in/min"
    if (range.location > 0 && text[range.location - 1] == u'/') return true;
    if (range.end() + 1 < text.size() && text[range.end()] == u'/' && isLetter(text[range.end() + 1])) return true;
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    const std::u16string_view after = trimmed(text.substr(range.end()));
    if (!endsWithNumber(before)) {
        // "70 cm in in"
        if (!after.empty()) return false;
        const auto last = words.before(range);
        if (!last || last->object != u"in") return false;
        const std::u16string_view quantity = trimmed(text.substr(0, last->range.location));
        return !quantity.empty() && !endsWithNumber(quantity);
    }
    if (after.empty() || after.front() == u')' || after.front() == u'"') return true;
    if (operators_.isSymbol(after.substr(0, 1))) return true;
    // "a photo 2 in x 2 in $16.99": nobody converts into an amount.
    if (after.size() > 1 && u_charType(after.front()) == U_CURRENCY_SYMBOL && digitValue(after[1]) >= 0)
        return !endsWithMoney(before);
    // "8 in x 10 in"
    if (lowercasedUnit(after.front()) == u'x') {
        const std::u16string_view factor = trimmed(after.substr(1));
        if (!factor.empty() && digitValue(factor.front()) >= 0) return true;
    }
    return words.after(range).has_value();
}

// True for "3 quarters in months". Three quarters of something are no times.
bool UnitExtractor::displacesFraction(std::u16string_view text, const PhraseMatch<std::u16string>& match,
                                      OperatorWords& words) const {
    if (match.object != u"quarter" || !endsWithNumber(trimmed(text.substr(0, match.range.location)))) return false;
    const auto next = words.after(match.range);
    return !next || next->object != u"percent_of";
}

void ScalesExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (const auto& match : scales_.detect(text))
        result.push_back(phraseExtraction(text, match, Attribute::scale, RunType::unit));
}

void PercentageSymbolExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (std::size_t i = text.find(u'%'); i != text.npos; i = text.find(u'%', i + 1))
        result.push_back({{i, 1},
                          priority::usual,
                          0,
                          makeElement(Value(Attribute::unit, u"percent"), AttributedText(u"%", RunType::unit))});
}

void MultiplyXSymbolExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (const TextRange& range : stringRangeDetector_.wordRanges(text)) {
        const std::u16string_view word = range.in(text);
        if (word != u"x" && word != u"X") continue;
        result.push_back({range, priority::multiplicationLetter, 0,
                          makeElement(Value(Attribute::operation, u"*"), AttributedText(word, RunType::operatorWord))});
    }
}

}  // namespace vemo
