#include "swap/level_placements.h"

#include "archive/level_folders.h"
#include "conversion/sound_converter.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "core/size_words.h"
#include "formats/level_folder.h"
#include "history/swap_journal_file.h"
#include "session/telling.h"
#include "storage/game_files.h"
#include "swap/placements.h"
#include "words/storage.h"
#include "words/swap.h"

#include <unordered_map>

namespace kestrova
{

namespace
{

bool TellNoSpace(Host& host, Machine& machine, const Folders& folders, double need)
{
    const auto free = machine.FreeSpace(folders.trle);
    const double bytes = free ? static_cast<double>(*free) : 0;
    host.Tell(Tone::Error, GetMsg(Msg::NoSpaceForLevel, {SizeInWords(need), SizeInWords(bytes)}));
    return false;
}

} // namespace

bool ReadyPlacements(const SwapParts& parts, LevelCode code, const Path& staging,
                     std::vector<Placement>& placements)
{
    const auto home = LevelFolderOf(parts.folders, parts.archive, code);
    if (!home) {
        return DoneOrTold(parts.host, home.Error());
    }
    const Path source = InFolder(*home, OnDisk::DirFiles);
    if (!FolderExists(source)) {
        parts.host.Tell(Tone::Error, GetMsg(Msg::LevelFilesGone), TextOf(source));
        return false;
    }
    const auto progress =
        parts.host.BeginProgress(ProgressWindow::Zip, GetMsg(Msg::DecompressingFiles));
    auto ready = ReadyLevelFiles(parts.host, parts.machine, parts.sounds, source, staging, true,
                                 progress.get());
    if (!ready) {
        if (ready.Error().code == ErrorCode::NoSpace) {
            double need = 0;
            if (const auto plan = PlanLevelFiles(source))
                for (const ReadyFile& file : *plan)
                    need += static_cast<double>(file.size);
            return TellNoSpace(parts.host, parts.machine, parts.folders, need);
        }
        // A sound that was not decoded has its own words.
        const bool isSound = !ready.Error().sentence.empty();
        if (isSound)
            TellFailure(parts.host, ready.Error());
        TellFailure(parts.host, GetMsg(Msg::ErrorDecompressingFiles),
                    isSound ? Failure{} : ready.Error());
        return false;
    }
    std::vector<std::string> refused;
    placements = PlaceFiles(*ready, refused);
    if (!refused.empty())
        parts.host.Tell(Tone::Warning, GetMsg(Msg::NamesLeftOut, {ShownNames(refused)}));

    // What the old level leaves makes room, but its own files come out one by one before.
    double need = 0;
    for (const Placement& placement : placements)
        if (!placement.file.moved)
            need += static_cast<double>(placement.file.size);
    double freed = 0;
    if (const auto owner = ReadOwner(parts.folders); owner && *owner)
        for (const OwnedFile& file : (*owner)->added)
            freed += static_cast<double>(file.size);
    const auto free = parts.machine.FreeSpace(parts.folders.trle);
    if (free && need > static_cast<double>(*free) + freed)
        return TellNoSpace(parts.host, parts.machine, parts.folders, need);
    return true;
}

} // namespace kestrova
