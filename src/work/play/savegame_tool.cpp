#include "play/savegame_tool.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "history/standing.h"
#include "play/file_names.h"
#include "play/play_level.h"
#include "saves/savegame_store.h"
#include "session/operation.h"
#include "session/telling.h"
#include "tools/program_launch.h"
#include "words/play.h"

namespace kestrova
{

namespace
{

/// What the tool reads when it starts: this level's folders, and who of the two captures pictures.
void PrepareRecords(Host& host, const Folders& folders, const Archive& archive,
                    const PreferencesRecord& preferences, LevelCode code)
{
    const Path level = LevelHomeOf(folders, code);
    const Path root = InFolder(level, OnDisk::DirSavegames);
    const Path header = InFolder(root, OnDisk::FragSavegameHeader);
    auto store = LoadSavegameStore(folders, preferences, code);
    if (!store) {
        TellFailure(host, GetMsg(Msg::ToolHeaderNotWritten) + TextOf(header), store.Error());
        return;
    }
    store->header.liveFolder =
        TextOf(LiveStateFolder(folders, archive, code).ValueOr(StateStoreOf(folders, code)));
    store->header.archiveRoot = TextOf(root);
    if (const auto status = WriteRecordFile(header, FormatSavegameArchiveHeader(store->header));
        !status)
        TellFailure(host, GetMsg(Msg::ToolHeaderNotWritten) + TextOf(header), status.Error());
    store->tool.toolCapture = preferences.captureEnabled ? 0 : -1;
    store->tool.shotFolder = TextOf(InFolder(level, OnDisk::DirScreenshots));
    store->tool.archivePath = TextOf(header);
    // It lies beside the header, whose failure has been told.
    (void)WriteRecordFile(InFolder(root, OnDisk::FragSavegameTool),
                          FormatSavegameToolPrefs(store->tool));
}

bool StartTool(Host& host, Machine& machine, const Tools& tools, const Path& program)
{
    const auto launch = LaunchOf(tools, program);
    if (!launch) {
        TellFailure(host, GetMsg(Msg::ToolNotStarted), launch.Error());
        return false;
    }
    const auto started = machine.StartAndForget(*launch);
    if (!started)
        TellFailure(host, GetMsg(Msg::ToolNotStarted), started.Error());
    return static_cast<bool>(started);
}

} // namespace

bool HasSavegameTool(const Folders& folders)
{
    return FileExists(ResolvePath(folders.program / OnDisk::ToolProgram));
}

bool StartSavegameTool(Session& session)
{
    const Operation operation{session};
    const auto code = session.list.Selected();
    const std::ptrdiff_t index = code ? FindLevel(session.archive, *code) : -1;
    if (index < 0)
        return false;
    if (!TellUnlessKnown(session.host, session.Folders(), session.archive))
        return false;
    const bool current = CurrentLevelCode(session.Folders(), session.archive) == *code;
    if (!current && session.host.AskYesNo(GetMsg(Msg::ToolNotCurrent,
                                                 {LevelNameOf(session.archive, *code), lineBreak})))
        (void)PlayLevel(session, *code, false); // a failure was told; the tool works on the store
    PrepareRecords(session.host, session.Folders(), session.archive, session.preferences, *code);
    const Path program = ResolvePath(session.programFolder / OnDisk::ToolProgram);
    if (!FileExists(program)) {
        session.host.Tell(
            Tone::Error,
            GetMsg(Msg::ToolNotFound, {lineBreak, "\"" + TextOf(session.programFolder) + "\""}) +
                std::string{OnDisk::ToolProgram});
        return false;
    }
    const bool started = StartTool(session.host, session.machine, ToolsOf(session), program);
    session.archive.levels[static_cast<std::size_t>(index)].extrasDirty = true;
    SaveArchive(session);
    return started;
}

} // namespace kestrova
