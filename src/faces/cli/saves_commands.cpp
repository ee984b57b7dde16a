#include "cli/saves_commands.h"

// A level's savegames: what is live, what its archive holds, what was kept.
#include "archive/level_folders.h"
#include "cli/history_command.h"
#include "cli/work.h"
#include "core/dates.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/savegame_info.h"
#include "formats/trle_folder.h"
#include "saves/savegame_list.h"
#include "saves/savegame_store.h"
#include "words/cli.h"
#include "words/intake.h"
#include "words/saves.h"
#include "words/swap.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool AddSavegames(Run& run, const Path& folder, const std::string& place)
{
    const auto files = ListFiles(folder, OnDisk::SavegamePattern);
    if (!files)
        return TellFolderNotRead(run.session, files.Error());
    for (const Path& file : *files) {
        const platform::FileFacts facts = platform::FactsOf(file);
        const SavegameInfo info = ReadSavegameInfo(file);
        if (run.json != nullptr)
            run.json->push_back({{"place", place},
                                 {"name", Readable(file.filename().native())},
                                 {"number", info.number},
                                 {"title", Readable(info.title)},
                                 {"size", facts.size},
                                 {"modified", DateText(facts.modifiedNs)}});
        else
            AddLine(run, place + "\t" + file.filename().native() + "\t" + SavegameRow(file));
    }
    return true;
}

Exit ListSaves(Run& run, LevelCode code)
{
    if (!HasArchiveFolder(run, code))
        return Exit::Failed;
    if (run.json != nullptr)
        *run.json = Json::array();
    const auto live = CurrentSlotsFolder(run.session, code);
    if (!live) {
        TellFailure(run.session, GetMsg(Msg::CannotListSavegames), live.Error());
        return Exit::Failed;
    }
    if (!AddSavegames(run, *live, GetMsg(Msg::SavesLive)))
        return Exit::Failed;
    const Path root = InFolder(LevelHomeOf(run.session, code), OnDisk::DirSavegames);
    for (int number = 1;; ++number) {
        const std::string slot = std::string{OnDisk::SlotPrefix} + std::to_string(number);
        if (!FolderExists(root / slot))
            return Exit::Done;
        if (!AddSavegames(run, root / slot, slot))
            return Exit::Failed;
    }
}

Exit ListKept(Run& run, LevelCode code)
{
    if (run.json != nullptr)
        *run.json = Json::array();
    return AddHistory(run, code) ? Exit::Done : Exit::Failed;
}

bool ImportFrom(Session& session, const Path& folder)
{
    SavegameList list{session, ListPurpose::Import};
    return list.Prepare(folder) && list.Import(list.Files());
}

bool ExportTo(Session& session, const Path& folder, bool deleteExported)
{
    SavegameList list{session, ListPurpose::Export};
    return list.Prepare() && list.Export(list.Files(), folder, deleteExported);
}

bool Work(Run& run, LevelCode code)
{
    const auto& words = run.arguments.words;
    const std::string& verb = words.front();
    Session& session = run.session;
    if (verb == "archive")
        return ArchiveWithWords(session, BoxWords::OfWork);
    if (verb == "restore")
        return RestoreWithWords(session, BoxWords::OfWork);
    if (verb == "bring-back")
        return BringBackTold(run, code, words[2]);
    const Path folder = PlaceFromWord(words[2]);
    const auto isThere = IsFolder(folder);
    if (!isThere)
        return TellFolderNotRead(session, isThere.Error());
    if (!*isThere) {
        run.host.Tell(Tone::Error, GetMsg(Msg::SourceMissing, {TextOf(folder)}));
        return false;
    }
    const bool done = verb == "import" ? ImportFrom(session, folder)
                                       : ExportTo(session, folder, run.arguments.Has("--delete"));
    return done && !run.host.ToldError();
}

struct Verb {
    std::string_view name;
    std::size_t words;
    bool looks; ///< changes nothing, and has a result
};
constexpr Verb verbs[] = {{"list", 2, true},       {"archive", 2, false}, {"restore", 2, false},
                          {"import", 3, false},    {"export", 3, false},  {"history", 2, true},
                          {"bring-back", 3, false}};

} // namespace

Exit RunSaves(Run& run)
{
    const auto& words = run.arguments.words;
    const auto verb = std::find_if(std::begin(verbs), std::end(verbs),
                                   [&](const Verb& row) { return row.name == words.front(); });
    if (verb == std::end(verbs))
        return WrongUse("saves", GetMsg(Msg::WrongWordTooMany, {words.front()}));
    if (words.size() < verb->words)
        return WrongUse("saves", GetMsg(Msg::WrongWordMissing, {"saves"}));
    if (words.size() > verb->words)
        return WrongUse("saves", GetMsg(Msg::WrongWordTooMany, {words[verb->words]}));
    if (run.json != nullptr && !verb->looks)
        return WrongUse("saves", GetMsg(Msg::WrongOptionHere, {"--json", words.front()}));
    if (run.arguments.Has("--delete") && verb->name != "export")
        return WrongUse("saves", GetMsg(Msg::WrongOptionHere, {"--delete", words.front()}));
    const auto code = CodeFromWord(run, words[1]);
    if (!code)
        return Exit::WrongUse;
    if (!(verb->looks ? BeginLooking(run, Needs::Archive) : BeginWork(run, Needs::Archive)))
        return Exit::Failed;
    const bool known = FindLevel(run.session, *code) >= 0;
    if (!known)
        run.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(*code)}));
    if (verb->looks)
        return !known               ? Exit::Failed
               : words[0] == "list" ? ListSaves(run, *code)
                                    : ListKept(run, *code);
    run.session.list.Select(*code);
    return EndWork(run, known && Work(run, *code));
}

} // namespace kestrova
