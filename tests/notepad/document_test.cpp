// SPDX-License-Identifier: MIT
// Documents as files: what is read is what is written again, and what others write is noticed.
#include "notepad/document.h"

#include <QSignalSpy>
#include <QTest>

#include "home.h"

namespace vemo::notepad {

class DocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsTheFormOfAFile_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << QByteArray("1 + 1\n2") << "1 + 1\n2";
        QTest::newRow("byte order mark") << QByteArray(
                                                "\xef\xbb\xbf"
                                                "5 €\n")
                                         << "5 €\n";
        QTest::newRow("carriage returns") << QByteArray("1\r\n2\r\n") << "1\n2\n";
        QTest::newRow("no-break space") << QByteArray("1 000\xc2\xa0€ 😀") << "1 000\u00a0€ 😀";
        QTest::newRow("empty") << QByteArray("") << "";
    }
    void keepsTheFormOfAFile() {
        QFETCH(QByteArray, bytes);
        const test::Home home;
        home.write("a.vemo", bytes);
        Document document;
        const auto text = document.open(home.path("a.vemo"));
        QVERIFY(text);
        QTEST(*text, "text");
        QCOMPARE(document.save(home.path("b.vemo"), *text), QString());
        QCOMPARE(home.read("b.vemo"), bytes);
        QCOMPARE(document.title(), "b.vemo");
    }

    void refusesWhatIsNoText() {
        const test::Home home;
        home.write("a.vemo", "caf\xe9");
        home.write("b.vemo", QByteArray("1\0"
                                        "2",
                                        3));
        Document document;
        for (const char* name : {"a.vemo", "b.vemo", "", "none.vemo"}) QVERIFY(!document.open(home.path(name)));
        QVERIFY(document.path().isEmpty());
        QVERIFY(!document.save(home.path("no/such/folder.vemo"), "1").isEmpty());
        QVERIFY(document.path().isEmpty());
    }

    void noticesWhatOthersWrite() {
        const test::Home home;
        home.write("a.vemo", "1");
        Document document;
        QVERIFY(document.open(home.path("a.vemo")));
        QList<Document::OnDisk> told;
        connect(&document, &Document::changedOnDisk, this, [&](auto what) { told += what; });

        QCOMPARE(document.save(document.path(), "2"), QString());
        home.write("a.vemo", "2");  // the same again
        QTest::qWait(400);
        QVERIFY(told.isEmpty());

        home.write("a.vemo", "3");
        QTRY_COMPARE(told, QList{Document::OnDisk::changed});
        QCOMPARE(document.onDisk(), Document::OnDisk::changed);
        QVERIFY(document.reload());
        QCOMPARE(document.onDisk(), Document::OnDisk::same);

        // As many programs save: another file takes the name.
        home.write("beside", "4");
        QVERIFY(QFile::remove(document.path()));
        QVERIFY(QFile::rename(home.path("beside"), document.path()));
        QTRY_COMPARE(told.size(), 2);
        document.acceptDisk();
        home.write("a.vemo", "5");
        QTRY_COMPARE(told.size(), 3);

        QVERIFY(QFile::remove(document.path()));
        QTRY_COMPARE(told.size(), 4);
        QCOMPARE(told.back(), Document::OnDisk::removed);
        home.write("a.vemo", "6");
        QTRY_COMPARE(told.size(), 5);
        QCOMPARE(told.back(), Document::OnDisk::changed);
    }
};

}  // namespace vemo::notepad

QTEST_MAIN(vemo::notepad::DocumentTest)
#include "document_test.moc"
