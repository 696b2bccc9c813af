// SPDX-License-Identifier: MIT
// A page's text, colours and answers.
#include <QClipboard>
#include <QInputMethodEvent>
#include <QRandomGenerator>

#include "notepad/line_editing.h"
#include "notepad/line_formats.h"
#include "open_page.h"

namespace vemo::notepad {

namespace {

QColor colorAt(const QTextBlock& block, int unit) {
    QColor color;
    for (const auto& range : block.layout()->formats())
        if (range.start <= unit && unit < range.start + range.length &&
            range.format.hasProperty(QTextFormat::ForegroundBrush))
            color = range.format.foreground().color();
    return color;
}

bool isMarked(const QTextBlock& block, int unit) {
    for (const auto& range : block.layout()->formats())
        if (range.start <= unit && unit < range.start + range.length &&
            range.format.underlineStyle() == QTextCharFormat::DotLine)
            return true;
    return false;
}

const QStringList pieces{
    QStringLiteral("rent = 12\n"),  QStringLiteral("rent * 3"),      QStringLiteral("\n"),
    QStringLiteral("# head\n"),     QStringLiteral("5 kg + 3 m\nx"), QStringLiteral("7"),
    QStringLiteral(" // why"),      QStringLiteral("\n\nsum\n"),     QStringLiteral("12 km in miles"),
    QStringLiteral("👍 東京 = 3\n"), QStringLiteral("total")};

void editAtRandom(OpenPage& open, QRandomGenerator& random) {
    const int end = open.page.document()->characterCount();
    const int from = random.bounded(end), to = std::min(end - 1, from + random.bounded(25));
    switch (random.bounded(8)) {
        case 0:
            return open.page.undo();
        case 1:
            return open.page.redo();
        case 2:
            open.select(from, to);
            return moveLines(open.page, random.bounded(2) ? Direction::up : Direction::down);
        case 3:
            open.select(from, to);
            return toggleComment(open.page);
        case 4:
            open.select(from, to);
            return open.press(Qt::Key_Backspace);
        case 5:
            open.select(from, from);
            return open.press(Qt::Key_Return);
        default:
            open.select(from, random.bounded(3) ? from : to);
            open.page.insertPlainText(pieces[random.bounded(static_cast<int>(pieces.size()))]);
    }
}

class PageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answersComeWhileTyping() {
        OpenPage open(QString{});
        open.type(QStringLiteral("rent = 1,200"));
        open.press(Qt::Key_Return);
        open.type(QStringLiteral("rent * 12"));
        open.press(Qt::Key_Return, Qt::ShiftModifier);
        open.type(QStringLiteral("1/0"));
        QVERIFY(open.settled());
        QCOMPARE(open.answers(), (QStringList{QStringLiteral("1,200"), QStringLiteral("14,400"), QString()}));
        QCOMPARE(open.page.lines().view(2).reason, QStringLiteral("division by zero"));
        const Theme& theme = open.page.theme();
        QCOMPARE(colorAt(open.block(0), 0), theme.variable);
        QCOMPARE(colorAt(open.block(1), 7), theme.number);
        QCOMPARE(open.page.text(), QStringLiteral("rent = 1,200\nrent * 12\n1/0"));
    }

    // However a text came about, its lines show what those of the same text, opened anew, show.
    void anyEditsLeadToTheSame() {
        for (quint32 seed = 1; seed <= 12; ++seed) {
            QRandomGenerator random(seed);
            OpenPage open(pieces.join(QString()));
            for (int i = 0; i < 60; ++i) {
                editAtRandom(open, random);
                if (random.bounded(4) == 0) QTest::qWait(random.bounded(3));
                if (random.bounded(15) == 0) QVERIFY(open.settled());
            }
            QVERIFY(open.settled());
            OpenPage fresh(open.page.text());
            QCOMPARE(open.answers(), fresh.answers());
            for (int line = 0; line < fresh.page.blockCount(); ++line)
                QVERIFY2(open.block(line).layout()->formats() == fresh.block(line).layout()->formats(),
                         qPrintable(QStringLiteral("seed %1, line %2").arg(seed).arg(line)));
            QCOMPARE(open.page.lines().facts().values, fresh.page.lines().facts().values);
            QCOMPARE(open.page.lines().facts().reasons, fresh.page.lines().facts().reasons);
        }
    }

    void undoKnowsNothingOfAnswers() {
        OpenPage open(QStringLiteral("a = 2\na * 3"));
        QVERIFY(!open.page.document()->isModified());
        QVERIFY(!open.page.document()->isUndoAvailable());
        open.moveTo(0);
        open.type(QStringLiteral("5"));
        QVERIFY(open.settled());
        QCOMPARE(open.answer(1), QStringLiteral("75"));
        QCOMPARE(open.page.document()->availableUndoSteps(), 1);
        open.page.undo();
        QVERIFY(open.settled());
        QCOMPARE(open.answer(1), QStringLiteral("6"));
        QVERIFY(open.page.document()->isRedoAvailable());
        QVERIFY(!open.page.document()->isModified());
        open.page.redo();
        QVERIFY(open.settled());
        QCOMPARE(open.answer(1), QStringLiteral("75"));
    }

