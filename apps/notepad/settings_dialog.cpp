// SPDX-License-Identifier: MIT
#include "notepad/settings_dialog.h"

#include <QComboBox>
#include <QCompleter>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "notepad/calculation.h"
#include "notepad/settings.h"
#include "session/sources.h"
#include "vemo/rates_copy.h"

namespace vemo::notepad {

namespace {

QString native(const std::string& text) {
    return QString::fromStdString(text);
}

QLabel* hint(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

// The name by which speakers call a language. A locale's own name of its language names the country, too.
QString languageName(const QString& code) {
    for (const auto& [known, name] : {std::pair("en", "English"), std::pair("es", "Español")})
        if (code == known) return name;
    QString name = QLocale(code).nativeLanguageName();
    if (name.isEmpty()) return code;
    name[0] = name[0].toUpper();
    return name;
}

void addLanguages(QComboBox& box) {
    box.addItem(SettingsDialog::tr("As in the system"), QString());
    for (const std::string& code : knownLanguages()) box.addItem(languageName(native(code)), native(code));
}

// Adds the locales, which are found by typing the name of a language or country, or the identifier.
void addLocales(QComboBox& box) {
    QList<std::pair<QString, QString>> locales;
    for (const std::string& id : knownLocales()) {
        const QLocale locale(native(id));
        if (id.find('_') == id.npos || locale.language() == QLocale::C) continue;
        locales.append({QLocale::languageToString(locale.language()) + ", " +
                            QLocale::territoryToString(locale.territory()) + " (" + native(id) + ")",
                        native(id)});
    }
    std::sort(locales.begin(), locales.end());
    box.addItem(SettingsDialog::tr("As in the system"), QString());
    for (const auto& [name, id] : locales) box.addItem(name, id);
    box.setEditable(true);
    box.setInsertPolicy(QComboBox::NoInsert);
    box.completer()->setCompletionMode(QCompleter::PopupCompletion);
    box.completer()->setFilterMode(Qt::MatchContains);
}

void choose(QComboBox& box, const QString& data) {
    if (box.findData(data) < 0) box.addItem(data, data);
    box.setCurrentIndex(box.findData(data));
}

std::string chosen(const QComboBox& box) {
    // Typed text that is none of the names leaves the choice as it was.
    return box.currentData().toString().toStdString();
}

}  // namespace

SettingsDialog::SettingsDialog(Settings& settings, Calculation& calculation, QWidget* parent)
    : QDialog(parent), settings_(settings), calculation_(calculation), tabs_(new QTabWidget), problem_(new QLabel) {
    setWindowTitle(tr("Settings"));
    tabs_->addTab(readingTab(), tr("Rea&ding"));
    tabs_->addTab(ratesTab(), tr("Ra&tes and Places"));
    tabs_->addTab(extensionsTab(), tr("&Extensions"));
    tabs_->addTab(appearanceTab(), tr("A&ppearance"));
    problem_->setWordWrap(true);
    problem_->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (apply()) accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &SettingsDialog::apply);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    layout->addWidget(problem_);
    layout->addWidget(buttons);
    settings_.read();
    showValues();
    connect(&settings_, &Settings::problemsChanged, this, &SettingsDialog::showRates);
    for (const auto signal : {&Calculation::ready, &Calculation::contextChanged}) {
        connect(&calculation_, signal, this, [this] {
            showRates();
            showExtensions();
        });
    }
    resize(560, 400);
}

QWidget* SettingsDialog::readingTab() {
    auto* tab = new QWidget;
    auto* form = new QFormLayout(tab);
    language_ = new QComboBox;
    addLanguages(*language_);
    locale_ = new QComboBox;
    addLocales(*locale_);
    sample_ = hint({});
    precision_ = new QSpinBox;
    precision_->setRange(-1, session::mostPrecision);
    precision_->setSpecialValueText(tr("As usual (2)"));
    form->addRow(tr("&Language of words:"), language_);
    form->addRow(tr("&Numbers and dates:"), locale_);
    form->addRow(QString(), sample_);
    form->addRow(tr("Most &fraction digits:"), precision_);
    connect(locale_, &QComboBox::currentIndexChanged, this, &SettingsDialog::showSample);
    return tab;
}

QWidget* SettingsDialog::ratesTab() {
    auto* tab = new QWidget;
    auto* form = new QFormLayout(tab);
    rates_ = new QLineEdit;
    rates_->setPlaceholderText("https://…");
    coins_ = new QLineEdit;
    coins_->setPlaceholderText("https://…");
    places_ = new QLineEdit;
    places_->setPlaceholderText("https://…");
    updated_ = hint({});
    auto* update = new QPushButton(tr("&Update Now"));
    update->setAutoDefault(false);
    connect(update, &QPushButton::clicked, this, [this] {
        if (!apply()) return;
        updated_->setText(tr("Asking for rates…"));
        settings_.updateRates();
    });
    addPathRow(*form, tr("Exchange &rates:"), rates_, tr("Choose the File of Exchange Rates"), false);
    form->addRow(QString(), updated_);
    auto* row = new QHBoxLayout;
    row->addWidget(update);
    row->addStretch();
    form->addRow(QString(), row);
    addPathRow(*form, tr("Crypto-curre&ncies:"), coins_, tr("Choose the File of Crypto-Currencies"), false);
    form->addRow(tr("&Service for places:"), places_);
    form->addRow(QString(), hint(tr("A URL or a file for rates, a URL for places. Nothing is fetched unless it is "
                                    "named here.")));
    return tab;
}

QWidget* SettingsDialog::extensionsTab() {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    auto* form = new QFormLayout;
    extensions_ = new QLineEdit;
    addPathRow(*form, tr("&Folder of scripts:"), extensions_, tr("Choose the Folder of Scripts"), true);
    scripts_ = new QTreeWidget;
    scripts_->setHeaderLabels({tr("Script"), tr("What became of it")});
    scripts_->setAccessibleName(tr("Scripts"));
    scripts_->setRootIsDecorated(true);
    layout->addLayout(form);
    layout->addWidget(scripts_);
    return tab;
}

QWidget* SettingsDialog::appearanceTab() {
    auto* tab = new QWidget;
    auto* form = new QFormLayout(tab);
    font_ = new QFontComboBox;
    size_ = new QSpinBox;
    size_->setRange(4, 200);
    theme_ = new QComboBox;
    theme_->addItem(tr("As in the desktop"), "desktop");
    theme_->addItem(tr("Light"), "light");
    theme_->addItem(tr("Dark"), "dark");
    form->addRow(tr("&Font:"), font_);
    form->addRow(tr("&Size:"), size_);
    form->addRow(tr("T&heme:"), theme_);
    return tab;
}

void SettingsDialog::addPathRow(QFormLayout& form, const QString& name, QLineEdit* edit, const QString& label,
                                bool folder) {
    auto* both = new QWidget;
    auto* layout = new QHBoxLayout(both);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* button = new QPushButton(tr("Choose…"));
    button->setAccessibleName(label);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, edit, label, folder] {
        const QString path =
            folder ? QFileDialog::getExistingDirectory(this, label, edit->text())
                   : QFileDialog::getOpenFileName(this, label, edit->text(), tr("Rates (*.json);;All files (*)"));
        if (!path.isEmpty()) edit->setText(path);
    });
    layout->addWidget(edit);
    layout->addWidget(button);
    form.addRow(name, both);
    qobject_cast<QLabel*>(form.labelForField(both))->setBuddy(edit);
    edit->setAccessibleName(QString(name).remove('&').remove(':'));
}

