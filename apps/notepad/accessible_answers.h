// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>
#include <QHash>

namespace vemo::notepad {

class AnswerColumn;
class Page;

// The answers for a screen reader: a list with an item a line, which reads the line and its answer.
class AccessibleAnswers : public QAccessibleWidget {
public:
    AccessibleAnswers(QWidget* column, Page& page);
    ~AccessibleAnswers() override;

    // To be called once, before the first column is made.
    static void install();

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

private:
    Page& page_;
    mutable QHash<int, QAccessible::Id> items_;
};

// A line with its answer, as it is read: "rent = $1,200, answer $1,200".
QString spokenLine(Page& page, int line);
// The answer or the reason alone, with what notes have to say.
QString spokenAnswer(Page& page, int line);

}  // namespace vemo::notepad
