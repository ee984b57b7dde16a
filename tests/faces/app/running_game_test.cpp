#include "app/command_table.h"
#include "app/run_command.h"
#include "archive/archive_saving.h"
#include "formats/archive_file.h"
#include "history/history.h"
#include "history/players_files.h"
#include "originals/vault.h"
#include "play/play_level.h"
#include "sandbox/faults.h"
#include "session/operation.h"
#include "session/preferences_file.h"
#include "world/world.h"

#include <gtest/gtest.h>
#include <set>

namespace kestrova::testing
{
namespace
{

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

/// A world in which the level "First" stands in the Level Editor's folder and has been played.
class Stage : public World
{
public:
    Stage()
    {
        MakeTrle();
        fs::remove(root / "trle/English.DAT");
        Write("trle/Italiano.dat", "testi italiani");
        MakeBackupAndArchive();
        AddLevel("First", {{"script.dat", "level script"},
                           {"English.dat", "english texts"},
                           {"readme.txt", "words"},
                           {"level1.tr4", "First"}});
        AddLevel("Second", {{"level2.tr4", "Second"}});
        host.AnswerAll(true);
        EXPECT_TRUE(SaveArchiveNow(session));
        EXPECT_TRUE(SavePreferencesNow(session.Folders(), session.preferences, session.settings));
        EXPECT_TRUE(PlayLevel(session, 1, false)) << host.AllTold();
        Write("trle/savegame.0", SavegameBytes("Start", 1));
        Write("in/new.tr4", "new");
        Write("in/savegame.0", SavegameBytes("Later", 2));
        Write("levels/LEVEL_0001/screenshots/shot.bmp", "picture");
        fs::create_directories(root / "out");
    }

    /// A word that begins with `@` is a place of the sandbox.
    bool Do(Words words, const CommandRow* row = nullptr)
    {
        for (std::string& word : words)
            if (word.starts_with("@"))
                word = (root / word.substr(1)).native();
        const Arguments arguments = ParseArguments(words, AllOptions());
        Run run{session, face, arguments};
        run.level = 2; // of a row that has no words: the chosen one
        if (run.FromWords()) {
            const CommandRow& first = *FindCommand(arguments.command);
            EXPECT_EQ(WrongWords(first, run), "");
            EXPECT_TRUE(row == nullptr || row == &RowOf(first, run)) << "another row's words";
            row = &RowOf(first, run);
        }
        list.Select(run.level);
        const Operation operation{session};
        return row->run(run);
    }

    /// What the player has and nobody may touch while a game runs.
    [[nodiscard]] std::vector<FileContents> All() const
    {
        return {Snapshot("trle"),
                Snapshot("home"),
                Snapshot("levels"),
                {{"list", FormatArchive({session.archive.header, session.archive.levels})}}};
    }

