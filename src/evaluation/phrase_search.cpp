// SPDX-License-Identifier: MIT
#include "evaluation/phrase_search.h"

#include <algorithm>

#include "evaluation/element_tests.h"

namespace vemo {

namespace {

using Kind = PhrasePattern::Kind;
using Piece = PhrasePattern::Piece;

constexpr int mostSteps = 1024;  // for a line that could be taken apart in many ways

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
        if (--steps_ < 0) return false;
        if (piece < pieces_.size() && pieces_[piece].kind == Kind::value) return value(piece, i);
        if (piece < pieces_.size() && pieces_[piece].kind == Kind::idle) return idle(piece, i);
        while (i < end_ && isBlank(elements_[i])) ++i;
        if (piece == pieces_.size()) return i == end_;
        if (pieces_[piece].kind == Kind::tail)
            return (i == end_ || elements_[i].value.has(Attribute::operation)) && take(piece, i, end_);
        if (i == end_) return false;
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
        for (std::size_t k = i; k < end_ && steps_ >= 0; ++k) {
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
            if (k == end_ || steps_ < 0 || !isIdle(elements_[k])) return false;
        return true;
    }

    bool words(std::size_t piece, std::size_t i) {
        const Piece& words = pieces_[piece];
        const bool open = words.openBefore || words.words.size() > 1;
        const std::size_t longest = words.words.front().front().size() + 2;
        std::u16string text, worded;
        std::vector<std::size_t> ends;
        for (std::size_t k = i; k < end_ && (open || worded.size() <= longest); ++k) {
            const Value& value = elements_[k].value;
            if (open && (value.has(Attribute::decimal) || value.has(Attribute::date) || isPercent(elements_[k]))) break;
            text += elements_[k].text();
            worded = PhrasePattern::wording(text);
            if (!holds(worded, words)) continue;
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

}  // namespace

std::optional<std::vector<ElementRange>> searchedPieces(const PhrasePattern::Line& line,
                                                        const std::vector<PhrasePattern::Piece>& pieces) {
    Search search(line, pieces);
    if (!search.from(0, line.start)) return std::nullopt;
    return std::move(search).ranges();
}

}  // namespace vemo
