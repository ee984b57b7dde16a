#pragma once

#include "app/arguments.h"
#include "app/help_tags.h"
#include "session/session.h"

#include <nlohmann/json_fwd.hpp>

/// What a person can do: one row each, from which menus, keys, the terminal and its manual follow.
namespace kestrova
{

using Json = nlohmann::ordered_json;
class ShotList;

/// What a command asks its face for, beside what `Host` asks, tells and shows.
class Face
{
public:
    virtual ~Face() = default;
    /// A line about what went well, where the face has a place for it.
    virtual void Note(const std::string& text) { (void)text; }
    /// True when a yes/no question would find an answer.
    [[nodiscard]] virtual bool CanAnswer() const { return true; }
    /// Names a question that will find no answer.
    virtual void NameUnanswered(const std::string& text) { (void)text; }
    /// Something was told as an error.
    [[nodiscard]] virtual bool ToldError() const { return false; }
    /// The pictures that it shows of the chosen level; null where it shows none.
    virtual ShotList* Shots() { return nullptr; }
    /// The game was started on a level.
    virtual void GameStarted() {}
};

/// One run of a command. Its result is gathered here; a window, which shows the list of levels
/// anyway, drops it.
struct Run {
    Session& session;
    Face& face;
    /// Options and words; in a window there are none, and what they would say is asked.
    const Arguments& arguments;
    LevelCode level = 0;  ///< of a row that needs one: the chosen level, or the one of the words
    std::string text{};   ///< lines for a person
    Path place{};         ///< where several chosen levels go, when they go somewhere
    Json* json = nullptr; ///< where the result goes with `--json`; null without
    /// The preference that stands while a working run saves after every change.
    std::optional<bool> keptAutoSave{};

    /// Asked for in the terminal's words: what they do not say is left as it is, not asked.
    [[nodiscard]] bool FromWords() const { return !arguments.command.empty(); }
};

/// What must be there before a command runs; each one needs what stands before it as well.
enum class Needs {
    Nothing,
    LevelEditor,
    Archive,
    Level,      ///< one of the archive: the chosen one, or the first word of the terminal
    LevelFiles, ///< its folder in the archive too
};

/// What a command changes, and so which locks are taken before it runs.
enum class Touches {
    Nothing,     ///< it looks: no lock, no write
    Stores,      ///< the program's folders, the levels' ones, and savegames and shots anywhere
    LevelEditor, ///< what stands in the Level Editor's folder: no game may run there unasked
    ItsOwn,      ///< it opens what it needs by itself (`app/opening.h`)
};

/// A menu item as things stand now.
struct ShownNow {
    std::string caption;
    bool enabled = true;
};

/// Where a command stands in the main window.
struct InWindow {
    std::string_view control{};  ///< name of its menu item
    std::string_view button{};   ///< name of its button beside the list
    Message caption = Message{}; ///< of the menu item
    std::string_view keys{};     ///< `Ctrl+P; F5`
    std::string_view menu{};     ///< the menu that it stands in
    /// The item that it stands behind, where that is not the row before.
    std::string_view behind{};
    int onLevel = 0; ///< its place in the menu of a right click on a level; 0: not there
    /// What is told when there is no chosen level and one is needed, where that is not what all
    /// others tell; an empty text: it runs without.
    std::optional<Message> noLevel{};
    /// Of an item whose caption tells what it would do now.
    ShownNow (*shown)(const Session&) = nullptr;
};

/// How a command is said in the terminal. Rows with the same first word stand behind each other;
/// the first of them has the options for all of them, and usage and summary unless a row has its
/// own.
struct InTerminal {
    std::string_view word{}; ///< `saves`
    std::string_view verb{}; ///< `archive`
    /// Takes the row in place of those before it with the same words.
    bool (*when)(const Run&) = nullptr;
    Message usage = Message{};   ///< its words behind the program's name
    Message summary = Message{}; ///< what the help says of it
    Message json = Message{};    ///< the keys of its result; empty when it has none
    std::size_t leastWords = 0;
    std::size_t mostWords = 0;
    std::vector<OptionRow> options{}; ///< its own; those of every command go without saying
    bool mayBeEmpty = false;          ///< a word may be empty; elsewhere it names a place or a name
    /// What is wrong with the words, told before anything is opened; empty when nothing is.
    std::string (*wrong)(Run&) = nullptr;
    /// It goes on past what it tells as an error, and has failed then all the same.
    bool failsWhenTold = false;
    /// When it holds the command changes nothing, and waits for nobody.
    bool (*looksWhen)(const Session&, LevelCode) = nullptr;
};

/// How a row runs on several chosen levels at once.
struct OnSeveral {
    /// The one question for all: ~1 how many, ~2 a line break, ~3 their names. Empty: the row is
    /// of one level alone.
    Message question{};
    Message caption{}; ///< in the menu of several chosen levels
    Message step{};    ///< what goes on with ~1, a level's name
    Message done{};    ///< it was done with ~1 of ~2 levels
    /// Each level's own questions, as they begin, that the Yes to the one has answered.
    std::vector<Message> agreed{};
    /// Chooses what all of them need; false gives it up.
    bool (*choose)(Run&) = nullptr;
    /// In place of `run`, where that would choose for each of them.
    bool (*run)(Run&) = nullptr;
};

struct CommandRow {
    InWindow window{};
    InTerminal terminal{};
    Needs needs = Needs::Nothing;
    Touches touches = Touches::Nothing;
    /// Tells its failure once. Null: only a dialog of the window does it.
    bool (*run)(Run&) = nullptr;
    OnSeveral several{};
    /// Where the help tells of it; that of its group unless the row says otherwise.
    HelpTag help = HelpTag::None;
};

/// A menu of the window, or a menu inside of one.
struct MenuRow {
    std::string_view name;
    Message caption = Message{};
    std::string_view menu{};   ///< empty: of the bar
    std::string_view behind{}; ///< empty: before the commands, in the order of the rows
};

} // namespace kestrova
