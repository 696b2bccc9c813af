// SPDX-License-Identifier: MIT
#include "notepad/line_formats.h"

#include <algorithm>

#include "notepad/texts.h"

namespace vemo::notepad {

namespace {

QTextLayout::FormatRange rangeOf(std::size_t start, std::size_t length, const QTextCharFormat& format) {
    return {static_cast<int>(start), static_cast<int>(length), format};
}

// A main header has one sign; those with more are smaller.
int headerSize(QStringView text) {
    const qsizetype first = text.indexOf(u'#');
    return first >= 0 && first + 1 < text.size() && text[first + 1] == u'#' ? 0 : 1;
}

QTextCharFormat formatOf(RunType type, std::u16string_view text, const Theme& theme) {
    QTextCharFormat format;
    format.setForeground(theme.of(type));
    if (type == RunType::header) {
        format.setFontWeight(QFont::Bold);
        format.setProperty(QTextFormat::FontSizeAdjustment, headerSize(QStringView(text.data(), text.size())));
    } else if (type == RunType::comment) {
        format.setFontItalic(true);
    }
    return format;
}

}  // namespace

LineFormats formatsOf(const VemoEngine::Result::Line& line, const Theme& theme, Notes notes) {
    LineFormats formats;
    line.attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t location) {
        if (text.empty()) return;
        QTextCharFormat format = formatOf(type, text, theme);
        formats.append(rangeOf(location, text.size(), format));
        if (type != RunType::header) return;
        format.setForeground(theme.comment);
        const std::size_t sign = text.find(u'#');
        const std::size_t end = std::min(text.find_first_not_of(u'#', sign), text.size());
        if (sign < end) formats.append(rangeOf(location + sign, end - sign, format));
    });
    if (notes == Notes::left) return formats;
    for (const Note& note : line.notes()) {
        QTextCharFormat format;
        format.setUnderlineStyle(QTextCharFormat::DotLine);
        format.setUnderlineColor(theme.note);
        if (note.length > 0) formats.append(rangeOf(note.start, note.length, format));
    }
    return formats;
}

LineFormats editedFormats(const LineFormats& formats, int start, int removed, int added) {
    LineFormats edited;
    for (QTextLayout::FormatRange range : formats) {
        const auto follow = [&](int unit, bool isEnd) {
            if (unit < start || (unit == start && !isEnd)) return unit;
            return unit >= start + removed ? unit + added - removed : start + (isEnd ? added : 0);
        };
        const int end = follow(range.start + range.length, true);
        const bool typedBefore = removed == 0 && range.start == start && start > 0;
        range.start = typedBefore ? start + added : follow(range.start, false);
        range.length = end - range.start;
        if (range.length > 0) edited.append(range);
    }
    return edited;
}

bool setFormats(const QTextBlock& block, LineFormats formats) {
    QTextLayout* layout = block.layout();
    const LineFormats present = layout->formats();
    const int preedit = layout->preeditAreaPosition(), length = static_cast<int>(layout->preeditAreaText().size());
    if (length > 0) {
        for (auto& range : formats) {
            if (range.start >= preedit)
                range.start += length;
            else if (range.start + range.length > preedit)
                range.length += length;
        }
        for (const auto& range : present)
            if (range.start >= preedit && range.start + range.length <= preedit + length) formats.append(range);
    }
    if (formats == present) return false;
    layout->setFormats(formats);
    return true;
}

}  // namespace vemo::notepad
