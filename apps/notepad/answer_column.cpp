// SPDX-License-Identifier: MIT
#include "notepad/answer_column.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTextBlock>

#include "notepad/page.h"

namespace vemo::notepad {

namespace {

constexpr int margin = 12;

}  // namespace

AnswerColumn::AnswerColumn(Page& page) : QWidget(&page), page_(page) {
    setAccessibleName(tr("Answers"));
}

void AnswerColumn::followPage(const QRect& part, int dy) {
    if (dy != 0)
        scroll(0, dy);
    else
        update(0, part.y(), width(), part.height());
}

void AnswerColumn::paintEvent(QPaintEvent* event) {
    const Theme& theme = page_.theme();
    const QRect part = event->rect();
    QPainter painter(this);
    painter.fillRect(part, theme.background);
    painter.setFont(page_.font());
    const QFontMetricsF metrics(page_.font());
    const int current = page_.textCursor().blockNumber();
    const qreal room = width() - 2 * margin;
    page_.visitLines(part.top(), part.bottom(), [&](const QTextBlock& block, qreal top, qreal bottom, qreal baseline) {
        const int line = block.blockNumber();
        if (line == current) painter.fillRect(QRectF(0, top, width(), bottom - top), theme.currentLine);
        const LineView& view = page_.lines().view(line);
        const bool isReason = view.answer.isEmpty();
        QString text = isReason ? view.reason : view.answer;
        if (text.isEmpty()) return;
        if (metrics.horizontalAdvance(text) > room && !view.brief.isEmpty()) text = view.brief;
        text = metrics.elidedText(text, Qt::ElideRight, room);
        painter.setPen(isReason ? theme.reason : theme.answer);
        painter.drawText(QPointF(width() - margin - metrics.horizontalAdvance(text), baseline), text);
    });
    painter.fillRect(QRect(0, part.top(), 1, part.height()), theme.divider);
}

}  // namespace vemo::notepad
