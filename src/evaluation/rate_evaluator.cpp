// SPDX-License-Identifier: MIT
#include "evaluation/rate_evaluator.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "evaluation/structure_evaluators.h"
#include "records/remarks.h"

namespace vemo {

namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

bool isBareUnit(const Element& element) {
    return isUnitAlone(element) && !element.value.has(Attribute::date) &&
           !element.value.is(Attribute::unit, u"percent");
}

bool isQuantity(const Element& element) {
    return element.value.has(Attribute::unit) && element.value.has(Attribute::decimal) &&
           !element.value.is(Attribute::unit, u"percent");
}

// True for 10, 100, 1000 and so on: prices are told per so many.
bool isRoundLot(const DecimalNumber& count) {
    const std::string digits = count.toString();
    return digits.size() > 1 && digits.front() == '1' && digits.find_first_not_of('0', 1) == digits.npos;
}

// One pass over a line, from the right to the left, so that "540 km / 90 km/h" is a quantity over a rate.
class RateReader {
public:
    RateReader(const ElementList& elements, const UnitManager& units, const UnitConverter& converter, Context& context)
        : given_(elements), units_(units), converter_(converter), context_(context) {}

    std::optional<ElementList> read() {
        if (units_.hasRateAfterWords()) readAfterWords();
        for (std::size_t i = list().size(); i-- > 1;)
            if (isBareUnit(list()[i])) i = std::min(i, readRateEndingAt(i));
        if (!units_.ratePrefixes().empty()) readPrefixes();
        for (std::size_t i = 1; i + 1 < list().size(); ++i) readProductAt(i);
        return std::move(changed_);
    }

private:
    const ElementList& list() const { return changed_ ? *changed_ : given_; }

    std::size_t before(std::size_t i) const {
        while (i-- > 0)
            if (!isBlank(list()[i])) return i;
        return none;
    }

    std::size_t after(std::size_t i) const {
        while (++i < list().size())
            if (!isBlank(list()[i])) return i;
        return none;
    }

    std::u16string_view unitAt(std::size_t i) const { return *list()[i].value.string(Attribute::unit); }
    bool isTime(std::u16string_view unit) const {
        const std::u16string* base = converter_.baseUnit(unit);
        return base && *base == u"second";
    }

    void put(std::size_t from, std::size_t to, Value value) {
        const AttributedText text = list().attributedText(from, to);
        if (!changed_) changed_ = given_;
        changed_->replace(from, to - from, makeElement(std::move(value), text));
    }

    bool isRateWordAt(std::size_t i) const { return units_.isRateWord(trimmed(list()[i].text())); }

    // True for a unit that is written together with the word of a rate: "15 € de l'heure".
    static bool hasOwnWord(const Element& element) {
        return element.text().size() > 2 && element.text().find_first_of(u"'\u2019") != std::u16string::npos;
    }

    bool areOfOneKind(std::u16string_view a, std::u16string_view b) const {
        const std::u16string *first = converter_.baseUnit(a), *second = converter_.baseUnit(b);
        return first && second && *first == *second;
    }

