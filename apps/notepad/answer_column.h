// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QWidget>

namespace vemo::notepad {

class Page;

// The format in which a dragged answer is recognised, so that it is set apart from the word at which it is dropped.
extern const QString valueFormat;

// The answers of a page, each right-aligned in the first row of its line; where there is none though the line asks for
// one, the reason, dimmed. A click copies an answer, dragging takes it elsewhere, and the left edge moves.
class AnswerColumn : public QWidget {
    Q_OBJECT

public:
    explicit AnswerColumn(Page& page);

    Page& page() const { return page_; }

    // The page was scrolled, or a part of it is to be painted.
    void followPage(const QRect& part, int dy);
    // The text as it is shown, which is shortened where there is no room.
    QString shownText(int line) const;

Q_SIGNALS:
    void clicked(int line, Qt::KeyboardModifiers modifiers);
    void dividerMoved(int x);  // to a place of the page
    void dividerReset();

protected:
    bool event(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int answerAt(const QPoint& point) const;  // its line; -1 where there is none
    void setHovered(int line);
    void drag(int line);

    Page& page_;
    int hovered_ = -1;
    int pressed_ = -1;
    QPoint pressedAt_;
    bool movesDivider_ = false;
};

}  // namespace vemo::notepad
