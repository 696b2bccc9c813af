// SPDX-License-Identifier: MIT
#include "notepad/notice_bar.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>

namespace vemo::notepad {

NoticeBar::NoticeBar(QWidget* parent) : QToolBar(tr("Notice"), parent), label_(new QLabel(this)) {
    setObjectName("notice");
    setMovable(false);
    layout()->setSpacing(6);
    toggleViewAction()->setVisible(false);
    label_->setMargin(6);
    setVisible(false);
}

void NoticeBar::show(const Notice* notice) {
    clear();
    setVisible(notice != nullptr);
    if (!notice) return;
    label_ = new QLabel(notice->message, this);
    label_->setMargin(6);
    addWidget(label_);
    for (const Notice::Choice& choice : notice->choices) {
        auto* button = new QPushButton(choice.label, this);
        // What it does may take the notice away, and the button with it.
        connect(button, &QPushButton::clicked, this, choice.act, Qt::QueuedConnection);
        addWidget(button);
    }
    setAccessibleName(notice->message);
}

QString NoticeBar::message() const {
    return isVisibleTo(parentWidget()) ? label_->text() : QString();
}

}  // namespace vemo::notepad
