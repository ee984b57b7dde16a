#pragma once

#include "play/game_watch.h"
#include "play/hot_keys.h"
#include "ui/main/level_model.h"

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>

class QListView;
class QLineEdit;
class QLabel;
class QProgressBar;
class QPushButton;
class QSocketNotifier;
class QSplitter;
class QToolButton;

namespace kestrova
{

/// How long a line of the status bar stays.
inline constexpr int statusMs = 15000;

class LevelDetails;
class ShotPanes;
class MainWindow;

/// Hands what the operations say about the list to the main window, which comes later than the
/// session and may go before it.
class WindowLevelList : public LevelList
{
public:
    void Show(MainWindow* window) { window_ = window; }
    void Refresh() override;
    void Select(LevelCode code) override;
    [[nodiscard]] std::optional<LevelCode> Selected() const override;
    void ShowActivity(const std::string& text) override;

private:
    MainWindow* window_ = nullptr;
};

/// `Principale`: the list of levels, the chosen one beside it, and the menu of all commands.
class MainWindow : public QMainWindow
{
public:
    MainWindow(Session& session, WindowLevelList& list);
    ~MainWindow() override;

    /// Title and rows from the session; the chosen level stays, otherwise the first one is chosen.
    void RefreshList();
    void Choose(LevelCode code);
    [[nodiscard]] std::optional<LevelCode> Chosen() const { return chosen_; }
    void ShowActivity(const QString& text);
    /// Everything beside the list, for the chosen level, at once.
    void ShowChosen();

    /// The dialog of a new level; files, packages and folders given here come in at once.
    void AddLevelFrom(const std::vector<Path>& sources);

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
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void BuildList(QWidget& side);
    void BuildKeys();
    void ConnectList();
    /// Runs a command as an operation of its own; refused while one runs.
    template <class Work> void Run(Work work)
    {
        if (session_.runningOperations > 0)
            return;
        const Operation operation{session_};
        work();
    }

    void SearchTyped(const QString& text);
    void SearchFirst();
    void SearchOn(int step);
    void RowChosen(const QModelIndex& index);
    void ChooseRow(std::ptrdiff_t row);
    void MarkChosen();
    void ShowCounts();
    [[nodiscard]] QString EmptyWords() const;

    void Play();
    void MoreInfo();
    void ShowAuthor();
    void ExportChosen();
    void SaveCurrentArchive();
    void NewArchive();
    void EditArchivePreferences();
    void EditChosen();
    void RemoveChosen();
    /// The commands of the menu of screen-shots.
    std::map<std::string, std::function<void()>> ShotCommands();
    void ConnectShots();
    void WatchPlay();
    void LookForGame();
    bool LookNow();
    void HearOfGame();
    void ShowGame();
    void GameHasStarted();
    void ZoomShot(std::ptrdiff_t index);
    void ResizeShot();
    void ImportShotsOfStore();
    void RememberPlace() const;
    void RestorePlace();

    Session& session_;
    WindowLevelList& list_;
    LevelModel* model_;
    QListView* view_ = nullptr;
    QLineEdit* search_ = nullptr;
    QLabel* counts_ = nullptr;
    QLabel* empty_ = nullptr;
    QSplitter* splitter_ = nullptr;
    LevelDetails* details_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QLabel* game_ = nullptr;
    HotKeys hotKeys_{session_};
    GameWatch gameWatch_{session_};
    QTimer keysTimer_{this};
    QTimer gameTimer_{this};
    /// Behind the watch, whose descriptors they wait on.
    std::vector<std::unique_ptr<QSocketNotifier>> gameNews_;
    bool lookOnceMore_ = false;
    std::optional<LevelCode> chosen_;
    QTimer showSoon_; ///< so that running through the list does not decode every picture
};

} // namespace kestrova
