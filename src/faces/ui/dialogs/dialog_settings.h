#pragma once

#include "app/settings_form.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSpinBox;

namespace kestrova
{

/// `Dialog_Settings`: the preferences, and on pages of their own what starts Windows
/// programs, what else belongs to this computer, and servers.
class SettingsDialog : public QDialog
{
public:
    SettingsDialog(Session& session, QWidget* parent);

    void accept() override;

private:
    QWidget* MakePreferences();
    QLayout* MakeLanguage();
    QWidget* MakePlaces();
    QWidget* MakeAdvanced();
    QWidget* MakeCapture();
    QWidget* MakeWine();
    QWidget* MakeComputer();
    QWidget* MakeServers();
    QCheckBox* Box(const char* name, bool checked);
    void ShowPlaces();
    /// What stands in the lines of Wine now.
    void TakeWine();

    Session& session_;
    SettingsForm form_;
    QComboBox* language_ = nullptr;
    QCheckBox* autoSave_ = nullptr;
    QCheckBox* noDecompress_ = nullptr;
    QCheckBox* logFiles_ = nullptr;
    QCheckBox* checkEqual_ = nullptr;
    QCheckBox* noCompile_ = nullptr;
    QCheckBox* capture_ = nullptr;
    QRadioButton* prompt_ = nullptr;
    QLineEdit* wine_ = nullptr;
    QLineEdit* wineWords_ = nullptr;
    QCheckBox* exportSavegames_ = nullptr;
    QSpinBox* historyCount_ = nullptr;
    QSpinBox* historySize_ = nullptr;
    QSpinBox* undoCount_ = nullptr;
    QSpinBox* undoSize_ = nullptr;
    std::vector<QLineEdit*> updateServers_; ///< in the order of trial
    QLineEdit* wadServer_ = nullptr;
};

} // namespace kestrova
