// SPDX-License-Identifier: MIT
#include "notepad/line_editing.h"

#include <QTextBlock>
#include <QTextDocument>

namespace vemo::notepad {

namespace {

const QString commentSign = QStringLiteral("//");

// Puts the selection where so many units after its first line it was.
void select(QPlainTextEdit& page, int anchor, int position) {
    QTextCursor cursor = page.textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    page.setTextCursor(cursor);
}

}  // namespace

SelectedLines selectedLines(const QTextCursor& cursor) {
    const QTextDocument* document = cursor.document();
    const QTextBlock first = document->findBlock(cursor.selectionStart());
    const QTextBlock last = document->findBlock(cursor.selectionEnd());
    const bool reaches = first == last || cursor.selectionEnd() > last.position();
    return {first.blockNumber(), last.blockNumber() - (reaches ? 0 : 1)};
}

void moveLines(QPlainTextEdit& page, Direction direction) {
    QTextCursor cursor = page.textCursor();
    QTextDocument* document = page.document();
    const SelectedLines lines = selectedLines(cursor);
    const QTextBlock first = document->findBlockByNumber(lines.first);
    const QTextBlock last = document->findBlockByNumber(lines.last);
    const QTextBlock other = direction == Direction::up ? first.previous() : last.next();
    if (!other.isValid()) return;
    const int anchor = cursor.anchor(), position = cursor.position(), shift = other.length();
    const QString text = other.text();
    const int start = first.position(), end = last.position() + last.length() - 1;
    cursor.beginEditBlock();
    if (direction == Direction::up) {
        cursor.setPosition(end);
        cursor.insertText(u'\n' + text);
        cursor.setPosition(start - shift);
        cursor.setPosition(start, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    } else {
        cursor.setPosition(end);
        cursor.setPosition(end + shift, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        cursor.setPosition(start);
        cursor.insertText(text + u'\n');
    }
    cursor.endEditBlock();
    const int moved = direction == Direction::up ? -shift : shift;
    const int most = document->characterCount() - 1;
    select(page, qBound(0, anchor + moved, most), qBound(0, position + moved, most));
    page.ensureCursorVisible();
}

void toggleComment(QPlainTextEdit& page) {
    QTextCursor cursor = page.textCursor();
    const SelectedLines lines = selectedLines(cursor);
    bool allComments = true, anyText = false;
    const auto visit = [&](auto&& act) {
        QTextBlock block = page.document()->findBlockByNumber(lines.first);
        for (int line = lines.first; line <= lines.last; ++line, block = block.next()) act(block);
    };
    visit([&](const QTextBlock& block) {
        const QString text = block.text().trimmed();
        if (text.isEmpty()) return;
        anyText = true;
        allComments = allComments && text.startsWith(commentSign);
    });
    QTextCursor edit(page.document());
    edit.beginEditBlock();
    visit([&](const QTextBlock& block) {
        const QString text = block.text();
        if (anyText && text.trimmed().isEmpty()) return;
        edit.setPosition(block.position());
        if (!anyText || !allComments) {
            edit.insertText(commentSign + u' ');
            return;
        }
        const int sign = static_cast<int>(text.indexOf(commentSign));
        const int length = static_cast<int>(commentSign.size());
        edit.setPosition(block.position() + sign);
        const bool blank = text.size() > sign + length && text[sign + length] == u' ';
        edit.setPosition(block.position() + sign + length + (blank ? 1 : 0), QTextCursor::KeepAnchor);
        edit.removeSelectedText();
    });
    edit.endEditBlock();
}

}  // namespace vemo::notepad
