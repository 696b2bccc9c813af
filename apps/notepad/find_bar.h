// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTextDocument>
#include <QWidget>

namespace vemo::notepad {

class Page;

// Finds and replaces below the page. Enter finds the next one, with Shift the one before; Escape goes back to the page.
class FindBar : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent = nullptr);

    void setPage(Page* page);
    void open(bool replaces);
    void findNext() { find(false); }
    void findPrevious() { find(true); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void find(bool backwards);
    void findAgain();  // from where the present find begins
    void replace();
    void replaceAll();
    void showCount();
    QTextDocument::FindFlags flags() const;

    QPointer<Page> page_;
    QLineEdit* sought_;
    QLineEdit* replacement_;
    QCheckBox* cases_;
    QLabel* count_;
    QWidget* replacing_;
};

}  // namespace vemo::notepad
