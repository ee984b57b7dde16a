#pragma once

#include "saves/history_list.h"

#include <QDialog>

class QPushButton;
class QTreeWidget;

namespace kestrova
{

/// `Dialog_SavegameHistory`: what was kept of a level's savegames, and the way back.
class SavegameHistoryDialog : public QDialog
{
public:
    SavegameHistoryDialog(Session& session, LevelCode code, QWidget* parent);

private:
    void Fill();
    void BringBack();
    void Delete();

    Session& session_;
    HistoryList rules_;
    QTreeWidget* list_;
    QPushButton* bringBack_;
    QPushButton* delete_;
};

} // namespace kestrova
