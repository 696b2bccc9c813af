// SPDX-License-Identifier: MIT
// The event loop of a person who types is never busy for long.
#include <QSignalSpy>

#include "long_page.h"
#include "open_page.h"
#include "watched_application.h"

namespace vemo::notepad {

namespace {

#if defined(NDEBUG)
constexpr double longest = 16;  // milliseconds
#else
constexpr double longest = 60;  // hardly optimised, with asserts, perhaps with a sanitizer
#endif

class ResponsivenessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Processor time, since others may use the machine; what the thread waits for is told by the benchmark.
    void typingInTenThousandLines() {
        auto& application = *static_cast<WatchedApplication*>(qApp);
        OpenPage open(longPage(10000));
        for (const int line : {0, 5000, 9999}) {
            open.moveTo(line);
            QTest::qWait(50);
            application.take();
            for (const char c : std::string("25 + 3\n7 km in m\n")) {
                c == '\n' ? open.press(Qt::Key_Return) : open.type(QString(QLatin1Char(c)));
                QTest::qWait(10);
            }
            QVERIFY(open.settled());
            for (const auto& busy : application.take())
                QVERIFY2(busy.processor < longest,
                         qPrintable(QStringLiteral("%1 ms: %2").arg(busy.processor).arg(busy.what.c_str())));
        }
        // Only what changed is laid out anew: a line far from the edit keeps the layout that it has.
        open.moveTo(1);
        open.page.ensureCursorVisible();
        QVERIFY(open.block(8000).layout()->lineCount() == 0);
    }

    void answersComeThoughOneTypesOn() {
        OpenPage open(longPage(3000));
        QSignalSpy answered(&open.page, &Page::answersSettled);
        open.moveTo(0);
        for (int i = 0; i < 40; ++i) {
            open.type(QStringLiteral("1"));
            open.press(Qt::Key_Backspace);
            QTest::qWait(5);
        }
        QVERIFY(answered.count() > 2);
    }
};

}  // namespace

}  // namespace vemo::notepad

int main(int argc, char** argv) {
    vemo::notepad::WatchedApplication application(argc, argv);
    vemo::notepad::ResponsivenessTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "responsiveness_test.moc"