    // Reads the rate whose lower unit is at i. Gives the place of what now stands for it, or i for none.
    std::size_t readRateEndingAt(std::size_t i) {
        const std::u16string_view lower = unitAt(i);
        if (!converter_.baseUnit(lower)) return i;
        const bool ownWord = hasOwnWord(list()[i]);
        std::size_t sign = ownWord ? i : before(i);
        DecimalNumber count = DecimalNumber::fromInt64(1);
        const bool counted = !ownWord && sign != none && isNumberWithoutUnit(list()[sign]);
        if (counted) {
            count = *list()[sign].value.decimal();
            if (count.isNegative() || count.isZero()) return i;
            sign = before(sign);
        }
        if (sign == none || sign == 0) return i;
        const bool stroke = list()[sign].text() == u"/" && list()[sign].value.is(Attribute::operation, u"/");
        const std::u16string_view word = trimmed(list()[sign].text());
        // "6 l auf 100 km": the word is another one, but for a round number of another kind.
        const bool lot = counted && !stroke && units_.isRateLotWord(word) && isRoundLot(count) && !isTime(lower);
        if (!stroke && !ownWord) {
            if (!lot && !units_.isRateWord(word)) return i;
            if (counted && !lot && list()[sign].value.has(Attribute::operation)) return i;
            const std::size_t next = after(i);
            if (next != none && isNumberWithoutUnit(list()[next])) return i;  // "im Jahr 2020"
        }
        if (counted && stroke && (isBlank(list()[sign - 1]) || !isRoundLot(count) || isTime(lower))) return i;
        std::size_t left = before(sign);
        // "65 € a la hora": of the two words, the first is a conversion word.
        if (left != none && list()[left].value.is(Attribute::operation, u"in")) {
            const std::size_t upper = before(left);
            const bool money = upper != none && list()[upper].value.has(Attribute::unit) &&
                               converter_.isCurrency(unitAt(upper)) && isTime(lower);
            if (lot || (money && !stroke)) left = upper;
        }
        if (left == none) return i;
        if (!counted && isBareUnit(list()[left]) && isTime(unitAt(left)) && isTime(lower))
            if (const auto place = readConversionOfRate(left, sign, i)) return *place;
        // "5 € a la semana", "10 km a millas": a conversion word is that, but where time is money.
        const auto mayBe = [&](std::u16string_view upper) {
            if (upper == lower || !converter_.baseUnit(upper)) return false;
            if (lot) return !areOfOneKind(upper, lower);
            return !list()[sign].value.is(Attribute::operation, u"in") ||
                   (converter_.isCurrency(upper) && isTime(lower));
        };
        if (isBareUnit(list()[left]) || isQuantity(list()[left])) {
            if (!mayBe(unitAt(left))) return i;
            put(left, i + 1, list()[left].value.with(RateUnit::id(unitAt(left), lower, count), Attribute::unit));
            return left;
        }
        // A sign of money before the number gives its unit away: that of the rate stands after it.
        std::size_t number = left;
        if (list()[number].value.has(Attribute::scale)) number = before(number);
        if (number == none || !isNumberWithoutUnit(list()[number])) return i;
        const std::size_t money = before(number);
        if (money == none || !isBareUnit(list()[money]) || !converter_.isCurrency(unitAt(money)) ||
            !mayBe(unitAt(money)))
            return i;
        const std::u16string id = RateUnit::id(unitAt(money), lower, count);
        put(sign, i + 1, Value(Attribute::unit, id));
        put(money, money + 1, Value());
        return sign;
    }

    // "£32,000 a year per month": of the two times, the first belongs to the rate, and it is asked for in the other.
    std::optional<std::size_t> readConversionOfRate(std::size_t left, std::size_t sign, std::size_t i) {
        const std::size_t rate = before(left);
        const bool isRate = rate != none && (isOperator(list()[rate], u"/") || isRateWordAt(rate));
        std::size_t upper = isRate ? before(rate) : none;
        if (upper != none && isNumberWithoutUnit(list()[upper])) upper = before(upper);
        if (upper == none || !(isBareUnit(list()[upper]) || isQuantity(list()[upper])) || isTime(unitAt(upper)) ||
            !converter_.baseUnit(unitAt(upper)))
            return std::nullopt;
        // "$25 an hour per week" asks for the hours of work, which are not told.
        const std::u16string_view asked = unitAt(left);
        if (asked == u"hour" || asked == u"minute" || asked == u"second") {
            remarksOf(context_).note(NoteKind::notConverted, list().trimmedRangeOf(sign, i + 1));
            return i;
        }
        const std::u16string id = RateUnit::id(unitAt(upper), unitAt(i), DecimalNumber::fromInt64(1));
        put(i, i + 1, Value(Attribute::unit, id));
        put(sign, sign + 1, Value(Attribute::operation, u"in"));
        return sign;
    }

    // "1時間につき1000円", "100gあたり350円": what the rate is told of stands first.
    void readAfterWords() {
        for (std::size_t i = 1; i + 1 < list().size(); ++i) {
            if (!units_.isRateAfterWord(trimmed(list()[i].text()))) continue;
            std::size_t left = before(i);
            const std::size_t number = after(i);
            if (left == none || number == none || !list()[left].value.has(Attribute::unit)) continue;
            const std::u16string lower(unitAt(left));
            DecimalNumber count = list()[left].value.decimal().value_or(DecimalNumber::fromInt64(1));
            const std::size_t counted = before(left);
            if (isBareUnit(list()[left]) && counted != none && isNumberWithoutUnit(list()[counted]))
                count = *list()[left = counted].value.decimal();
            std::size_t unit = number;
            while (unit != none && (isNumberWithoutUnit(list()[unit]) || list()[unit].value.has(Attribute::scale)))
                unit = after(unit);
            if (unit == none || unit == number || !isBareUnit(list()[unit]) || count.isNegative() || count.isZero() ||
                !converter_.baseUnit(lower) || !converter_.baseUnit(unitAt(unit)) || unitAt(unit) == lower)
                continue;
            const std::u16string id = RateUnit::id(unitAt(unit), lower, count);
            put(unit, unit + 1, Value(Attribute::unit, id));
            put(left, i + 1, Value());
            i = left;
        }
    }

