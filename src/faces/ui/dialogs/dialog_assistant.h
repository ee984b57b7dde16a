#pragma once

#include "editor/tom_assistant.h"
#include "session/session.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace kestrova
{

/// `Dialog_Assistant`: tom files are linked with wads, by hand or as a readme tells.
class AssistantDialog : public QDialog
{
public:
    /// `assistant` is open.
    AssistantDialog(Session& session, TomAssistant& assistant, QWidget* parent);

    /// `Pul_Cancel`.
    void reject() override;

private:
    QWidget* MakePage();
    QLayout* MakeReadmes();
    QLayout* MakeChoice();
    QLayout* MakeButtons();
    void Connect();
    /// One step of the person's, after which the window shows what has become of the links.
    template <class Work> void Run(Work work);
    void ShowLinks();

    Session& session_;
    TomAssistant& assistant_;
    QPlainTextEdit* help_;
    QListWidget* readmes_;
    QComboBox* toms_;
    QComboBox* wads_;
    QCheckBox* essential_;
    QPushButton* read_;
    QPushButton* analyse_;
    QPushButton* perform_;
};

/// Shows the window until the person leaves it: True when each tom file has wads.
bool ShowAssistant(Session& session, TomAssistant& assistant, QWidget* parent);

} // namespace kestrova
