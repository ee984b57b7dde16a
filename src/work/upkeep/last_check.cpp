#include "upkeep/last_check.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "formats/checked_note.h"
#include "formats/program_folder.h"

#include <set>

namespace kestrova
{

namespace
{

Path CheckedFile(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragChecked);
}

} // namespace

std::vector<LevelCode> HarmedAtLastCheck(const Folders& folders, const Archive& archive)
{
    const auto text =
        ReadFileIfThere(CheckedFile(folders), longestCheckedNote).ValueOr(std::nullopt);
    const auto note = text ? ParseCheckedNote(*text) : Result<CheckedNote>{Failure{}};
    std::vector<LevelCode> harmed;
    if (note && archive.Loaded() && note->archive == archive.file.native())
        for (const LevelCode code : note->harmed)
            if (archive.Find(code) != nullptr)
                harmed.push_back(code);
    return harmed;
}

void NoteLastCheck(const Folders& folders, const Archive& archive,
                   const std::vector<LevelCode>& checked, const std::vector<LevelCode>& harmed)
{
    const std::vector<LevelCode> before = HarmedAtLastCheck(folders, archive);
    std::set<LevelCode> now{before.begin(), before.end()};
    for (const LevelCode code : checked)
        now.erase(code);
    now.insert(harmed.begin(), harmed.end());
    const std::vector<LevelCode> after{now.begin(), now.end()};
    const Path file = CheckedFile(folders);
    // Without it the doctor says nothing of checks, and that is all.
    if (after != before && MakeFolders(file.parent_path()))
        (void)WriteWholeFile(file, FormatCheckedNote({archive.file.native(), after}), false);
}

} // namespace kestrova
