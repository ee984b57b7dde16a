#pragma once

#include "editor/folder_comparison.h"
#include "session/session.h"

#include <QDialog>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace kestrova
{

class CompareModel;

/// `Dialog_CompareTrle`: two folders, file by file.
class CompareTrleDialog : public QDialog
{
public:
    CompareTrleDialog(Session& session, QWidget* parent);

private:
    /// A box that says how many files of a state there are, and shows or hides them.
    struct StateBox {
        FileState state;
        QCheckBox* box;
    };

    QLayout* MakeFolders();
    void AddFolder(QGridLayout& rows, Side side);
    QLayout* MakeFilters();
    QWidget* MakeList();
    QLayout* MakeButtons();
    void Connect();
    [[nodiscard]] QLineEdit* FieldOf(Side side) const
    {
        return side == Side::Before ? before_ : after_;
    }

    void Choose(Side side);
    void Compare();
    void ShowRows();
    void ShowChosen();
    void Open(Side side);
    void OpenChosen();
    void CopyList();

    Session& session_;
    FolderComparison comparison_;
    CompareModel* model_;
    QLineEdit* before_;
    QLineEdit* after_;
    std::vector<StateBox> boxes_;
    QLineEdit* search_;
    QTreeView* list_;
    QLabel* hint_;
    QLabel* count_;
    QPushButton* compare_;
    QPushButton* openBefore_;
    QPushButton* openAfter_;
    QPushButton* copy_;
};

} // namespace kestrova