void SettingsDialog::showValues() {
    const session::Configuration& values = settings_.values();
    choose(*language_, native(values.language));
    choose(*locale_, native(values.locale));
    choose(*theme_, values.theme.empty() ? "desktop" : native(values.theme));
    precision_->setValue(static_cast<int>(values.precision.value_or(-1)));
    rates_->setText(native(values.rates));
    coins_->setText(native(values.coins));
    places_->setText(native(values.places));
    extensions_->setText(native(values.extensions));
    const QFont font = fontNamed(values.font);
    font_->setCurrentFont(font);
    size_->setValue(static_cast<int>(font.pointSizeF()));
    QFont shown = font_->currentFont();
    shown.setPointSizeF(size_->value());
    shownFont_ = nameOf(shown);
    showSample();
    showRates();
    showExtensions();
}

session::Configuration SettingsDialog::wanted() const {
    session::Configuration values = settings_.values();
    const auto text = [](const QLineEdit* edit) { return edit->text().trimmed().toStdString(); };
    values.language = chosen(*language_);
    values.locale = chosen(*locale_);
    values.precision = precision_->value() < 0 ? std::nullopt : std::optional<std::int64_t>(precision_->value());
    values.rates = text(rates_);
    values.coins = text(coins_);
    values.places = text(places_);
    values.extensions = text(extensions_);
    const std::string theme = chosen(*theme_);
    if (theme != "desktop" || !values.theme.empty()) values.theme = theme;
    // Only a font that was chosen is written down.
    QFont font = font_->currentFont();
    font.setPointSizeF(size_->value());
    if (nameOf(font) != shownFont_) values.font = nameOf(font);
    return values;
}

