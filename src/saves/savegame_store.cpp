#include "saves/savegame_store.h"

#include "catalogue/message.h"
#include "core/staged_file.h"
#include "swap/marker.h"
#include "swap/state_files.h"

namespace kestrova
{

Result<Path> CurrentSlotsFolder(const Session& session, LevelCode code)
{
    if (auto known = KnowsStandingLevel(session); !known)
        return known.Error();
    return LiveStateFolder(session, code);
}

namespace
{

SavegameToolPrefs DefaultTool(const Path& level, const Path& root)
{
    SavegameToolPrefs record;
    record.archivePath = TextOf(InFolder(root, RowText(Msg::FragSavegameHeader)));
    record.shotFolder = TextOf(InFolder(level, RowText(Msg::DirScreenshots)));
    return record;
}

SavegameArchiveHeader DefaultHeader(const Session& session, const Path& root)
{
    SavegameArchiveHeader record;
    record.slotPrefix = GetMsg(Msg::SlotPrefix);
    record.archiveRoot = TextOf(root);
    record.liveFolder = TextOf(session.TrleFolder());
    record.gameExe = TextOf(session.TrleFolder() / Trim(session.preferences.tombExeName));
    return record;
}

} // namespace

void LoadSavegameStore(Session& session, LevelCode code)
{
    const Path level = LevelHomeOf(session, code);
    const Path root = InFolder(level, RowText(Msg::DirSavegames));

    session.savegameTool = DefaultTool(level, root);
    const Path tool = InFolder(root, RowText(Msg::FragSavegameTool));
    if (!FileExists(tool)) {
        // Where the folder allows no file, the record lives in memory.
        (void)WriteRecordFile(tool, FormatSavegameToolPrefs(session.savegameTool));
    } else if (const auto bytes = ReadWholeFile(tool)) {
        if (auto record = ParseSavegameToolPrefs(*bytes))
            session.savegameTool = std::move(*record);
    }

    session.savegameHeader = DefaultHeader(session, root);
    const Path header = InFolder(root, RowText(Msg::FragSavegameHeader));
    if (!FileExists(header)) {
        (void)WriteRecordFile(header,
                              FormatSavegameArchiveHeader(session.savegameHeader)); // as above
    } else if (const auto bytes = ReadWholeFile(header)) {
        if (auto record = ParseSavegameArchiveHeader(*bytes))
            session.savegameHeader = std::move(*record);
    }
}

} // namespace kestrova
