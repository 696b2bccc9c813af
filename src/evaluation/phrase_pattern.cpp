// SPDX-License-Identifier: MIT
#include "evaluation/phrase_pattern.h"

#include <algorithm>
#include <utility>

#include "evaluation/element_tests.h"

namespace vemo {

namespace {

using Kind = PhrasePattern::Kind;
using Piece = PhrasePattern::Piece;

constexpr std::size_t mostWordings = 512;  // of the words between two slots
constexpr int mostSteps = 4096;            // for a line that could be taken apart in many ways
constexpr std::u16string_view dots = u"\u2026";

constexpr struct {
    std::u16string_view name;
    Kind kind;
} slots[] = {{u"value", Kind::value},     {u"number", Kind::number}, {u"quantity", Kind::quantity},
             {u"percent", Kind::percent}, {u"date", Kind::date},     {u"unit", Kind::unit},
             {u"tail", Kind::tail}};

Kind kindOf(std::u16string_view name) {
    while (!name.empty() && digitValue(name.back()) >= 0) name.remove_suffix(1);
    const auto* row = std::find_if(std::begin(slots), std::end(slots), [&](const auto& s) { return s.name == name; });
    return row == std::end(slots) ? Kind::operation : row->kind;
}

std::uint64_t bitOf(char16_t letter) {
    return std::uint64_t(1) << (lowercasedUnit(letter) % 64);
}

// Lower case, without blanks and signs of punctuation at the ends.
std::u16string wording(std::u16string_view text) {
    const auto isOutside = [](char16_t c) { return isWhitespace(c) || c == u',' || c == u';' || c == u'?'; };
    while (!text.empty() && isOutside(text.front())) text.remove_prefix(1);
    while (!text.empty() && isOutside(text.back())) text.remove_suffix(1);
    return lowercased(text);
}

bool partsWords(char16_t before, char16_t after) {
    return !isLetter(before) || !isLetter(after) || isCjk(before) || isCjk(after);
}

// The end of the first of the words that stand there, each as a whole word; npos for none.
std::size_t endOfWords(std::u16string_view text, std::size_t from, bool anywhere, bool toEnd,
                       const std::vector<std::u16string>& choice) {
    for (std::size_t i = from; i <= (anywhere ? text.size() : from); ++i) {
        if (i > 0 && i < text.size() && !partsWords(text[i - 1], text[i])) continue;
        for (const std::u16string& words : choice) {
            const std::size_t end = i + words.size();
            if (text.substr(i, words.size()) == words &&
                (end == text.size() || (!toEnd && partsWords(text[end - 1], text[end]))))
                return end;
        }
    }
    return text.npos;
}

bool holds(std::u16string_view text, const Piece& piece) {
    std::size_t end = 0;
    for (std::size_t i = 0; i < piece.words.size(); ++i) {
        const bool last = i + 1 == piece.words.size();
        end = endOfWords(text, end, i > 0 || piece.openBefore, last && !piece.openAfter, piece.words[i]);
        if (end == text.npos) return false;
    }
    return true;
}

bool isPercent(const Element& element) {
    return element.value.is(Attribute::unit, u"percent");
}

bool isMeasure(const Element& element) {
    return isUnitAlone(element) && !isPercent(element);
}

// Words, or what stands for nothing where dots are.
bool isIdle(const Element& element) {
    const Value& value = element.value;
    return value.isEmpty() || isMeasure(element) || (value.has(Attribute::operation) && hasLetter(element.text()));
}

// One line against one pattern: every slot takes as little as it can.
class Search {
public:
    Search(const PhrasePattern::Line& line, const std::vector<Piece>& pieces)
        : elements_(line.elements), end_(line.end), pieces_(pieces), ranges_(pieces.size()) {}

    bool from(std::size_t piece, std::size_t i) {
        if (piece < pieces_.size() && pieces_[piece].kind == Kind::value) return value(piece, i);
        if (piece < pieces_.size() && pieces_[piece].kind == Kind::idle) return idle(piece, i);
        while (i < end_ && isBlank(elements_[i])) ++i;
        if (piece == pieces_.size()) return i == end_;
        if (pieces_[piece].kind == Kind::tail)
            return (i == end_ || elements_[i].value.has(Attribute::operation)) && take(piece, i, end_);
        if (i == end_ || --steps_ < 0) return false;
        const Element& element = elements_[i];
        switch (pieces_[piece].kind) {
            case Kind::words:
                return words(piece, i);
            case Kind::number:
                return isNumberWithoutUnit(element) && (isBeforeUnit(piece) || isBeforeWords(piece) || !isCut(i + 1)) &&
                       take(piece, i, i + 1);
            case Kind::date:
                return element.value.has(Attribute::date) && take(piece, i, i + 1);
            case Kind::unit:
                return isMeasure(element) && take(piece, i, i + 1);
            case Kind::percent:
                return measured(piece, i, isPercent);
            case Kind::quantity:
                return measured(piece, i, isMeasure) || sign(piece, i);
            default:
                return isOperator(element, pieces_[piece].name) && take(piece, i, i + 1);
        }
    }