bool SettingsDialog::apply() {
    const session::Configuration values = wanted();
    QString problem;
    if (!values.places.empty() && !session::isUrl(values.places))
        problem = tr("The service for places takes a URL, which begins with https:// or http://.");
    else
        problem = settings_.change(values);
    problem_->setText(problem);
    problem_->setVisible(!problem.isEmpty());
    return problem.isEmpty();
}

void SettingsDialog::showSample() {
    const std::string id = chosen(*locale_);
    const QLocale locale = id.empty() ? QLocale::system() : QLocale(native(id));
    sample_->setText(locale.toString(1234567.89, 'f', 2) + "   " +
                     locale.toString(QDate(2027, 3, 14), QLocale::ShortFormat) + "   " +
                     locale.toString(QTime(17, 30), QLocale::ShortFormat));
}

void SettingsDialog::showRates() {
    const session::Configuration& values = settings_.values();
    QStringList told;
    if (values.rates.empty()) {
        told += tr("No source is named.");
    } else if (session::isUrl(values.rates)) {
        const auto time = ratesFetched(values.rates);
        const auto seconds =
            time ? std::chrono::duration_cast<std::chrono::seconds>(time->time_since_epoch()).count() : 0;
        told += time ? tr("Last update: %1")
                           .arg(QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat))
                     : tr("No rates have come yet.");
    } else {
        told += tr("Read from a file when the notepad starts.");
    }
    updated_->setText((told + settings_.problems()).join('\n'));
}

void SettingsDialog::showExtensions() {
    scripts_->clear();
    const VemoEngine* engine = calculation_.engine();
    if (!engine || !calculation_.isReady()) return;
    for (const Extension& extension : engine->extensions()) {
        const bool failed = extension.failed || extension.skipped;
        auto* row = new QTreeWidgetItem(scripts_, {native(extension.file), failed ? tr("Failed") : tr("Loaded")});
        for (const std::string& defined : extension.defined) new QTreeWidgetItem(row, {QString(), native(defined)});
        if (extension.skipped) new QTreeWidgetItem(row, {QString(), tr("It can't be read as text.")});
        for (const QString& message : native(extension.log).split('\n', Qt::SkipEmptyParts))
            new QTreeWidgetItem(row, {QString(), message});
    }
    scripts_->expandAll();
    scripts_->resizeColumnToContents(0);
}

}  // namespace vemo::notepad
