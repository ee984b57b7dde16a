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
/// The folder with all that is in it. Links are unlinked, never entered.
Status RemoveTree(const Path& folder, const Heartbeat& heartbeat = {});

enum class Verify {
    Size,   ///< the kernel's word and the length
    Content ///< read back and compared
};
/// What a file may be used for that somebody else made: read, and changed by its owner.
inline constexpr std::uint32_t plainRights = 0644;

struct CopyOptions {
    Verify verify = Verify::Size;
    bool flush = false;     ///< the content is on the disk before the name is there
    bool flushName = false; ///< the name too; for many files one flush of their folder is cheaper
    std::function<bool(std::uint64_t)> progress; ///< bytes of this file so far; False stops
    std::uint32_t rights = 0; ///< of the target; 0: the source's, and the owner may write
    bool spelled = false;     ///< the target is spelled as its folder has it: no look for another
};
/// `target` holds the source's bytes and time afterwards, writable by the owner. It is built beside
/// the target and renamed into place, so the target is the old file or the new one at any moment.
/// An existing target keeps its spelling; a link there is replaced by the copy.
Status CopyFileOver(const Path& source, const Path& target, const CopyOptions& options = {});
/// Each file of the folder that matches, under its own name, all overwritten. Goes to the end;
/// the first failure is the answer. Sub-folders are not entered.
Status CopyMatching(const Path& source, const Path& target, std::string_view pattern,
                    const CopyOptions& options = {});
/// Moves within a file system by rename, otherwise copies, compares, flushes, deletes.
Status MoveFileOver(const Path& source, const Path& target);
/// The names of a folder are on the disk when it answers.
Status FlushFolder(const Path& folder);
/// True when both can be read and hold the same bytes.
bool SameContent(const Path& a, const Path& b, const Heartbeat& heartbeat = {});

/// The file's bytes; a limit keeps a wrong file from filling the memory.
Result<std::string> ReadWholeFile(const Path& file, std::uint64_t limit = UINT64_C(1) << 32);

/// `1024`, `1 Kb`, `1.5 Mb`: above each power by strict comparison, Kb without a fraction.
std::string FormatSize(double bytes);
/// Days since 30 December 1899, local time, as dates stand in binary records.
double DateSerialOf(std::int64_t ns);
/// `2026-11-21 14:05:09`, local time.
std::string DateText(std::int64_t ns);

} // namespace kestrova
