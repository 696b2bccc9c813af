// SPDX-License-Identifier: MIT
#include "notepad/completion_list.h"

#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>

#include "notepad/texts.h"

namespace vemo::notepad {

namespace {

constexpr int mostRows = 8;
constexpr int padding = 6;
constexpr int gap = 24;  // between a word and its kind
constexpr int kindRole = Qt::UserRole;

QString kindText(CompletionKind kind) {
    switch (kind) {
        case CompletionKind::operatorWord:
            return CompletionList::tr("operator");
        case CompletionKind::unit:
            return CompletionList::tr("unit");
        case CompletionKind::currency:
            return CompletionList::tr("currency");
        case CompletionKind::function:
            return CompletionList::tr("function");
        case CompletionKind::variable:
            return CompletionList::tr("name");
        case CompletionKind::place:
            return CompletionList::tr("place");
        case CompletionKind::script:
            return CompletionList::tr("extension");
    }
    return {};
}

// Paints the word on the left and its kind, dimmed, on the right. Before the person is in the list, the word that Tab
// takes is only framed.
class Row : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    bool moved = false;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QPalette& palette = option.palette;
        const bool current = option.state & QStyle::State_Selected;
        QColor text = palette.color(QPalette::Text);
        if (current) {
            QColor below = palette.color(QPalette::Highlight);
            if (moved)
                text = palette.color(QPalette::HighlightedText);
            else
                below.setAlphaF(0.16F);
            painter->fillRect(option.rect, below);
        }
        const QRect inside = option.rect.adjusted(padding, 0, -padding, 0);
        painter->setFont(option.font);
        painter->setPen(text);
        painter->drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, index.data().toString());
        text.setAlphaF(0.6F);
        painter->setPen(text);
        painter->drawText(inside, Qt::AlignRight | Qt::AlignVCenter, index.data(kindRole).toString());
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QFontMetrics metrics(option.font);
        const int width = metrics.horizontalAdvance(index.data().toString()) +
                          metrics.horizontalAdvance(index.data(kindRole).toString());
        return {width + gap + 2 * padding, metrics.height() + padding};
    }
};

}  // namespace

CompletionList::CompletionList(QWidget* page) : QFrame(page), list_(new QListWidget(this)) {
    hide();
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(list_);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setItemDelegate(new Row(list_));
    list_->setAccessibleName(tr("Completions"));
    connect(list_, &QListWidget::itemClicked, this, &CompletionList::choose);
}

void CompletionList::offer(const std::vector<Completion>& items, const QRect& cursor) {
    if (items.empty()) return hide();
    list_->clear();
    list_->setFont(font());
    for (const Completion& item : items) {
        auto* row = new QListWidgetItem(toQt(item.text), list_);
        row->setData(kindRole, kindText(item.kind));
        row->setData(Qt::AccessibleTextRole, row->text() + QStringLiteral(", ") + kindText(item.kind));
    }
    list_->setCurrentRow(0);
    showMoved(false);
    const int rows = std::min(list_->count(), mostRows);
    const int bar = list_->count() > rows ? list_->verticalScrollBar()->sizeHint().width() : 0;
    const int frame = 2 * (frameWidth() + 1);
    resize(list_->sizeHintForColumn(0) + bar + frame, rows * list_->sizeHintForRow(0) + frame);
    const QRect room = parentWidget()->rect();
    const bool above = cursor.bottom() + height() > room.bottom() && cursor.top() - height() > room.top();
    QWidget::move(qBound(0, cursor.left() - padding, std::max(0, room.width() - width())),
                  above ? cursor.top() - height() - 2 : cursor.bottom() + 2);
    raise();
    show();
}

bool CompletionList::takeKey(int key, Qt::KeyboardModifiers modifiers) {
    if (isHidden() || (modifiers & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0) return false;
    switch (key) {
        case Qt::Key_Tab:
            choose();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (moved_) {
                choose();
                return true;
            }
            hide();
            return false;
        case Qt::Key_Escape:
            hide();
            return true;
        case Qt::Key_Down:
            move(moved_ ? 1 : 0);
            return true;
        case Qt::Key_Up:
            if (!moved_) {
                hide();
                return false;
            }
            move(-1);
            return true;
        case Qt::Key_PageDown:
        case Qt::Key_PageUp:
            if (moved_)
                move(key == Qt::Key_PageDown ? mostRows : -mostRows);
            else
                hide();
            return moved_;
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Home:
        case Qt::Key_End:
            hide();
            return false;
        default:
            return false;
    }
}

void CompletionList::choose() {
    const QListWidgetItem* item = list_->currentItem();
    hide();
    if (item) Q_EMIT chosen(item->text());
}

void CompletionList::move(int rows) {
    const int row = list_->currentRow() + rows;
    showMoved(row >= 0);
    list_->setCurrentRow(qBound(0, row, list_->count() - 1));
}

void CompletionList::showMoved(bool moved) {
    moved_ = moved;
    static_cast<Row*>(list_->itemDelegate())->moved = moved;
    list_->viewport()->update();
}

}  // namespace vemo::notepad
