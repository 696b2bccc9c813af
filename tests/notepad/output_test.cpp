// SPDX-License-Identifier: MIT
// What leaves a page: files, the clipboard and paper.
#include <QBuffer>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QPdfWriter>
#include <QTest>

#include "application.h"
#include "home.h"
#include "notepad/printing.h"

namespace vemo::notepad {

class OutputTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exportsWithAnswers_data() {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("ending");
        QTest::addColumn<QString>("expected");
        QTest::newRow("text") << "Plain Text…"
                              << ".txt"
                              << "# Größe\n"
                                 "a, \"b\": 1,200 * 2  2,400\n"
                                 "6 in in cm      15.24 cm\n"
                                 "------------------------\n"
                                 "total        2,415.24 cm\n";
        QTest::newRow("Markdown") << "Markdown…"
                                  << ".md"
                                  << "| a, \"b\": 1,200 \\* 2 | 2,400 |\n";
        QTest::newRow("web page") << "Web Page…"
                                  << ".html"
                                  << "<tr><td>a, &quot;b&quot;: 1,200 * 2</td><td>2,400</td></tr>\n";
        QTest::newRow("table") << "Table (CSV)…"
                               << ".csv"
                               << "\"a, \"\"b\"\": 1,200 * 2\",\"2,400\",2400,,\n6 in in cm,15.24 cm,15.24,cm,\n";
    }
    void exportsWithAnswers() {
        QFETCH(QString, entry);
        QFETCH(QString, ending);
        QFETCH(QString, expected);
        const test::Home home;
        home.write("my page.vemo", "# Größe\na, \"b\": 1,200 * 2\n6 in in cm\n");
        test::Application notepad({home.path("my page.vemo")});
        QTRY_VERIFY(notepad.page().results());
        test::inDialog([](QWidget& dialog) { test::press(dialog, "Save"); });
        notepad.choose(entry);
        const QString written = QString::fromUtf8(home.read("my page" + ending));
        QVERIFY2(ending == ".txt" ? written == expected : written.contains(expected), qPrintable(written));
    }

    void copiesTheLinesOfASelection() {
        const test::Home home;
        test::Application notepad;
        notepad.page().setText("a = 5\nb = 6\na * b\n9");
        QTextCursor cursor = notepad.page().textCursor();
        cursor.setPosition(8);
        cursor.setPosition(18, QTextCursor::KeepAnchor);  // where the last line begins
        notepad.page().setTextCursor(cursor);
        // It waits for answers that are on their way.
        QVERIFY(!notepad.page().results());
        notepad.choose("Plain Text");
        QTRY_COMPARE(QApplication::clipboard()->text(), "b = 6   6\na * b  30\n");
        notepad.choose("Web Page");
        QVERIFY(QApplication::clipboard()->mimeData()->html().contains("<td>30</td>"));
        notepad.page().moveCursor(QTextCursor::Start);
        notepad.choose("Markdown");
        QVERIFY(QApplication::clipboard()->text().contains("**total**"));
    }

    void printsAsManyPagesAsItTakes() {
        const test::Home home;
        test::Application notepad;
        QString text = "# Long\n" + QString("words without an end ").repeated(30) + "5 * 5\n";
        for (int i = 0; i < 120; ++i) text += QString("item %1: $%2 * 3\n").arg(i).arg(i);
        notepad.page().setText(text);
        QTRY_VERIFY(notepad.page().results());
        const Printout printout{*notepad.page().results(), "Long", "Total: $1", QFont("sans", 11)};
        const auto pagesIn = [](const QByteArray& pdf) { return pdf.count("/Type /Page\n"); };
        QByteArray pdf;
        {
            QBuffer buffer(&pdf);
            buffer.open(QIODevice::WriteOnly);
            QPdfWriter writer(&buffer);
            const int pages = print(printout, writer);
            QVERIFY(pages >= 2 && pages <= 5);
            buffer.close();
        }
        const auto all = pagesIn(pdf);
        QVERIFY(all >= 2);
        pdf.clear();
        QBuffer buffer(&pdf);
        buffer.open(QIODevice::WriteOnly);
        {
            QPdfWriter writer(&buffer);
            print(printout, writer, 2, 2);
        }
        QCOMPARE(pagesIn(pdf), 1);
        QVERIFY(!writePdf(printout, home.path("no/folder.pdf")).isEmpty());
        QCOMPARE(writePdf(printout, home.path("a.pdf")), QString());
        QVERIFY(home.read("a.pdf").startsWith("%PDF-"));
    }
};

}  // namespace vemo::notepad

QTEST_MAIN(vemo::notepad::OutputTest)
#include "output_test.moc"
