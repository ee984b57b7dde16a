#pragma once

#include "session/session.h"
#include "upkeep/level_checks.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTreeView;
class QTreeWidget;

namespace kestrova
{

class CheckModel;

/// `Dialog_Doctor`: how folders and tools are, whether the levels' files are whole, and their
/// repair.
class DoctorDialog : public QDialog
{
public:
    DoctorDialog(Session& session, QWidget* parent);

private:
    QWidget* MakeState();
    QWidget* MakeList();
    QLayout* MakeButtons();
    void Connect();

    void ShowState();
    void ShowRows();
    /// Of the rows that are seen, and of the column's head.
    [[nodiscard]] int WordsWidth(int column) const;
    void Check(const std::vector<LevelCode>& codes);
    void CheckChosen();
    void CheckAll();
    void Repair(const Path& offered);
    void RepairFrom();
    void CopyList();

    Session& session_;
    LevelChecks checks_;
    CheckModel* model_;
    QTreeWidget* state_;
    QTreeView* list_;
    QLabel* hint_;
    QLabel* result_;
    QPushButton* checkLevel_;
    QPushButton* checkAll_;
    QPushButton* repair_;
    QPushButton* from_;
    QPushButton* copy_;
    bool stopped_ = false; ///< the last check or repair was ended early
};

} // namespace kestrova
