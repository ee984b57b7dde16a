#include "packages/unpack_staging.h"

#include "core/leftovers.h"
#include "core/removal.h"
#include "formats/program_folder.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A folder itself, and no link to one.
bool IsEmptyFolder(const Path& place)
{
    std::vector<platform::FolderEntry> entries;
    return platform::FactsOfLink(place).kind == platform::FileKind::Folder &&
           !platform::ListFolder(place, entries) && entries.empty();
}

/// Keeps the window alive without listening to Stop.
Heartbeat ToTheEnd(ProgressScope* progress)
{
    return [progress] { return progress == nullptr || (progress->Step(), true); };
}

} // namespace

bool IsReadyToUnpack(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    if (platform::FactsOfLink(folder).kind != platform::FileKind::Folder ||
        platform::ListFolder(folder, entries))
        return false;
    const Path staging = InFolder(folder, OnDisk::FragUnpacking);
    return entries.empty() || (entries.size() == 1 && entries.front().name == staging.filename() &&
                               IsEmptyFolder(staging));
}

Result<Path> EmptyStaging(const Path& folder)
{
    Path staging = InFolder(folder, OnDisk::FragUnpacking);
    if (IsEmptyFolder(staging))
        return staging;
    // A link there is unlinked, never followed.
    if (auto status = ClearPlace(staging); !status)
        return status.Error();
    NotePlace(folder);
    if (auto status = MakeFolder(staging); !status)
        return status.Error();
    return staging;
}

void DropStaging(const Path& staging, bool keep, ProgressScope* progress)
{
    if (!keep || !IsEmptyFolder(staging))
        (void)ClearPlace(staging, ToTheEnd(progress));
}

std::vector<std::string> NotFilesBelow(const Path& top)
{
    std::vector<std::string> names;
    std::vector<Path> folders{{}};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        (void)platform::ListFolder(top / place, entries); // what is shut is opened later
        for (const platform::FolderEntry& entry : entries) {
            if (entry.kind == platform::FileKind::Folder)
                folders.push_back(place / entry.name);
            else if (entry.kind != platform::FileKind::File)
                names.push_back(TextOf(place / entry.name));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace kestrova
