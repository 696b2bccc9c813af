// SPDX-License-Identifier: MIT
// The menus of the window.
#include <QMenuBar>

#include "notepad/find_bar.h"
#include "notepad/line_editing.h"
#include "notepad/main_window.h"
#include "notepad/page.h"

namespace vemo::notepad {

namespace {

constexpr double shareStep = 0.05;
constexpr int zoomStep = 10;

}  // namespace

QAction* MainWindow::addAction(QMenu* menu, const QString& text, const QKeySequence& key, std::function<void()> act) {
    QAction* action = menu->addAction(text);
    action->setShortcut(key);
    if (act) connect(action, &QAction::triggered, this, std::move(act));
    return action;
}

QAction* MainWindow::addPageAction(QMenu* menu, const QString& text, const QKeySequence& key,
                                   std::function<void(Page&)> act) {
    return addAction(menu, text, key, [this, act = std::move(act)] {
        if (Page* page = currentPage()) act(*page);
    });
}

QMenu* MainWindow::buildFileMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    addAction(menu, tr("&Quit"), QKeySequence::Quit, [this] { close(); });
    return menu;
}

QMenu* MainWindow::buildEditMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    addPageAction(menu, tr("&Undo"), QKeySequence::Undo, [](Page& page) { page.undo(); });
    addPageAction(menu, tr("&Redo"), QKeySequence::Redo, [](Page& page) { page.redo(); });
    menu->addSeparator();
    addPageAction(menu, tr("Cu&t"), QKeySequence::Cut, [](Page& page) { page.cut(); });
    addPageAction(menu, tr("&Copy"), QKeySequence::Copy, [](Page& page) { page.copy(); });
    addPageAction(menu, tr("&Paste"), QKeySequence::Paste, [](Page& page) { page.paste(); });
    addPageAction(menu, tr("Select &All"), QKeySequence::SelectAll, [](Page& page) { page.selectAll(); });
    menu->addSeparator();
    addPageAction(menu, tr("Copy Ans&wer"), Qt::CTRL | Qt::ALT | Qt::Key_C, [](Page& page) { page.copyAnswer(); });
    addPageAction(menu, tr("Copy Plain Num&ber"), Qt::CTRL | Qt::ALT | Qt::Key_N,
                  [](Page& page) { page.copyPlainNumber(); });
    addPageAction(menu, tr("&Insert Answer Above"), Qt::CTRL | Qt::Key_I, [](Page& page) { page.insertAnswerAbove(); });
    addPageAction(menu, tr("E&xplain Answer"), Qt::Key_F2, [](Page& page) { page.explainAnswer(); });
    menu->addSeparator();
    addPageAction(menu, tr("C&omplete Word"), Qt::CTRL | Qt::Key_Space, [](Page& page) { page.complete(true); });
    addPageAction(menu, tr("Co&mment or Uncomment"), Qt::CTRL | Qt::Key_Slash, [](Page& page) { toggleComment(page); });
    addPageAction(menu, tr("Move &Lines Up"), Qt::ALT | Qt::Key_Up, [](Page& page) { moveLines(page, Direction::up); });
    addPageAction(menu, tr("Move Lines &Down"), Qt::ALT | Qt::Key_Down,
                  [](Page& page) { moveLines(page, Direction::down); });
    menu->addSeparator();
    addAction(menu, tr("&Find…"), QKeySequence::Find, [this] { find_->open(false); });
    addAction(menu, tr("Find &Next"), QKeySequence::FindNext, [this] { find_->findNext(); });
    addAction(menu, tr("Find Pre&vious"), QKeySequence::FindPrevious, [this] { find_->findPrevious(); });
    addAction(menu, tr("R&eplace…"), Qt::CTRL | Qt::Key_H, [this] { find_->open(true); });
    return menu;
}

QMenu* MainWindow::buildViewMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    addAction(menu, tr("Zoom &In"), QKeySequence::ZoomIn, [this] { setZoom(zoom_ + zoomStep); });
    addAction(menu, tr("Zoom &Out"), QKeySequence::ZoomOut, [this] { setZoom(zoom_ - zoomStep); });
    addAction(menu, tr("&Usual Size"), Qt::CTRL | Qt::Key_0, [this] { setZoom(100); });
    menu->addSeparator();
    numbersAction_ = addAction(menu, tr("&Line Numbers"), Qt::CTRL | Qt::Key_L, {});
    numbersAction_->setCheckable(true);
    connect(numbersAction_, &QAction::toggled, this, &MainWindow::setLineNumbers);
    addPageAction(menu, tr("&Wider Answers"), Qt::CTRL | Qt::ALT | Qt::Key_Left,
                  [](Page& page) { page.setAnswerShare(page.answerShare() + shareStep); });
    addPageAction(menu, tr("&Narrower Answers"), Qt::CTRL | Qt::ALT | Qt::Key_Right,
                  [](Page& page) { page.setAnswerShare(page.answerShare() - shareStep); });
    return menu;
}

}  // namespace vemo::notepad
