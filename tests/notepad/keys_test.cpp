// SPDX-License-Identifier: MIT
// What a person does with keys and the mouse: completion, lines, answers, finding.
#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QToolTip>

#include "notepad/accessible_answers.h"
#include "notepad/answer_column.h"
#include "notepad/answer_texts.h"
#include "notepad/completion_list.h"
#include "notepad/find_bar.h"
#include "open_page.h"

namespace vemo::notepad {

namespace {

// The command that the menus have under these keys.
void trigger(OpenPage& open, const char* keys) {
    for (const QAction* menu : open.window.menuBar()->actions())
        for (QAction* action : menu->menu()->actions())
            if (action->shortcut() == QKeySequence(QString::fromLatin1(keys))) return action->trigger();
    QFAIL(keys);
}

QString statusText(OpenPage& open, const char* name) {
    for (const QLabel* label : open.window.statusBar()->findChildren<QLabel*>())
        if (label->accessibleName() == QLatin1String(name)) return label->text();
    return {};
}

class KeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void completionNeverEatsEnter() {
        OpenPage open(QString{});
        auto* list = open.page.findChild<CompletionList*>();
        open.type(QStringLiteral("squ"));
        QVERIFY(list->isVisible());
        open.press(Qt::Key_Return);
        QVERIFY(!list->isVisible());
        QCOMPARE(open.page.text(), QStringLiteral("squ\n"));
        open.type(QStringLiteral("squ"));
        open.press(Qt::Key_Tab);
        QCOMPARE(open.page.text(), QStringLiteral("squ\nsquare root"));
        open.press(Qt::Key_Return);
        open.type(QStringLiteral("kil"));
        open.press(Qt::Key_Down);
        open.press(Qt::Key_Down);
        open.press(Qt::Key_Return);
        const QString chosen = open.block(2).text();
        QVERIFY2(chosen.startsWith(QStringLiteral("kil")) && chosen.size() > 3, qPrintable(chosen));
        QCOMPARE(open.page.blockCount(), 3);
    }

    void completionKnowsItsPlace() {
        OpenPage open(QStringLiteral("Monthly rent = 5\n"));
        auto* list = open.page.findChild<CompletionList*>();
        open.moveTo(1);
        open.type(QStringLiteral("3 * monthly r"));
        QVERIFY(list->isVisible());
        open.press(Qt::Key_Tab);
        QCOMPARE(open.block(1).text(), QStringLiteral("3 * Monthly rent"));
        QVERIFY(open.settled());
        QCOMPARE(open.answer(1), QStringLiteral("15"));
        open.type(QStringLiteral(" // squ"));
        QVERIFY(!list->isVisible());
        open.press(Qt::Key_Return);
        open.type(QStringLiteral("# squ"));
        QVERIFY(!list->isVisible());
        open.press(Qt::Key_Return);
        open.type(QStringLiteral("kilom"));
        QVERIFY(list->isVisible());
        open.press(Qt::Key_Escape);
        QVERIFY(!list->isVisible());
        QCOMPARE(open.block(3).text(), QStringLiteral("kilom"));
        trigger(open, "Ctrl+Space");
        QVERIFY(list->isVisible());
        open.press(Qt::Key_Left);
        QVERIFY(!list->isVisible());
        open.type(QStringLiteral("q"));  // within a word there is nothing to complete
        QVERIFY(!list->isVisible());
    }

    void linesMoveAndBecomeComments() {
        OpenPage open(QStringLiteral("a = 1\nb = 2\nc = a + b"));
        open.moveTo(2);
        trigger(open, "Alt+Up");
        QCOMPARE(open.page.text(), QStringLiteral("a = 1\nc = a + b\nb = 2"));
        QCOMPARE(open.page.textCursor().blockNumber(), 1);
        trigger(open, "Alt+Down");
        QVERIFY(open.settled());
        QCOMPARE(open.answer(2), QStringLiteral("3"));
        trigger(open, "Alt+Down");  // the last one stays
        open.page.undo();
        open.page.undo();
        QCOMPARE(open.page.text(), QStringLiteral("a = 1\nb = 2\nc = a + b"));

        open.select(0, 11);
        trigger(open, "Ctrl+/");
        QCOMPARE(open.page.text(), QStringLiteral("// a = 1\n// b = 2\nc = a + b"));
        QVERIFY(open.settled());
        QVERIFY(open.answer(2).isEmpty() || open.answer(2) != QStringLiteral("3"));
        trigger(open, "Ctrl+/");
        QCOMPARE(open.page.text(), QStringLiteral("a = 1\nb = 2\nc = a + b"));
        open.page.undo();
        QCOMPARE(open.page.text(), QStringLiteral("// a = 1\n// b = 2\nc = a + b"));
    }