    std::vector<ElementRange> ranges() && { return std::move(ranges_); }

private:
    bool take(std::size_t piece, std::size_t begin, std::size_t end) {
        ranges_[piece] = {begin, end - begin};
        return from(piece + 1, end);
    }

    bool value(std::size_t piece, std::size_t i) {
        bool any = false;
        const bool last = piece + 1 == pieces_.size();
        for (std::size_t k = i; k < end_; ++k) {
            any = any || elements_[k].value.has(Attribute::decimal) || elements_[k].value.has(Attribute::date);
            const bool ends = any && !last && !isBlank(elements_[k]) && (isBeforeWords(piece) || !isCut(k + 1));
            if (ends && take(piece, i, k + 1)) return true;
        }
        return any && last && take(piece, i, end_);
    }

    bool isBeforeUnit(std::size_t piece) const {
        return piece + 1 < pieces_.size() && pieces_[piece + 1].kind == Kind::unit;
    }

    // The unit may be the first of these words: "250 um 12 %", "10 to 15 % change".
    bool isBeforeWords(std::size_t piece) const {
        return piece + 1 < pieces_.size() && pieces_[piece + 1].kind == Kind::words && !pieces_[piece + 1].openBefore;
    }

    // A number, or a scale such as "million", stands before, and its scale or unit after.
    bool isCut(std::size_t i) const {
        const std::size_t next = neighbourOf(elements_, i - 1, 1);
        const Value& before = elements_[i - 1].value;
        if (next >= end_ || elements_[next].value.has(Attribute::decimal) ||
            (!isNumberWithoutUnit(elements_[i - 1]) && !before.has(Attribute::scale)))
            return false;
        if (elements_[next].value.has(Attribute::scale)) return true;
        // The sign of another amount cuts none.
        const bool sign = next + 1 < end_ && isNumberWithoutUnit(elements_[next + 1]);
        return elements_[next].value.has(Attribute::unit) && (!sign || next == i);
    }

    bool idle(std::size_t piece, std::size_t i) {
        for (std::size_t k = i; !take(piece, i, k); ++k)
            if (k == end_ || !isIdle(elements_[k])) return false;
        return true;
    }

    bool words(std::size_t piece, std::size_t i) {
        const Piece& words = pieces_[piece];
        const bool open = words.openBefore || words.words.size() > 1;
        const std::size_t longest = words.words.front().front().size() + 2;
        std::u16string text;
        std::vector<std::size_t> ends;
        for (std::size_t k = i; k < end_ && (open || text.size() <= longest); ++k) {
            const Value& value = elements_[k].value;
            if (open && (value.has(Attribute::decimal) || value.has(Attribute::date) || isPercent(elements_[k]))) break;
            text += elements_[k].text();
            if (!holds(wording(text), words)) continue;
            ends.push_back(k + 1);
            if (!words.openAfter) continue;
            for (++k; k < end_ && isIdle(elements_[k]); ++k) ends.push_back(k + 1);
            break;
        }
        // Dots stand for as little as they can, but of words the longest are taken.
        if (!words.openAfter) std::reverse(ends.begin(), ends.end());
        return std::any_of(ends.begin(), ends.end(), [&](std::size_t end) { return take(piece, i, end); });
    }

    // A number with such a unit, in one element or two.
    bool measured(std::size_t piece, std::size_t i, bool (*isUnit)(const Element&)) {
        const Value& value = elements_[i].value;
        if (!value.has(Attribute::decimal)) return false;
        if (value.has(Attribute::unit))
            return isPercent(elements_[i]) == (isUnit == isPercent) && take(piece, i, i + 1);
        const std::size_t next = neighbourOf(elements_, i, 1);
        return next < end_ && isUnitAlone(elements_[next]) && isUnit(elements_[next]) && take(piece, i, next + 1);
    }

    // A sign of money before its number.
    bool sign(std::size_t piece, std::size_t i) {
        if (!isMeasure(elements_[i])) return false;
        const std::size_t number = neighbourOf(elements_, i, 1);
        return number < end_ && isNumberWithoutUnit(elements_[number]) && take(piece, i, number + 1);
    }

