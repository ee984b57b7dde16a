#include "ui/main/start_windows.h"

#include "app/init_program.h"
#include "editor/setup_run.h"
#include "ui/desktop/host_windows.h"
#include "ui/dialogs/dialog_installa_trle.h"
#include "ui/dialogs/dialog_start.h"
#include "ui/dialogs/dialog_trova_trle.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/input_gate.h"

namespace kestrova
{

bool StartDialogs::ShowFirstStart(Session& session, FirstStart& page)
{
    int answer = StartDialog::InOtherWords;
    while (answer == StartDialog::InOtherWords) {
        StartDialog dialog(session, page, TopWindow());
        const InputGate::Admission admission{dialog};
        answer = dialog.exec();
    }
    return answer == QDialog::Accepted;
}

bool StartDialogs::FindLevelEditor(Session& session)
{
    TrleFinder finder{session};
    finder.Prepare();
    FindTrleDialog dialog(session, finder, TopWindow());
    const InputGate::Admission admission{dialog};
    return dialog.exec() == QDialog::Accepted;
}

bool StartDialogs::SetUpLevelEditor(Session& session, const Path& source)
{
    // A person who has one, and wants no other, goes on with it.
    const bool wants = WantsSetup(session.host, session.Folders(), session.preferences);
    if (!wants)
        return true;
    InstallTrleDialog dialog(session, source, TopWindow());
    const InputGate::Admission admission{dialog};
    if (dialog.exec() != QDialog::Accepted)
        return false;
    TrleFinder finder{session};
    return finder.Take(dialog.Installed()) && finder.Accept();
}

StartWindows::ArchiveChoice StartDialogs::AskNewOrLoad(Session&)
{
    NewArcDialog dialog(TopWindow());
    const InputGate::Admission admission{dialog};
    return dialog.exec() == QDialog::Accepted ? ArchiveChoice::New : ArchiveChoice::Load;
}

} // namespace kestrova
