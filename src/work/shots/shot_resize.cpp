#include "shots/shot_resize.h"

#include "core/look.h"
#include "formats/program_folder.h"
#include "pictures/convert.h"
#include "session/telling.h"
#include "shots/file_names.h"
#include "shots/shot_changes.h"
#include "shots/shot_files.h"
#include "words/shots.h"

namespace kestrova
{

namespace
{

Status Write(const Folders& folders, const Picture& drawn, const Path& target, bool isJpeg)
{
    if (!isJpeg)
        return SaveAsBitmap(drawn, target);
    const Path bitmap = InFolder(folders.program, OnDisk::FragTempBitmap);
    if (auto saved = SaveAsBitmap(drawn, bitmap); !saved)
        return saved;
    return ConvertBitmapToJpeg(bitmap, target);
}

} // namespace

std::span<const ShotSize> ShotSizes()
{
    static constexpr ShotSize sizes[] = {
        {Msg::ShotSize480, 480, 360}, {Msg::ShotSize440, 440, 330}, {Msg::ShotSize400, 400, 300},
        {Msg::ShotSize360, 360, 270}, {Msg::ShotSize320, 320, 240}, {Msg::ShotSize240, 240, 180},
        {Msg::ShotSize200, 200, 150}, {Msg::ShotSize160, 160, 120},
    };
    return sizes;
}

bool SaveResizedShot(Host& host, const ChangeParts& parts, LevelCode code, const Picture& drawn,
                     const Path& shot)
{
    const auto target =
        host.ChooseSaveFile(GetMsg(Msg::ResizeSaveTitle), GetMsg(Msg::ResizeSaveFilter),
                            shot.parent_path(), shot.filename().native());
    if (!target)
        return false;
    const bool isJpeg = EndsWithName(target->native(), OnDisk::ShotJpgExtension);
    const auto write = [&](const Path& place) {
        return Write(parts.folders, drawn, place, isJpeg);
    };
    const auto written =
        IsSameFolder(target->parent_path(), shot.parent_path())
            ? WriteShot(parts,
                        ShotChange(parts, ChangeKind::ShotAdded, code, target->filename().native()),
                        *target, write)
            : write(*target);
    if (!written)
        TellFailure(host, GetMsg(isJpeg ? Msg::ResizeConvertFailed : Msg::ResizeWriteFailed),
                    written.Error());
    return static_cast<bool>(written);
}

} // namespace kestrova
