#include "shots/shot_capture.h"

#include "core/look.h"
#include "pictures/convert.h"
#include "session/telling.h"
#include "shots/file_names.h"
#include "shots/shot_changes.h"
#include "shots/shot_files.h"
#include "words/shots.h"

namespace kestrova
{

Status SaveCapturedShot(const ArchiveParts& parts, const CapturedShot& shot, const Path& jpeg)
{
    if (auto made = MakeFolder(shot.folder); !made)
        return made;
    const auto write = [&](const Path& place) { return SaveAsJpeg(shot.picture, place); };
    const LevelCode code = parts.archive.levels[shot.level].levelCode;
    const bool ofLevel = jpeg.parent_path() == shot.folder;
    const auto saved =
        ofLevel
            ? WriteShot(parts,
                        ShotChange(parts, ChangeKind::ShotCaptured, code, jpeg.filename().native()),
                        jpeg, write)
            : write(jpeg);
    if (!saved)
        return saved;
    AddShotSize(parts, static_cast<double>(FileSize(jpeg)), shot.level);
    return {};
}

bool AskSaveCapturedShot(const ArchiveParts& parts, const CapturedShot& shot)
{
    const auto jpeg = parts.host.ChooseSaveFile(GetMsg(Msg::CaptureSaveTitle),
                                                GetMsg(Msg::CaptureSaveFilter), shot.folder, {});
    if (!jpeg)
        return false;
    const std::string_view ending = OnDisk::ShotJpgExtension;
    Path file = *jpeg;
    if (!EndsWithName(file.filename().native(), ending)) {
        file += ending; // `Mr. Fox` has a dot, but no ending
        const std::string breaks = std::string{lineBreak}.append(lineBreak);
        // The chooser asked about the name that was typed.
        const auto isFree = IsFree(file);
        if (!isFree)
            return TellFolderNotRead(parts.host, isFree.Error());
        if (!*isFree && !parts.host.AskYesNo(GetMsg(Msg::ShotAskOverwrite,
                                                    {TextOf(file.filename()), breaks, breaks}))) {
            std::string extension;
            auto free = NewShotName(parts.folders, parts.archive, shot.level, extension);
            if (!free)
                return TellFolderNotRead(parts.host, free.Error());
            file = std::move(*free);
        }
    }
    if (const auto saved = SaveCapturedShot(parts, shot, file); !saved) {
        const std::string place = std::string{lineBreak} + TextOf(file) + std::string{lineBreak};
        parts.host.Tell(Tone::Error,
                        GetMsg(Msg::CaptureSaveFailed, {place}) + saved.Error().reason);
    }
    return true;
}

void BringGameBack(Machine& machine)
{
    if (machine.ActivateWindow(Told(Msg::GameWindowTitle)))
        machine.TypeKeys("\n");
}

} // namespace kestrova
