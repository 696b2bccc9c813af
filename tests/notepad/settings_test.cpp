// SPDX-License-Identifier: MIT
// The dialog of settings and the file that it shares with the command.
#include "notepad/settings.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTreeWidget>

#include "application.h"
#include "home.h"
#include "notepad/settings_dialog.h"

namespace vemo::notepad {

namespace {

constexpr char configuration[] = "xdg_config_home/vemo/config.toml";

// The field that a person finds by its label.
template <class Field>
Field& field(QWidget& dialog, const QString& label) {
    for (auto* each : dialog.findChildren<QLabel*>()) {
        if (each->text().remove('&') != label) continue;
        if (auto* found = qobject_cast<Field*>(each->buddy())) return *found;
    }
    qFatal("no field is labelled %s", qPrintable(label));
}

// Answers every request with rates.
class RatesServer : public QTcpServer {
public:
    RatesServer() {
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
                if (!socket->readAll().contains("\r\n\r\n")) return;
                ++requests;
                const QByteArray body = R"({"rates": {"EUR": 0.5}})";
                socket->write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
                              QByteArray::number(body.size()) + "\r\n\r\n" + body);
                socket->disconnectFromHost();
            });
        });
        listen(QHostAddress::LocalHost);
    }

    QString url() const { return QString("http://127.0.0.1:%1/rates.json").arg(serverPort()); }
    int requests = 0;
};

}  // namespace

class SettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesTheFileOfTheCommand() {
        const test::Home home;
        QDir().mkpath(home.path("xdg_config_home/vemo"));
        home.write(configuration, "# mine\nlocale = \"en_US\"\ncolor = \"never\"  # the command's\nprecision = 4\n");
        test::Application notepad;
        notepad.page().setText("1/3 + 1000\n2 Zoll in cm");
        QTRY_VERIFY(notepad.page().results());
        QCOMPARE(notepad.page().lines().view(0).answer, "1,000.3333");
        test::inDialog([](QWidget& dialog) {
            auto& locale = field<QComboBox>(dialog, "Numbers and dates:");
            QCOMPARE(locale.currentData().toString(), "en_US");
            locale.setCurrentIndex(locale.findData("de_DE"));
            auto& language = field<QComboBox>(dialog, "Language of words:");
            language.setCurrentIndex(language.findText("Deutsch"));
            field<QSpinBox>(dialog, "Most fraction digits:").setValue(1);
            auto& theme = field<QComboBox>(dialog, "Theme:");
            theme.setCurrentIndex(theme.findText("Dark"));
            field<QSpinBox>(dialog, "Size:").setValue(17);
            test::press(dialog, "OK");
        });
        notepad.choose("Settings…");
        const QByteArray written = home.read(configuration);
        QVERIFY2(written.startsWith("# mine\nlocale = \"de_DE\"\ncolor = \"never\"  # the command's\nprecision = 1\n"
                                    "language = \"de\"\n\n[notepad]\n"),
                 written.constData());
        QVERIFY(written.contains("theme = \"dark\"\n") && written.contains(" 17\"\n"));
        QTRY_COMPARE(notepad.page().lines().view(0).answer, "1.000,3");
        QTRY_COMPARE(notepad.page().lines().view(1).answer, "5,1 cm");
        QCOMPARE(notepad.page().font().pointSize(), 17);
        QCOMPARE(&notepad.page().theme(), &Theme::dark());

        // Nothing is written where nothing was changed.
        const session::Configuration before = notepad.settings.values();
        test::inDialog([](QWidget& dialog) { test::press(dialog, "OK"); });
        notepad.choose("Settings…");
        QCOMPARE(home.read(configuration), written);
        QVERIFY(before == notepad.settings.values());

