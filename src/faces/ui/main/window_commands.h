#pragma once

#include "app/command.h"
#include "intake/queue_sources.h"
#include "library/mark_levels.h"
#include "ui/main/kept_preferences.h"

class QWidget;

namespace kestrova
{

class MainWindow;
enum class SetupFrom;

/// The commands that the window knows by name.
inline constexpr std::string_view exitCommand = "Mnu_Exit";
inline constexpr std::string_view playButton = "Pul_Play";
inline constexpr std::string_view undoCommand = "mnu_Undo";
inline constexpr std::string_view savegamesButton = "Pul_SaveGames";
inline constexpr std::string_view removeCommand = "mnu_RemoveLevel";

/// What a chosen command does in the windows: some have a window of their own, all others are run
/// as their row says, on the chosen level.
class WindowCommands : public Face
{
public:
    WindowCommands(Session& session, MainWindow& window)
        : session_(session), window_(window), preferences_(session)
    {
    }

    void Invoke(const CommandRow& row);
    /// The same by its button: without the sibling tool the level's own page of savegames opens.
    void Press(const CommandRow& row);

    /// On all levels that are chosen in the list; on the chosen one when that is the only one, or
    /// when the command is of one level alone.
    void InvokeOnAll(const CommandRow& row);
    /// Says that of all chosen levels.
    void Mark(const LevelMarks& marks);
    /// Asks for a tag that they get.
    void MarkWithNewTag();

    /// The dialog of a new level; files, packages and folders given here come in at once. Of what
    /// may be several levels the person says whether it is.
    void AddLevelFrom(const std::vector<Path>& sources);
    /// What was dropped on the window: an archive alone is opened, anything else becomes levels.
    void TakeDropped(std::vector<Path> paths);
    /// What a command line names: an archive is opened, the Level Editor set up from a folder that
    /// is called `trle`, anything else becomes a level.
    void OpenFiles(const std::vector<std::string>& items);
    /// What another program wrote into the settings counts, while nothing goes on here.
    void TakeSettings() { preferences_.TakeWhatOthersWrote(); }
    /// A picture of the list in a window of its own.
    void ZoomShot(std::ptrdiff_t index);

    void Note(const std::string& text) override;
    ShotList* Shots() override;
    void GameStarted() override;

private:
    /// What it leaves is told in the line below, and the place in the list is kept.
    void Do(const std::function<void()>& work);
    void RunOrShow(const CommandRow& row);
    /// Several levels, one after the other; without sources the person gives some.
    void AddManyFrom(const std::vector<QueueSource>& sources);
    /// False, with words, without an archive.
    bool MayAdd();
    /// In the window of a single level.
    std::optional<LevelCode> AddAlone(const std::vector<Path>& sources, QWidget* over);
    /// True when the list of addresses is old, and the person wants a new one first.
    bool AsksForDatabaseUpdate();
    /// The help of a command of the menu Help.
    void ShowHelp(std::string_view command);
    void OpenArchive(const Path& file);
    /// The program starts anew, as after its own command line.
    void StartAnew(const std::vector<std::string>& items);
    /// Where the chosen level stands in the list of the archive.
    [[nodiscard]] std::optional<std::size_t> ChosenPlace() const;
    void EditChosen();
    void EditArchivePreferences();
    void ShowAuthor();
    /// The Level Editor is set up, and the program starts anew with it.
    void SetUpEditor(SetupFrom from);
    void ImportShotsOfStore();
    void ResizeShot();

    /// A window of its own: which command opens it, and how.
    struct Opens {
        std::string_view command;
        void (*show)(WindowCommands&);
    };
    static const Opens windows[];

    Session& session_;
    MainWindow& window_;
    KeptPreferences preferences_;
    bool shotsTaken_ = false; ///< the command under way works on the shown pictures
};

} // namespace kestrova
