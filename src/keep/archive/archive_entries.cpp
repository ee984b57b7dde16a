#include "archive/archive_entries.h"

#include "core/text.h"
#include "formats/disc_note.h"
#include "formats/level_folder.h"
#include "formats/level_folder_name.h"
#include "formats/library_note.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The notes of the levels, or a damaged file of them that was set aside.
bool IsLibraryName(std::string_view name)
{
    const std::string_view notes = OnDisk::FragLibrary.substr(1);
    if (name.size() < notes.size() || !EqualNames(name.substr(0, notes.size()), notes))
        return false;
    const std::string_view behind = name.substr(notes.size());
    return behind.empty() || (behind.front() == '.' && AreDigits(behind.substr(1)));
}

} // namespace

Result<std::vector<std::string>> NamesOfArchive(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    if (const auto failure = platform::ListFolder(folder, entries))
        return MakeFailure(ErrorCode::CannotRead, TextOf(folder), failure);
    std::vector<std::string> names;
    for (const platform::FolderEntry& entry : entries)
        if (IsLevelFolderName(entry.name) || IsAsideName(entry.name) ||
            EqualNames(entry.name, OnDisk::FragExactNames.substr(1)) ||
            EqualNames(entry.name, OnDisk::FragDiscNote.substr(1)) || IsLibraryName(entry.name))
            names.push_back(entry.name);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace kestrova
