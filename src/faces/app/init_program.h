#pragma once

#include "session/session.h"
#include "swap/whereabouts.h"

namespace kestrova
{

struct CommandLine {
    Path archive;             ///< item that ends in `.kva`
    Path trle;                ///< item whose last part is `trle`
    std::vector<Path> others; ///< what else is named: packages and folders of levels
};
class FirstStart;

/// Goes through the items from the left up to the first empty one; of several the later wins.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);
/// Windows with questions of their own that the start shows; the terminal answers from its words.
class StartWindows
{
public:
    virtual ~StartWindows() = default;
    /// The page of the first start, in place of the questions below: True when it was gone through
    /// to its end, so that a Level Editor's folder is taken and an archive is loaded.
    virtual bool ShowFirstStart(Session& session, FirstStart& page) = 0;
    /// "Where is Tomb Raider Level Editor folder ?": True when a valid folder was set.
    virtual bool FindLevelEditor(Session& session) = 0;
    /// Sets the Level Editor up from a folder that the command line names. False when it was not.
    virtual bool SetUpLevelEditor(Session& session, const Path& source) = 0;
    enum class ArchiveChoice { New, Load };
    virtual ArchiveChoice AskNewOrLoad(Session& session) = 0;
};
/// The whole start: preferences, recovery of interrupted work, the Level Editor's folder, backup,
/// level 0000, the last archive. It stops at the step that failed and leaves the session usable.
/// False only when `OpenSession` failed, or the setup that the command line asks for: this program
/// must end.
bool InitProgram(Session& session, StartWindows& windows,
                 const std::vector<std::string>& arguments);

} // namespace kestrova
