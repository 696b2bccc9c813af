// SPDX-License-Identifier: MIT
#pragma once

#include <QSignalBlocker>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <chrono>

#include "notepad/main_window.h"
#include "notepad/page.h"

namespace vemo::notepad {

// A window with one page, whose engine knows no network, and at a time of its own.
struct OpenPage {
    QTemporaryDir folder;
    Calculation calculation;
    MainWindow window{calculation};
    Page& page;

    explicit OpenPage(const QString& text, bool start = true) : page(addPage()) {
        page.setText(text);
        window.show();
        window.activateWindow();
        page.setFocus();
        if (start) startEngine();
    }

    // As those that are restored are added.
    Page& addPage() {
        const QSignalBlocker quiet(window.tabs());
        return *window.addPage(QStringLiteral("page"));
    }

    void startEngine() {
        Calculation::Settings settings;
        settings.environment.locale = "en_US";
        settings.environment.language = "en";
        settings.environment.timeZone = "UTC";
        settings.environment.clock = [] { return Date(std::chrono::seconds(1800000000)); };
        settings.environment.caches = folder.path().toStdString();
        settings.engine.testMode = true;
        calculation.start(settings);
        QVERIFY(settled());
        QTRY_VERIFY(calculation.vocabulary());
    }

    bool settled() {
        page.releaseHeldLine();
        constexpr int longest = 60000;
        return QTest::qWaitFor([&] { return page.results() && page.lines().stale().empty(); }, longest);
    }
    QString answer(int line) { return page.lines().view(line).answer; }
    QStringList answers() {
        QStringList all;
        for (int i = 0; i < page.blockCount(); ++i) all << answer(i);
        return all;
    }
    QTextBlock block(int line) { return page.document()->findBlockByNumber(line); }
    LineList::Line toldOf(int line) { return *page.lines().told(line); }

    void moveTo(int line, int unit = -1) {
        QTextCursor cursor(block(line));
        cursor.movePosition(unit < 0 ? QTextCursor::EndOfBlock : QTextCursor::NoMove);
        if (unit > 0) cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, unit);
        page.setTextCursor(cursor);
    }
    void select(int from, int to) {
        QTextCursor cursor = page.textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        page.setTextCursor(cursor);
    }
    void type(const QString& text) { QTest::keyClicks(&page, text); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&page, key, modifiers);
    }
};

}  // namespace vemo::notepad
