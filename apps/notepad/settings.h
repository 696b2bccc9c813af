// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QObject>
#include <QStringList>

#include "notepad/calculation.h"
#include "session/configuration.h"

namespace vemo::notepad {

class MainWindow;

// The configuration file, which is the command's, and what it means for the window: the engine's settings, the rates of
// a file, font and theme.
class Settings : public QObject {
    Q_OBJECT

public:
    Settings(Calculation& calculation, MainWindow& window, QObject* parent = nullptr);

    const session::Configuration& values() const { return values_; }
    // What is wrong with the file, or with what it names.
    QStringList problems() const { return problems_ + sourceProblems_; }

    // Reads the file again.
    void read();
    // Makes the engine; called once the window is shown.
    void start();
    // Writes what differs from the file, and takes it over. Says why it can't be written; nothing changes then.
    QString change(const session::Configuration& wanted);
    // Fetches rates anew, or reads their file anew.
    void updateRates();

Q_SIGNALS:
    void problemsChanged();

private:
    void showAppearance();
    void takeRates();
    void addProblem(const QString& problem);

    Calculation& calculation_;
    MainWindow& window_;
    session::Configuration values_;
    QStringList problems_;        // of the file
    QStringList sourceProblems_;  // of what this engine asked for
};

// What the engine is to be like.
Calculation::Settings calculationSettings(const session::Configuration& values);

// A font as the configuration names it, such as "Noto Sans 12".
QFont fontNamed(const std::string& name);
std::string nameOf(const QFont& font);

}  // namespace vemo::notepad