    void linesEndAsThoseOfTheEngine() {
        OpenPage open(QStringLiteral("1\r\n2\r3\n\n"));
        QCOMPARE(open.page.text(), QStringLiteral("1\n2\n3\n\n"));
        open.moveTo(4);
        QGuiApplication::clipboard()->setText(QStringLiteral("4\u2028a\u0085b = 5\r\n6\u00a0km"));
        open.page.paste();
        QVERIFY(open.settled());
        QCOMPARE(open.page.text(), QStringLiteral("1\n2\n3\n\n4\na\u0085b = 5\n6\u00a0km"));
        QCOMPARE(open.answer(4), QStringLiteral("4"));
        QCOMPARE(open.answer(5), QStringLiteral("5"));
        QCOMPARE(open.answer(6), QStringLiteral("6 km"));
    }

    void storedAnswersAreThereBeforeTheEngine() {
        const QString text = QStringLiteral("# head\n5 inch in cm\n\nx = 3");
        OpenPage before(text);
        OpenPage open(text, false);
        open.page.showStoredResults(*before.page.results());
        QCOMPARE(open.answer(1), QStringLiteral("12.7 cm"));
        QCOMPARE(colorAt(open.block(3), 0), open.page.theme().variable);
        // It can be edited meanwhile; the answers move with their lines.
        open.moveTo(1, 0);
        open.press(Qt::Key_Return);
        QCOMPARE(open.answers()[2], QStringLiteral("12.7 cm"));
        open.startEngine();
        QCOMPARE(open.answers(),
                 (QStringList{QString(), QString(), QStringLiteral("12.7 cm"), QString(), QStringLiteral("3")}));
    }

    void answersStandAtTheirLines() {
        const QString prose = QStringLiteral("a long line, written by somebody with much to say: ");
        OpenPage open(prose + prose + prose + QStringLiteral("12 km in miles\n# head\n7"));
        const auto check = [&] {
            int seen = 0;
            qreal end = -1;
            open.page.visitLines(0, open.page.height(),
                                 [&](const QTextBlock& block, qreal top, qreal bottom, qreal base) {
                                     QCOMPARE(block.blockNumber(), seen++);
                                     QVERIFY(end < 0 || top == end);
                                     end = bottom;
                                     QVERIFY(top < base && base < top + open.page.fontMetrics().height() * 2);
                                     QCOMPARE(open.page.lineAt(static_cast<int>(base)), block.blockNumber());
                                 });
            QCOMPARE(seen, 3);
        };
        check();
        const int rows = open.block(0).layout()->lineCount();
        QVERIFY(rows > 1);
        QVERIFY(open.page.blockCount() == 3);
        open.page.setAnswerShare(0.7);
        QTRY_VERIFY(open.block(0).layout()->lineCount() > rows);
        check();
        // The header is larger than what is below it.
        const qreal head = open.block(1).layout()->boundingRect().height();
        QVERIFY(head > open.block(2).layout()->boundingRect().height());
    }

    void notesAreMarkedQuietly() {
        OpenPage open(QStringLiteral("Rent * 12"));
        QVERIFY(isMarked(open.block(0), 1));
        QVERIFY(!isMarked(open.block(0), 6));
        QCOMPARE(open.answer(0), QStringLiteral("12"));
        // Not while the line is being typed.
        open.moveTo(0);
        open.type(QStringLiteral("/0"));
        QTRY_VERIFY(open.page.results());
        QVERIFY(!isMarked(open.block(0), 1));
        QVERIFY(open.page.isHeld(0));
        QTRY_VERIFY(isMarked(open.block(0), 1));
        open.type(QStringLiteral("5"));
        open.press(Qt::Key_Return);
        QVERIFY(!open.page.isHeld(0));
    }

    void inputMethodsKeepTheColours() {
        OpenPage open(QStringLiteral("rent = 12"));
        open.moveTo(0, 4);
        QInputMethodEvent composing(QStringLiteral("にほん"), {});
        QCoreApplication::sendEvent(&open.page, &composing);
        QCOMPARE(open.page.text(), QStringLiteral("rent = 12"));
        QCOMPARE(colorAt(open.block(0), 0), open.page.theme().variable);
        QCOMPARE(colorAt(open.block(0), 11), open.page.theme().number);  // three units after its place in the text
        QInputMethodEvent done;
        done.setCommitString(QStringLiteral("日本"));
        QCoreApplication::sendEvent(&open.page, &done);
        QVERIFY(open.settled());
        QCOMPARE(open.page.text(), QStringLiteral("rent日本 = 12"));
        QCOMPARE(colorAt(open.block(0), 5), open.page.theme().variable);
        QCOMPARE(open.answer(0), QStringLiteral("12"));
    }

    void aNewEngineAnswersAnew() {
        OpenPage open(QStringLiteral("1/3"));
        QCOMPARE(open.answer(0), QStringLiteral("0.33"));
        Calculation::Settings settings = open.calculation.settings();
        settings.precision = 5;
        open.calculation.start(settings);
        QVERIFY(open.settled());
        QCOMPARE(open.answer(0), QStringLiteral("0.33333"));
        open.type(QStringLiteral("3"));
        QVERIFY(open.settled());
        QCOMPARE(open.answer(0), QStringLiteral("10.33333"));
    }
};

}  // namespace

}  // namespace vemo::notepad

QTEST_MAIN(vemo::notepad::PageTest)
#include "page_test.moc"
