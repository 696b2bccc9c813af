// SPDX-License-Identifier: MIT
// One process has the documents; others hand theirs over. VEMO_NOTEPAD names the program.
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include "home.h"
#include "notepad/folders.h"
#include "notepad/session_state.h"
#include "notepad/single_instance.h"

namespace vemo::notepad {

class InstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void handsFilesToTheFirst() {
        const test::Home home;
        QStringList taken;
        {
            SingleInstance first(stateFolder());
            QVERIFY(first.isFirst());
            first.listen();
            connect(&first, &SingleInstance::received, this, [&](const QStringList& files) { taken += files; });
            QProcess other;
            other.setWorkingDirectory(home.path(""));
            other.start(qEnvironmentVariable("VEMO_NOTEPAD"), {"my file.vemo", "/tmp/ü.vemo"});
            QTRY_COMPARE(other.state(), QProcess::NotRunning);
            QCOMPARE(other.exitCode(), 0);
        }
        QCOMPARE(taken, (QStringList{home.path("my file.vemo"), "/tmp/ü.vemo"}));
        QVERIFY(SingleInstance(stateFolder()).isFirst());
    }

    void followsAKilledOne() {
        const test::Home home;
        home.write("a.vemo", "1");
        home.write("b.vemo", "2");
        const auto session = [] { return SessionState::read(stateFolder() + "/session.json"); };
        QProcess first;
        first.start(qEnvironmentVariable("VEMO_NOTEPAD"), {home.path("a.vemo")});
        QTRY_COMPARE_WITH_TIMEOUT(session().tabs.size(), 1, 20000);
        QProcess second;
        second.start(qEnvironmentVariable("VEMO_NOTEPAD"), {home.path("b.vemo")});
        QTRY_COMPARE_WITH_TIMEOUT(second.state(), QProcess::NotRunning, 20000);
        QTRY_COMPARE(session().tabs.size(), 2);
        first.kill();
        QVERIFY(first.waitForFinished());

        QProcess third;
        third.start(qEnvironmentVariable("VEMO_NOTEPAD"), {home.path("a.vemo")});
        QTRY_COMPARE_WITH_TIMEOUT(session().current, 0, 20000);
        QCOMPARE(session().tabs.size(), 2);
        QCOMPARE(third.state(), QProcess::Running);
        third.kill();
        third.waitForFinished();
    }
};

}  // namespace vemo::notepad

QTEST_MAIN(vemo::notepad::InstanceTest)
#include "instance_test.moc"
