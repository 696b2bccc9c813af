// SPDX-License-Identifier: MIT
// How long the event loop is busy with one event while a person types, by the lines of the page; and how long a page
// takes to open and to be scrolled. QT_QPA_PLATFORM=offscreen does without a screen.
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <cstdio>

#include "../../tests/notepad/long_page.h"
#include "../../tests/notepad/watched_application.h"
#include "notepad/main_window.h"
#include "notepad/page.h"

namespace {

using namespace vemo::notepad;

void tell(WatchedApplication& application, const char* what) {
    const auto busy = application.take();
    if (busy.empty()) return;
    const auto at = [&](double part) { return busy[static_cast<std::size_t>(part * double(busy.size() - 1))]; };
    double processor = 0;
    for (const auto& each : busy) processor = std::max(processor, each.processor);
    std::printf("%-34s longest %6.2f ms (%s), next %6.2f, 99th of 100 %6.2f, of %zu; of processor time %6.2f\n", what,
                busy[0].milliseconds, busy[0].what.c_str(), busy.size() > 1 ? busy[1].milliseconds : 0.0,
                at(0.01).milliseconds, busy.size(), processor);
}

bool settle(Page& page) {
    constexpr int longest = 60000;
    return QTest::qWaitFor([&] { return page.results() && page.lines().stale().empty(); }, longest);
}

void measure(WatchedApplication& application, int lines) {
    std::printf("%d lines\n", lines);
    Calculation calculation;
    MainWindow window(calculation);
    Page* page = window.addPage(QStringLiteral("long"));
    window.resize(1000, 700);
    window.show();
    QTest::qWait(100);
    calculation.start({});
    application.take();
    QElapsedTimer timer;
    timer.start();
    const QString text = longPage(lines);
    page->setText(text);
    std::printf("  text set in %lld ms, ", static_cast<long long>(timer.restart()));
    settle(*page);
    std::printf("answers after %lld ms\n", static_cast<long long>(timer.elapsed()));
    tell(application, "  opening");

    const auto type = [&](const char* what, int line, const QString& typed) {
        page->setTextCursor(QTextCursor(page->document()->findBlockByNumber(line)));
        page->moveCursor(QTextCursor::EndOfBlock);
        QTest::qWait(50);
        application.take();
        for (const QChar c : typed) {
            c == u'\n' ? QTest::keyClick(page, Qt::Key_Return) : QTest::keyClicks(page, QString(c));
            QTest::qWait(25);
        }
        settle(*page);
        tell(application, what);
    };
    type("  typing at the end", lines - 1, QStringLiteral("\nlunch 12 * 3 + 4 km in miles\nrate * 7"));
    type("  typing in the middle", lines / 2, QStringLiteral(" + 12 * 3 \n12 + 35 kg in lb\nsum of it"));
    type("  typing what others depend on", 0, QStringLiteral("25 + 13 * 2"));
    for (int i = 0; i < 20; ++i) page->undo();
    settle(*page);
    tell(application, "  undo");
    timer.restart();
    page->calculated().readingOf(lines - 2);
    std::printf("  the reading of the last line: %lld ms\n", static_cast<long long>(timer.elapsed()));
    QScrollBar* bar = page->verticalScrollBar();
    for (int i = 0; i < 60; ++i) {
        bar->setValue(i % 2 ? bar->value() + bar->pageStep() : bar->maximum() / 60 * i);
        QTest::qWait(10);
    }
    tell(application, "  scrolling");
}

}  // namespace

int main(int argc, char** argv) {
    WatchedApplication application(argc, argv);
    applyTheme(ThemeChoice::light);
    measure(application, argc > 1 ? std::atoi(argv[1]) : 10000);
    return 0;
}
