// SPDX-License-Identifier: MIT
// What is open: across starts, beside other programs, and when a person closes things.
#include "notepad/workspace.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include "application.h"
#include "home.h"
#include "vemo/engine.h"

namespace vemo::notepad {

class WorkspaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void welcomesOnce() {
        const test::Home home;
        {
            test::Application first;
            QCOMPARE(first.page().text().toStdU16String(), VemoEngine::welcomeSample());
            QVERIFY(!first.page().document()->isModified());
            QTRY_VERIFY(first.page().results());
            first.window.close();
        }
        test::Application second;
        QCOMPARE(second.page().text(), "");
    }

    void findsEverythingAgain() {
        const test::Home home;
        home.write("a.vemo", "rent = 1200\nrent * 2");
        home.write("b.vemo", "1\n2\n3");
        {
            test::Application first({home.path("a.vemo"), home.path("b.vemo")});
            QCOMPARE(first.titles(), "a.vemo b.vemo");
            first.choose("New");
            first.type("7 * 6\n10");
            QTRY_VERIFY(first.page().results());
            first.window.tabs()->setCurrentIndex(0);
            first.page().moveCursor(QTextCursor::End);
            QTRY_VERIFY(first.page().results());
            first.window.close();
        }
        test::Application second;
        QCOMPARE(second.titles(), "a.vemo b.vemo Untitled*");
        QCOMPARE(second.window.tabs()->currentIndex(), 0);
        QCOMPARE(second.page().text(), "rent = 1200\nrent * 2");
        QCOMPARE(second.page().textCursor().position(), 20);
        // The answers are there before the engine is.
        QCOMPARE(second.page().lines().view(1).answer, "2,400");
        QVERIFY(!second.calculation.isReady());
        second.window.tabs()->setCurrentIndex(2);
        QCOMPARE(second.page().text(), "7 * 6\n10");
        QCOMPARE(second.page().lines().view(0).answer, "42");
        second.type("0");
        QCOMPARE(second.page().text(), "7 * 6\n100");
        // A file that is open already comes to the front, another one opens.
        home.write("c.vemo", "5");
        second.workspace.open({home.path("c.vemo"), home.path("./b.vemo")});
        QCOMPARE(second.titles(), "a.vemo b.vemo Untitled* c.vemo");
        QCOMPARE(second.window.tabs()->currentIndex(), 1);
        QCOMPARE(second.workspace.recent().size(), 3);
    }

    void savesWithoutOverwritingOthers() {
        const test::Home home;
        home.write("a.vemo", "1");
        test::Application notepad({home.path("a.vemo")});
        notepad.page().moveCursor(QTextCursor::End);
        notepad.type("1");
        notepad.choose("Save");
        QCOMPARE(home.read("a.vemo"), "11");
        QCOMPARE(notepad.titles(), "a.vemo");

        // What was not touched here follows the file, and can be undone.
        home.write("a.vemo", "11 + 5");
        QTRY_COMPARE(notepad.page().text(), "11 + 5");
        notepad.page().undo();
        QCOMPARE(notepad.page().text(), "11");

        // What was, asks, and is not lost by saving either.
        home.write("a.vemo", "theirs");
        auto* bar = notepad.window.findChild<NoticeBar*>();
        QTRY_VERIFY(bar->message().contains("changed by another program"));
        QCOMPARE(notepad.page().text(), "11");
        test::inDialog([](QWidget& dialog) { test::press(dialog, "Cancel"); });
        notepad.choose("Save");
        QCOMPARE(home.read("a.vemo"), "theirs");
        test::inDialog([](QWidget& dialog) { test::press(dialog, "Write Over"); });
        notepad.choose("Save");
        QCOMPARE(home.read("a.vemo"), "11");
        QCOMPARE(bar->message(), "");

        QFile::remove(home.path("a.vemo"));
        QTRY_VERIFY(bar->message().contains("no longer where it was"));
        QVERIFY(notepad.page().document()->isModified());
        notepad.choose("Save");
        QCOMPARE(home.read("a.vemo"), "11");
    }

