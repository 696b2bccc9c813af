// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include "session/configuration.h"

class QComboBox;
class QFontComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTabWidget;
class QTreeWidget;

namespace vemo::notepad {

class Calculation;
class Settings;

// Everything that can be set, in one dialog. What is changed is written when it is agreed to.
class SettingsDialog : public QDialog {
    Q_OBJECT

public:
    SettingsDialog(Settings& settings, Calculation& calculation, QWidget* parent = nullptr);

    // Writes what was changed. False when that can't be done; the person has been told then.
    bool apply();

private:
    QWidget* readingTab();
    QWidget* ratesTab();
    QWidget* extensionsTab();
    QWidget* appearanceTab();
    // A field with a button that chooses a file or folder; `label` is the title of that choice.
    void addPathRow(QFormLayout& form, const QString& name, QLineEdit* edit, const QString& label, bool folder);

    session::Configuration wanted() const;
    void showValues();
    void showSample();
    void showRates();
    void showExtensions();

    Settings& settings_;
    Calculation& calculation_;
    QTabWidget* tabs_;
    QComboBox *language_, *locale_, *theme_;
    QLabel *sample_, *updated_, *problem_;
    QSpinBox *precision_, *size_;
    QLineEdit *rates_, *coins_, *places_, *extensions_;
    QTreeWidget* scripts_;
    QFontComboBox* font_;
    std::string shownFont_;  // when the dialog came up
};

}  // namespace vemo::notepad
