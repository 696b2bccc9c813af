// SPDX-License-Identifier: MIT
#include "notepad/notice_bar.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>

namespace vemo::notepad {

NoticeBar::NoticeBar(QWidget* parent) : QToolBar(tr("Notice"), parent) {
    setObjectName("notice");
    setMovable(false);
    layout()->setSpacing(6);
    toggleViewAction()->setVisible(false);
    setVisible(false);
}

void NoticeBar::show(const Notice* notice) {
    // Their widgets go with them.
    for (QAction* action : actions()) {
        removeAction(action);
        action->deleteLater();
    }
    label_ = nullptr;
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
    return label_ ? label_->text() : QString();
}

}  // namespace vemo::notepad
