// SPDX-License-Identifier: MIT
// A page's text, and the answers to it.
#include "notepad/page.h"

#include <QElapsedTimer>
#include <QMimeData>
#include <QTextBlock>
#include <algorithm>
#include <utility>

#include "notepad/accessible_answers.h"
#include "notepad/answer_column.h"
#include "notepad/completion_list.h"
#include "notepad/line_formats.h"
#include "notepad/line_numbers.h"

namespace vemo::notepad {

namespace {

constexpr int margin = 12;
constexpr double usualShare = 0.3;
constexpr int pause = 900;  // milliseconds without a key, after which a line counts as written

}  // namespace

Page::Page(Calculation& calculation, QWidget* parent)
    : QPlainTextEdit(parent),
      calculation_(calculation),
      text_(calculation, [this] { return text(); }),
      theme_(&Theme::matching(palette())),
      answers_((AccessibleAnswers::install(), new AnswerColumn(*this))),
      numbers_(new LineNumbers(*this)),
      completions_(new CompletionList(this)),
      share_(usualShare) {
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(margin);
    setAccessibleName(tr("Page"));
    numbers_->hide();
    slices_.setInterval(0);
    hold_.setSingleShot(true);
    hold_.setInterval(pause);
    connect(&hold_, &QTimer::timeout, this, &Page::releaseHeldLine);
    connect(&slices_, &QTimer::timeout, this, &Page::showStaleLines);
    connect(document(), &QTextDocument::contentsChange, this, &Page::textEdited);
    connect(&text_, &CalculatedText::asked, this, [this] { lines_.requested(); });
    connect(&text_, &CalculatedText::answered, this, &Page::answered);
    connect(this, &QPlainTextEdit::updateRequest, answers_, &AnswerColumn::followPage);
    connect(this, &QPlainTextEdit::updateRequest, numbers_, &LineNumbers::followPage);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &Page::placeColumns);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &Page::followCursor);
    connect(answers_, &AnswerColumn::dividerMoved, this, [this](int x) { setAnswerShare(1 - double(x) / width()); });
    connect(answers_, &AnswerColumn::dividerReset, this, [this] { setAnswerShare(usualShare); });
    connect(answers_, &AnswerColumn::clicked, this, [this](int line, Qt::KeyboardModifiers modifiers) {
        modifiers& Qt::ControlModifier ? copyPlainNumber(line) : copyAnswer(line);
    });
    connect(completions_, &CompletionList::chosen, this, &Page::takeCompletion);
    placeColumns();
}

Page::~Page() {
    // Members that are destroyed after this still tell of changes.
    document()->disconnect(this);
}

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
        const int from = std::max(start - block.position(), 0);
        const int to = std::min(end - block.position(), block.length() - 1);
        if (to > from) text += QStringView(block.text()).sliced(from, to - from);
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

// The document tells of its edits before it lays lines out anew.
void Page::textEdited(int start, int removed, int added) {
    const int end = std::min(start + added, document()->characterCount() - 1);
    const QTextBlock firstBlock = document()->findBlock(start), lastBlock = document()->findBlock(end);
    const int first = firstBlock.blockNumber(), inserted = lastBlock.blockNumber() - first + 1;
    const int gone = inserted - (document()->blockCount() - lines_.count());
    const bool pushedDown =
        removed == 0 && inserted > 1 && firstBlock.position() == start && lastBlock.position() == end;
    const int unit = start - firstBlock.position();
    if (inserted == 1 && gone == 1) {
        // The new units look like those before, until their line is calculated.
        const LineFormats formats = firstBlock.layout()->formats();
        if (firstBlock.layout()->preeditAreaText().isEmpty() && !formats.isEmpty())
            setFormats(firstBlock, editedFormats(formats, unit, removed, added));
    } else {
        const LineList::Line* told = lines_.told(first);
        const LineFormats formats = told ? formatsOf(*told, *theme_) : LineFormats();
        setFormats(firstBlock,
                   pushedDown ? LineFormats() : editedFormats(formats, unit, firstBlock.length() + removed, 0));
        if (inserted > 1) setFormats(lastBlock, pushedDown ? formats : LineFormats());
    }
    lines_.replace(first, gone, inserted, pushedDown);
    if (inserted != gone) {
        if (held_ >= first + gone)
            held_ += inserted - gone;
        else if (held_ >= first)
            held_ = -1;  // its answer comes anew
        releaseHeldLine();
    }
    text_.edit(start, removed, textOf(start, end));
}

void Page::answered(bool first) {
    lines_.take(*text_.answer(), first);
    showVisibleLines();
}

void Page::showVisibleLines() {
    if (lines_.stale().empty()) {
        settle();
    } else {
        visitLines(0, viewport()->height(), [this](const QTextBlock& block, qreal, qreal, qreal) {
            const int line = block.blockNumber();
            if (!lines_.stale().contains(line)) return;
            updateRow(line);
            if (!lines_.isStale(line)) return;
            lines_.view(line);
            if (dress(block)) document()->markContentsDirty(block.position(), block.length());
        });
        slices_.start();
    }
    Q_EMIT answersChanged();
}

// Lines that are not seen wait until nothing else is to be done, and never take long.
void Page::showStaleLines() {
    constexpr qint64 budget = 3;  // milliseconds
    constexpr int step = 16;      // lines between looks at the clock
    QElapsedTimer timer;
    timer.start();
    int from = -1, to = -1, line = lines_.stale().from;
    const int end = std::min(lines_.stale().to, lines_.count());
    for (QTextBlock block = document()->findBlockByNumber(line); line < end && block.isValid();
         block = block.next(), ++line) {
        if (line % step == 0 && timer.elapsed() >= budget) break;
        if (!lines_.isStale(line)) continue;
        lines_.view(line);
        if (!dress(block)) continue;
        if (from < 0) from = block.position();
        to = block.position() + block.length();
    }
    if (from >= 0) document()->markContentsDirty(from, to - from);
    lines_.setStaleFrom(line);
    if (line >= end) settle();
}

bool Page::dress(const QTextBlock& block) {
    const int line = block.blockNumber();
    const LineList::Line* told = lines_.told(line);
    return setFormats(block,
                      told ? formatsOf(*told, *theme_, isHeld(line) ? Notes::left : Notes::marked) : LineFormats());
}

void Page::hold(int line) {
    if (held_ != line) releaseHeldLine();
    held_ = line;
    hold_.start();
}

void Page::releaseHeldLine() {
    hold_.stop();
    const QTextBlock block = document()->findBlockByNumber(std::exchange(held_, -1));
    if (!block.isValid()) return;
    if (!lines_.isStale(block.blockNumber()) && dress(block))
        document()->markContentsDirty(block.position(), block.length());
    updateRow(block.blockNumber());
}

void Page::settle() {
    slices_.stop();
    lines_.settled();
    setAccessibleDescription(spokenAnswer(*this, textCursor().blockNumber()));
    Q_EMIT answersSettled();
}

void Page::showAllAgain() {
    lines_.forgetViews();
    showVisibleLines();
}

bool Page::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText() && !source->hasUrls();
}

void Page::insertFromMimeData(const QMimeData* source) {
    if (!source->hasText()) return;
    QString text = source->text();
    if (source->hasFormat(valueFormat)) return insertValue(text);
    // A line of the engine never has a line break within.
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QChar::LineSeparator, u'\n');
    textCursor().insertText(text);
    ensureCursorVisible();
}

}  // namespace vemo::notepad
