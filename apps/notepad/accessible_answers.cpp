// SPDX-License-Identifier: MIT
#include "notepad/accessible_answers.h"

#include <QCoreApplication>
#include <QTextBlock>

#include "notepad/answer_column.h"
#include "notepad/page.h"
#include "notepad/texts.h"

namespace vemo::notepad {

namespace {

class Item : public QAccessibleInterface {
public:
    Item(const AccessibleAnswers& list, Page& page, int line) : list_(list), page_(page), line_(line) {}

    int line() const { return line_; }
    bool isValid() const override { return line_ < page_.blockCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return list_.window(); }
    QAccessibleInterface* parent() const override { return const_cast<AccessibleAnswers*>(&list_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) return spokenLine(page_, line_);
        return kind == QAccessible::Value ? spokenAnswer(page_, line_) : QString();
    }
    QRect rect() const override {
        QRect row;
        page_.visitLines(0, page_.viewport()->height(), [&](const QTextBlock& block, qreal top, qreal bottom, qreal) {
            if (block.blockNumber() == line_) row = QRectF(0, top, 1, bottom - top).toRect();
        });
        if (row.isNull()) return {};
        const QRect column = list_.rect();
        return {column.x(), column.y() + row.y(), column.width(), row.height()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        state.selectable = true;
        state.selected = page_.textCursor().blockNumber() == line_;
        state.offscreen = rect().isNull();
        return state;
    }

private:
    const AccessibleAnswers& list_;
    Page& page_;
    int line_;
};

QAccessibleInterface* interfaceFor(const QString&, QObject* object) {
    auto* column = qobject_cast<AnswerColumn*>(object);
    return column ? new AccessibleAnswers(column, column->page()) : nullptr;
}

}  // namespace

void AccessibleAnswers::install() {
    static const bool once = (QAccessible::installFactory(interfaceFor), true);
    Q_UNUSED(once);
}

AccessibleAnswers::AccessibleAnswers(QWidget* column, Page& page)
    : QAccessibleWidget(column, QAccessible::List), page_(page) {}

AccessibleAnswers::~AccessibleAnswers() {
    for (const QAccessible::Id id : items_) QAccessible::deleteAccessibleInterface(id);
}

int AccessibleAnswers::childCount() const {
    return page_.blockCount();
}

QAccessibleInterface* AccessibleAnswers::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    auto& id = items_[index];
    if (id == 0) id = QAccessible::registerAccessibleInterface(new Item(*this, page_, index));
    return QAccessible::accessibleInterface(id);
}

QAccessibleInterface* AccessibleAnswers::childAt(int x, int y) const {
    if (!rect().contains(x, y)) return nullptr;
    return child(page_.lineAt(y - rect().y()));
}

int AccessibleAnswers::indexOfChild(const QAccessibleInterface* child) const {
    const auto* item = dynamic_cast<const Item*>(child);
    return item ? item->line() : -1;
}

QString spokenAnswer(Page& page, int line) {
    const LineView& view = page.lines().view(line);
    QStringList parts;
    if (!view.answer.isEmpty()) parts << QCoreApplication::translate("Answer", "answer %1").arg(view.answer);
    if (!view.reason.isEmpty()) parts << QCoreApplication::translate("Answer", "no answer: %1").arg(view.reason);
    if (const LineList::Line* told = page.lines().told(line))
        for (const Note& note : told->notes()) parts << toQt(note.message);
    return parts.join(QStringLiteral(", "));
}

QString spokenLine(Page& page, int line) {
    const QString text = page.document()->findBlockByNumber(line).text(), answer = spokenAnswer(page, line);
    return answer.isEmpty() ? text : text + QStringLiteral(", ") + answer;
}

}  // namespace vemo::notepad
