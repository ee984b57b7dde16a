#include "app/start_places.h"

#include "app/file_names.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "formats/program_folder.h"
#include "platform/places.h"
#include "platform/user_folders.h"
#include "upkeep/load_archive.h"
#include "upkeep/new_archive.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A player sees no folder on the way to it whose name begins with a dot.
bool IsHidden(const Path& folder)
{
    return std::any_of(folder.begin(), folder.end(), [](const Path& name) {
        const std::string& text = name.native();
        return text.size() > 1 && text.front() == '.' && text != "..";
    });
}

/// In the home folder where the program's own one would never be found.
Path NewFolderForLevels(const Session& session)
{
    const Path home = platform::HomeFolder();
    if (home.empty() || !IsHidden(session.programFolder) || IsHidden(home) ||
        !platform::IsWritableFolder(home))
        return DefaultArchiveFolder(session.programFolder);
    const Path folder = home / OnDisk::FolderForLevels;
    return IsFree(folder).ValueOr(false) ? folder : DefaultArchiveFolder(home);
}

} // namespace

Path PlaceFrom(const std::string& typed)
{
    std::string text{Trim(typed)};
    if (text.empty())
        return {};
    if (text == OnDisk::HomeSign || text.starts_with(OnDisk::HomeStart))
        text = platform::HomeFolder().native() + text.substr(1);
    return FolderFromText(platform::AbsolutePath(text).lexically_normal().native());
}

bool NamesArchive(const Path& place)
{
    return EndsWithName(place.native(), OnDisk::ExtensionArchive);
}

Path ArchiveAt(const Session& session, const Path& folder)
{
    const std::string pattern = "*" + std::string{OnDisk::ExtensionArchive};
    // What cannot be listed or read is no archive that could be opened.
    for (const Path& file : ListFiles(folder, pattern).ValueOr({}))
        if (ReadArchiveRecords(session.settings, file))
            return file;
    for (const Path& file : ListFiles(session.programFolder, pattern).ValueOr({})) {
        const auto archive = ReadArchiveRecords(session.settings, file);
        if (archive && IsSameFolder(FolderFromText(Trim(archive->header.secondaryFolder)), folder))
            return file;
    }
    return {};
}

Path ProposedLevels(const Session& session)
{
    const std::string pattern = "*" + std::string{OnDisk::ExtensionArchive};
    for (const Path& file : ListFiles(session.programFolder, pattern).ValueOr({})) {
        const auto archive = ReadArchiveRecords(session.settings, file);
        if (archive && FolderExists(FolderFromText(Trim(archive->header.secondaryFolder))))
            return file;
    }
    return NewFolderForLevels(session);
}

} // namespace kestrova
