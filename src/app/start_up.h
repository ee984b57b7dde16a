#pragma once

#include "session/session.h"
#include "swap/whereabouts.h"

/// The program's start and end, in the order in which a player meets it.
namespace kestrova
{

/// Windows with questions of their own that the start shows; the terminal answers from its words.
class StartWindows
{
public:
    virtual ~StartWindows() = default;
    /// "Where is Tomb Raider Level Editor folder ?": True when a valid folder was set.
    virtual bool FindLevelEditor(Session& session) = 0;
    enum class ArchiveChoice { New, Load };
    virtual ArchiveChoice AskNewOrLoad(Session& session) = 0;
};

/// The program's folder: `home` when given; else the executable's own when a preferences file or a
/// file `portable` lies there; else the user's data folder. Made when missing, unless not `make`.
Result<Path> ChooseProgramFolder(const Path& home, bool make = true);

/// Fills the session from the program's folder: settings and preferences. `firstRun` tells that no
/// preferences were there. With `writing` it takes the locks of a writer and then mends what an
/// earlier run left half done; False with words when another program holds a folder, or the
/// preferences cannot be read. Writes nothing when not `writing`. `said`: what the person knows of
/// folders that an interrupted swap waits for; when nothing is said, whoever can answer is asked.
bool OpenSession(Session& session, bool writing, bool& firstRun, const Whereabouts& said = {});

/// The locks of a writer: the program's folder, the Level Editor's, the archive's writable one, as
/// far as they are there. False with words that name the holder. Repeatable.
bool HoldFolders(Session& session);

/// The archive of the preferences into memory as it stands in its file: no question, no check of
/// its folders, nothing written. A failure leaves an empty archive and is not told.
Status LoadArchiveToLook(Session& session);

/// The whole start: preferences, recovery of interrupted work, the Level Editor's folder, backup,
/// level 0000, the last archive. It stops at the step that failed and leaves the session usable.
/// False only when `OpenSession` failed: this program must end.
bool InitProgram(Session& session, StartWindows& windows,
                 const std::vector<std::string>& arguments);

/// Preferences and settings to their files; asks for an unsaved archive first. Says nothing of a
/// file that cannot be written. False, with nothing written, when the person kept changes that
/// could not be saved: the program must not end then.
bool WritePreferences(Session& session);
/// For an end that nobody can be asked about: what the list of levels has and its file has not is
/// written, and so are the preferences. Shows nothing; the first failure is the answer.
Status WriteAllNow(Session& session);
/// Only the two files, without a question: after every change that must not be lost. Shows its
/// failure. Files that would not change are not written.
bool SavePreferencesNow(Session& session);

struct CommandLine {
    Path archive; ///< item that ends in `.kva`
    Path trle;    ///< item whose last part is `trle`
};
/// Goes through the items from the left up to the first empty one; of several the later wins.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

} // namespace kestrova
