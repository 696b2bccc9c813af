// SPDX-License-Identifier: MIT
// How a page is laid out and painted.
#include <QHelpEvent>
#include <QPainter>
#include <QTextBlock>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "notepad/accessible_answers.h"
#include "notepad/answer_column.h"
#include "notepad/answer_texts.h"
#include "notepad/completion_list.h"
#include "notepad/line_formats.h"
#include "notepad/line_numbers.h"
#include "notepad/page.h"
#include "notepad/texts.h"

namespace vemo::notepad {

namespace {

constexpr double leastShare = 0.1, mostShare = 0.8;

// The height of a line's rows: the document's margin belongs to none.
qreal rowsHeight(const QTextBlock& block, const QRectF& box) {
    return box.height() - (block.next().isValid() ? 0 : block.document()->documentMargin());
}

}  // namespace

void Page::visitLines(int top, int bottom, const VisitLine& visit) const {
    QTextBlock block = firstVisibleBlock();
    qreal at = blockBoundingGeometry(block).translated(contentOffset()).top();
    for (; block.isValid() && at <= bottom; block = block.next()) {
        const qreal end = at + blockBoundingRect(block).height();
        const QTextLayout* layout = block.layout();
        if (block.isVisible() && end >= top && layout->lineCount() > 0) {
            const QTextLine first = layout->lineAt(0);
            visit(block, at, at + rowsHeight(block, blockBoundingRect(block)),
                  at + layout->position().y() + first.y() + first.ascent());
        }
        at = end;
    }
}

int Page::lineAt(int y) const {
    int line = -1;
    visitLines(y, y, [&](const QTextBlock& block, qreal top, qreal bottom, qreal) {
        if (top <= y && y < bottom) line = block.blockNumber();
    });
    return line;
}

void Page::setAnswerShare(double share) {
    share = std::clamp(share, leastShare, mostShare);
    if (share == share_) return;
    share_ = share;
    placeColumns();
    Q_EMIT answerShareChanged(share);
}

bool Page::hasLineNumbers() const {
    return !numbers_->isHidden();
}

void Page::setLineNumbers(bool shown) {
    numbers_->setVisible(shown);
    placeColumns();
}

void Page::placeColumns() {
    const QMargins before = viewportMargins();
    const int all = viewport()->width() + before.left() + before.right();
    const QMargins wanted(hasLineNumbers() ? numbers_->wantedWidth() : 0, 0, static_cast<int>(all * share_), 0);
    // This may call the function again, when a scroll bar comes or goes.
    if (wanted != before) setViewportMargins(wanted);
    const QMargins now = viewportMargins();
    const QRect view = viewport()->geometry();
    numbers_->setGeometry(view.left() - now.left(), view.top(), now.left(), view.height());
    answers_->setGeometry(view.right() + 1, view.top(), now.right(), view.height());
}

void Page::updateRow(int line) {
    const QTextBlock block = document()->findBlockByNumber(line);
    if (!block.isValid()) return;
    const QRectF row = blockBoundingGeometry(block).translated(contentOffset());
    const int top = static_cast<int>(std::floor(row.top())), height = static_cast<int>(std::ceil(row.height())) + 1;
    for (QWidget* part : {viewport(), static_cast<QWidget*>(answers_), static_cast<QWidget*>(numbers_)})
        part->update(0, top, part->width(), height);
}

void Page::followCursor() {
    if (!typing_) completions_->hide();
    const int line = textCursor().blockNumber();
    if (line == cursorLine_) return;
    if (!isHeld(line)) releaseHeldLine();
    updateRow(cursorLine_);
    cursorLine_ = line;
    updateRow(line);
    setAccessibleDescription(spokenAnswer(*this, line));
}

void Page::setSearch(const QString& text, QTextDocument::FindFlags flags) {
    sought_ = text;
    soughtCase_ = flags & QTextDocument::FindCaseSensitively ? Qt::CaseSensitive : Qt::CaseInsensitive;
    viewport()->update();
}

void Page::paintMatches(QPainter& painter, const QRect& part) {
    visitLines(part.top(), part.bottom(), [&](const QTextBlock& block, qreal top, qreal, qreal) {
        const QString text = block.text();
        const QTextLayout* layout = block.layout();
        const QPointF origin(contentOffset().x() + layout->position().x(), top + layout->position().y());
        for (qsizetype at = text.indexOf(sought_, 0, soughtCase_); at >= 0;
             at = text.indexOf(sought_, at + sought_.size(), soughtCase_)) {
            const int from = static_cast<int>(at), to = from + static_cast<int>(sought_.size());
            for (int row = 0; row < layout->lineCount(); ++row) {
                const QTextLine line = layout->lineAt(row);
                const int begin = std::max(from, line.textStart());
                const int end = std::min(to, line.textStart() + line.textLength());
                if (begin >= end) continue;
                const qreal left = line.cursorToX(begin), right = line.cursorToX(end);
                const QRectF marked(std::min(left, right), line.y(), std::abs(right - left), line.height());
                painter.fillRect(marked.translated(origin), theme_->match);
            }
        }
    });
}

void Page::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QTextBlock current = textCursor().block();
    const QRectF row = blockBoundingGeometry(current).translated(contentOffset());
    painter.fillRect(QRectF(0, row.top(), viewport()->width(), rowsHeight(current, row)), theme_->currentLine);
    if (!sought_.isEmpty()) paintMatches(painter, event->rect());
    painter.end();
    QPlainTextEdit::paintEvent(event);
}

void Page::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    placeColumns();
    if (!lines_.stale().empty()) showVisibleLines();
}

void Page::scrollContentsBy(int dx, int dy) {
    QPlainTextEdit::scrollContentsBy(dx, dy);
    completions_->hide();
    if (dy != 0 && !lines_.stale().empty()) showVisibleLines();
}

void Page::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        const Theme* theme = &Theme::matching(palette());
        if (theme == theme_) return;
        theme_ = theme;
        showAllAgain();
    } else if (event->type() == QEvent::FontChange) {
        placeColumns();
        showVisibleLines();
    }
}

QString Page::noteAt(const QPoint& point) const {
    const int line = lineAt(point.y());
    const LineList::Line* told = lines_.told(line);
    if (!told) return {};
    const QTextCursor cursor = cursorForPosition(point);
    if (cursor.blockNumber() != line) return {};
    const auto unit = static_cast<std::uint32_t>(cursor.positionInBlock());
    QStringList notes;
    for (const Note& note : told->notes())
        if (note.start <= unit && unit <= note.start + note.length) notes << toQt(note.message).toHtmlEscaped();
    return notes.join(QStringLiteral("<br>"));
}

void Page::explainAnswer() {
    ensureCursorVisible();
    const int line = textCursor().blockNumber();
    visitLines(0, viewport()->height(), [&](const QTextBlock& block, qreal, qreal bottom, qreal) {
        const LineList::Line* told = lines_.told(line);
        if (block.blockNumber() != line || !told) return;
        const QString tip = answerTip(*told, text_.readingOf(line));
        const QPoint below = answers_->mapToGlobal(QPoint(0, static_cast<int>(bottom)));
        if (!tip.isEmpty()) QToolTip::showText(below, tip, answers_);
    });
}

bool Page::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QPlainTextEdit::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString note = noteAt(help->pos());
    if (note.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), QStringLiteral("<span>%1</span>").arg(note), viewport());
    return true;
}

void Page::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) return QPlainTextEdit::wheelEvent(event);
    if (const int turned = event->angleDelta().y(); turned != 0) Q_EMIT zoomWanted(turned > 0 ? 1 : -1);
    event->accept();
}

}  // namespace vemo::notepad
