// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>

#include "notepad/calculation.h"

namespace vemo::notepad {

class Page;

// The window: a tab a page, menus, and below the total.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(Calculation& calculation, QWidget* parent = nullptr);

    // A page of its own, in front.
    Page* addPage(const QString& title);
    Page* currentPage() const;
    QTabWidget* tabs() const { return tabs_; }

    QMenu* fileMenu() const { return fileMenu_; }
    QMenu* editMenu() const { return editMenu_; }
    QMenu* viewMenu() const { return viewMenu_; }

    // Something that passes, in the status bar.
    void say(const QString& message);

Q_SIGNALS:
    void pageAdded(vemo::notepad::Page* page);
    void currentPageChanged(vemo::notepad::Page* page);
    void shownFirst();  // the window is on the screen for the first time

protected:
    bool event(QEvent* event) override;

private:
    QMenu* buildFileMenu();
    QMenu* buildEditMenu();
    QMenu* buildViewMenu();
    void showTotal();

    Calculation& calculation_;
    QTabWidget* tabs_;
    QLabel* total_;
    QMenu* fileMenu_;
    QMenu* editMenu_;
    QMenu* viewMenu_;
    bool painted_ = false;
};

}  // namespace vemo::notepad
