#pragma once

#include "core/names.h"
#include "core/result.h"
#include "platform/files.h"

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

/// File operations as the system's own programs mean them: names without regard to case, copies
/// whole or not at all, no message. Names that begin with `stagedPrefix` are never listed.
namespace kestrova
{

inline constexpr std::string_view stagedPrefix = ".kv~";
/// The lock file of a folder that only one program may write; unlisted like a staged file.
inline constexpr std::string_view lockFileName = ".kv~lock";

/// The path with each part as it is spelled on the disk: as given where that exists, otherwise the
/// existing spelling; what does not exist stays as given.
Path ResolvePath(const Path& path);
/// The same where a wrong guess would decide something: a failure when a folder on the way, in
/// which another spelling may stand, cannot be listed.
Result<Path> FindPath(const Path& path);
/// All spellings of the last part that the folder holds (`SCRIPT.DAT` and `script.dat`).
Result<std::vector<Path>> CaseTwins(const Path& path);

bool FileExists(const Path& file);
bool FolderExists(const Path& folder);
/// True when the folder exists afterwards. One level only.
Status MakeFolder(const Path& folder);
/// With all folders above it.
Status MakeFolders(const Path& folder);

/// Full paths of the files that match, sorted by upper-cased name. A link to a file inside the
/// folder's own tree counts as that file; other links are passed over. A folder that is missing
/// lists nothing; one that cannot be read is a failure, and nobody may take it for an empty one.
Result<std::vector<Path>> ListFiles(const Path& folder, std::string_view pattern);
/// The same for the folders in it.
Result<std::vector<Path>> ListSubfolders(const Path& folder);

struct Tree {
    std::vector<Path> folders; ///< the root first, parents before their children
    std::vector<Path> files;
};
/// Called now and then during long work; False stops it with `Stopped`.
using Heartbeat = std::function<bool()>;
/// Everything below a folder. Links to folders are never entered; links to files are passed over
/// unless they stay inside the tree. A missing root is the failure `Missing`.
Result<Tree> ScanTree(const Path& folder, const Heartbeat& heartbeat = {});
/// The same where a missing folder is one without anything: `folders` is empty then.
Result<Tree> ScanTreeIfThere(const Path& folder, const Heartbeat& heartbeat = {});
/// Sum of the file sizes below the folder; 0 for a folder that is missing.
Result<double> FolderSize(const Path& folder, std::string_view pattern = "*");
std::uint64_t FileSize(const Path& file);

/// Gone afterwards in the spelling that is given, or else in the first that is there. A case twin
/// is another file and stays. A missing file is no failure. A folder is.
Status DeleteFile(const Path& file);
/// Gone afterwards under exactly this name. Where it is missing no twin of another spelling goes
/// in its place.
Status DeleteSpelled(const Path& file);
/// All files of the folder itself that match, stopping at the first failure.
Status DeleteMatching(const Path& folder, std::string_view pattern);
/// The folder's files, then the folder. Fails on a folder with sub-folders.
Status RemoveFolder(const Path& folder);

/// True when both can be read and hold the same bytes.
bool SameContent(const Path& a, const Path& b, const Heartbeat& heartbeat = {});

/// The file's bytes; a limit keeps a wrong file from filling the memory.
Result<std::string> ReadWholeFile(const Path& file, std::uint64_t limit = UINT64_C(1) << 32);

} // namespace kestrova
