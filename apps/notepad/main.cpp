// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QProxyStyle>
#include <algorithm>
#include <cstdio>

#include "notepad/file_menu.h"
#include "notepad/folders.h"
#include "notepad/main_window.h"
#include "notepad/settings.h"
#include "notepad/settings_menu.h"
#include "notepad/single_instance.h"
#include "notepad/workspace.h"
#include "vemo/engine.h"

namespace {

using namespace vemo::notepad;

// The files of the command line, by their whole names.
QStringList filesOf(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("A notepad that calculates what people write.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("FILE", "documents to open", "[FILE…]");
    parser.process(application);
    QStringList files;
    for (const QString& file : parser.positionalArguments()) {
        const QUrl url(file);
        files += QFileInfo(url.isLocalFile() ? url.toLocalFile() : file).absoluteFilePath();
    }
    return files;
}

// Labels say what buttons do.
class Style : public QProxyStyle {
public:
    Style() : QProxyStyle("fusion") {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
        return QProxyStyle::styleHint(hint, option, widget, more);
    }
};

void comeToFront(MainWindow& window, const QString& token) {
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view version = vemo::VemoEngine::version();
    QCoreApplication::setApplicationName("vemo-notepad");
    QCoreApplication::setApplicationVersion(QString::fromUtf8(version.data(), static_cast<qsizetype>(version.size())));
    // What is only to be printed needs no screen.
    constexpr std::string_view printed[] = {"-h", "--help", "-v", "--version"};
    if (argc == 2 && std::find(std::begin(printed), std::end(printed), argv[1]) != std::end(printed))
        filesOf(QCoreApplication(argc, argv));
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName("Vemo");
    QApplication::setDesktopFileName("vemo-notepad");
    QApplication::setWindowIcon(QIcon::fromTheme("vemo-notepad"));
    QApplication::setStyle(new Style);
    const QStringList files = filesOf(application);
    SingleInstance instance(stateFolder());
    if (!instance.isFirst()) {
        if (instance.handOver(files, qEnvironmentVariable("XDG_ACTIVATION_TOKEN"))) return 0;
        std::fputs("vemo-notepad: it is running already, and does not answer\n", stderr);
        return 1;
    }
    instance.listen();
    Calculation calculation;
    MainWindow window(calculation);
    Settings settings(calculation, window);
    Workspace workspace(window, stateFolder());
    fillFileMenu(window, workspace);
    fillSettingsMenu(window, settings, calculation);
    workspace.restore(files);
    QObject::connect(&window, &MainWindow::shownFirst, &settings, &Settings::start);
    QObject::connect(&instance, &SingleInstance::received, &window, [&](const QStringList& more, const QString& token) {
        comeToFront(window, token);
        workspace.open(more);
    });
    window.show();
    const int status = QApplication::exec();
    workspace.flush();
    return status;
}
