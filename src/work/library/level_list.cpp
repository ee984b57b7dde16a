#include "library/level_list.h"

#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/standing.h"
#include "saves/archive_slots.h"
#include "saves/savegame_store.h"
#include "words/levels.h"
#include "words/library.h"

namespace kestrova
{

namespace
{

/// Only shown: a folder that cannot be read shows nothing of what it holds.
int Count(const Path& folder, std::string_view pattern)
{
    return static_cast<int>(ListFiles(folder, pattern).ValueOr({}).size());
}

/// The record has the size of when it was counted last.
double ExtrasNow(const Folders& folders, const Archive& archive, const LevelRecord& level)
{
    const auto stored = ExtrasSizeOf(LevelHomeOf(folders, level.levelCode));
    if (!stored)
        return level.extrasSize;
    double bytes = *stored;
    const Path store = StateStoreOf(folders, level.levelCode);
    const Path live = LiveStateFolder(folders, archive, level.levelCode).ValueOr(store);
    if (live != store)
        for (const Path& file : ListFiles(live, OnDisk::SavegamePattern).ValueOr({}))
            bytes += static_cast<double>(FileSize(file));
    return bytes;
}

bool TellUnknown(Host& host, LevelCode code)
{
    host.Tell(Tone::Error, GetMsg(Msg::UnknownCodeInList) + std::to_string(code));
    return false;
}

std::string InfoLine(const LevelFacts& facts)
{
    std::string path = "\"" + TextOf(facts.folder) + "\"";
    if (facts.record.cdNumber != 0)
        path += GetMsg(Msg::InfoCdNumber) + std::to_string(facts.record.cdNumber);
    path += GetMsg(Msg::InfoPathEnds);
    return GetMsg(Msg::InfoPathAndShots, {path, std::to_string(facts.screenshots)}) +
           std::to_string(facts.liveSavegames) + GetMsg(Msg::InfoArchivedSavegames) +
           std::to_string(facts.archivedSavegames);
}

LevelFacts FactsOfLevel(const Folders& folders, const Archive& archive, std::size_t index)
{
    LevelFacts facts;
    facts.index = index;
    facts.record = archive.levels[index];
    const LevelCode code = facts.record.levelCode;
    facts.folder = LevelHomeOf(folders, code);
    facts.current = CurrentLevelCode(folders, archive) == code;
    const Path shots = InFolder(facts.folder, OnDisk::DirScreenshots);
    facts.screenshots = Count(shots, OnDisk::PatBmp) + Count(shots, OnDisk::PatShotJpg);
    const SavegameCount savegames = CountSavegames(folders, archive, code);
    facts.liveSavegames = savegames.live;
    facts.archivedSavegames = savegames.archived;
    facts.folderGone = !IsFolder(facts.folder).ValueOr(false);
    facts.extras =
        facts.folderGone ? facts.record.extrasSize : ExtrasNow(folders, archive, facts.record);
    facts.info =
        facts.folderGone ? GetMsg(Msg::FolderNotThereNow, {TextOf(facts.folder)}) : InfoLine(facts);
    return facts;
}

} // namespace

SavegameCount CountSavegames(const Folders& folders, const Archive& archive, LevelCode code)
{
    return {Count(LiveStateFolder(folders, archive, code).ValueOr(StateStoreOf(folders, code)),
                  OnDisk::SavegamePattern),
            CountArchivedSavegames(folders, code)};
}

std::optional<LevelFacts> SelectLevel(Host& host, const Folders& folders, const Archive& archive,
                                      const PreferencesRecord& preferences, LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(archive, code);
    if (index < 0)
        return TellUnknown(host, code), std::nullopt;
    // Its records are made here where there are none; what cannot be read is told by who needs it.
    (void)LoadSavegameStore(folders, preferences, code);
    return FactsOfLevel(folders, archive, static_cast<std::size_t>(index));
}

std::optional<LevelFacts> LookAtLevel(Host& host, const Folders& folders, const Archive& archive,
                                      LevelCode code)
{
    const std::ptrdiff_t index = FindLevel(archive, code);
    if (index < 0)
        return TellUnknown(host, code), std::nullopt;
    return FactsOfLevel(folders, archive, static_cast<std::size_t>(index));
}

std::string WindowTitle(const Archive& archive)
{
    return GetMsg(Msg::TitleLevels,
                  {TextOf(archive.file.filename()) + GetMsg(Msg::TitleCountOpens) +
                   std::to_string(archive.levels.size())});
}

} // namespace kestrova
