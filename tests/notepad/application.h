// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTest>
#include <functional>

#include "notepad/file_menu.h"
#include "notepad/folders.h"
#include "notepad/main_window.h"
#include "notepad/page.h"
#include "notepad/settings.h"
#include "notepad/settings_menu.h"
#include "notepad/workspace.h"

namespace vemo::test {

// The notepad as its program puts it together, started in a home.
struct Application {
    notepad::Calculation calculation;
    notepad::MainWindow window{calculation};
    notepad::Settings settings{calculation, window};
    notepad::Workspace workspace{window, notepad::stateFolder()};

    explicit Application(const QStringList& files = {}) {
        notepad::fillFileMenu(window, workspace);
        notepad::fillSettingsMenu(window, settings, calculation);
        workspace.restore(files);
        QObject::connect(&window, &notepad::MainWindow::shownFirst, &settings, &notepad::Settings::start);
        window.show();
    }

    notepad::Page& page() { return *window.currentPage(); }
    void type(const QString& text) {
        for (const QChar c : text)
            if (c == '\n')
                QTest::keyClick(&page(), Qt::Key_Return);
            else
                QTest::keyClick(&page(), c.toLatin1());
    }
    QString titles() {
        QStringList titles;
        for (int i = 0; i < window.tabs()->count(); ++i) titles += window.tabs()->tabText(i);
        return titles.join(' ');
    }

    // An entry of a menu by its label, as a person chooses it.
    static QAction* actionIn(const QMenu& menu, const QString& label) {
        for (QAction* action : menu.actions()) {
            if (action->text().remove('&') == label) return action;
            if (!action->menu()) continue;
            if (QAction* found = actionIn(*action->menu(), label)) return found;
        }
        return nullptr;
    }
    void choose(const QString& label) {
        for (const QMenu* menu : {window.fileMenu(), window.editMenu(), window.viewMenu()})
            if (QAction* action = actionIn(*menu, label)) return action->trigger();
        qFatal("no such entry of a menu");
    }
};

// Does something with the dialog that comes up next; to be called before it does.
inline void inDialog(const std::function<void(QWidget&)>& act) {
    auto* timer = new QTimer(qApp);
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog) return;
        timer->stop();
        timer->deleteLater();
        act(*dialog);
        // A test that failed there waits for nobody.
        if (QTest::currentTestFailed())
            if (auto* left = qobject_cast<QDialog*>(QApplication::activeModalWidget())) left->reject();
    });
    timer->start();
}

// Presses the button of a dialog that has this label.
inline void press(QWidget& dialog, const QString& label) {
    for (auto* button : dialog.findChildren<QAbstractButton*>())
        if (button->text().remove('&') == label) return QTest::mouseClick(button, Qt::LeftButton);
    qFatal("no such button: %s", qPrintable(label));
}

}  // namespace vemo::test
