#pragma once

#include "app/first_start.h"

#include <QDialog>
#include <QTimer>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;

namespace kestrova
{

enum class SetupFrom;

/// `Dialog_Start`: the page of the first start. Accepted when an archive is loaded and all that it
/// needs is there.
class StartDialog : public QDialog
{
public:
    StartDialog(Session& session, FirstStart& rules, QWidget* parent);

    /// The answer of a page that wants to be shown once more, in the language that was chosen.
    static constexpr int InOtherWords = 2;

    /// The closing of the window is the person's "Not now".
    void reject() override;

private:
    template <class Work> void Run(Work work);
    QWidget* MakePage();
    QLayout* MakeLanguage(QWidget* page);
    QGroupBox* MakeTrleBox();
    QGroupBox* MakeBackupBox();
    QGroupBox* MakeLevelsBox();
    QGroupBox* MakePracticeBox();
    void ConnectChoices();
    void SetUp(SetupFrom from);
    /// The rules as they are now; what is being typed is left alone.
    void ShowRules();
    void ShowSizes();

    Session& session_;
    FirstStart& rules_;
    QComboBox* trle_;
    QLabel* trleState_;
    QLineEdit* levels_;
    QLabel* levelsState_;
    QLabel* room_;
    QTimer sizes_;
};

} // namespace kestrova
