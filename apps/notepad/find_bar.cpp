// SPDX-License-Identifier: MIT
#include "notepad/find_bar.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QTextBlock>
#include <QToolButton>

#include "notepad/page.h"

namespace vemo::notepad {

namespace {

constexpr int mostCounted = 1000;

QPushButton* button(const QString& text, QWidget* parent) {
    auto* made = new QPushButton(text, parent);
    made->setAutoDefault(false);
    return made;
}

}  // namespace

FindBar::FindBar(QWidget* parent)
    : QWidget(parent),
      sought_(new QLineEdit(this)),
      replacement_(new QLineEdit(this)),
      cases_(new QCheckBox(tr("Match &case"), this)),
      count_(new QLabel(this)),
      replacing_(new QWidget(this)) {
    hide();
    auto* find = new QLabel(tr("F&ind:"), this);
    find->setBuddy(sought_);
    auto* with = new QLabel(tr("Re&place with:"), this);
    with->setBuddy(replacement_);
    auto* previous = button(tr("Pre&vious"), this);
    auto* next = button(tr("&Next"), this);
    auto* one = button(tr("&Replace"), this);
    auto* all = button(tr("Replace &All"), this);
    auto* closing = new QToolButton(this);
    closing->setAutoRaise(true);
    closing->setText(QStringLiteral("×"));
    closing->setToolTip(tr("Close"));
    closing->setAccessibleName(tr("Close"));
    sought_->setAccessibleName(tr("Find"));
    replacement_->setAccessibleName(tr("Replace with"));
    count_->setMinimumWidth(count_->fontMetrics().horizontalAdvance(tr("%1 of %2").arg(1000).arg(1000)));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(8, 6, 8, 6);
    grid->addWidget(find, 0, 0);
    grid->addWidget(sought_, 0, 1);
    grid->addWidget(previous, 0, 2);
    grid->addWidget(next, 0, 3);
    grid->addWidget(cases_, 0, 4);
    grid->addWidget(count_, 0, 5);
    grid->addWidget(closing, 0, 6);
    grid->setColumnStretch(1, 1);
    auto* row = new QHBoxLayout(replacing_);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(with);
    row->addWidget(replacement_, 1);
    row->addWidget(one);
    row->addWidget(all);
    grid->addWidget(replacing_, 1, 0, 1, 7);

    connect(sought_, &QLineEdit::textChanged, this, &FindBar::findAgain);
    connect(cases_, &QCheckBox::toggled, this, &FindBar::findAgain);
    connect(previous, &QPushButton::clicked, this, &FindBar::findPrevious);
    connect(next, &QPushButton::clicked, this, &FindBar::findNext);
    connect(one, &QPushButton::clicked, this, &FindBar::replace);
    connect(all, &QPushButton::clicked, this, &FindBar::replaceAll);
    connect(closing, &QToolButton::clicked, this, &QWidget::hide);
}

void FindBar::setPage(Page* page) {
    if (page_ == page) return;
    if (page_) page_->setSearch({}, {});
    page_ = page;
    if (page_ && isVisible()) page_->setSearch(sought_->text(), flags());
    showCount();
}

void FindBar::open(bool replaces) {
    replacing_->setVisible(replaces);
    const QString selected = page_ ? page_->textCursor().selectedText() : QString();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) sought_->setText(selected);
    show();
    sought_->setFocus(Qt::ShortcutFocusReason);
    sought_->selectAll();
    if (page_) page_->setSearch(sought_->text(), flags());
    showCount();
}

QTextDocument::FindFlags FindBar::flags() const {
    return cases_->isChecked() ? QTextDocument::FindCaseSensitively : QTextDocument::FindFlags();
}

void FindBar::find(bool backwards) {
    if (!page_ || sought_->text().isEmpty()) return;
    const auto wanted = backwards ? flags() | QTextDocument::FindBackward : flags();
    QTextCursor found = page_->document()->find(sought_->text(), page_->textCursor(), wanted);
    if (found.isNull()) {
        // The search goes on around the end or the beginning.
        QTextCursor from(page_->document());
        if (backwards) from.movePosition(QTextCursor::End);
        found = page_->document()->find(sought_->text(), from, wanted);
    }
    if (!found.isNull()) page_->setTextCursor(found);
    showCount();
}

void FindBar::findAgain() {
    if (!page_) return;
    page_->setSearch(sought_->text(), flags());
    QTextCursor cursor = page_->textCursor();
    cursor.setPosition(cursor.selectionStart());
    page_->setTextCursor(cursor);
    find(false);
}

void FindBar::replace() {
    if (!page_ || sought_->text().isEmpty()) return;
    QTextCursor cursor = page_->textCursor();
    const auto cases = cases_->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (cursor.selectedText().compare(sought_->text(), cases) == 0) {
        cursor.insertText(replacement_->text());
        page_->setTextCursor(cursor);
    }
    find(false);
}

void FindBar::replaceAll() {
    if (!page_ || sought_->text().isEmpty()) return;
    QTextCursor edit(page_->document());
    int replaced = 0;
    edit.beginEditBlock();
    for (QTextCursor found = page_->document()->find(sought_->text(), 0, flags()); !found.isNull();
         found = page_->document()->find(sought_->text(), edit.position(), flags())) {
        edit.setPosition(found.anchor());
        edit.setPosition(found.position(), QTextCursor::KeepAnchor);
        edit.insertText(replacement_->text());
        ++replaced;
    }
    edit.endEditBlock();
    count_->setText(tr("%1 replaced").arg(replaced));
}

// Shows which of all finds is selected. They are counted only up to a number that takes no time.
void FindBar::showCount() {
    if (!page_ || sought_->text().isEmpty() || !isVisible()) return count_->clear();
    const int selected = page_->textCursor().hasSelection() ? page_->textCursor().selectionStart() : -1;
    int count = 0, at = 0;
    for (QTextCursor found = page_->document()->find(sought_->text(), 0, flags());
         !found.isNull() && count <= mostCounted; found = page_->document()->find(sought_->text(), found, flags())) {
        ++count;
        if (found.selectionStart() == selected) at = count;
    }
    if (count == 0)
        count_->setText(tr("Not found"));
    else if (count > mostCounted)
        count_->setText(tr("More than %1").arg(mostCounted));
    else
        count_->setText(at > 0 ? tr("%1 of %2").arg(at).arg(count) : tr("%1 found").arg(count));
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) return hide();
    if (enter && sought_->hasFocus()) return find(event->modifiers() & Qt::ShiftModifier);
    if (enter && replacement_->hasFocus()) return replace();
    QWidget::keyPressEvent(event);
}

void FindBar::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!page_) return;
    page_->setSearch({}, {});
    page_->setFocus();
}

}  // namespace vemo::notepad
