#pragma once

#include "discs/disc_windows.h"
#include "discs/setup_cd.h"

#include <QDialog>

namespace kestrova
{

/// `Dialog_SetupCd`: how an archive on discs comes to this computer. Accepted once a folder with
/// room for it was chosen.
class SetupCdDialog : public QDialog
{
public:
    SetupCdDialog(SetupCd& setup, QWidget* parent);
};

/// Both windows that levels on discs ask for, over whatever window is on top.
DiscWindows WindowsForDiscs();

} // namespace kestrova
