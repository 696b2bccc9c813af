// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTimer>
#include <functional>

#include "notepad/calculated_text.h"
#include "notepad/line_list.h"
#include "notepad/theme.h"

namespace vemo::notepad {

class AnswerColumn;
class CompletionList;
class LineNumbers;

// A document: its text on the left, in the colours of what its words are, and beside each line its answer. The text
// may be edited before there is an engine; the answers then are those that were stored.
class Page : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit Page(Calculation& calculation, QWidget* parent = nullptr);
    ~Page() override;

    // A new text, without a past and not modified. Lines end with line feeds.
    void setText(const QString& text);
    QString text() const;

    // Shows the answers of last time, as long as there are no others.
    void showStoredResults(const VemoEngine::Result& result);
    // The answers to the text as it is; null while they are awaited.
    const VemoEngine::Result* results() const;
    Calculation& calculation() { return calculation_; }
    CalculatedText& calculated() { return text_; }
    LineList& lines() { return lines_; }

    // What is done with answers; by default that of the cursor's line.
    void copyAnswer(int line = -1);
    void copyPlainNumber(int line = -1);
    // The nearest answer above the cursor's line, as a value.
    void insertAnswerAbove();
    // Tells at its answer what a tip there tells.
    void explainAnswer();
    // Offers words for what stands before the cursor; where nothing was `asked`, from two letters on.
    void complete(bool asked);

    // True for a line that is being typed, with which no fault is found: its notes and its reason wait until the person
    // pauses, or goes to another line.
    bool isHeld(int line) const { return held_ == line; }
    void releaseHeldLine();

    // How the page looks.
    const Theme& theme() const { return *theme_; }
    double answerShare() const { return share_; }  // the part of the width that answers take, from 0 to 1
    void setAnswerShare(double share);
    bool hasLineNumbers() const;
    void setLineNumbers(bool shown);
    // What is found is marked; an empty text for nothing.
    void setSearch(const QString& text, QTextDocument::FindFlags flags);

    // Calls `visit(block, top, bottom, baseline)` for every line in this part of the height, in the coordinates of the
    // viewport.
    using VisitLine = std::function<void(const QTextBlock&, qreal top, qreal bottom, qreal baseline)>;
    void visitLines(int top, int bottom, const VisitLine& visit) const;
    // The line at a height; -1 below the last one.
    int lineAt(int y) const;

Q_SIGNALS:
    void answersChanged();  // what is shown beside the lines
    void answersSettled();  // and everything else that answers changed was made
    void answerShareChanged(double share);
    void zoomWanted(int steps);
    void said(const QString& message);

protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    // Text and answers.
    void textEdited(int start, int removed, int added);
    void answered(bool first);
    void showVisibleLines();
    void showStaleLines();
    void settle();
    void showAllAgain();
    bool dress(const QTextBlock& block);  // true where its formats changed
    void hold(int line);
    QString textOf(int start, int end) const;
    // The look.
    void placeColumns();
    void updateRow(int line);
    void followCursor();
    void paintMatches(QPainter& painter, const QRect& part);
    QString noteAt(const QPoint& point) const;
    // Keys.
    void takeCompletion(const QString& word);
    void insertValue(const QString& value);

    Calculation& calculation_;
    LineList lines_;
    CalculatedText text_;
    const Theme* theme_;
    AnswerColumn* answers_;
    LineNumbers* numbers_;
    CompletionList* completions_;
    QTimer slices_;
    QTimer hold_;
    int held_ = -1;
    double share_;
    int cursorLine_ = 0;
    int typed_ = 0;  // units before the cursor that a completion replaces
    bool typing_ = false;
    QString sought_;
    Qt::CaseSensitivity soughtCase_ = Qt::CaseInsensitive;
};

}  // namespace vemo::notepad
