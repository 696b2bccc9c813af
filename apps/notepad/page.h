// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>
#include <QTimer>
#include <functional>

#include "notepad/calculated_text.h"
#include "notepad/line_list.h"
#include "notepad/theme.h"

namespace vemo::notepad {

class AnswerColumn;

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
    const CalculatedText& calculated() const { return text_; }
    CalculatedText& calculated() { return text_; }

    LineList& lines() { return lines_; }
    const Theme& theme() const { return *theme_; }

    // The part of the width that answers take, from 0 to 1.
    double answerShare() const { return share_; }
    void setAnswerShare(double share);

    // Calls `visit(block, top, bottom, baseline)` for every line in this part of the height, in the coordinates of the
    // viewport.
    using VisitLine = std::function<void(const QTextBlock&, qreal top, qreal bottom, qreal baseline)>;
    void visitLines(int top, int bottom, const VisitLine& visit) const;

Q_SIGNALS:
    void answersChanged();  // what is shown beside the lines
    void answersSettled();  // and everything else that answers changed was made
    void answerShareChanged();

protected:
    void changeEvent(QEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void textEdited(int start, int removed, int added);
    void answered(bool first);
    void showVisibleLines();
    void showStaleLines();
    void showAllAgain();
    QString textOf(int start, int end) const;
    void placeColumns();
    void updateRow(int line);

    LineList lines_;
    CalculatedText text_;
    const Theme* theme_;
    AnswerColumn* answers_;
    QTimer slices_;
    double share_ = 0.3;
    int cursorLine_ = 0;
};

}  // namespace vemo::notepad