    void answersAreCopiedAndInserted() {
        OpenPage open(QStringLiteral("$1,000 / 3\nx is \n5 kg + 3 m"));
        auto* column = open.page.findChild<AnswerColumn*>();
        QClipboard* clipboard = QGuiApplication::clipboard();
        const auto click = [&](Qt::KeyboardModifiers modifiers) {
            open.page.visitLines(0, 40, [&](const QTextBlock& block, qreal, qreal, qreal base) {
                if (block.blockNumber() == 0)
                    QTest::mouseClick(column, Qt::LeftButton, modifiers, {column->width() - 20, int(base) - 4});
            });
        };
        click(Qt::NoModifier);
        QCOMPARE(clipboard->text(), QStringLiteral("$333.33"));
        click(Qt::ControlModifier);
        QVERIFY2(clipboard->text().startsWith(QStringLiteral("333.33333333")), qPrintable(clipboard->text()));
        open.moveTo(1);
        trigger(open, "Ctrl+I");
        QCOMPARE(open.block(1).text(), QStringLiteral("x is $333.333333333333"));
        QVERIFY(open.settled());
        QCOMPARE(open.answer(1), QStringLiteral("$333.33"));
        // One that is dropped at a word stands apart from it.
        open.moveTo(1, 2);
        QMimeData dropped;
        dropped.setText(QStringLiteral("$5"));
        dropped.setData(valueFormat, {});
        const QPoint at = open.page.cursorRect().center();
        QDragEnterEvent entered(at, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(open.page.viewport(), &entered);
        QDropEvent drop(at, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(open.page.viewport(), &drop);
        QVERIFY2(open.block(1).text().startsWith(QStringLiteral("x $5 is")), qPrintable(open.block(1).text()));
        // A line without an answer leaves the clipboard as it is.
        open.moveTo(2);
        trigger(open, "Ctrl+Alt+C");
        QVERIFY(clipboard->text().startsWith(QStringLiteral("333")));
    }

    void theStatusBarAddsUp() {
        OpenPage open(QStringLiteral("$100\n$50 + 10%\n\n# more\n3 kg\n500 g\n1/0"));
        QTRY_COMPARE(statusText(open, "Total"), QStringLiteral("Total of some lines: 500 g"));
        open.select(0, 8);
        QTRY_COMPARE(statusText(open, "Selection"), QStringLiteral("Sum: $155   Average: $77.50   Count: 2"));
        open.select(open.block(4).position(), open.block(6).position());
        QTRY_COMPARE(statusText(open, "Selection"), QStringLiteral("Sum: 3.5 kg   Average: 1.75 kg   Count: 2"));
        open.page.selectAll();  // money and weights have no sum
        QTRY_COMPARE(statusText(open, "Selection"), QStringLiteral("Count: 4"));
        open.moveTo(6);
        QTRY_COMPARE(statusText(open, "Selection"), QString());
        open.page.setText(QStringLiteral("5\n7"));
        QTRY_COMPARE(statusText(open, "Total"), QStringLiteral("Total: 12"));
    }

    void tipsTellValueAndReading() {
        OpenPage open(QStringLiteral("x = 4\n2 (x + 1) / 3"));
        const QString tip = answerTip(open.toldOf(1), open.page.calculated().readingOf(1));
        QVERIFY2(tip.contains(QStringLiteral("<b>3.33</b>")), qPrintable(tip));
        QVERIFY2(tip.contains(QStringLiteral("exactly 3.3333")), qPrintable(tip));
        QVERIFY2(tip.contains(QStringLiteral("4 + 1")), qPrintable(tip));
        QVERIFY(!answerTip(open.toldOf(0), std::nullopt).contains(QStringLiteral("exactly")));
        open.moveTo(1);
        trigger(open, "F2");
        QCOMPARE(QToolTip::text(), tip);
        open.page.setText(QStringLiteral("20% of $1,041"));
        QVERIFY(open.settled());
        QVERIFY(!answerTip(open.toldOf(0), std::nullopt).contains(QStringLiteral("exactly")));
    }

    void findsAndReplaces() {
        OpenPage open(QStringLiteral("Rent 5\nrent 6\nother\nRENT 7"));
        auto* bar = open.window.findChild<FindBar*>();
        open.moveTo(1, 0);
        trigger(open, "Ctrl+F");
        QVERIFY(bar->isVisible());
        auto* sought = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(sought);
        QTest::keyClicks(sought, QStringLiteral("rent"));
        QCOMPARE(open.page.textCursor().blockNumber(), 1);
        QTest::keyClick(sought, Qt::Key_Return);
        QCOMPARE(open.page.textCursor().blockNumber(), 3);
        QTest::keyClick(sought, Qt::Key_Return);  // around the end
        QCOMPARE(open.page.textCursor().blockNumber(), 0);
        QTest::keyClick(sought, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(open.page.textCursor().blockNumber(), 3);
        trigger(open, "Ctrl+H");
        QLineEdit* replacement = nullptr;
        for (auto* edit : bar->findChildren<QLineEdit*>())
            if (edit != sought) replacement = edit;
        replacement->setText(QStringLiteral("home rent"));
        for (auto* button : bar->findChildren<QPushButton*>())
            if (button->text() == QStringLiteral("Replace &All")) button->click();
        QCOMPARE(open.page.text(), QStringLiteral("home rent 5\nhome rent 6\nother\nhome rent 7"));
        QTest::keyClick(replacement, Qt::Key_Escape);
        QVERIFY(!bar->isVisible());
        QVERIFY(open.page.hasFocus());
        open.page.undo();  // all of it is one step
        QCOMPARE(open.page.text(), QStringLiteral("Rent 5\nrent 6\nother\nRENT 7"));
        QVERIFY(open.settled());
    }

    void screenReadersHearLineAndAnswer() {
        OpenPage open(QStringLiteral("rent = $1,200\n1/0\nRent * x"));
        auto* column = open.page.findChild<AnswerColumn*>();
        QAccessibleInterface* list = QAccessible::queryAccessibleInterface(column);
        QVERIFY(list);
        QCOMPARE(list->role(), QAccessible::List);
        QCOMPARE(list->childCount(), 3);
        QCOMPARE(list->child(0)->text(QAccessible::Name), QStringLiteral("rent = $1,200, answer $1,200"));
        QCOMPARE(list->child(1)->text(QAccessible::Name), QStringLiteral("1/0, no answer: division by zero"));
        QVERIFY(list->child(2)->text(QAccessible::Name).contains(QStringLiteral("x")));
        QCOMPARE(list->indexOfChild(list->child(2)), 2);
        const QRect row = list->child(1)->rect();
        QCOMPARE(list->childAt(row.center().x(), row.center().y()), list->child(1));
        open.moveTo(1);
        QCOMPARE(open.page.accessibleDescription(), QStringLiteral("no answer: division by zero"));
        open.type(QStringLiteral("5"));
        QVERIFY(open.settled());
        QCOMPARE(open.page.accessibleDescription(), QStringLiteral("answer 0.2"));
        QVERIFY(!list->child(3));
    }

    // Whatever menus and the status bar have can be reached and is named.
    void everythingHasKeysAndNames() {
        OpenPage open(QStringLiteral("1"));
        QStringList shortcuts;
        for (const QAction* menu : open.window.menuBar()->actions()) {
            QVERIFY(menu->text().contains(u'&'));
            QStringList mnemonics;
            for (const QAction* action : menu->menu()->actions()) {
                if (action->isSeparator()) continue;
                const auto sign = action->text().indexOf(u'&');
                QVERIFY2(sign >= 0, qPrintable(action->text()));
                const QString mnemonic = action->text().mid(sign + 1, 1).toLower();
                QVERIFY2(!mnemonics.contains(mnemonic), qPrintable(action->text()));
                mnemonics << mnemonic;
                const QString keys = action->shortcut().toString();
                QVERIFY2(keys.isEmpty() || !shortcuts.contains(keys), qPrintable(keys));
                if (!keys.isEmpty()) shortcuts << keys;
            }
        }
        trigger(open, "Ctrl+L");
        QVERIFY(open.page.hasLineNumbers());
        const double size = open.page.font().pointSizeF();
        trigger(open, "Ctrl++");
        QVERIFY(open.page.font().pointSizeF() > size);
        trigger(open, "Ctrl+0");
        QCOMPARE(open.page.font().pointSizeF(), size);
        trigger(open, "Ctrl+Alt+Left");
        QVERIFY(open.page.answerShare() > 0.31);
    }
};

}  // namespace

}  // namespace vemo::notepad

QTEST_MAIN(vemo::notepad::KeysTest)
#include "keys_test.moc"
