#pragma once

#include "core/files.h"

/// Folders as a whole: every entry under its exact name, whatever it is called, and links as the
/// links that they are. Nothing is entered through a link.
namespace kestrova
{

struct WholeEntry {
    Path name; ///< from the root on
    platform::FileFacts facts;
};

struct WholeTree {
    std::vector<WholeEntry> folders; ///< parents before their children
    std::vector<WholeEntry> files;
    std::vector<WholeEntry> links;
    std::uint64_t bytes = 0; ///< of the files

    [[nodiscard]] bool Empty() const { return folders.empty() && files.empty() && links.empty(); }
};

/// All that lies under these names of the root, sorted. `Refused` for a pipe, a socket or a device:
/// nobody can copy it.
Result<WholeTree> ScanWhole(const Path& root, const std::vector<std::string>& names,
                            const Heartbeat& heartbeat = {});
/// True for one and the same entry that nobody changed in between.
bool IsUnchanged(const platform::FileFacts& before, const platform::FileFacts& now);

/// Called with the bytes that are copied so far, now and then; False stops with `Stopped`.
using CopiedBytes = std::function<bool(std::uint64_t)>;
/// Copies a scanned tree to names that are free. A file gets a second name where the file system
/// can; otherwise it is copied and compared with its source. Links keep what they lead to: one into
/// the tree leads into the copy. Durable only when the file system is flushed. What was made before
/// a failure stays.
Status CopyWhole(const WholeTree& tree, const Path& from, const Path& to,
                 const CopiedBytes& progress);

/// Whether a file or link may be removed.
using MayGo = std::function<Result<bool>(const WholeEntry&)>;
/// Removes the files and links of a scanned tree that may go, and the folders that are empty then.
/// Goes on past what cannot go, which a later scan finds; the first failure is the answer.
/// `Stopped` as soon as the heartbeat says so.
Status RemoveWhole(const WholeTree& tree, const Path& root, const MayGo& mayGo,
                   const Heartbeat& heartbeat = {});
/// True when the entry's twin below another root is a copy of it: a link, the very file, or one of
/// the same bytes.
Result<bool> HasCopy(const WholeEntry& entry, const Path& root, const Path& other,
                     const Heartbeat& heartbeat = {});

/// True when a later scan met the same entries as the one that was copied, and each file that
/// changed in between is still the same as its copy.
Result<bool> IsWholeCopy(const WholeTree& before, const WholeTree& now, const Path& root,
                         const Path& copy, const Heartbeat& heartbeat = {});

} // namespace kestrova
