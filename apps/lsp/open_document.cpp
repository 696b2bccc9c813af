// SPDX-License-Identifier: MIT
#include "lsp/open_document.h"

#include <algorithm>

#include "session/rows.h"

namespace vemo::lsp {

namespace {

constexpr std::size_t longHint = 40;  // characters

LineView viewOf(const VemoEngine::Result::Line& line) {
    LineView view;
    const std::string text = hintText(line.formattedResult());
    if (!text.empty()) view.hint = jsonString(text);
    const auto names = line.names();
    if (!names.empty() && names.front().defines)
        view.defines = line.attributedText().compoundString().substr(names.front().start, names.front().length);
    const auto remark = [&](std::size_t start, std::size_t length, bool reason, std::u16string_view code,
                            const std::u16string& message) {
        view.remarks.push_back(
            {static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(length), reason, utf8(code), utf8(message)});
    };
    for (const Note& note : line.notes()) remark(note.start, note.length, false, noteKindName(note.kind), note.message);
    if (const auto reason = line.reason()) {
        const std::u16string written = line.attributedText().compoundString();
        const std::size_t first = std::min(written.find_first_not_of(u" \t"), written.size());
        const std::size_t last = written.find_last_not_of(u" \t");
        remark(first, last == written.npos ? 0 : last + 1 - first, true, reasonCodeName(reason->code), reason->message);
    }
    return view;
}

bool sameHints(const std::vector<LineView>& a, const std::vector<LineView>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const LineView& x, const LineView& y) { return x.hint == y.hint; });
}

}  // namespace

std::string hintText(const FormattedValue& value) {
    const bool isLong = value.regular && value.regular->size() > longHint;
    return session::resultText(value, isLong);
}

std::u16string engineText(std::u16string_view text) {
    std::u16string result(text);
    for (char16_t& unit : result)
        if (unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029') unit = u' ';
    return result;
}

std::size_t OpenDocument::edit(std::size_t start, std::size_t length, std::u16string_view replacement,
                               std::int64_t newVersion) {
    version = newVersion;
    if (document) document->edit(start, length, engineText(replacement), newVersion);
    return buffer.replace(start, length, replacement);
}

void OpenDocument::attach(VemoEngine& engine, const Context& context) {
    document = std::make_unique<VemoDocument>(engine, engineText(buffer.text()), version, context);
    if (answer) viewsToChange = std::move(views);
    views.clear();
    answer = nullptr;
    dirty = true;
}

OpenDocument::Shown OpenDocument::take(std::shared_ptr<const VemoDocument::Answer> newAnswer) {
    answer = std::move(newAnswer);
    Shown shown;
    for (const VemoDocument::LineChange& change : answer->changes) {
        std::vector<LineView> made;
        made.reserve(change.inserted);
        for (std::size_t i = 0; i < change.inserted; ++i) made.push_back(viewOf(line(change.first + i)));
        const auto begin = views.begin() + static_cast<std::ptrdiff_t>(change.first);
        const std::size_t common = std::min(change.removed, change.inserted);
        shown.hints = shown.hints || change.removed != change.inserted;
        for (std::size_t i = 0; i < common; ++i) {
            LineView& view = views[change.first + i];
            shown.hints = shown.hints || view.hint != made[i].hint;
            view = std::move(made[i]);
        }
        const auto rest = begin + static_cast<std::ptrdiff_t>(common);
        if (change.removed > common)
            views.erase(rest, begin + static_cast<std::ptrdiff_t>(change.removed));
        else
            views.insert(rest, std::make_move_iterator(made.begin() + static_cast<std::ptrdiff_t>(common)),
                         std::make_move_iterator(made.end()));
    }
    if (viewsToChange) {
        shown.hints = !sameHints(*viewsToChange, views);
        viewsToChange.reset();
    }
    const FormattedValue* formatted = answer->result.context->grandTotalFormatted();
    std::string newTotal = formatted ? session::resultText(*formatted, false) : "";
    shown.total = newTotal != total;
    total = std::move(newTotal);
    return shown;
}

}  // namespace vemo::lsp
