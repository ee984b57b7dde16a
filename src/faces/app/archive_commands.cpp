#include "app/archive_commands.h"

#include "app/result_text.h"
#include "archive/archive_saving.h"
#include "formats/program_folder.h"
#include "session/telling.h"
#include "upkeep/load_archive.h"
#include "upkeep/new_archive.h"
#include "upkeep/save_archive_as.h"
#include "words/archive.h"
#include "words/commands.h"
#include "words/menus.h"

#include <nlohmann/json.hpp>

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

/// The folder of `--folder`; empty without it.
Path FolderOf(const Run& run)
{
    return run.arguments.Has("--folder") ? PlaceFromWord(run.arguments.ValueOf("--folder"))
                                         : Path{};
}

std::string WrongNew(Run& run)
{
    const auto& words = run.arguments.words;
    if (words.empty() || IsArchiveName(words.front()))
        return {};
    return GetMsg(Msg::WrongArchiveName, {words.front()});
}

bool NewFromWords(Run& run)
{
    Path file;
    if (!run.arguments.words.empty())
        file = PlaceFromWord(run.arguments.words.front());
    if (!file.empty() && FileExists(file)) {
        run.session.host.Tell(Tone::Error, GetMsg(Msg::ArchiveIsThere, {TextOf(file)}));
        return false;
    }
    const bool made = CreateArchive(run.session, FolderOf(run), file);
    if (made)
        ShowArchive(run);
    return made;
}

bool New(Run& run)
{
    if (run.FromWords())
        return NewFromWords(run);
    Session& session = run.session;
    const bool had = session.archive.Loaded();
    if (CreateArchive(session))
        return true;
    if (session.archive.Loaded() || !had)
        return false;
    // The list in memory belongs to no file now; nobody has to look for the old one.
    const std::string name = TextOf(session.RememberedArchive().filename());
    if (session.host.AskYesNo(GetMsg(Msg::AskBackToArchive, {name}), Consent::YesKeeps))
        (void)ReadLastArchive(session); // it tells why when it cannot
    return false;
}

bool LoadArchive(Run& run)
{
    if (!run.FromWords())
        return AskLoadArchive(run.session);
    const Path file = PlaceFromWord(run.arguments.words.front());
    if (!FileExists(file)) {
        run.session.host.Tell(Tone::Error, GetMsg(Msg::ArchiveGone, {TextOf(file)}));
        return false;
    }
    const bool loaded = ReadArchive(run.session, file, FolderOf(run));
    if (loaded)
        ShowArchive(run);
    return loaded;
}

bool SaveNow(Run& run)
{
    Session& session = run.session;
    if (!HasArchive(session.host, session.archive))
        return false;
    const auto written = WriteArchive(session, session.ArchivePath());
    if (written)
        run.face.Note(GetMsg(Msg::ArchiveSaved));
    else
        TellFailure(session.host, GetMsg(Msg::ErrorSavingArchive) + TextOf(session.ArchivePath()),
                    written.Error());
    return static_cast<bool>(written);
}

bool SaveAs(Run& run)
{
    return AskSaveArchiveAs(run.session);
}

} // namespace

std::span<const CommandRow> ArchiveCommands()
{
    static const CommandRow rows[] = {
        {.window =
             {.control = "mnu_New", .caption = Msg::MenuNew, .keys = "Ctrl+N", .menu = "mnu_File"},
         .terminal = {.word = "new",
                      .usage = Msg::UseNew,
                      .summary = Msg::SumNew,
                      .json = Msg::KeysNew,
                      .mostWords = 1,
                      .options = {PlaceOption("--folder")},
                      .wrong = WrongNew},
         .needs = Needs::LevelEditor,
         .touches = Touches::Stores,
         .run = New},
        {.window = {.control = "mnu_Load",
                    .caption = Msg::MenuLoad,
                    .keys = "Ctrl+O",
                    .menu = "mnu_File"},
         .terminal = {.word = "load",
                      .usage = Msg::UseLoad,
                      .summary = Msg::SumLoad,
                      .json = Msg::KeysNew,
                      .leastWords = 1,
                      .mostWords = 1,
                      .options = {PlaceOption("--folder")}},
         .needs = Needs::LevelEditor,
         .touches = Touches::Stores,
         .run = LoadArchive},
        {.window = {.control = "mnu_Save",
                    .caption = Msg::MenuSave,
                    .keys = "Ctrl+S",
                    .menu = "mnu_File"},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = SaveNow},
        {.window = {.control = "mnu_SaveAs",
                    .caption = Msg::MenuSaveAs,
                    .keys = "Ctrl+Shift+S",
                    .menu = "mnu_File"},
         .needs = Needs::Archive,
         .touches = Touches::Stores,
         .run = SaveAs},
        {.window = {.control = "Mnu_Exit",
                    .caption = Msg::MenuExit,
                    .keys = "Ctrl+Q",
                    .menu = "mnu_File"}},
    };
    return rows;
}

} // namespace kestrova
