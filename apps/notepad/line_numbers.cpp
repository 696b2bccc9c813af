// SPDX-License-Identifier: MIT
#include "notepad/line_numbers.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTextBlock>
#include <algorithm>

#include "notepad/page.h"

namespace vemo::notepad {

namespace {

constexpr int margin = 10;
constexpr int leastDigits = 2;

}  // namespace

LineNumbers::LineNumbers(Page& page) : QWidget(&page), page_(page) {}

int LineNumbers::wantedWidth() const {
    const auto digits = std::max<qsizetype>(leastDigits, QString::number(page_.blockCount()).size());
    return margin + QFontMetrics(page_.font()).horizontalAdvance(QString(digits, u'9'));
}

void LineNumbers::followPage(const QRect& part, int dy) {
    if (dy != 0)
        scroll(0, dy);
    else
        update(0, part.y(), width(), part.height());
}

void LineNumbers::paintEvent(QPaintEvent* event) {
    const Theme& theme = page_.theme();
    const QRect part = event->rect();
    QPainter painter(this);
    painter.fillRect(part, theme.background);
    painter.setFont(page_.font());
    const QFontMetricsF metrics(page_.font());
    const int current = page_.textCursor().blockNumber();
    page_.visitLines(part.top(), part.bottom(), [&](const QTextBlock& block, qreal top, qreal bottom, qreal baseline) {
        const bool here = block.blockNumber() == current;
        if (here) painter.fillRect(QRectF(0, top, width(), bottom - top), theme.currentLine);
        const QString number = QString::number(block.blockNumber() + 1);
        painter.setPen(here ? theme.text : theme.lineNumber);
        painter.drawText(QPointF(width() - metrics.horizontalAdvance(number), baseline), number);
    });
}

}  // namespace vemo::notepad
