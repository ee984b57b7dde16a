#pragma once

#include "intake/installed_place.h"

#include <QDialog>

namespace kestrova
{

/// `Dialog_TipoExe`: where an installer put a level's files. Closing it is no answer.
class TipoExeDialog : public QDialog
{
public:
    TipoExeDialog(InstalledPlace& place, QWidget* parent);
};

} // namespace kestrova
