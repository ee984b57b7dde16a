#pragma once

#include "ui/main/window_commands.h"
#include "ui/main/window_level_list.h"

#include <QMainWindow>
#include <QTimer>
#include <functional>

class QProgressBar;
class QSplitter;

namespace kestrova
{

class LevelDetails;
class LevelListPane;
class NoteLine;
class PlayWatch;
class ShotPanes;

/// `Principale`: the list of levels, the chosen one beside it, and the menu of all commands.
class MainWindow : public QMainWindow
{
public:
    MainWindow(Session& session, WindowLevelList& list);
    ~MainWindow() override;

    /// Title and rows from the session; the chosen level stays, otherwise the first one is chosen.
    void RefreshList();
    void Choose(LevelCode code);
    [[nodiscard]] std::optional<LevelCode> Chosen() const;
    [[nodiscard]] LevelListPane& Levels() const { return *levels_; }
    void ShowActivity(const QString& text);
    /// Everything beside the list, for the chosen level, at once.
    void ShowChosen();
    /// Items of the menu as things stand now.
    void ShowMenu();
    /// The chosen level, when it is not shown whole yet.
    void ShowChosenNow();
    /// The panes with the chosen level's pictures.
    [[nodiscard]] ShotPanes& Shots() const;
    /// A line of the status bar.
    void ShowNote(const std::string& text);
    [[nodiscard]] NoteLine& Notes() const { return *note_; }
    [[nodiscard]] LevelDetails& Details() const { return *details_; }
    [[nodiscard]] PlayWatch& Play() const { return *play_; }
    void GameHasStarted();
    /// What a command line names: an archive, a Level Editor's folder, levels to add.
    void OpenFiles(const std::vector<std::string>& items) { commands_.OpenFiles(items); }

    /// Called when the window has closed for good: preferences are written.
    std::function<void()> ended = [] {};

    /// The desktop's session ends: changes of the list are asked about, or written where nobody may
    /// be asked. False when the person wants to go on.
    bool MayEnd(bool mayAsk);
    /// The system ends the program: all that a person made is written, and nothing is asked. True
    /// when the program can end in its own way, since nothing is under way in it.
    bool EndNow();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Build();
    void BuildPanes();
    void BuildBar();
    void ConnectList();
    void ConnectShots();
    void ConnectPlay();
    void ConnectCommands();
    void ShowLevelMenu(QPoint place);
    void RememberPlace() const;
    void RestorePlace();
    /// Everything in the window is made anew, in the language that is spoken now.
    void BuildAnew();

    Session& session_;
    WindowLevelList& list_;
    WindowCommands commands_;
    QSplitter* splitter_ = nullptr;
    LevelListPane* levels_ = nullptr;
    LevelDetails* details_ = nullptr;
    QProgressBar* bar_ = nullptr;
    NoteLine* note_ = nullptr;
    PlayWatch* play_;
    QTimer buildSoon_;    ///< when nothing is under way in the window
    QTimer rememberSoon_; ///< a program that is killed has it then
    QTimer showSoon_;     ///< so that running through the list does not decode every picture
};

} // namespace kestrova
