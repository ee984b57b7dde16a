#pragma once

#include "intake/intake.h"
#include "ui/desktop/progress_windows.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QMimeData;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace kestrova
{

/// `Dialog_NewLevel`: a level on its way into the archive, or one of it that is edited. Files and
/// folders may be dropped on it.
class NewLevelDialog : public QDialog
{
public:
    NewLevelDialog(Session& session, QWidget* parent);

    /// Label, bar and Stop of this window.
    [[nodiscard]] ProgressScope& Progress() { return progress_; }
    /// Shows the level until it is accepted (True) or given up; `sources` come in at once.
    bool Show(Intake& level, std::vector<Path> sources = {});

    void accept() override;
    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QLayout* MakeTexts();
    QLayout* MakeFiles();
    QLayout* MakeProgress();
    void Connect();
    void AddSources(const std::vector<Path>& sources);
    /// One step of the person's, after which the window shows what has become of the level.
    template <class Work> void Run(Work work);
    /// Asked when the level was given up.
    bool AsksForLevelUrls();
    void ShowLevel();
    void ShowFiles();
    void ShowMoreInfo();
    void ShowNamesPage();
    [[nodiscard]] Path SelectedFile() const;
    /// True when the person typed, chose or changed what giving up would lose.
    [[nodiscard]] bool HasTyped() const;

    Session& session_;
    Intake* level_ = nullptr;
    /// The texts as the program filled them in.
    std::string filledName_;
    std::string filledNote_;
    bool choseMoreInfo_ = false;
    QLineEdit* name_;
    QLineEdit* note_;
    QComboBox* moreInfo_;
    QComboBox* names_;
    QLabel* namesLabel_;
    QTreeWidget* files_;
    QLabel* hint_;
    QLabel* size_;
    QLabel* info_;
    QProgressBar* bar_;
    QPushButton* stop_;
    QPushButton* addFile_;
    QPushButton* addFolder_;
    QPushButton* remove_;
    QPushButton* refresh_;
    QPushButton* compileTom_;
    QPushButton* setMyLanguage_;
    StoppableProgress progress_;
};

} // namespace kestrova
