// SPDX-License-Identifier: MIT
// Notes are on the words they are about, wherever these stand in a line.

#include <algorithm>

#include "base/text.h"
#include "support/lines.h"

namespace vemo::test {
namespace {

// Lines with something to tell, in every language.
constexpr const char* mistakes[] = {"Rent * {w}",     "{n} +",
                                    "{n} kg in foo",  "5 kg + Rent",
                                    "1 10 + {w}",     "{n} km / {w} h",
                                    "{n} m * {w} m",  "{w} month in days",
                                    "1 << 70",        "{n} km in Item",
                                    "{w} kg in inhc", "root (3) (27) (4)",
                                    "5 PS + 2 PS",    "2026-02-30 + 1",
                                    "{w} * Item",     "$12..50 * 2",
                                    "1/2x + {w}",     "{n} * price * Rent",
                                    "sqroot(16) + 1", "7 houres * {w}"};

std::vector<Note> notesOf(const Tongue& tongue, const std::string& line) {
    return Notepad::in(tongue).last("x = 3\n" + line).notes;
}

std::string shown(const std::string& line, const std::vector<Note>& notes) {
    const std::u16string text = utf16(line);
    std::string all = "\n  " + line;
    for (const Note& note : notes) {
        const TextRange range{std::min<std::size_t>(note.start, text.size()), note.length};
        all += "\n    '" + utf8(range.in(text)) + "' at " + std::to_string(note.start) + ": " + utf8(note.message);
    }
    return all + "\n";
}

// The first text in quotation marks that the message names.
std::u16string namedIn(std::u16string_view message) {
    for (const auto& [open, close] :
         {std::pair(u'\u201c', u'\u201d'), {u'\u201e', u'\u201c'}, {u'\u00ab', u'\u00bb'}, {u'\u300c', u'\u300d'}}) {
        const std::size_t start = message.find(open);
        const std::size_t end = start == message.npos ? start : message.find(close, start + 1);
        if (end != message.npos) return std::u16string(trimmed(message.substr(start + 1, end - start - 1)));
    }
    return u"";
}

TEST(NoteLaws, aNoteIsOnWhatItNames) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const std::string line = filled(anyRow(mistakes), tongue);
            const std::u16string text = utf16(line);
            const std::vector<Note> notes = notesOf(tongue, line);
            for (const Note& note : notes) {
                const TextRange range{note.start, note.length};
                if (range.length == 0 || range.end() > text.size() || note.message.empty()) RC_FAIL(shown(line, notes));
                const std::u16string_view words = range.in(text);
                const bool names = note.kind == NoteKind::unknownWord || note.kind == NoteKind::unusedValue;
                if (names && namedIn(note.message) != words && !namedIn(note.message).empty())
                    RC_FAIL(shown(line, notes));
                if (trimmed(words) != words) RC_FAIL(shown(line, notes));
            }
        });
}

TEST(NoteLaws, whatStandsBeforeMovesNotes) {
    constexpr const char* before[] = {"Total: ", "  ", "rate = ", "\"as of 2026\" ", "価格 = ", "\t", "(", "2 * ("};
    for (const Tongue& tongue : tongues())
        holds([&] {
            const std::string prefix = anyRow(before);
            const std::string line = filled(anyRow(mistakes), tongue);
            const std::string moved = prefix + line + (prefix.ends_with("(") ? ")" : "");
            std::vector<Note> expected = notesOf(tongue, line), given = notesOf(tongue, moved);
            for (Note& note : expected) note.start += static_cast<std::uint32_t>(utf16(prefix).size());
            const auto order = [](const Note& a, const Note& b) {
                return std::tuple(a.start, a.length, a.kind) < std::tuple(b.start, b.length, b.kind);
            };
            std::ranges::sort(expected, order);
            std::ranges::sort(given, order);
            if (given != expected) RC_FAIL(shown(line, notesOf(tongue, line)) + shown(moved, given));
        });
}

}  // namespace
}  // namespace vemo::test
