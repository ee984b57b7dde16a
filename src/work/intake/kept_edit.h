#pragma once

#include "core/files.h"

/// What is kept of a level while it is edited, as it lies in the level's own folder, below
/// `.kv~before_edit`:
///
///     record    what the archive had of the level
///     files/    the level's files
///     N.target  a file of the level's other folders: size and time of what was copied over it,
///               whether that had a source, and its place
///     N.was     what stood there, if anything did
///
/// The folder comes and goes by rename, so that it is whole or not there at all.
namespace kestrova
{

constexpr std::uint64_t longestKeptNote = 1 << 20;

Path KeptEditOf(const Path& levelFolder);
Path KeptFiles(const Path& kept);
Path KeptRecord(const Path& kept);
Path KeptTargetNote(const Path& kept, int number);
Path KeptTargetFile(const Path& kept, int number);

/// A file in another of the level's folders that was about to be written over.
struct KeptTarget {
    std::uint64_t size = 0; ///< of the source, as is its time
    std::int64_t modifiedNs = 0;
    bool hasSource = false;
    std::string place; ///< below the level's folder
};

std::string FormatKeptTarget(const KeptTarget& target);
/// `Damaged` for a note that says nothing, and for a place outside the level's folder.
Result<KeptTarget> ReadKeptTarget(const Path& kept, int number);

/// A name of the same file where the file system can, a copy elsewhere.
Status KeepFile(const Path& file, const Path& kept, const Heartbeat& heartbeat);
/// The level's files are those that were kept, and the targets too; what is as the edit left it
/// goes. All that can be done is done; the first failure is the answer. Repeatable.
Status PutKeptEditBack(const Path& kept, const Path& files);
/// Gone in one step; what is left of it then has a name that the next start clears.
Status DropKeptEdit(const Path& kept);

} // namespace kestrova
