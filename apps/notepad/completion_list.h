// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QListWidget>
#include <vector>

#include "vemo/completions.h"

namespace vemo::notepad {

// Words to choose from, below the cursor of the page. The page keeps the focus and passes its keys on: Tab takes the
// first or the chosen word, Down moves into the list, and only then Enter is the list's.
class CompletionList : public QFrame {
    Q_OBJECT

public:
    explicit CompletionList(QWidget* page);

    // Below or above what is at `cursor`, in the page's coordinates. Nothing to offer hides the list.
    void offer(const std::vector<Completion>& items, const QRect& cursor);
    // True for a key that was the list's.
    bool takeKey(int key, Qt::KeyboardModifiers modifiers);

Q_SIGNALS:
    void chosen(const QString& word);

private:
    void choose();
    void move(int rows);
    void showMoved(bool moved);

    QListWidget* list_;
    bool moved_ = false;  // the person is in the list
};

}  // namespace vemo::notepad
