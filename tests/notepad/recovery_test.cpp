// SPDX-License-Identifier: MIT
// The process is killed while somebody types: what was typed more than a second before is there again.
#include "notepad/recovery.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <ctime>

#include "application.h"
#include "home.h"

namespace vemo::notepad {

namespace {

constexpr char typist[] = "--type";

QString lineNumbered(int number) {
    return QString("item %1: $%2\n").arg(number).arg(number % 97);
}

// Milliseconds that this thread has calculated, whatever else the machine does.
qint64 ownTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000;
}

// Another process: types for ever, and tells when it has typed each line.
int type() {
    test::Application notepad;
    notepad.choose("New");
    for (int number = 0;; ++number) {
        for (const QChar c : lineNumbered(number)) {
            notepad.type(c);
            QTest::qWait(1);
        }
        std::printf("%d %lld\n", number + 1, static_cast<long long>(QDateTime::currentMSecsSinceEpoch()));
        std::fflush(stdout);
    }
}

}  // namespace

class RecoveryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void losesNothingOlderThanASecond_data() {
        QTest::addColumn<int>("life");
        const auto seed = static_cast<quint32>(QDateTime::currentMSecsSinceEpoch());
        qInfo("seed %u", seed);
        QRandomGenerator random(seed);
        for (int i = 0; i < 5; ++i) {
            const int life = random.bounded(1200, 4000);
            QTest::addRow("killed after %d ms", life) << life;
        }
    }
    void losesNothingOlderThanASecond() {
        QFETCH(int, life);
        const test::Home home;
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {typist});
        QVERIFY(process.waitForReadyRead(20000));
        QTest::qWait(life);
        process.kill();
        const qint64 killed = QDateTime::currentMSecsSinceEpoch();
        QVERIFY(process.waitForFinished());

        QString expected, all;
        int lines = 0;
        for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
            const QList<QByteArray> parts = line.split(' ');
            if (parts.size() < 2 || parts[1].size() != 13) continue;
            all += lineNumbered(lines);
            if (parts[1].toLongLong() < killed - 1000) expected = all;
            ++lines;
        }
        test::Application again;
        const QString text = again.page().text();
        QVERIFY2(text.startsWith(expected), qPrintable(text.right(80) + " against " + expected.right(80)));
        // And it is what was typed, to the last character.
        for (int number = lines; all.size() < text.size(); ++number) all += lineNumbered(number);
        QVERIFY(all.startsWith(text));
        QVERIFY(again.page().document()->isModified());
    }

    void saysWhenNothingCanBeKept() {
        const test::Home home;
        test::Application notepad;
        const auto* notices = notepad.window.findChild<NoticeBar*>();
        QDir unsaved(stateFolder() + "/unsaved");
        QVERIFY(unsaved.removeRecursively());  // as if the disk were full
        notepad.type("1 + 1");
        QTRY_VERIFY(notices->message().contains("No such file"));
        QVERIFY(QDir().mkpath(unsaved.path()));
        notepad.type("2");
        QTRY_COMPARE(notices->message(), "");
    }

    void costsLittleWhileTyping() {
        const test::Home home;
        test::Application notepad;
        QString text;
        for (int i = 0; i < 10000; ++i) text += lineNumbered(i);
        notepad.page().setText(text);
        notepad.page().document()->setModified(true);
        notepad.workspace.flush();
        notepad.type("1");
        BackgroundWriter writer;
        qint64 most = 0;
        Recovery recovery(home.path(""), writer, [&](const QString& id) {
            return std::optional(Unsaved{id, {}, notepad.page().text(), 0});
        });
        for (int i = 0; i < 5; ++i) {
            recovery.touch("a");
            const qint64 before = ownTime();
            recovery.keepNow();
            most = std::max(most, ownTime() - before);
        }
        writer.flush();
#ifdef __SANITIZE_ADDRESS__
        constexpr qint64 allowed = 160;
#else
        constexpr qint64 allowed = 16;
#endif
        QVERIFY2(most < allowed, qPrintable(QString::number(most)));
        QCOMPARE(Recovery::leftIn(home.path("")).front().text, notepad.page().text());
    }
};

}  // namespace vemo::notepad

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (application.arguments().contains(vemo::notepad::typist)) return vemo::notepad::type();
    vemo::notepad::RecoveryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "recovery_test.moc"