    // "時速60キロ": kilos of speed are kilometres. And "秒速メートル", to convert into.
    void readPrefixes() {
        for (std::size_t i = 0; i + 1 < list().size(); ++i) {
            if (!list()[i].value.isEmpty()) continue;
            const std::size_t unit = isNumberWithoutUnit(list()[i + 1]) ? i + 2 : i + 1;
            if (unit == list().size() || !isBareUnit(list()[unit])) continue;
            const std::u16string_view words = trimmed(list()[i].text());
            for (const auto& [word, time] : units_.ratePrefixes()) {
                if (!words.ends_with(word)) continue;
                const std::u16string_view own = unitAt(unit);
                const std::u16string_view upper = own == u"kgram" ? std::u16string_view(u"km") : own;
                const bool speed = word.ends_with(u"速");
                if (!converter_.baseUnit(upper) || (speed && !converter_.isConvertible(upper, u"m"))) continue;
                const std::u16string id = RateUnit::id(upper, time, DecimalNumber::fromInt64(1));
                put(unit == i + 1 && words == word ? i : unit, unit + 1, Value(Attribute::unit, id));
                break;
            }
        }
    }

    bool isAmountOf(std::size_t i, std::u16string_view unit) const {
        return i != none && (isQuantity(list()[i]) || isBareUnit(list()[i])) &&
               converter_.isConvertible(unitAt(i), unit);
    }

    // The unit of the amount that begins there, be it a number or a sign of money.
    std::size_t unitOfAmount(std::size_t i) const {
        for (int steps = 0; i != none && steps < 3; ++steps, i = after(i))
            if (list()[i].value.has(Attribute::unit))
                return i;
            else if (!isNumberWithoutUnit(list()[i]) && !list()[i].value.has(Attribute::scale) &&
                     !list()[i].value.isEmpty())
                break;
        return none;
    }

    // Makes a product of a quantity and a rate of it, in either order, with a word such as "at" between them.
    void readProductAt(std::size_t i) {
        // A conversion word, too: nobody converts into an amount ("100 horas a 65 €/hora").
        const bool converts = list()[i].value.is(Attribute::operation, u"in");
        if (!list()[i].value.isEmpty() && !converts) return;
        std::u16string_view words = trimmed(list()[i].text());
        const bool article = words.find(u' ') != words.npos && units_.isArticle(words.substr(words.rfind(u' ') + 1));
        if (article) words = trimmed(words.substr(0, words.rfind(u' ')));
        if (!units_.isRateProductWord(words)) return;
        const std::size_t left = before(i);
        const std::size_t right = article ? after(i) : unitOfAmount(after(i));
        if (left == none || right == none || !list()[left].value.has(Attribute::unit) ||
            !list()[right].value.has(Attribute::unit))
            return;
        const auto leftRate = converter_.rate(unitAt(left)), rightRate = converter_.rate(unitAt(right));
        if (leftRate.has_value() == rightRate.has_value()) return;
        if (converts && (leftRate || (after(i) == right && !isQuantity(list()[right])))) return;
        // "240 miles at 60 mph": how long it takes.
        if (!leftRate && !article && isAmountOf(left, rightRate->upper) && !isAmountOf(left, rightRate->lower))
            return put(i, i + 1, Value(Attribute::operation, u"/"));
        const bool fits = leftRate ? isAmountOf(right, leftRate->lower) : isAmountOf(left, rightRate->lower);
        if (!fits) return;
        if (article) {
            if (!isBareUnit(list()[right])) return;
            put(right, right + 1, list()[right].value.with(DecimalNumber::fromInt64(1)));
        }
        put(i, i + 1, Value(Attribute::operation, u"*"));
    }

    const ElementList& given_;
    const UnitManager& units_;
    const UnitConverter& converter_;
    Context& context_;
    std::optional<ElementList> changed_;
};

}  // namespace

std::optional<ElementList> RateEvaluator::evaluate(const ElementList& elements, Context& context,
                                                   const EvaluationContext&) const {
    return RateReader(elements, units_, converter_, context).read();
}

}  // namespace vemo
