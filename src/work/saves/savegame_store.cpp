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

Status LoadSavegameStore(Session& session, LevelCode code)
{
    const Path level = LevelHomeOf(session.Folders(), code);
    const Path root = InFolder(level, OnDisk::DirSavegames);

    session.savegameTool = DefaultTool(level, root);
    const Path tool = InFolder(root, OnDisk::FragSavegameTool);
    const auto toolBytes = ReadFileIfThere(tool);
    if (toolBytes && !*toolBytes) {
        // Where the folder allows no file, the record lives in memory.
        (void)WriteRecordFile(tool, FormatSavegameToolPrefs(session.savegameTool));
    } else if (toolBytes) {
        if (auto record = ParseSavegameToolPrefs(**toolBytes))
            session.savegameTool = std::move(*record);
    }

    session.savegameHeader = DefaultHeader(session.Folders(), session.preferences, root);
    const Path header = InFolder(root, OnDisk::FragSavegameHeader);
    const auto headerBytes = ReadFileIfThere(header);
    if (headerBytes && !*headerBytes) {
        (void)WriteRecordFile(header,
                              FormatSavegameArchiveHeader(session.savegameHeader)); // as above
    } else if (headerBytes) {
        if (auto record = ParseSavegameArchiveHeader(**headerBytes))
            session.savegameHeader = std::move(*record);
    }
    if (!headerBytes)
        return headerBytes.Error();
    return toolBytes ? Status{} : toolBytes.Error();
}

} // namespace kestrova
