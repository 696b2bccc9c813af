// SPDX-License-Identifier: MIT
// What a person does to a page with keys: typing, completion, and the use of answers.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <memory>

#include "notepad/answer_texts.h"
#include "notepad/completion_list.h"
#include "notepad/completion_source.h"
#include "notepad/page.h"

namespace vemo::notepad {

namespace {

constexpr int leastTyped = 2;

// True where a completion may be offered: words are continued at their ends only.
bool isAtWordEnd(const QTextCursor& cursor) {
    const QString text = cursor.block().text();
    const int at = cursor.positionInBlock();
    return at >= text.size() || !text[at].isLetterOrNumber();
}

}  // namespace

bool Page::event(QEvent* event) {
    // Keys that the list takes go neither to menus nor to other widgets.
    if (event->type() == QEvent::ShortcutOverride && completions_->isVisible()) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Tab) {
            event->accept();
            return true;
        }
    }
    return QPlainTextEdit::event(event);
}

void Page::keyPressEvent(QKeyEvent* event) {
    if (completions_->takeKey(event->key(), event->modifiers())) return;
    const QScopedValueRollback typing(typing_, true);
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const int revision = document()->revision();
    if (enter && event->modifiers() & Qt::ShiftModifier) {
        // A line of the engine never has a line break within.
        QKeyEvent plain(event->type(), event->key(), event->modifiers() & ~Qt::ShiftModifier, event->text());
        QPlainTextEdit::keyPressEvent(&plain);
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
    const QString text = event->text();
    const bool edited = document()->revision() != revision;
    if (edited && !enter) hold(textCursor().blockNumber());
    const bool typedWord = edited && !text.isEmpty() && text.back().isLetterOrNumber();
    if (typedWord || (event->key() == Qt::Key_Backspace && completions_->isVisible()))
        complete(false);
    else if (!text.isEmpty() || edited)
        completions_->hide();
}

void Page::complete(bool asked) {
    const QTextCursor cursor = textCursor();
    if (cursor.hasSelection() || !isAtWordEnd(cursor)) return completions_->hide();
    const QString before = cursor.block().text().left(cursor.positionInBlock());
    const CompletionOffer offer =
        completionsFor(lines_, cursor.blockNumber(), before, calculation_.vocabulary().get(), asked ? 1 : leastTyped);
    typed_ = offer.typed;
    QTextCursor start = cursor;
    start.movePosition(QTextCursor::Left, QTextCursor::MoveAnchor, typed_);
    completions_->offer(offer.items, cursorRect(start).translated(viewport()->pos()));
}

void Page::takeCompletion(const QString& word) {
    QTextCursor cursor = textCursor();
    cursor.setPosition(cursor.position() - typed_, QTextCursor::KeepAnchor);
    cursor.insertText(word);
    setTextCursor(cursor);
}

// An input method's text has formats of its own, which took the place of the line's.
void Page::inputMethodEvent(QInputMethodEvent* event) {
    const int revision = document()->revision();
    QPlainTextEdit::inputMethodEvent(event);
    const QTextBlock block = textCursor().block();
    if (document()->revision() != revision) hold(block.blockNumber());
    if (dress(block)) document()->markContentsDirty(block.position(), block.length());
    completions_->hide();
}

void Page::focusOutEvent(QFocusEvent* event) {
    completions_->hide();
    QPlainTextEdit::focusOutEvent(event);
}

void Page::copyAnswer(int line) {
    const QString answer = lines_.view(line < 0 ? textCursor().blockNumber() : line).answer;
    if (answer.isEmpty()) return;
    QGuiApplication::clipboard()->setText(answer);
    Q_EMIT said(tr("Copied: %1").arg(answer));
}

void Page::copyPlainNumber(int line) {
    const LineList::Line* told = lines_.told(line < 0 ? textCursor().blockNumber() : line);
    const QString number = told ? plainNumber(*told) : QString();
    if (number.isEmpty()) return;
    QGuiApplication::clipboard()->setText(number);
    Q_EMIT said(tr("Copied: %1").arg(number));
}

void Page::insertAnswerAbove() {
    for (int line = textCursor().blockNumber() - 1; line >= 0; --line) {
        const LineList::Line* told = lines_.told(line);
        if (told && !lines_.view(line).answer.isEmpty()) return insertValue(valueText(calculation_, *told));
    }
}

// A value stands apart from the words before and after.
void Page::insertValue(const QString& value) {
    QTextCursor cursor = textCursor();
    const QTextBlock first = document()->findBlock(cursor.selectionStart());
    const QTextBlock last = document()->findBlock(cursor.selectionEnd());
    const QString before = first.text().left(cursor.selectionStart() - first.position());
    const QString after = last.text().mid(cursor.selectionEnd() - last.position());
    const auto blank = [](bool touches) { return touches ? QStringLiteral(" ") : QString(); };
    cursor.insertText(blank(!before.isEmpty() && before.back().isLetterOrNumber()) + value +
                      blank(!after.isEmpty() && after.front().isLetterOrNumber()));
    setTextCursor(cursor);
}

void Page::contextMenuEvent(QContextMenuEvent* event) {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
    const int line = lineAt(event->pos().y());
    const bool hasAnswer = line >= 0 && !lines_.view(line).answer.isEmpty();
    menu->addSeparator();
    menu->addAction(tr("Copy Ans&wer"), this, [this, line] { copyAnswer(line); })->setEnabled(hasAnswer);
    menu->addAction(tr("Copy Plain Num&ber"), this, [this, line] { copyPlainNumber(line); })->setEnabled(hasAnswer);
    menu->exec(event->globalPos());
}

}  // namespace vemo::notepad
