#pragma once

#include "editor/setup_choice.h"
#include "ui/desktop/progress_windows.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace kestrova
{

/// `Dialog_InstallaTrle`: the Level Editor is set up, from zips or from the folder that is given.
/// Accepted when it was.
class InstallTrleDialog : public QDialog
{
public:
    InstallTrleDialog(Session& session, const std::optional<Path>& folder, QWidget* parent);

    [[nodiscard]] const Path& Installed() const { return choice_.Installed(); }

    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QLayout* MakeZips();
    QLayout* MakeTarget();
    QLayout* MakeProgress();
    QLayout* MakeButtons();
    void Connect();
    template <class Work> void Run(Work work);
    void Install();
    void ShowChoice();

    Session& session_;
    int operations_; ///< under way when the window opened: a start, say
    SetupChoice choice_;
    QListWidget* zips_;
    QLabel* hint_;
    QComboBox* language_;
    QLineEdit* target_;
    QLabel* room_;
    QLabel* info_;
    QProgressBar* bar_;
    QPushButton* stop_;
    QPushButton* install_;
    StoppableProgress progress_;
};

enum class SetupFrom { Zips, Folder };
/// Asks what has to be asked and shows the window. The folder of the Level Editor; none when it was
/// not set up. `folder`: that a setup from a folder comes from; none: it is asked for.
std::optional<Path> ShowSetup(Session& session, SetupFrom from, QWidget* parent,
                              std::optional<Path> folder = {});

} // namespace kestrova
