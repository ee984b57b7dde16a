#include "saves/savegame_store.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "history/standing.h"
#include "swap/live_state.h"

namespace kestrova
{

namespace
{

SavegameToolPrefs DefaultTool(const Path& level, const Path& root)
{
    SavegameToolPrefs record;
    record.archivePath = TextOf(InFolder(root, OnDisk::FragSavegameHeader));
    record.shotFolder = TextOf(InFolder(level, OnDisk::DirScreenshots));
    return record;
}

SavegameArchiveHeader DefaultHeader(const Folders& folders, const PreferencesRecord& preferences,
                                    const Path& root)
{
    SavegameArchiveHeader record;
    record.slotPrefix = std::string{OnDisk::SlotPrefix};
    record.archiveRoot = TextOf(root);
    record.liveFolder = TextOf(folders.trle);
    record.gameExe = TextOf(folders.trle / Trim(preferences.tombExeName));
    return record;
}

} // namespace

Result<SavegameStore> LoadSavegameStore(const Folders& folders,
                                        const PreferencesRecord& preferences, LevelCode code)
{
    const Path level = LevelHomeOf(folders, code);
    const Path root = InFolder(level, OnDisk::DirSavegames);
    SavegameStore store{DefaultHeader(folders, preferences, root), DefaultTool(level, root)};

    const Path tool = InFolder(root, OnDisk::FragSavegameTool);
    const auto toolBytes = ReadFileIfThere(tool);
    if (toolBytes && !*toolBytes) {
        // Where the folder allows no file, the record lives in memory.
        (void)WriteRecordFile(tool, FormatSavegameToolPrefs(store.tool));
    } else if (toolBytes) {
        if (auto record = ParseSavegameToolPrefs(**toolBytes))
            store.tool = std::move(*record);
    }

    const Path header = InFolder(root, OnDisk::FragSavegameHeader);
    const auto headerBytes = ReadFileIfThere(header);
    if (headerBytes && !*headerBytes) {
        (void)WriteRecordFile(header, FormatSavegameArchiveHeader(store.header)); // as above
    } else if (headerBytes) {
        if (auto record = ParseSavegameArchiveHeader(**headerBytes))
            store.header = std::move(*record);
    }
    if (!headerBytes)
        return headerBytes.Error();
    if (!toolBytes)
        return toolBytes.Error();
    return store;
}

} // namespace kestrova
