// SPDX-License-Identifier: MIT
// Whatever a line holds, every extractor proposes parts of it, and what is left of the proposals covers the line.

#include <algorithm>

#include "scanning/extractor_catalogue.h"
#include "scanning/string_extractor.h"
#include "scanning/words/localizer.h"
#include "support/lines.h"

namespace vemo::test {
namespace {

// Those of a language, with what they read.
class Extractors {
public:
    explicit Extractors(const Tongue& tongue)
        : calculator_(Notepad::in(tongue).calculator()), localizer_(tongue.language), parser_(tongue.locale) {
        words_.setSimplifiedWordRangesDetection(true);
        registerExtractors(list_, {parser_, scientific_, localizer_, words_, calculator_.operatorCollection(),
                                   calculator_.scaleManager().phraseDetector(), calculator_.unitManager(),
                                   calculator_.functionManager(), tongue.language, tongue.locale,
                                   TimeZoneRules::find(u"Europe/Berlin")});
        words_.setSimplifiedWordRangesDetection(false);
    }
    static const Extractors& in(const Tongue& tongue) {
        static std::map<std::string, Extractors> all;
        return all.try_emplace(tongue.language, tongue).first->second;
    }
    const ExtractorList& list() const { return list_; }
    // A context in which some names are defined.
    Context context() const {
        Context context = calculator_.context().copyContext();
        for (const char16_t* name : {u"x", u"net price", u"größe", u"価格", u"may"})
            context.setValue(Value(DecimalNumber::fromInt64(3)), name);
        return context;
    }

private:
    Calculator& calculator_;
    Localizer localizer_;
    StringRangeDetector words_;
    DecimalParser parser_;
    ScientificParser scientific_{parser_};
    ExtractorList list_;
};

const std::vector<std::string>& pieces() {
    static const std::vector<std::string> all{
        "1",       "2.5",     "1,234.5",     "1/2",       "0x1F",      "0b2",        "1e5",
        "1e",      "½",       "5²",          "٣",         "10:30",     "3/4/27",     "2027-03-04",
        "5pm",     "May",     "next friday", "tomorrow",  "in 3 days", "EST",        "UTC+2",
        "km",      "m2",      "°C",          "sq ft",     "US-Dollar", "$",          "€",
        "kr",      "CHF",     "円",          "キロ",      "+",         "-",          "*",
        "/",       "^",       "->",          "→",         "%",         "=",          "+=",
        "(",       ")",       "mod",         "plus",      "in",        "of",         "% of",
        "off",     "what is", "x",           "net price", "größe",     "sqrt",       "max(",
        "sum",     "log",     ";",           ",",         "\"",        "'",          "//",
        "#",       ":",       "!",           "twenty",    "three",     "and a half", "dozen",
        "million", "一万",    "百",          "hex",       "a",         "per",        "\xf0\x9f\x98\x80",
        "e\u0301", "\u200d",  "\u202f",      "\u00a0",    "\t",        ".",          "_",
        "İ",       "ß",       "\u05d0",      "価格"};
    return all;
}

std::string hostileText() {
    std::string text;
    for (int i = anyOf(1, 14); i > 0; --i) text += anyRow(pieces()) + (anyOf(0, 2) == 0 ? "" : " ");
    return text;
}

bool splitsPair(const std::u16string& text, std::size_t place) {
    return place > 0 && place < text.size() && (text[place] & 0xfc00) == 0xdc00 && (text[place - 1] & 0xfc00) == 0xd800;
}

TEST(ExtractorLaws, proposalsArePartsOfTheLine) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const Extractors& extractors = Extractors::in(tongue);
            const std::u16string text = utf16(hostileText());
            Context context = extractors.context();
            std::vector<Extraction> all;
            for (const auto& extractor : extractors.list().items()) {
                const std::vector<Extraction> before = all;
                extractor->extract(text, context, all);
                const auto refuse = [&](const std::string& what) {
                    RC_FAIL(utf8(extractor->name()) + " " + what + " in '" + utf8(text) + "'");
                };
                if (all.size() < before.size() || !std::equal(before.begin(), before.end(), all.begin()))
                    refuse("changes what others proposed");
                for (std::size_t i = before.size(); i < all.size(); ++i) {
                    const TextRange range = all[i].range;
                    if (range.length == 0 || range.end() > text.size()) return refuse("proposes what is not there");
                    if (splitsPair(text, range.location) || splitsPair(text, range.end()))
                        refuse("cuts a character in two");
                    if (all[i].element->text() != range.in(text))
                        refuse("takes '" + utf8(range.in(text)) + "' for '" + utf8(all[i].element->text()) + "'");
                }
            }
            RC_ASSERT(StringExtractor::elements(text, all).text() == text);
        });
}

// A candidate that is told by its unit.
Extraction candidate(std::size_t text, int id) {
    const auto location = std::size_t(anyOf(0, int(text))), length = std::size_t(anyOf(0, 4));
    const std::u16string name = utf16(std::to_string(id));
    return {{location, length},
            anyOf(0, 2) * 10,
            anyOf(0, 1) * 10,
            makeElement(Value(Attribute::unit, name), AttributedText(name))};
}

bool overlap(TextRange a, TextRange b) {
    if (a.length > 0 && b.length > 0) return a.location < b.end() && b.location < a.end();
    if (a.length == 0 && b.length == 0) return false;
    const TextRange& point = a.length == 0 ? a : b;
    const TextRange& other = a.length == 0 ? b : a;
    // One of no length may stand before another, and after it.
    return &point == &a ? other.location <= point.location && point.location < other.end()
                        : other.location < point.location && point.location < other.end();
}

TEST(ExtractorLaws, overlapsAreResolvedInOrderOfStrength) {
    holds(
        [] {
            const std::u16string text(std::size_t(anyOf(0, 30)), u'-');
            std::vector<Extraction> candidates;
            for (int i = anyOf(0, 60); i > 0; --i) candidates.push_back(candidate(text.size(), i));

            // The strongest of those that are left, again and again.
            std::vector<Extraction> left = candidates, accepted;
            while (!left.empty()) {
                auto best = left.begin();
                for (auto it = left.begin(); it != left.end(); ++it) {
                    const auto strength = [](const Extraction& e) {
                        return std::tuple(e.priority, e.range.length, e.secondaryPriority,
                                          -static_cast<std::int64_t>(e.range.location));
                    };
                    if (strength(*it) > strength(*best)) best = it;
                }
                const bool free = std::ranges::none_of(
                    accepted, [&](const Extraction& other) { return overlap(best->range, other.range); });
                if (free && best->range.end() <= text.size()) accepted.push_back(*best);
                left.erase(best);
            }
            std::ranges::stable_sort(accepted, {}, [](const Extraction& e) { return e.range.location; });
            std::u16string expected;
            std::size_t cursor = 0;
            for (const Extraction& e : accepted) {
                expected.append(e.range.location - cursor, u'-').append(e.element->text()).append(u"|");
                cursor = e.range.end();
            }
            expected.append(text.size() - cursor, u'-');

            std::u16string given;
            const ElementList elements = StringExtractor::elements(text, candidates);
            for (const ElementPointer& element : elements.pointers())
                given.append(element->text()).append(element->value.isEmpty() ? u"" : u"|");
            RC_ASSERT(utf8(given) == utf8(expected));
        },
        600);
}

}  // namespace
}  // namespace vemo::test