        // A file that can't be read is not written over.
        home.write(configuration, "locale = \n");
        test::inDialog([](QWidget& dialog) {
            field<QSpinBox>(dialog, "Most fraction digits:").setValue(3);
            test::press(dialog, "OK");
            QVERIFY(dialog.isVisible());
            test::press(dialog, "Cancel");
        });
        notepad.choose("Settings…");
        QCOMPARE(home.read(configuration), "locale = \n");
    }

    void fetchesRatesWhenTold() {
        const test::Home home;
        RatesServer server;
        test::Application notepad;
        notepad.page().setText("$10 in EUR");
        QTRY_VERIFY(notepad.page().results());
        QVERIFY(!notepad.page().lines().view(0).reason.isEmpty());
        test::inDialog([&](QWidget& dialog) {
            field<QLineEdit>(dialog, "Exchange rates:").setText(server.url());
            test::press(dialog, "Apply");
            QTRY_COMPARE(notepad.page().lines().view(0).answer, "€5");
            const auto says = [&](const QString& text) {
                for (auto* label : dialog.findChildren<QLabel*>())
                    if (label->text().contains(text)) return true;
                return false;
            };
            QTRY_VERIFY(says("Last update:"));
            const int before = server.requests;
            test::press(dialog, "Update Now");
            QTRY_COMPARE(server.requests, before + 1);
            // A place service is a URL.
            field<QLineEdit>(dialog, "Service for places:").setText("nonsense");
            test::press(dialog, "Apply");
            QVERIFY(says("takes a URL"));
            test::press(dialog, "Cancel");
        });
        notepad.choose("Settings…");
        QVERIFY(home.read(configuration).contains("rates = \"" + server.url().toUtf8()));
        QVERIFY(!home.read(configuration).contains("places") && !home.read(configuration).contains("font"));
    }

    // Each tab and field by its letter, and by a name that a screen reader tells.
    void needsNoMouse() {
        const test::Home home;
        test::Application notepad;
        QApplication::setActiveWindow(&notepad.window);
        test::inDialog([](QWidget& dialog) {
            QApplication::setActiveWindow(&dialog);
            QTest::keyClick(&dialog, Qt::Key_T, Qt::AltModifier);
            for (const auto& [key, name] :
                 {std::pair(Qt::Key_R, "Exchange rates:"), {Qt::Key_N, "Crypto-currencies:"}}) {
                QTest::keyClick(&dialog, key, Qt::AltModifier);
                auto& edit = field<QLineEdit>(dialog, name);
                QVERIFY(edit.hasFocus());
                QTest::keyClicks(&edit, "x.json");
                QCOMPARE(edit.text(), "x.json");
                const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&edit);
                QCOMPARE(told->text(QAccessible::Name) + ':', name);
            }
            QTest::keyClick(&dialog, Qt::Key_E, Qt::AltModifier);
            QTest::keyClick(&dialog, Qt::Key_F, Qt::AltModifier);
            QVERIFY(field<QLineEdit>(dialog, "Folder of scripts:").hasFocus());
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        notepad.choose("Settings…");
    }

    void tellsWhatScriptsDefine() {
        const test::Home home;
        QDir().mkpath(home.path("scripts"));
        home.write("scripts/good.js",
                   "vemo.addUnit({ id: \"furlong\", phrases: \"furlong,furlongs\", baseUnitId: "
                   "\"m\", format: \"%@ fur\", ratio: 201.168 });");
        home.write("scripts/bad.js", "vemo.noSuchThing();");
        test::Application notepad;
        notepad.page().setText("1 furlong in m");
        test::inDialog([&](QWidget& dialog) {
            field<QLineEdit>(dialog, "Folder of scripts:").setText(home.path("scripts"));
            test::press(dialog, "Apply");
            auto* tree = dialog.findChild<QTreeWidget*>();
            QTRY_COMPARE(tree->topLevelItemCount(), 2);
            QCOMPARE(tree->topLevelItem(0)->text(1), "Failed");
            QVERIFY(tree->topLevelItem(0)->childCount() > 0);
            QCOMPARE(tree->topLevelItem(1)->text(1), "Loaded");
            QVERIFY(tree->topLevelItem(1)->child(0)->text(1).contains("furlong"));
            test::press(dialog, "OK");
        });
        notepad.choose("Settings…");
        QTRY_COMPARE(notepad.page().lines().view(0).answer, "201.17 m");
    }
};

}  // namespace vemo::notepad

QTEST_MAIN(vemo::notepad::SettingsTest)
#include "settings_test.moc"
