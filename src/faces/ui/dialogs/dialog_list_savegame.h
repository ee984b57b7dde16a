#pragma once

#include "saves/savegame_list.h"

#include <QDialog>

class QCheckBox;
class QListWidget;

namespace kestrova
{

/// `Dialog_ListSaveGame`: which savegames are imported, exported or sent.
class ListSavegameDialog : public QDialog
{
public:
    ListSavegameDialog(Session& session, SavegameList& rules, QWidget* parent);

    void accept() override;

private:
    Session& session_;
    SavegameList& rules_;
    QListWidget* list_;
    QCheckBox* delete_;
};

} // namespace kestrova
