// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QFile>

#include "notepad/main_window.h"
#include "notepad/page.h"

int main(int argc, char** argv) {
    using namespace vemo::notepad;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vemo-notepad"));
    QApplication::setApplicationDisplayName(QStringLiteral("Vemo"));
    QApplication::setStyle(QStringLiteral("fusion"));
    applyTheme(ThemeChoice::desktop);
    Calculation calculation;
    MainWindow window(calculation);
    Page* page = window.addPage(QStringLiteral("Untitled"));
    if (argc > 1) {
        QFile file(QString::fromLocal8Bit(argv[1]));
        if (file.open(QIODevice::ReadOnly)) page->setText(QString::fromUtf8(file.readAll()));
    }
    QObject::connect(&window, &MainWindow::shownFirst, &calculation, [&] { calculation.start({}); });
    window.show();
    return QApplication::exec();
}
