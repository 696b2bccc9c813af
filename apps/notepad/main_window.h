// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>
#include <functional>

#include "notepad/calculation.h"

namespace vemo::notepad {

class FindBar;
class Page;
class SelectionTotals;

// The window: a tab a page, menus, and below the total and what is selected.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(Calculation& calculation, QWidget* parent = nullptr);

    // Adds a page, in front of the others.
    Page* addPage(const QString& title);
    Page* currentPage() const;
    Page* pageAt(int tab) const;
    QTabWidget* tabs() const { return tabs_; }

    QMenu* fileMenu() const { return fileMenu_; }
    QMenu* editMenu() const { return editMenu_; }
    QMenu* viewMenu() const { return viewMenu_; }

    // Sets how every page looks.
    void setPageFont(const QFont& font);
    int zoom() const { return zoom_; }  // in percent
    void setZoom(int percent);
    void setLineNumbers(bool shown);

    // Shows a message in the status bar for a while.
    void say(const QString& message);

Q_SIGNALS:
    void pageAdded(vemo::notepad::Page* page);
    void currentPageChanged(vemo::notepad::Page* page);
    void shownFirst();   // the window is on the screen for the first time
    void lookChanged();  // zoom, line numbers, or the part that answers take

protected:
    bool event(QEvent* event) override;

private:
    QMenu* buildFileMenu();
    QMenu* buildEditMenu();
    QMenu* buildViewMenu();
    QAction* addAction(QMenu* menu, const QString& text, const QKeySequence& key, std::function<void()> act);
    QAction* addPageAction(QMenu* menu, const QString& text, const QKeySequence& key, std::function<void(Page&)> act);
    void dress(Page& page);
    void forEachPage(const std::function<void(Page&)>& act);
    void followCurrentPage();
    void showTotal();

    Calculation& calculation_;
    QTabWidget* tabs_;
    FindBar* find_;
    SelectionTotals* selection_;
    QLabel* selected_;
    QLabel* total_;
    QAction* numbersAction_ = nullptr;  // of the view menu
    QMenu* fileMenu_;
    QMenu* editMenu_;
    QMenu* viewMenu_;
    QFont font_;
    int zoom_ = 100;
    double share_ = 0;
    bool painted_ = false;
};

}  // namespace vemo::notepad
