#pragma once

#include "session/folders.h"
#include "session/machine.h"
#include "session/settings.h"

#include <map>

/// The vault `history/originals`: files of the Level Editor's folder that were about to be replaced
/// or deleted and whose content nothing else holds, originals that no backup has and what a
/// designer compiled over a level's file. `history/originals.jsonl` lists them, newest last. What a
/// person may have made stays until the person deletes it; what a program made of a level's sources
/// is held to the bounds of the settings.
namespace kestrova
{

/// Who made a file that is kept. Who cannot tell says a person.
enum class MadeBy { Person, Program };

struct KeptFile {
    std::string id;   ///< short and unique in the vault
    std::string file; ///< where it stood: `\data\level1.tr4`
    Path content;     ///< where it lies now
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
    std::int64_t keptNs = 0;
    std::string folder; ///< the Level Editor's folder; empty for what older versions kept
    MadeBy madeBy = MadeBy::Person;
};

/// What became of files that were to be kept.
struct Keeping {
    std::vector<Path> kept;        ///< newly kept
    std::vector<Path> failed;      ///< stand where they are and must stay there
    Failure failure;               ///< the first
    std::map<Path, Path> contents; ///< of each that the vault holds now: where its content lies
};
/// Keeps files of the Level Editor's folder, read back and flushed. Passed over: what is no file,
/// what the backup holds, what the vault holds already.
Keeping KeepOriginals(Machine& machine, const Folders& folders, const std::vector<Path>& relatives,
                      MadeBy madeBy = MadeBy::Person);
/// The same of files that are replaced in the Level Editor's folder and in its backup alike, so
/// that none is passed over because the backup holds it. `root`: either of both. What is not kept
/// yet when the heartbeat stops it has failed.
Keeping KeepReplaced(Machine& machine, const Folders& folders, const Path& root,
                     const std::vector<Path>& relatives, const Heartbeat& beat = {});
/// The same for one file.
Status KeepOriginal(Machine& machine, const Folders& folders, const Path& relative);

/// All that is kept, oldest first.
Result<std::vector<KeptFile>> KeptFiles(const Folders& folders);
/// The Level Editor's folder that a kept file stood in, as far as it is there; otherwise the one in
/// use.
Result<Path> FolderOfKept(const Folders& folders, const std::string& id);
/// Deletes what is kept under that name, for good. `Missing`, in words, when there is no such.
Status DeleteKept(const Folders& folders, const std::string& id);
/// The oldest of what programs made goes until count and size are those of the settings for
/// undoing.
void BoundVault(const Folders& folders, const ProgramSettings& settings);
/// Copies a kept file back to its place in the Level Editor's folder in use; what stands there now
/// is kept first. The path it got.
Result<Path> BringOriginalBack(Machine& machine, const Folders& folders, const std::string& id);

} // namespace kestrova
