#include "ui/main/start_windows.h"

#include "app/init_program.h"
#include "ui/desktop/host_windows.h"
#include "ui/dialogs/dialog_trova_trle.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/input_gate.h"

namespace kestrova
{

bool StartDialogs::FindLevelEditor(Session& session)
{
    TrleFinder finder{session};
    finder.Prepare();
    FindTrleDialog dialog(session, finder, TopWindow());
    const InputGate::Admission admission{dialog};
    return dialog.exec() == QDialog::Accepted;
}

StartWindows::ArchiveChoice StartDialogs::AskNewOrLoad(Session&)
{
    NewArcDialog dialog(TopWindow());
    const InputGate::Admission admission{dialog};
    return dialog.exec() == QDialog::Accepted ? ArchiveChoice::New : ArchiveChoice::Load;
}

} // namespace kestrova