    void tellsOfChangesWhileItWasClosed() {
        const test::Home home;
        home.write("a.vemo", "1");
        {
            test::Application first({home.path("a.vemo")});
            first.type("9");
            first.workspace.flush();  // and it is gone without being closed
        }
        home.write("a.vemo", "2");
        test::Application second;
        QCOMPARE(second.page().text(), "91");
        QVERIFY(second.window.findChild<NoticeBar*>()->message().contains("changed by another program"));
        test::press(*second.window.findChild<NoticeBar*>(), "Read It Again");
        QTRY_COMPARE(second.page().text(), "2");
    }

    void asksBeforeATextIsLost() {
        const test::Home home;
        test::Application notepad;
        notepad.choose("New");
        notepad.type("# My trip\n5 * 5");
        test::inDialog([](QWidget& dialog) { test::press(dialog, "Cancel"); });
        notepad.choose("Close Tab");
        QCOMPARE(notepad.page().text(), "# My trip\n5 * 5");
        test::inDialog([](QWidget& dialog) {
            test::inDialog([](QWidget& files) {
                auto* name = files.findChild<QLineEdit*>();
                QCOMPARE(QFileInfo(name->text()).fileName(), "My trip.vemo");
                name->setText(QFileInfo(qEnvironmentVariable("XDG_STATE_HOME")).path() + "/trip");
                test::press(files, "Save");
            });
            test::press(dialog, "Save");
        });
        notepad.choose("Close Tab");
        QCOMPARE(home.read("trip.vemo"), "# My trip\n5 * 5");
        QVERIFY(!notepad.titles().contains("trip"));

        notepad.choose("New");
        notepad.type("6");
        notepad.workspace.flush();
        test::inDialog([](QWidget& dialog) { test::press(dialog, "Discard"); });
        notepad.choose("Close Tab");
        notepad.workspace.flush();
        QVERIFY(Recovery::leftIn(stateFolder() + "/unsaved").empty());

        // The window takes texts without a file along, and asks for those that have one.
        notepad.type("7");
        notepad.workspace.open({home.path("trip.vemo")});
        notepad.type("8");
        test::inDialog([](QWidget& dialog) { test::press(dialog, "Cancel"); });
        QVERIFY(!notepad.window.close());
        test::inDialog([](QWidget& dialog) { test::press(dialog, "Not Now"); });
        QVERIFY(notepad.window.close());
        QCOMPARE(home.read("trip.vemo"), "# My trip\n5 * 5");
        QCOMPARE(Recovery::leftIn(stateFolder() + "/unsaved").size(), 2U);
    }

    void opensWhatIsDropped() {
        const test::Home home;
        home.write("a b.vemo", "1 + 1");
        test::Application notepad;
        notepad.choose("New");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(home.path("a b.vemo"))});
        QWidget* target = notepad.page().viewport();
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &drop);
        QCOMPARE(notepad.page().text(), "1 + 1");
        QVERIFY(notepad.titles().contains("a b.vemo"));
    }

    void survivesDamagedState() {
        const test::Home home;
        {
            test::Application first;
            first.choose("New");
            first.type("1");
            first.workspace.flush();
        }
        // Without a session, what is not saved is found all the same.
        const QString state = stateFolder();
        QFile session(state + "/session.json");
        QVERIFY(session.open(QIODevice::WriteOnly) && session.write("{\"tabs\": [{\"id\": 5}, nul") > 0);
        session.close();
        QFile other(state + "/unsaved/other.json");
        QVERIFY(other.open(QIODevice::WriteOnly) && other.write("not JSON") > 0);
        other.close();
        test::Application second;
        QCOMPARE(second.page().text(), "1");
        QVERIFY(other.exists());
    }
};

}  // namespace vemo::notepad

QTEST_MAIN(vemo::notepad::WorkspaceTest)
#include "workspace_test.moc"
