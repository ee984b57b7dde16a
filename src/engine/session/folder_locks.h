#pragma once

#include "core/files.h"
#include "platform/file_lock.h"

#include <map>
#include <vector>

namespace kestrova
{

/// One writer a folder: a lock file in it, held until this object ends. A folder that cannot be
/// written needs none.
class FolderLocks
{
public:
    /// `Refused` with the holder's words as the reason when another program holds the folder.
    Status Hold(const Path& folder);
    [[nodiscard]] bool Holds(const Path& folder) const;
    void Release(const Path& folder);
    /// The folders that are held now.
    [[nodiscard]] std::vector<Path> Held() const;
    /// Releases what is held beside those.
    void KeepOnly(const std::vector<Path>& held);
    /// The held folders in whose place another one stands by now, or none, as when their disk went
    /// away. One that came back, with this program's lock file in it, is held anew.
    std::vector<Path> Lost();

    /// The folder whose lock is held for the archive; empty when none is.
    [[nodiscard]] const Path& ArchiveFolder() const { return archiveFolder_; }
    /// Notes it; answers the one that was noted before.
    Path SetArchiveFolder(const Path& folder);

private:
    struct HeldFolder {
        platform::FileLock lock;
        platform::FileFacts facts; ///< of the folder
        std::string words;         ///< in its lock file
    };
    [[nodiscard]] static bool CameBack(const Path& folder, HeldFolder& held);
    [[nodiscard]] Path HeldAs(Path place) const;

    std::map<Path, HeldFolder> held_;
    Path archiveFolder_;
};

} // namespace kestrova
