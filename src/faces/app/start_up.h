#pragma once

#include "app/command.h"
#include "swap/whereabouts.h"

/// The program's start and end, in the order in which a player meets it.
namespace kestrova
{

/// The program's folder: `home` when given; else the executable's own when a preferences file or a
/// file `portable` lies there; else the user's data folder. Made when missing, unless not `make`.
Result<Path> ChooseProgramFolder(const Path& home, bool make = true);

/// Fills the session from the program's folder: settings and preferences. `firstRun` tells that no
/// preferences were there. With `writing` it takes the locks of a writer and then mends what an
/// earlier run left half done; False with words when another program holds a folder, or the
/// preferences cannot be read. Writes nothing when not `writing`. `said`: what the person knows of
/// folders that an interrupted swap waits for; when nothing is said, whoever can answer is asked.
bool OpenSession(Session& session, bool writing, bool& firstRun, const Whereabouts& said = {});

/// At the end of a run: the discs and images that it showed in folders are seen there no more.
/// Tells of folders that stay.
void GiveDiscsBack(Session& session);

/// The archive of the preferences into memory as it stands in its file: no question, no check of
/// its folders, nothing written. A failure leaves an empty archive and is not told.
Status LoadArchiveToLook(Session& session);

/// What a face does at the steps of a start that may find something missing: windows offer and ask,
/// the terminal says what to do.
class StartFace
{
public:
    virtual ~StartFace() = default;
    /// The preferences are read.
    virtual void Opened(Session& session) = 0;
    /// True when there is a Level Editor's folder to work with, whatever that took.
    virtual bool HasLevelEditor(Session& session) = 0;
    enum class Archive { None, Loaded, Made };
    /// `None`, with words or after a question, ends the start.
    virtual Archive OpenArchive(Session& session) = 0;
};

/// `Refused`: the folders or the preferences cannot be used, and nothing was begun. `Stopped`: at a
/// step that failed, in words; the session is usable as far as it came.
enum class Start { Refused, Stopped, Done };

/// The one start of every face that writes: preferences with the locks and the mending of
/// interrupted work (`OpenSession`), the Level Editor's folder, the folder of level 0000, the
/// archive, as far as `needs` says.
Start StartUp(Session& session, StartFace& face, Needs needs, const Whereabouts& said = {});

/// Preferences and settings to their files; asks for an unsaved archive first. Says nothing of a
/// file that cannot be written. False, with nothing written, when the person kept changes that
/// could not be saved: the program must not end then.
bool WritePreferences(Session& session);
/// For an end that nobody can be asked about: what the list of levels has and its file has not is
/// written, and so are the preferences. Shows nothing; the first failure is the answer.
Status WriteAllNow(Session& session);

} // namespace kestrova
