#include "archive/archive_place.h"

#include "archive/level_folders.h"
#include "core/inside.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "platform/real_path.h"
#include "words/archive.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// As far as it is there; what cannot be looked at counts by its name.
Path RealOf(const Path& folder)
{
    const Path resolved = ResolvePath(folder);
    Path real;
    return platform::RealPathSoFar(resolved, real) ? resolved : real;
}

/// What the name of a folder in the program's own begins with, as `\\_temp_`.
bool BeginsWith(std::string_view name, std::string_view fragment)
{
    fragment.remove_prefix(1);
    return EqualNames(name.substr(0, fragment.size()), fragment);
}

bool IsProgramsOwn(const std::string& name)
{
    if (name.starts_with(stagedPrefix))
        return true;
    // Backups that were set aside, and folders of work, have names that go on.
    for (const std::string_view fragment :
         {OnDisk::DirTrleBackup, OnDisk::DirTemp, OnDisk::DirAudioTemp})
        if (BeginsWith(name, fragment))
            return true;
    const std::string original = LevelFolderName(originalCode);
    const std::initializer_list<std::string_view> whole = {
        OnDisk::DirHistory, OnDisk::DirSwap, OnDisk::DirDiscs, OnDisk::DirOutFiles, original};
    return std::any_of(whole.begin(), whole.end(), [&](std::string_view fragment) {
        return EqualNames(name, fragment.substr(1));
    });
}

Failure NotSafe(const Path& folder, const Path& owner)
{
    return InWords(ErrorCode::Refused,
                   GetMsg(Msg::ArchiveFolderOwned, {TextOf(folder), TextOf(owner)}));
}

} // namespace

Status MayHoldLevels(const Folders& folders, const Path& folder)
{
    const Path real = RealOf(folder);
    if (!folders.trle.empty())
        if (const Path trle = RealOf(folders.trle); LiesInside(real, trle))
            return NotSafe(folder, trle);
    const Path program = RealOf(folders.program);
    if (!LiesInside(real, program) || real == program)
        return {};
    const Path first = *real.lexically_relative(program).begin();
    return IsProgramsOwn(first.native()) ? NotSafe(folder, program / first) : Status{};
}

} // namespace kestrova
