#include "archive/archive_entries.h"

#include "core/text.h"
#include "formats/disc_note.h"
#include "formats/level_folder.h"
#include "formats/library_note.h"
#include "formats/program_folder.h"
#include "words/message.h"

#include <algorithm>
#include <charconv>

namespace kestrova
{

namespace
{

std::string LevelPrefix()
{
    return Filled(OnDisk::FragLevelFolder, {""}).substr(1);
}

/// What stands behind `LEVEL_`; empty for other names.
std::string_view BehindPrefix(std::string_view name)
{
    const std::string prefix = LevelPrefix();
    return name.size() > prefix.size() && EqualNames(name.substr(0, prefix.size()), prefix)
               ? name.substr(prefix.size())
               : std::string_view{};
}

bool AreDigits(std::string_view text)
{
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

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

bool IsLevelFolderName(std::string_view name)
{
    return AreDigits(BehindPrefix(name));
}

std::optional<LevelCode> CodeOfLevelFolder(std::string_view name)
{
    const std::string_view digits = BehindPrefix(name);
    LevelCode code = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code);
    return AreDigits(digits) && read.ec == std::errc{} ? std::optional{code} : std::nullopt;
}

bool IsAsideName(std::string_view name)
{
    const std::string mark = Filled(OnDisk::FragSetAside, {"", ""});
    const std::string_view behind = BehindPrefix(name);
    const std::size_t at = behind.find(mark);
    return at != std::string_view::npos && AreDigits(behind.substr(0, at));
}

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