    const ElementList& elements_;
    const std::size_t end_;
    const std::vector<Piece>& pieces_;
    std::vector<ElementRange> ranges_;
    int steps_ = mostSteps;
};

// The words between two slots, with every choice in brackets: all the ways of writing them.
class Wordings {
public:
    bool empty() const { return all_.empty(); }
    std::vector<std::u16string> taken() { return std::exchange(all_, {}); }

    // False for too many.
    bool add(std::u16string_view choices) {
        std::vector<std::u16string> longer;
        for (bool more = true; more;) {
            const std::size_t bar = choices.find(u'|');
            const std::u16string_view choice = trimmed(choices.substr(0, bar));
            more = bar != choices.npos;
            if (more) choices.remove_prefix(bar + 1);
            if (all_.empty()) longer.emplace_back(choice);
            for (const std::u16string& begun : all_) {
                const bool blank = !begun.empty() && !choice.empty() && !isCjk(choice.front());
                longer.push_back(begun + (blank ? u" " : u"") + std::u16string(choice));
            }
        }
        all_ = std::move(longer);
        return all_.size() <= mostWordings;
    }

private:
    std::vector<std::u16string> all_;
};

}  // namespace

std::optional<PhrasePattern> PhrasePattern::parsed(std::u16string_view text) {
    PhrasePattern pattern;
    Wordings wordings;
    Piece piece;          // of words
    bool dotted = false;  // dots stand right before
    const auto endChoice = [&] {
        if (wordings.empty()) return true;
        std::vector<std::u16string> words = wordings.taken();
        std::stable_sort(words.begin(), words.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
        std::uint64_t letters = 0;
        for (const std::u16string& word : words) letters |= word.empty() ? 0 : bitOf(word.front());
        pattern.letters_.push_back(letters);
        if (piece.words.empty()) piece.openBefore = dotted;
        dotted = false;
        piece.words.push_back(std::move(words));
        return !piece.words.back().back().empty();
    };
    const auto endWords = [&] {
        if (!endChoice()) return false;
        piece.openAfter = dotted;
        if (!piece.words.empty())
            pattern.pieces_.push_back(std::exchange(piece, {}));
        else if (dotted)
            pattern.pieces_.push_back({Kind::idle});
        dotted = false;
        return true;
    };
    for (text = trimmed(text); !text.empty(); text = trimmed(text)) {
        if (text.starts_with(dots)) {
            text.remove_prefix(dots.size());
            if (!endChoice()) return std::nullopt;
            dotted = true;
            continue;
        }
        const bool slot = text.front() == u'{', choice = text.front() == u'(';
        std::size_t end = text.find_first_of(slot ? u"}" : choice ? u")" : u"{( \u2026");
        if (end == text.npos && (slot || choice)) return std::nullopt;
        end = std::min(end, text.size());
        const std::u16string_view inside = text.substr(slot || choice ? 1 : 0, end - (slot || choice ? 1 : 0));
        text.remove_prefix(slot || choice ? end + 1 : end);
        if (!slot) {
            if (!wordings.add(inside)) return std::nullopt;
            continue;
        }
        if (!endWords() || inside.empty()) return std::nullopt;
        pattern.pieces_.push_back({kindOf(inside), std::u16string(inside)});
    }
    const auto says = [](const Piece& p) { return p.kind == Kind::words || p.kind == Kind::operation; };
    if (!endWords() || std::none_of(pattern.pieces_.begin(), pattern.pieces_.end(), says)) return std::nullopt;
    return pattern;
}

PhrasePattern::Line::Line(const ElementList& list) : elements(list), start(startOfValue(list)) {
    end = std::min(lastWritten(list) + 1, list.size());
    bool begins = true;
    for (std::size_t i = start; i < end; ++i)
        for (const char16_t c : list[i].text()) {
            if (begins || isCjk(c)) letters |= bitOf(c);
            begins = !isLetter(c);
        }
    while (start < end && isBlank(list[start])) ++start;
}

std::optional<std::size_t> PhrasePattern::slot(std::u16string_view name) const {
    for (std::size_t i = 0; i < pieces_.size(); ++i)
        if (pieces_[i].kind != Kind::words && pieces_[i].name == name) return i;
    return std::nullopt;
}

std::optional<std::vector<ElementRange>> PhrasePattern::match(const Line& line) const {
    const bool mayMatch = std::all_of(letters_.begin(), letters_.end(),
                                      [&](std::uint64_t letters) { return (letters & line.letters) != 0; });
    if (!mayMatch) return std::nullopt;
    Search search(line, pieces_);
    if (!search.from(0, line.start)) return std::nullopt;
    return std::move(search).ranges();
}

}  // namespace vemo
