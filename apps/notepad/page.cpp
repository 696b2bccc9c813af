// SPDX-License-Identifier: MIT
#include "notepad/page.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <cmath>

#include "notepad/answer_column.h"
#include "notepad/line_formats.h"

namespace vemo::notepad {

namespace {

constexpr double leastShare = 0.1, mostShare = 0.8;
constexpr int margin = 10;

}  // namespace

Page::Page(Calculation& calculation, QWidget* parent)
    : QPlainTextEdit(parent),
      text_(calculation, [this] { return text(); }),
      theme_(&Theme::matching(palette())),
      answers_(new AnswerColumn(*this)) {
    setFrameShape(QFrame::NoFrame);
    setTabChangesFocus(false);
    document()->setDocumentMargin(margin);
    setAccessibleName(tr("Page"));
    slices_.setInterval(0);
    connect(&slices_, &QTimer::timeout, this, &Page::showStaleLines);
    connect(document(), &QTextDocument::contentsChange, this, &Page::textEdited);
    connect(&text_, &CalculatedText::asked, this, [this] { lines_.requested(); });
    connect(&text_, &CalculatedText::answered, this, &Page::answered);
    connect(this, &QPlainTextEdit::updateRequest, answers_, &AnswerColumn::followPage);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        updateRow(cursorLine_);
        cursorLine_ = textCursor().blockNumber();
        updateRow(cursorLine_);
    });
    placeColumns();
}

Page::~Page() = default;

void Page::setText(const QString& text) {
    setPlainText(text);
    document()->setModified(false);
}

QString Page::text() const {
    return textOf(0, document()->characterCount() - 1);
}

QString Page::textOf(int start, int end) const {
    QString text;
    text.reserve(end - start);
    for (QTextBlock block = document()->findBlock(start); block.isValid() && block.position() <= end;
         block = block.next()) {
        const int from = std::max(start - block.position(), 0),
                  to = std::min(end - block.position(), block.length() - 1);
        text += QStringView(block.text()).sliced(from, to - from);
        if (end - block.position() >= block.length()) text += u'\n';
    }
    return text;
}

void Page::showStoredResults(const VemoEngine::Result& result) {
    if (text_.answer()) return;
    lines_.take(result);
    showVisibleLines();
}

const VemoEngine::Result* Page::results() const {
    return text_.isCurrent() ? &text_.answer()->result : nullptr;
}

void Page::setAnswerShare(double share) {
    share = std::clamp(share, leastShare, mostShare);
    if (share == share_) return;
    share_ = share;
    placeColumns();
    Q_EMIT answerShareChanged();
}

void Page::visitLines(int top, int bottom, const VisitLine& visit) const {
    QTextBlock block = firstVisibleBlock();
    qreal at = blockBoundingGeometry(block).translated(contentOffset()).top();
    for (; block.isValid() && at <= bottom; block = block.next()) {
        const qreal end = at + blockBoundingRect(block).height();
        const QTextLayout* layout = block.layout();
        if (block.isVisible() && end >= top && layout->lineCount() > 0) {
            const QTextLine first = layout->lineAt(0);
            visit(block, at, end, at + layout->position().y() + first.y() + first.ascent());
        }
        at = end;
    }
}

// The document tells of its edits before it lays lines out anew.
void Page::textEdited(int start, int removed, int added) {
    const int end = std::min(start + added, document()->characterCount() - 1);
    const QTextBlock firstBlock = document()->findBlock(start), lastBlock = document()->findBlock(end);
    const int first = firstBlock.blockNumber(), inserted = lastBlock.blockNumber() - first + 1;
    const int gone = inserted - (document()->blockCount() - lines_.count());
    const bool pushedDown =
        removed == 0 && inserted > 1 && firstBlock.position() == start && lastBlock.position() == end;
    const LineList::Line* told = lines_.told(first);
    if (inserted == 1 && gone == 1) {
        const LineFormats formats = firstBlock.layout()->formats();
        if (firstBlock.layout()->preeditAreaText().isEmpty() && !formats.isEmpty())
            setFormats(firstBlock, editedFormats(formats, start - firstBlock.position(), removed, added));
    } else {
        const LineFormats formats = told ? formatsOf(*told, *theme_) : LineFormats();
        const int unit = start - firstBlock.position();
        setFormats(firstBlock,
                   pushedDown ? LineFormats() : editedFormats(formats, unit, firstBlock.length() + removed, 0));
        if (inserted > 1) setFormats(lastBlock, pushedDown ? formats : LineFormats());
    }
    lines_.replace(first, gone, inserted, pushedDown);
    text_.edit(start, removed, textOf(start, end));
}

