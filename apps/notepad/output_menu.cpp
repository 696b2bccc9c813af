// SPDX-License-Identifier: MIT
#include "notepad/output_menu.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextBlock>
#include <functional>

#include "notepad/exporting.h"
#include "notepad/main_window.h"
#include "notepad/page.h"
#include "notepad/page_total.h"
#include "notepad/printing.h"
#include "notepad/workspace.h"
#include "session/saving.h"

namespace vemo::notepad {

namespace {

QString tr(const char* text) {
    return QApplication::translate("Output", text);
}

struct Format {
    TextFormat format;
    const char* label;
    const char* kind;  // of the file
    const char* ending;
};

constexpr Format formats[] = {
    {TextFormat::plain, QT_TRANSLATE_NOOP("Output", "Plain &Text"), QT_TRANSLATE_NOOP("Output", "Text"), "txt"},
    {TextFormat::markdown, QT_TRANSLATE_NOOP("Output", "&Markdown"), QT_TRANSLATE_NOOP("Output", "Markdown"), "md"},
    {TextFormat::html, QT_TRANSLATE_NOOP("Output", "&Web Page"), QT_TRANSLATE_NOOP("Output", "Web page"), "html"},
    {TextFormat::csv, QT_TRANSLATE_NOOP("Output", "Table (&CSV)"), QT_TRANSLATE_NOOP("Output", "Table"), "csv"},
};

// Calls with the answers to the text as it is: at once, or when they are there.
void withAnswers(MainWindow& window, const std::function<void(Page&, const VemoEngine::Result&)>& act) {
    Page* page = window.currentPage();
    if (!page) return;
    if (const VemoEngine::Result* result = page->results()) return act(*page, *result);
    window.say(tr("Waiting for the answers…"));
    auto* once = new QObject(page);
    QObject::connect(page, &Page::answersSettled, once, [page, once, act] {
        const VemoEngine::Result* result = page->results();
        if (!result) return;
        once->deleteLater();
        once->disconnect();
        QObject::disconnect(page, nullptr, once, nullptr);
        act(*page, *result);
    });
}

QString titleOf(const Document& document) {
    return document.path().isEmpty() ? document.title() : QFileInfo(document.path()).completeBaseName();
}

// Where to write; empty where nothing is to be.
QString askForFile(MainWindow& window, const Document& document, const QString& kind, const QString& ending) {
    QFileDialog dialog(&window, tr("Export"), {}, kind + " (*." + ending + ")");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    if (!document.path().isEmpty()) dialog.setDirectory(QFileInfo(document.path()).path());
    dialog.selectFile(titleOf(document) + '.' + ending);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void tellOf(MainWindow& window, const QString& file, const QString& problem) {
    if (problem.isEmpty()) return window.say(tr("Exported %1").arg(file));
    QMessageBox box(QMessageBox::Warning, {}, tr("“%1” can't be written: %2").arg(file, problem), QMessageBox::Ok,
                    &window);
    box.exec();
}

Printout printoutOf(Page& page, const VemoEngine::Result& result, const Document& document) {
    QFont font = page.font();
    if (font.pointSizeF() <= 0) font.setPointSizeF(11);
    return {result, titleOf(document), totalText(page), font};
}

// The lines of the selection, or all of them.
void copyWithAnswers(MainWindow& window, const Workspace& workspace, TextFormat format) {
    withAnswers(window, [&window, &workspace, format](Page& page, const VemoEngine::Result& result) {
        const QTextCursor cursor = page.textCursor();
        const QTextDocument* text = page.document();
        std::string copied;
        if (cursor.hasSelection()) {
            const int first = text->findBlock(cursor.selectionStart()).blockNumber();
            // A selection that ends where a line begins has nothing of that line.
            const QTextBlock last = text->findBlock(cursor.selectionEnd() - 1);
            copied = textOfLinesIn(format, linesOf(result, first, last.blockNumber() - first + 1));
        } else {
            copied = textIn(format, result, titleOf(workspace.documentOf(page)));
        }
        auto* data = new QMimeData;
        data->setText(QString::fromStdString(copied));
        if (format == TextFormat::html) data->setHtml(QString::fromStdString(copied));
        QApplication::clipboard()->setMimeData(data);
        window.say(tr("Copied with answers"));
    });
}

}  // namespace

QMenu* buildExportMenu(MainWindow& window, Workspace& workspace, QMenu& parent) {
    auto* menu = new QMenu(tr("&Export"), &parent);
    menu->addAction(tr("&PDF…"), &window, [&window, &workspace] {
        withAnswers(window, [&window, &workspace](Page& page, const VemoEngine::Result& result) {
            const Document& document = workspace.documentOf(page);
            const VemoEngine::Result shown = result;  // while the dialog is open, others may come
            const QString file = askForFile(window, document, tr("PDF"), "pdf");
            if (!file.isEmpty()) tellOf(window, file, writePdf(printoutOf(page, shown, document), file));
        });
    });
    for (const Format& format : formats) {
        menu->addAction(tr(format.label) + "…", &window, [&window, &workspace, &format] {
            withAnswers(window, [&window, &workspace, &format](Page& page, const VemoEngine::Result& result) {
                const Document& document = workspace.documentOf(page);
                const std::string text = textIn(format.format, result, titleOf(document));
                const QString file = askForFile(window, document, tr(format.kind), format.ending);
                if (!file.isEmpty())
                    tellOf(window, file,
                           QString::fromStdString(session::replaceFile(QFile::encodeName(file).toStdString(), text)));
            });
        });
    }
    return menu;
}

void addPrinting(MainWindow& window, Workspace& workspace, QMenu& menu) {
    menu.addAction(tr("&Print…"), QKeySequence::Print, &window, [&window, &workspace] {
        withAnswers(window, [&window, &workspace](Page& page, const VemoEngine::Result& result) {
            const VemoEngine::Result shown = result;
            QPrinter printer(QPrinter::HighResolution);
            const Printout printout = printoutOf(page, shown, workspace.documentOf(page));
            printer.setDocName(printout.title);
            QPrintDialog dialog(&printer, &window);
            if (dialog.exec() == QDialog::Accepted) print(printout, printer, printer.fromPage(), printer.toPage());
        });
    });
    menu.addAction(tr("Print Pre&view…"), &window, [&window, &workspace] {
        withAnswers(window, [&window, &workspace](Page& page, const VemoEngine::Result& result) {
            const VemoEngine::Result shown = result;
            QPrinter printer(QPrinter::HighResolution);
            const Printout printout = printoutOf(page, shown, workspace.documentOf(page));
            QPrintPreviewDialog dialog(&printer, &window);
            QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &window,
                             [&printout](QPrinter* paper) { print(printout, *paper); });
            dialog.exec();
        });
    });
}

QMenu* buildCopyMenu(MainWindow& window, Workspace& workspace, QMenu& parent) {
    auto* menu = new QMenu(tr("Copy Wit&h Answers"), &parent);
    for (const Format& format : formats) {
        menu->addAction(tr(format.label), &window,
                        [&window, &workspace, &format] { copyWithAnswers(window, workspace, format.format); });
    }
    return menu;
}

}  // namespace vemo::notepad
