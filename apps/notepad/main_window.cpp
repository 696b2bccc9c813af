// SPDX-License-Identifier: MIT
#include "notepad/main_window.h"

#include <QEvent>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>

#include "notepad/page.h"
#include "notepad/page_total.h"

namespace vemo::notepad {

MainWindow::MainWindow(Calculation& calculation, QWidget* parent)
    : QMainWindow(parent),
      calculation_(calculation),
      tabs_(new QTabWidget(this)),
      total_(new QLabel(this)),
      fileMenu_(buildFileMenu()),
      editMenu_(buildEditMenu()),
      viewMenu_(buildViewMenu()) {
    tabs_->setDocumentMode(true);
    tabs_->setMovable(true);
    tabs_->setTabBarAutoHide(true);
    setCentralWidget(tabs_);
    total_->setAccessibleName(tr("Total"));
    statusBar()->addPermanentWidget(total_);
    connect(tabs_, &QTabWidget::currentChanged, this, [this] {
        showTotal();
        Q_EMIT currentPageChanged(currentPage());
    });
    resize(860, 620);
}

Page* MainWindow::addPage(const QString& title) {
    auto* page = new Page(calculation_, tabs_);
    connect(page, &Page::answersSettled, this, [this, page] {
        if (page == currentPage()) showTotal();
    });
    tabs_->setCurrentIndex(tabs_->addTab(page, title));
    page->setFocus();
    Q_EMIT pageAdded(page);
    return page;
}

Page* MainWindow::currentPage() const {
    return qobject_cast<Page*>(tabs_->currentWidget());
}

void MainWindow::say(const QString& message) {
    constexpr int while_ = 4000;  // milliseconds
    statusBar()->showMessage(message, while_);
}

QMenu* MainWindow::buildFileMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    menu->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    return menu;
}

QMenu* MainWindow::buildEditMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    const auto add = [&](const QString& text, QKeySequence::StandardKey key, void (QPlainTextEdit::*act)()) {
        menu->addAction(text, key, this, [this, act] {
            if (Page* page = currentPage()) (page->*act)();
        });
    };
    add(tr("&Undo"), QKeySequence::Undo, &QPlainTextEdit::undo);
    add(tr("&Redo"), QKeySequence::Redo, &QPlainTextEdit::redo);
    menu->addSeparator();
    add(tr("Cu&t"), QKeySequence::Cut, &QPlainTextEdit::cut);
    add(tr("&Copy"), QKeySequence::Copy, &QPlainTextEdit::copy);
    add(tr("&Paste"), QKeySequence::Paste, &QPlainTextEdit::paste);
    add(tr("Select &All"), QKeySequence::SelectAll, &QPlainTextEdit::selectAll);
    return menu;
}

QMenu* MainWindow::buildViewMenu() {
    return menuBar()->addMenu(tr("&View"));
}

void MainWindow::showTotal() {
    Page* page = currentPage();
    total_->setText(page ? totalText(*page) : QString());
}

bool MainWindow::event(QEvent* event) {
    const bool done = QMainWindow::event(event);
    if (event->type() == QEvent::Paint && !painted_) {
        painted_ = true;
        QTimer::singleShot(0, this, &MainWindow::shownFirst);
    }
    return done;
}

}  // namespace vemo::notepad
