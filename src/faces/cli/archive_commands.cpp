#include "cli/archive_commands.h"

#include "archive/level_sizes.h"
#include "cli/work.h"
#include "formats/program_folder.h"
#include "levels/level_life.h"
#include "upkeep/archive_life.h"
#include "upkeep/new_archive.h"
#include "words/cli.h"

namespace kestrova
{

namespace
{

void ShowArchive(Run& run)
{
    if (run.json != nullptr)
        *run.json = {{"archive", TextOf(run.session.ArchivePath())},
                     {"folder", Readable(Trim(run.session.archive.header.secondaryFolder))},
                     {"levels", run.session.archive.levels.size()}};
    else
        AddLine(run, TextOf(run.session.ArchivePath()));
}

bool IsArchiveName(const std::string& word)
{
    return EndsWithName(word, OnDisk::ExtensionArchive);
}

} // namespace

Exit RunNew(Run& run)
{
    Path file;
    if (!run.arguments.words.empty()) {
        if (!IsArchiveName(run.arguments.words.front()))
            return WrongUse("new", GetMsg(Msg::WrongArchiveName, {run.arguments.words.front()}));
        file = PlaceFromWord(run.arguments.words.front());
    }
    Path folder;
    if (run.arguments.Has("--folder")) {
        if (run.arguments.ValueOf("--folder").empty())
            return WrongUse("new", GetMsg(Msg::WrongValueMissing, {"--folder"}));
        folder = PlaceFromWord(run.arguments.ValueOf("--folder"));
    }
    if (!BeginWork(run, Needs::LevelEditor))
        return Exit::Failed;
    if (!file.empty() && FileExists(file)) {
        run.host.Tell(Tone::Error, GetMsg(Msg::ArchiveIsThere, {TextOf(file)}));
        return EndWork(run, false);
    }
    const bool made = CreateArchive(run.session, folder, file);
    if (made)
        ShowArchive(run);
    return EndWork(run, made);
}

Exit RunLoad(Run& run)
{
    const Path file = PlaceFromWord(run.arguments.words.front());
    Path folder;
    if (run.arguments.Has("--folder")) {
        if (run.arguments.ValueOf("--folder").empty())
            return WrongUse("load", GetMsg(Msg::WrongValueMissing, {"--folder"}));
        folder = PlaceFromWord(run.arguments.ValueOf("--folder"));
    }
    if (!BeginWork(run, Needs::LevelEditor))
        return Exit::Failed;
    if (!FileExists(file)) {
        run.host.Tell(Tone::Error, GetMsg(Msg::ArchiveGone, {TextOf(file)}));
        return EndWork(run, false);
    }
    const bool loaded = ReadArchive(run.session, file, folder);
    if (loaded)
        ShowArchive(run);
    return EndWork(run, loaded);
}

Exit RunRemove(Run& run)
{
    const auto code = CodeFromWord(run, run.arguments.words.front());
    if (!code)
        return Exit::WrongUse;
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    const bool keep = run.arguments.Has("--keep-files");
    return EndWork(run,
                   RemoveLevel(run.session, *code, keep ? LevelFolders::Keep : LevelFolders::Ask));
}

Exit RunSizes(Run& run)
{
    if (!BeginWork(run, Needs::Archive))
        return Exit::Failed;
    const bool measured = RecomputeArchiveSize(run.session, true);
    const ArchiveHeader& archive = run.session.archive.header;
    if (run.json != nullptr) {
        Json levels = Json::array();
        for (const LevelRecord& level : run.session.archive.levels)
            levels.push_back({{"code", level.levelCode},
                              {"filesSize", level.filesSize},
                              {"extrasSize", level.extrasSize}});
        *run.json = {{"mainFolderSize", archive.mainFolderSize},
                     {"secondaryFolderSize", archive.secondaryFolderSize},
                     {"levels", std::move(levels)}};
        return EndWork(run, measured);
    }
    for (const LevelRecord& level : run.session.archive.levels)
        AddLine(run,
                GetMsg(Msg::SizesLine, {ZeroPadded(level.levelCode, 4), FormatSize(level.filesSize),
                                        FormatSize(level.extrasSize), Trim(level.levelName)}));
    AddLine(run, GetMsg(Msg::SizesTotal,
                        {FormatSize(archive.mainFolderSize + archive.secondaryFolderSize)}));
    return EndWork(run, measured);
}

} // namespace kestrova