void Page::answered(bool first) {
    lines_.take(text_.answer().operator*(), first);
    showVisibleLines();
}

void Page::showVisibleLines() {
    if (!lines_.stale().empty()) {
        visitLines(0, viewport()->height(), [this](const QTextBlock& block, qreal, qreal, qreal) {
            const int line = block.blockNumber();
            const LineList::Line* told = lines_.told(line);
            if (!lines_.isStale(line)) return;
            lines_.view(line);
            if (setFormats(block, formatsOf(*told, *theme_)))
                document()->markContentsDirty(block.position(), block.length());
        });
        slices_.start();
    }
    answers_->update();
    Q_EMIT answersChanged();
}

// Lines that are not seen wait until nothing else is to be done, and never take long.
void Page::showStaleLines() {
    constexpr qint64 budget = 3;  // milliseconds
    constexpr int step = 16;
    QElapsedTimer timer;
    timer.start();
    int from = -1, to = -1, line = lines_.stale().from;
    const int end = std::min(lines_.stale().to, lines_.count());
    for (QTextBlock block = document()->findBlockByNumber(line); line < end && block.isValid();
         block = block.next(), ++line) {
        if (line % step == 0 && timer.elapsed() >= budget) break;
        if (!lines_.isStale(line)) continue;
        lines_.view(line);
        if (!setFormats(block, formatsOf(*lines_.told(line), *theme_))) continue;
        if (from < 0) from = block.position();
        to = block.position() + block.length();
    }
    if (from >= 0) document()->markContentsDirty(from, to - from);
    lines_.setStaleFrom(line);
    if (line < end) return;
    slices_.stop();
    lines_.settled();
    Q_EMIT answersSettled();
}

void Page::showAllAgain() {
    lines_.forgetViews();
    showVisibleLines();
}

void Page::updateRow(int line) {
    const QTextBlock block = document()->findBlockByNumber(line);
    if (!block.isValid()) return;
    const QRectF row = blockBoundingGeometry(block).translated(contentOffset());
    const QRect part(0, static_cast<int>(std::floor(row.top())), viewport()->width(),
                     static_cast<int>(std::ceil(row.height())) + 1);
    viewport()->update(part);
    answers_->update(0, part.top(), answers_->width(), part.height());
}

void Page::placeColumns() {
    const QRect all = contentsRect();
    const int bar = verticalScrollBar()->isVisible() ? verticalScrollBar()->width() : 0;
    const int width = static_cast<int>((all.width() - bar) * share_);
    setViewportMargins(0, 0, width, 0);
    const QRect view = viewport()->geometry();
    answers_->setGeometry(view.right() + 1, view.top(), width, view.height());
}

void Page::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        theme_ = &Theme::matching(palette());
        showAllAgain();
    }
}

void Page::insertFromMimeData(const QMimeData* source) {
    if (!source->hasText()) return;
    QString text = source->text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QChar::LineSeparator, u'\n');
    textCursor().insertText(text);
    ensureCursorVisible();
}

void Page::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && event->modifiers() & Qt::ShiftModifier) {
        // A line of the engine never has a line break within.
        QKeyEvent plain(event->type(), event->key(), event->modifiers() & ~Qt::ShiftModifier, event->text());
        return QPlainTextEdit::keyPressEvent(&plain);
    }
    QPlainTextEdit::keyPressEvent(event);
}

void Page::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRectF row = blockBoundingGeometry(textCursor().block()).translated(contentOffset());
    painter.fillRect(QRectF(0, row.top(), viewport()->width(), row.height()), theme_->currentLine);
    painter.end();
    QPlainTextEdit::paintEvent(event);
}

void Page::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    placeColumns();
}

void Page::scrollContentsBy(int dx, int dy) {
    QPlainTextEdit::scrollContentsBy(dx, dy);
    if (dy != 0 && !lines_.stale().empty()) showVisibleLines();
}

}  // namespace vemo::notepad
