#include "ui/start_windows.h"

#include "ui/dialog_trova_trle.h"
#include "ui/dialogs_small.h"
#include "ui/host_windows.h"
#include "ui/input_gate.h"

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
