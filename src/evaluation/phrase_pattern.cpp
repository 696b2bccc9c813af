// SPDX-License-Identifier: MIT
#include "evaluation/phrase_pattern.h"

#include <algorithm>
#include <utility>

#include "evaluation/element_tests.h"
#include "evaluation/phrase_search.h"

namespace vemo {

namespace {

using Kind = PhrasePattern::Kind;
using Piece = PhrasePattern::Piece;

constexpr std::size_t mostWordings = 512;  // of the words between two slots
constexpr std::size_t mostElements = 256;  // of a line: none in words is longer
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

std::uint64_t bitOf(std::u16string_view operatorId) {
    return std::uint64_t(1) << ((operatorId.front() + 7 * operatorId.back() + 13 * operatorId.size()) % 64);
}

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
    std::size_t choices = 0;
    const auto endChoice = [&] {
        if (wordings.empty()) return true;
        std::vector<std::u16string> words = wordings.taken();
        std::stable_sort(words.begin(), words.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
        std::uint64_t letters = 0;
        for (const std::u16string& word : words) letters |= word.empty() ? 0 : bitOf(word.front());
        if (choices < Filter::choicesTested) pattern.filter_.letters[choices++] = letters;
        if (!dotted && piece.words.empty() && pattern.pieces_.empty()) pattern.filter_.first = letters;
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
        pattern.note(pattern.pieces_.back());
    }
    const auto says = [](const Piece& p) { return p.kind == Kind::words || p.kind == Kind::operation; };
    if (!endWords() || std::none_of(pattern.pieces_.begin(), pattern.pieces_.end(), says)) return std::nullopt;
    return pattern;
}

// What a slot needs of a line.
void PhrasePattern::note(const Piece& slot) {
    const auto need = [&](Attribute attribute) {
        filter_.attributes = static_cast<std::uint16_t>(filter_.attributes | Value::bit(attribute));
    };
    const bool valued = slot.kind != Kind::operation && slot.kind != Kind::unit && slot.kind != Kind::tail;
    if (valued) ++filter_.values;
    if (slot.kind == Kind::operation) filter_.operators |= bitOf(slot.name);
    if (slot.kind == Kind::percent) filter_.percent = true;
    if (slot.kind == Kind::date) need(Attribute::date);
    if (slot.kind == Kind::quantity || slot.kind == Kind::unit) need(Attribute::unit);
}

bool PhrasePattern::Filter::admits(const Line& line) const {
    return (first & line.first) != 0 && values <= line.values && (letters[0] & line.letters) != 0 &&
           (!percent || line.percent) && (letters[1] & line.letters) != 0 && (letters[2] & line.letters) != 0 &&
           (operators & ~line.operators) == 0 && (attributes & ~line.elements.attributes()) == 0;
}

PhrasePattern::Line::Line(const ElementList& list, std::size_t from) : elements(list), start(from) {
    end = std::min(lastWritten(list) + 1, list.size());
    const auto isIdle = [](const Element& element) {
        return element.value.has(Attribute::assignment) || (element.value.isEmpty() && wording(element.text()).empty());
    };
    // "2 plus 3 =", "…?"
    while (end > start && isIdle(list[end - 1])) --end;
    while (start < end && isBlank(list[start])) ++start;
    bool begins = true;
    for (std::size_t i = start; i < end; ++i) {
        const Element& element = list[i];
        const auto id = element.value.string(Attribute::operation);
        if (id) operators |= bitOf(*id);
        percent = percent || element.value.is(Attribute::unit, u"percent");
        if (element.value.has(Attribute::decimal) || element.value.has(Attribute::date)) ++values;
        for (const char16_t c : element.text()) {
            const bool letter = isLetter(c);
            if (letter ? begins || isCjk(c) : c == u'%') letters |= bitOf(c);
            if (i == start && first == 0) first = letters;
            begins = !letter;
        }
    }
    if (first == 0) first = bitOf(u'@');  // no pattern begins so
}

std::u16string PhrasePattern::wording(std::u16string_view text) {
    constexpr std::u16string_view outside = u",;?!\u00bf\u00a1\uff1f\u3001";
    const auto isOutside = [&](char16_t c) { return isWhitespace(c) || outside.find(c) != outside.npos; };
    while (!text.empty() && isOutside(text.front())) text.remove_prefix(1);
    while (!text.empty() && isOutside(text.back())) text.remove_suffix(1);
    return spoken(text);
}

std::optional<std::size_t> PhrasePattern::slot(std::u16string_view name) const {
    for (std::size_t i = 0; i < pieces_.size(); ++i)
        if (pieces_[i].kind != Kind::words && pieces_[i].name == name) return i;
    return std::nullopt;
}

std::optional<std::vector<ElementRange>> PhrasePattern::match(const Line& line) const {
    if (line.end - line.start > mostElements) return std::nullopt;
    return searchedPieces(line, pieces_);
}

}  // namespace vemo
