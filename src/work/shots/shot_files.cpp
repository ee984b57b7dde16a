#include "shots/shot_files.h"

#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "pictures/convert.h"
#include "shots/file_names.h"

namespace kestrova
{

namespace
{

/// Bytes that a file name may have, less room for a counter.
constexpr std::size_t titleRoom = 255 - 16;

} // namespace

Path ShotFolderOf(const Folders& folders, LevelCode code)
{
    return InFolder(LevelHomeOf(folders, code), OnDisk::DirScreenshots);
}

Result<Path> NewShotName(const Folders& folders, const Archive& archive, std::size_t index,
                         std::string& extension)
{
    if (extension.empty())
        extension = OnDisk::ShotJpgExtension;
    const LevelRecord& level = archive.levels[index];
    const std::string title = CutAtLetter(ReplaceForbiddenChars(Trim(level.levelName)), titleRoom);
    const Path folder = ResolvePath(ShotFolderOf(folders, level.levelCode));
    return FirstFree([&](int number) {
        return folder / (std::to_string(number).append(OnDisk::ShotNumberEnds) + title + extension);
    });
}

bool IsShotName(std::string_view name)
{
    return EndsWithName(name, OnDisk::ShotJpgExtension) ||
           EndsWithName(name, OnDisk::ShotBmpExtension);
}

std::string WithShotEnding(const std::string& name, std::string_view extension)
{
    return IsShotName(name) ? name : name + std::string{extension};
}

Status HoldsPicture(const Path& file)
{
    const auto picture = ReadPictureFile(file);
    return picture ? Status{} : picture.Error();
}

void AddShotSize(const ArchiveParts& parts, double bytes, std::size_t index)
{
    AddLevelSize(parts, bytes, SizeKind::Extras, index);
}

} // namespace kestrova
