#pragma once

#include "intake/wad_packages.h"
#include "ui/desktop/progress_windows.h"

#include <QDialog>
#include <functional>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace kestrova
{

/// `Dialog_AddWads`: a wad package, imported for good.
class AddWadsDialog : public QDialog
{
public:
    AddWadsDialog(Session& session, QWidget* parent);

    /// Empty, for the person to fill. False when there is nothing to work with; the person knows.
    bool Ready();
    /// Imports that package by itself as soon as the window stands, and closes. True when the
    /// import ran to its end.
    bool RunWith(const Path& package);
    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QWidget* MakeLists();
    QLayout* MakeProgress();
    QLayout* MakeButtons();
    /// Work on the import, and the window as it is then.
    void Run(const std::function<void()>& work);
    void Import();
    void ImportAll();
    void Print();
    void ShowReport();
    void ShowState();
    /// What cannot be pressed while work goes on is seen to be so.
    void ShowButtons();
    [[nodiscard]] std::string AskName(const std::string& original);

    Session& session_;
    QTreeWidget* files_;
    QLabel* hint_;
    QPlainTextEdit* report_;
    QLabel* info_;
    QProgressBar* bar_;
    QPushButton* stop_;
    QPushButton* import_;
    QPushButton* cancel_;
    StoppableProgress progress_;
    WadImport wads_;
    bool working_ = false;
};

/// Shows it until the person leaves it.
void ShowAddWads(Session& session, QWidget* parent);
/// What the steps of a new level's intake show of it.
WadWindows WadWindowsOver(Session& session, QWidget* parent);

} // namespace kestrova