    /// The Level Editor's folder without the savegames, notes and shots, which belong to no row.
    [[nodiscard]] FileContents GameFiles() const
    {
        FileContents files = Snapshot("trle");
        std::erase_if(files, [](const auto& file) { return IsPlayersPlace(file.first); });
        return files;
    }

private:
    Face face;
};

std::string LevelsLanguage(Stage& stage)
{
    EXPECT_TRUE(stage.Do({"language", "set", "1"})) << stage.host.AllTold();
    return {};
}

std::string LevelsLanguageUndone(Stage& stage)
{
    LevelsLanguage(stage);
    EXPECT_TRUE(stage.Do({"undo"})) << stage.host.AllTold();
    return {};
}

std::string KeptSavegame(Stage& stage)
{
    EXPECT_TRUE(stage.Do({"saves", "import", "1", "@in"})) << stage.host.AllTold();
    const auto kept = ReadHistoryOf(stage.session.Folders(), 1).ValueOr({});
    return kept.empty() ? "none" : kept.front().id;
}

std::string KeptOriginalFile(Stage& stage)
{
    stage.Write("trle/mine.txt", "mine");
    EXPECT_TRUE(KeepOriginal(stage.machine, stage.session.Folders(), "mine.txt"));
    stage.Write("trle/mine.txt", "another");
    const auto kept = KeptFiles(stage.session.Folders()).ValueOr({});
    return kept.empty() ? "none" : kept.front().id;
}

std::string KilledSwap(Stage& stage)
{
    const auto swap = [](Stage& on) { return PlayLevel(on.session, 2, false); };
    Stage twin;
    const int calls = CountFileCalls([&] { return swap(twin); });
    EXPECT_TRUE(WithKillAt(calls / 2, [&] { return swap(stage); }).killed);
    return {};
}

std::string ArchivedSavegame(Stage& stage)
{
    EXPECT_TRUE(stage.Do({"saves", "archive", "1"})) << stage.host.AllTold();
    return {};
}

std::string WadPackage(Stage& stage)
{
    stage.Write("wads/new.wad", "a new wad");
    return "@wads";
}

std::string ImportedWads(Stage& stage)
{
    (void)stage.Do({"wads", "import", WadPackage(stage)}); // the scripts' compiler is missing
    return {};
}

/// How a row of the table is run so that it does what it can do.
struct Walked {
    std::string_view row;
    Words words{}; ///< none: as in the window, on the level "Second"
    /// What is done before; it answers the last word, where only that tells it.
    std::string (*before)(Stage&) = nullptr;
    bool does = true; ///< false: it may refuse, since not all that it needs is here
};

const Walked walk[] = {
    {"mnu_AddLevel", {"add", "@in/new.tr4"}},
    {"mnu_Property", {"edit", "1", "--add", "@in/new.tr4"}},
    {"mnu_New", {"new", "@home/other.kva", "--folder", "@out"}},
    {"mnu_Load", {"load", "@home/LevelArchive.kva"}},
    {"mnu_Save"},
    {"mnu_SaveAs", {}, nullptr, false},
    {"audio info", {"audio", "info", "@trle/Audio/000.wav", "--home", "@home"}, nullptr, false},
    {"mnu_DecodeMp3",
     {"audio", "decode", "@in", "--out", "@out", "--home", "@home"},
     nullptr,
     false},
    {"mnu_EncodeMp3",
     {"audio", "encode", "@in", "--out", "@out", "--home", "@home"},
     nullptr,
     false},
    {"mnu_ConvertWav",
     {"audio", "convert", "@in", "--format", "22050m16", "--out", "@out", "--home", "@home"},
     nullptr,
     false},
    {"config show", {"config", "show", "@in/new.tr4"}, nullptr, false},
    {"config write", {"config", "write", "@out/level.cfg", "name=Level"}, nullptr, false},
    {"config find", {"config", "find", "@in"}, nullptr, false},
    {"mnu_Doctor", {"doctor"}, nullptr, false},
    {"history", {"history"}},
    {"history bring-back", {"history", "bring-back"}, KeptSavegame, false},
    {"history bring-back when", {"history", "bring-back", "--to", "@out"}, KeptSavegame, false},
    {"history delete", {"history", "delete", "1"}, nullptr, false},
    {"history originals", {"history", "originals"}},
    {"history originals when", {"history", "originals", "bring-back"}, KeptOriginalFile},
    {"history originals when again", {"history", "originals", "delete"}, KeptOriginalFile},
    {"mnu_RemoveLevel", {"remove", "1"}},
    {"mnu_CalcolaSize", {"sizes"}},
    {"Pul_AutoreInfo", {"author", "1"}},
    {"author when", {"author", "1", "--name", "N"}},
    {"mnu_Export", {"export", "1", "@out/level.zip"}, nullptr, false},
    {"Pul_MoreInfo", {}, nullptr, false},
    {"levels", {"levels"}},
    {"info", {"info", "1"}},
    {"mark", {"mark", "1", "--status", "finished"}},
    {"fetch", {"fetch", "http://127.0.0.1:9/f", "@out/f"}, nullptr, false},
    {"mnu_ShowUrlList", {"urls", "list"}, nullptr, false},
    {"urls add", {"urls", "add", "1", "Name", "http://127.0.0.1:9/f"}, nullptr, false},
    {"urls change", {"urls", "change", "1", "Name", "http://127.0.0.1:9/f"}, nullptr, false},
    {"urls remove", {"urls", "remove", "1"}, nullptr, false},
    {"urls open", {"urls", "open", "1"}, nullptr, false},
    {"urls update", {"urls", "update"}, nullptr, false},
    {"urls make", {"urls", "make", "@in", "@out/list"}, nullptr, false},
    {"mnu_SetupUpload", {"publish", "@in", "@out/level.zip", "name=Level"}, nullptr, false},
    {"saves list", {"saves", "list", "1"}},
    {"mnu_StartSaveGameMan", {}, nullptr, false},
    {"mnu_ImportSavegame", {"saves", "import", "1", "@in"}},
    {"mnu_ExportSavegame", {"saves", "export", "1", "@out", "--delete"}},
    {"mnu_BackupSavegame", {"saves", "archive", "1"}},
    {"mnu_RestoreSavegames", {"saves", "restore", "1"}, ArchivedSavegame},
    {"mnu_SavegameHistory", {"saves", "history", "1"}},
    {"saves bring-back", {"saves", "bring-back", "1"}, KeptSavegame, false},
    {"mnu_Settings", {"set"}},
    {"set when", {"set", "capture", "on"}},
    {"mnu_PrefArchive", {"set", "compress", "on"}},
    {"practice", {"practice", "@out/practice"}, nullptr, false},
    {"setup", {"setup", "--trle", "@trle"}},
    {"mnu_FaiFullBackup", {"backup", "--refresh", "--folder-is-original"}, nullptr, false},
    {"shots list", {"shots", "list", "1"}},
    {"mnu_CopyScreenShots", {"shots", "import", "1"}, nullptr, false},
    {"mnu_CaptureScreen"},
    {"mnu_AddScreenshot", {"shots", "add", "1", "@in/new.tr4"}, nullptr, false},
    {"mnu_DeleteShot", {"shots", "delete", "1", "shot.bmp"}},
    {"mnu_RenameShot", {"shots", "rename", "1", "shot.bmp", "other"}},
    {"mnu_SaveShot", {"shots", "export", "1", "shot.bmp", "@out/shot.bmp"}},
    {"mnu_UseAsCover", {}, nullptr, false},
    {"mnu_CoverBack", {}, nullptr, false},
    {"Pul_Play", {"play", "2", "--no-start"}},
    {"current", {"current"}},
    {"mnu_SetOriginale", {"original"}},
    {"original when", {"original", "--full"}},
    {"plan", {"plan", "2"}},
    {"verify", {"verify"}},
    {"verify when", {"verify", "--repair"}, nullptr, false},
    {"mend", {"mend", "--home", "@home"}, KilledSwap},
    {"mnu_Undo", {"undo"}, LevelsLanguage},
    {"mnu_Redo", {"undo", "--redo"}, LevelsLanguageUndone},
    {"undo when", {"undo", "--list"}},
    {"recompress", {"recompress"}},
    {"mnu_SetMylanguage", {"language", "set", "1"}},
    {"mnu_RestoreLanguage", {"language", "restore", "1"}, LevelsLanguage},
    {"mnu_SetLanguageAll", {"language", "set", "--all"}},
    {"mnu_RestoreAll", {"language", "restore", "--all"}, LevelsLanguage},
    {"script show", {"script", "show", "@in/none.txt"}, nullptr, false},
    {"editor compile", {"editor", "compile", "@in/none.tom"}, nullptr, false},
    {"mnu_CompareTrle", {"editor", "compare", "@in", "@in"}},
    {"editor find", {"editor", "find"}},
    {"editor setup", {"editor", "setup", "--folder", "@in", "--to", "@out/trle"}, nullptr, false},
    {"editor restore", {"editor", "restore"}},
    {"file-types", {"file-types"}, nullptr, false},
    {"mnu_ImportWads", {"wads", "import"}, WadPackage, false},
    {"mnu_UndoImportWads", {"wads", "undo"}, ImportedWads},
    {"mnu_MoveArc", {"move", "@out/moved"}},
    {"mnu_Recover", {"recover", "@home/../levels"}},
    {"discs drives", {"discs", "drives"}},
    {"discs insert", {"discs", "insert", "1", "@in/none.iso"}, nullptr, false},
    {"discs eject", {"discs", "eject", "1"}, nullptr, false},
    {"discs list", {"discs", "list", "@in/none.iso"}, nullptr, false},
    {"discs blank", {"discs", "blank", "1", "all"}, nullptr, false},
    {"discs bring-back", {"discs", "bring-back"}},
    {"discs image", {"discs", "image", "@in/none.iso"}, nullptr, false},
    {"discs plan", {"discs", "plan"}, nullptr, false},
    {"discs create", {"discs", "create", "--images", "@out/none"}, nullptr, false},
    {"discs verify", {"discs", "verify"}, nullptr, false},
    {"discs install", {"discs", "install", "@in/none.kva", "@out"}, nullptr, false},
    {"mnu_ControllaUguali", {"equal"}},
    {"mnu_CreaInfoTr4", {"index"}},
    {"mnu_CopiaFileInfos", {"documents"}},
};

std::string WordsOf(const CommandRow& row)
{
    for (const std::string_view name : {row.window.control, row.window.button})
        if (!name.empty())
            return std::string{name};
    const InTerminal& said = row.terminal;
    return std::string{said.word}
        .append(said.verb.empty() ? "" : " ")
        .append(said.verb)
        .append(said.when == nullptr ? "" : " when");
}

/// Its name in the window, or its words; of rows with the same words the later one is named as
/// such.
std::string NameOf(const CommandRow& row)
{
    std::string name = WordsOf(row);
    for (const CommandRow& before : CommandTable()) {
        if (&before == &row)
            break;
        if (WordsOf(before) == name)
            name += " again";
    }
    return name;
}

const Walked* HowToRun(const CommandRow& row)
{
    const auto* found = std::find_if(std::begin(walk), std::end(walk), [&](const Walked& walked) {
        return walked.row == NameOf(row);
    });
    return found == std::end(walk) ? nullptr : found;
}

Words Prepare(Stage& stage, const Walked& walked)
{
    Words words = walked.words;
    if (walked.before != nullptr)
        if (const std::string last = walked.before(stage); !last.empty())
            words.push_back(last);
    return words;
}

/// `mend` opens the folders by itself, and changes the Level Editor's for a swap that was killed.
bool ChangesLevelEditor(const CommandRow& row)
{
    return row.touches == Touches::LevelEditor || row.terminal.word == "mend";
}

TEST(RunningGame, NoCommandChangesAnythingWhenThePlayerSaysNo)
{
    for (const CommandRow& row : CommandTable()) {
        const Walked* walked = HowToRun(row);
        if (walked == nullptr || !ChangesLevelEditor(row))
            continue;
        SCOPED_TRACE(NameOf(row));
        Stage stage;
        const Words words = Prepare(stage, *walked);
        const auto before = stage.All();
        stage.machine.running = {{77, "tomb4.exe"}};
        stage.host.AnswerAll(false);
        stage.host.told.clear();
        (void)stage.Do(words, &row);
        const auto after = stage.All();
        // The tool starts all the same, on the level's own store.
        const std::size_t places = row.window.control == "mnu_StartSaveGameMan" ? 1 : before.size();
        for (std::size_t i = 0; i < places; ++i)
            EXPECT_EQ(after[i], before[i]) << stage.host.AllTold();
    }
}

TEST(RunningGame, EveryCommandThatChangesTheFoldersFilesSaysSo)
{
    std::set<std::string> rows;
    for (const CommandRow& row : CommandTable()) {
        if (row.run == nullptr)
            continue;
        EXPECT_TRUE(rows.insert(NameOf(row)).second) << "two rows are called the same";
        SCOPED_TRACE(NameOf(row));
        const Walked* walked = HowToRun(row);
        ASSERT_NE(walked, nullptr) << "a new row needs its line in the walk";
        Stage stage;
        const Words words = Prepare(stage, *walked);
        const FileContents before = stage.GameFiles();
        stage.host.told.clear();
        const bool done = stage.Do(words, &row);
        EXPECT_TRUE(done || !walked->does) << stage.host.AllTold();
        EXPECT_EQ(stage.GameFiles() != before, ChangesLevelEditor(row)) << stage.host.AllTold();
    }
    EXPECT_EQ(rows.size(), std::size(walk)) << "a line of the walk is of no row";
}

} // namespace
} // namespace kestrova::testing
