// SPDX-License-Identifier: MIT
#include "notepad/answer_column.h"

#include <QApplication>
#include <QDrag>
#include <QHelpEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTextBlock>
#include <QToolTip>

#include "notepad/answer_texts.h"
#include "notepad/page.h"

namespace vemo::notepad {

const QString valueFormat = QStringLiteral("application/x-vemo-value");

namespace {

constexpr int margin = 14;  // at both sides of the answers
constexpr int padding = 5;  // of the background of the answer that the mouse points at
constexpr int grip = 6;     // of the divider

}  // namespace

AnswerColumn::AnswerColumn(Page& page) : QWidget(&page), page_(page) {
    setAccessibleName(tr("Answers"));
    setMouseTracking(true);
    setCursor(Qt::ArrowCursor);
}

void AnswerColumn::followPage(const QRect& part, int dy) {
    if (dy != 0)
        scroll(0, dy);
    else
        update(0, part.y(), width(), part.height());
}

QString AnswerColumn::shownText(int line) const {
    const LineView& view = page_.lines().view(line);
    const QFontMetricsF metrics(page_.font());
    const qreal room = width() - 2 * margin;
    QString text = view.answer.isEmpty() && !page_.isHeld(line) ? view.reason : view.answer;
    if (!view.brief.isEmpty() && metrics.horizontalAdvance(text) > room) text = view.brief;
    return metrics.elidedText(text, Qt::ElideRight, room);
}

void AnswerColumn::paintEvent(QPaintEvent* event) {
    const Theme& theme = page_.theme();
    const QRect part = event->rect();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(part, theme.background);
    painter.setFont(page_.font());
    const QFontMetricsF metrics(page_.font());
    const int current = page_.textCursor().blockNumber();
    page_.visitLines(part.top(), part.bottom(), [&](const QTextBlock& block, qreal top, qreal bottom, qreal baseline) {
        const int line = block.blockNumber();
        if (line == current) painter.fillRect(QRectF(0, top, width(), bottom - top), theme.currentLine);
        const QString text = shownText(line);
        if (text.isEmpty()) return;
        const qreal length = metrics.horizontalAdvance(text);
        const QPointF start(width() - margin - length, baseline);
        if (line == hovered_) {
            QPainterPath below;
            below.addRoundedRect(
                QRectF(start.x() - padding, baseline - metrics.ascent(), length + 2 * padding, metrics.height()), 4, 4);
            painter.fillPath(below, theme.hover);
        }
        painter.setPen(page_.lines().view(line).answer.isEmpty() ? theme.reason : theme.answer);
        painter.drawText(start, text);
    });
    painter.fillRect(QRect(0, part.top(), 1, part.height()), theme.divider);
}

int AnswerColumn::answerAt(const QPoint& point) const {
    const int line = page_.lineAt(point.y());
    if (line < 0 || page_.lines().view(line).answer.isEmpty()) return -1;
    const qreal length = QFontMetricsF(page_.font()).horizontalAdvance(shownText(line));
    return point.x() >= width() - margin - padding - length ? line : -1;
}

void AnswerColumn::setHovered(int line) {
    if (hovered_ == line) return;
    hovered_ = line;
    update();
}

void AnswerColumn::drag(int line) {
    const AnsweredLine* told = page_.lines().told(line);
    if (!told) return;
    auto* value = new QMimeData;
    value->setData(valueFormat, {});
    value->setText(valueText(page_.calculation(), *told));
    auto* dragged = new QDrag(this);
    dragged->setMimeData(value);
    dragged->exec(Qt::CopyAction);
}

bool AnswerColumn::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int line = page_.lineAt(help->pos().y());
    const AnsweredLine* told = line < 0 ? nullptr : page_.lines().told(line);
    const QString tip = told ? answerTip(*told, page_.calculated().readingOf(line)) : QString();
    if (tip.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), tip, this);
    return true;
}

void AnswerColumn::leaveEvent(QEvent*) {
    setHovered(-1);
}

void AnswerColumn::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    pressedAt_ = event->pos();
    movesDivider_ = event->pos().x() < grip;
    pressed_ = movesDivider_ ? -1 : answerAt(event->pos());
}

void AnswerColumn::mouseMoveEvent(QMouseEvent* event) {
    if (movesDivider_) return Q_EMIT dividerMoved(mapToParent(event->pos()).x());
    const int line = answerAt(event->pos());
    setHovered(line);
    setCursor(event->pos().x() < grip ? Qt::SplitHCursor : line >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (pressed_ < 0 || (event->pos() - pressedAt_).manhattanLength() < QApplication::startDragDistance()) return;
    drag(std::exchange(pressed_, -1));
}

void AnswerColumn::mouseReleaseEvent(QMouseEvent* event) {
    if (pressed_ >= 0 && answerAt(event->pos()) == pressed_) Q_EMIT clicked(pressed_, event->modifiers());
    pressed_ = -1;
    movesDivider_ = false;
}

void AnswerColumn::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->pos().x() < grip) Q_EMIT dividerReset();
}

}  // namespace vemo::notepad
