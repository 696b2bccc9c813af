// SPDX-License-Identifier: MIT
#include "notepad/settings.h"

#include <QApplication>
#include <QFontDatabase>
#include <cmath>
#include <filesystem>
#include <optional>

#include "notepad/main_window.h"
#include "notepad/theme.h"
#include "session/configuration_writer.h"
#include "session/sources.h"

namespace vemo::notepad {

namespace {

using session::Configuration;
using Changes = std::vector<session::ConfigurationChange>;

struct TextKey {
    const char* key;
    std::string Configuration::*member;
};

constexpr TextKey textKeys[] = {
    {"locale", &Configuration::locale},     {"language", &Configuration::language},
    {"rates", &Configuration::rates},       {"coins", &Configuration::coins},
    {"places", &Configuration::places},     {"extensions", &Configuration::extensions},
    {"notepad.font", &Configuration::font}, {"notepad.theme", &Configuration::theme},
};

Changes changesBetween(const Configuration& before, const Configuration& after) {
    Changes changes;
    for (const auto& [key, member] : textKeys) {
        if (before.*member == after.*member) continue;
        const std::string& value = after.*member;
        changes.push_back(
            {key, value.empty() ? std::nullopt : std::optional<std::variant<std::string, std::int64_t>>(value)});
    }
    if (before.precision != after.precision) {
        changes.push_back({"precision", std::nullopt});
        if (after.precision) changes.back().value = *after.precision;
    }
    return changes;
}

ThemeChoice themeOf(const Configuration& values) {
    if (values.theme == "light") return ThemeChoice::light;
    return values.theme == "dark" ? ThemeChoice::dark : ThemeChoice::desktop;
}

}  // namespace

Calculation::Settings calculationSettings(const Configuration& values) {
    Calculation::Settings settings;
    settings.environment.locale = values.locale;
    settings.environment.language = values.language;
    settings.environment.timeZone = values.timeZone;
    if (session::isUrl(values.rates)) settings.environment.sources.currencyRates = values.rates;
    if (session::isUrl(values.coins)) settings.environment.sources.cryptoRates = values.coins;
    settings.environment.sources.timeZones = values.places;
    settings.environment.trace = [](std::string_view) {};
    std::error_code error;
    if (std::filesystem::is_directory(values.extensions, error)) settings.engine.extensions = values.extensions;
    settings.precision = values.precision;
    return settings;
}

QFont fontNamed(const std::string& name) {
    constexpr qreal largerThanMenus = 1.2;
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSizeF(std::round(font.pointSizeF() * largerThanMenus));
    const QString text = QString::fromStdString(name).trimmed();
    if (text.isEmpty()) return font;
    bool isNumber = false;
    const qsizetype blank = text.lastIndexOf(' ');
    const qreal size = text.mid(blank + 1).toDouble(&isNumber);
    if (isNumber && size >= 4 && size <= 200) font.setPointSizeF(size);
    const QString family = isNumber ? text.left(std::max<qsizetype>(blank, 0)).trimmed() : text;
    if (!family.isEmpty()) font.setFamilies({family});
    return font;
}

std::string nameOf(const QFont& font) {
    return (font.family() + ' ' + QString::number(font.pointSizeF())).toStdString();
}

Settings::Settings(Calculation& calculation, MainWindow& window, QObject* parent)
    : QObject(parent), calculation_(calculation), window_(window) {
    connect(&calculation_, &Calculation::ready, this, &Settings::takeRates);
    connect(&calculation_, &Calculation::onlineProblem, this, [this](const OnlineProblem& problem) {
        addProblem(QString::fromStdString(session::problemText(problem)));
    });
    read();
}

void Settings::read() {
    auto [values, problems] = session::readConfiguration(session::configurationFile());
    values_ = std::move(values);
    problems_.clear();
    for (const Failure& problem : problems) problems_ += QString::fromStdString(problem.message);
    std::error_code error;
    if (!values_.extensions.empty() && !std::filesystem::is_directory(values_.extensions, error))
        problems_ += QString::fromStdString(values_.extensions) + tr(": not a folder");
    showAppearance();
}

void Settings::start() {
    sourceProblems_.clear();
    calculation_.start(calculationSettings(values_));
    if (!problems_.isEmpty()) window_.say(problems_.front());
}

QString Settings::change(const Configuration& wanted) {
    const Configuration before = values_;
    const Changes changes = changesBetween(before, wanted);
    if (changes.empty()) return {};
    const std::string problem = session::changeConfiguration(session::configurationFile(), changes);
    if (!problem.empty()) return QString::fromStdString(problem);
    read();
    Configuration alike = values_;
    alike.font = before.font;
    alike.theme = before.theme;
    if (!(alike == before)) start();
    Q_EMIT problemsChanged();
    return {};
}

void Settings::updateRates() {
    read();
    start();
}

void Settings::showAppearance() {
    applyTheme(themeOf(values_));
    window_.setPageFont(fontNamed(values_.font));
}

void Settings::takeRates() {
    for (const auto& [kind, source] : {std::pair(VemoEngine::RatesFile::currency, values_.rates),
                                       std::pair(VemoEngine::RatesFile::crypto, values_.coins)}) {
        const std::string problem = session::takeRates(*calculation_.engine(), kind, source);
        if (!problem.empty()) addProblem(QString::fromStdString(problem));
    }
}

void Settings::addProblem(const QString& problem) {
    if (sourceProblems_.contains(problem)) return;
    sourceProblems_ += problem;
    window_.say(problem);
    Q_EMIT problemsChanged();
}

}  // namespace vemo::notepad
