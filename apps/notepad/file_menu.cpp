// SPDX-License-Identifier: MIT
#include "notepad/file_menu.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QTabWidget>

#include "notepad/main_window.h"
#include "notepad/output_menu.h"
#include "notepad/page.h"
#include "notepad/workspace.h"

namespace vemo::notepad {

namespace {

QString tr(const char* text) {
    return QApplication::translate("FileMenu", text);
}

void fillRecent(QMenu& menu, Workspace& workspace) {
    menu.clear();
    int number = 0;
    for (const QString& path : workspace.recent()) {
        const QString name = QString(QFileInfo(path).fileName()).replace('&', "&&");
        const QString label = ++number < 10 ? QString("&%1  %2").arg(number).arg(name) : name;
        QAction* action = menu.addAction(label, &workspace, [&workspace, path] { workspace.open({path}); });
        action->setToolTip(path);
        action->setStatusTip(path);
    }
    menu.setEnabled(!menu.isEmpty());
}

void openAsked(MainWindow& window, Workspace& workspace) {
    const Page* page = window.currentPage();
    const QString folder = page ? QFileInfo(workspace.documentOf(*page).path()).path() : QString();
    const QStringList files =
        QFileDialog::getOpenFileNames(&window, tr("Open"), folder, tr("Vemo documents (*.vemo);;All files (*)"));
    if (!files.isEmpty()) workspace.open(files);
}

}  // namespace

void fillFileMenu(MainWindow& window, Workspace& workspace) {
    QMenu* menu = window.fileMenu();
    const QList<QAction*> after = menu->actions();
    const auto onPage = [&window](auto act) {
        return [&window, act] {
            if (Page* page = window.currentPage()) act(*page);
        };
    };
    menu->addAction(tr("&New"), QKeySequence::New, &workspace, &Workspace::addNew);
    menu->addAction(tr("&Open…"), QKeySequence::Open, &workspace, [&] { openAsked(window, workspace); });
    QMenu* recent = menu->addMenu(tr("Open &Recent"));
    recent->setToolTipsVisible(true);
    fillRecent(*recent, workspace);
    QObject::connect(&workspace, &Workspace::recentChanged, recent,
                     [recent, &workspace] { fillRecent(*recent, workspace); });
    menu->addSeparator();
    menu->addAction(tr("&Save"), QKeySequence::Save, &workspace, onPage([&](Page& page) { workspace.save(page); }));
    menu->addAction(tr("Save &As…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), &workspace,
                    onPage([&](Page& page) { workspace.saveAs(page); }));
    menu->addMenu(buildExportMenu(window, workspace, *menu));
    menu->addSeparator();
    addPrinting(window, workspace, *menu);
    menu->addSeparator();
    menu->addAction(tr("&Close Tab"), QKeySequence(Qt::CTRL | Qt::Key_W), &workspace,
                    onPage([&](Page& page) { workspace.close(page); }));
    // The entries that were there before come last.
    for (QAction* action : after) {
        menu->removeAction(action);
        menu->addAction(action);
    }
    QMenu* edit = window.editMenu();
    QAction* paste = nullptr;
    for (QAction* action : edit->actions())
        if (action->shortcut() == QKeySequence(QKeySequence::Paste)) paste = action;
    edit->insertMenu(paste, buildCopyMenu(window, workspace, *edit));
    const auto step = [&window](int by) {
        const int count = window.tabs()->count();
        if (count > 0) window.tabs()->setCurrentIndex((window.tabs()->currentIndex() + by + count) % count);
    };
    for (const auto& [text, key, by] : {std::tuple(tr("Ne&xt Tab"), Qt::CTRL | Qt::Key_PageDown, 1),
                                        std::tuple(tr("Pre&vious Tab"), Qt::CTRL | Qt::Key_PageUp, -1)}) {
        QAction* action = window.viewMenu()->addAction(text, &window, [step, by = by] { step(by); });
        action->setShortcut(key);
    }
}

}  // namespace vemo::notepad
