#include "app/first_start.h"
#include "app/init_program.h"
#include "app/start_up.h"
#include "archive/archive_saving.h"
#include "editor/find_trle.h"
#include "session/preferences_file.h"
#include "world/world.h"

#include <functional>
#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

/// Answers what the start's own windows would.
class Windows : public StartWindows
{
public:
    Path trle; ///< what the person chooses; empty: nothing
    ArchiveChoice choice = ArchiveChoice::New;
    std::vector<std::string> shown;

    Path levels; ///< what is chosen on the page; empty: the person leaves it
    bool original = true;
    Path given; ///< what the page proposed for the levels
    bool ShowFirstStart(Session&, FirstStart& page) override
    {
        shown.emplace_back("page");
        given = page.Choices().levels;
        if (levels.empty())
            return false;
        page.SetTrle(trle.native());
        page.SetOriginal(original);
        if (given.extension() != ".kva")
            page.SetLevels(levels.native());
        return page.CanStart() && page.Begin();
    }
    bool FindLevelEditor(Session& session) override
    {
        shown.emplace_back("find");
        TrleFinder finder{session};
        return !trle.empty() && finder.Take(trle) && finder.Accept();
    }
    std::optional<Path> setUp; ///< what a setup makes; none: it fails
    bool SetUpLevelEditor(Session& session, const Path& source) override
    {
        shown.push_back("set up from " + source.filename().native());
        TrleFinder finder{session};
        return setUp && finder.Take(*setUp) && finder.Accept();
    }
    ArchiveChoice AskNewOrLoad(Session&) override
    {
        shown.emplace_back("archive");
        return choice;
    }
};

/// Looks at the disk while something is told.
class LookingHost : public ScriptedHost
{
public:
    std::function<void()> look = [] {};
    void Tell(Tone tone, const std::string& text, const std::string& reason,
              const std::string& more) override
    {
        look();
        ScriptedHost::Tell(tone, text, reason, more);
    }
};

class StartUp : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.session.preferences = DefaultPreferences();
        box.session.archive.header = {};
    }
    /// A first start that ends with a new archive in `levels`.
    void StartFirst()
    {
        windows.trle = box / "trle";
        windows.levels = box / "levels";
        ASSERT_TRUE(InitProgram(box.session, windows, {})) << box.host.AllTold();
    }
    /// What a new start of the program sees; the locks of the first are gone.
    bool StartAgain(const std::vector<std::string>& arguments = {})
    {
        EXPECT_TRUE(SavePreferencesNow(box.session.Folders(), box.session.preferences,
                                       box.session.settings));
        box.session.locks = {};
        box.session.preferences = DefaultPreferences();
        windows.shown.clear();
        return InitProgram(box.session, windows, arguments);
    }

    World box;
    Windows windows;
};

TEST_F(StartUp, TheFirstStartIsOnePageAndTheSecondAsksNothing)
{
    StartFirst();
    EXPECT_EQ(windows.shown, std::vector<std::string>{"page"});
    EXPECT_TRUE(box.Has("home/backup_trle/DATA/tut1.tr4"));
    EXPECT_TRUE(box.Has("home/LEVEL_0000"));
    ASSERT_EQ(box.session.archive.levels.size(), 1U);
    EXPECT_EQ(box.session.ArchivePath(), box / "home/LevelArchive.kva");

    ASSERT_TRUE(StartAgain()) << box.host.AllTold();
    EXPECT_TRUE(windows.shown.empty());
    EXPECT_TRUE(box.session.preferences.fullBackup);
    EXPECT_EQ(box.session.TrleFolder(), box / "trle");
    EXPECT_EQ(box.session.archive.levels.size(), 1U);
}

TEST_F(StartUp, WithoutALevelEditorItStopsWithNoArchive)
{
    ASSERT_TRUE(InitProgram(box.session, windows, {}));
    EXPECT_EQ(windows.shown, std::vector<std::string>{"page"});
    EXPECT_TRUE(box.session.archive.levels.empty());
    EXPECT_FALSE(box.Has("home/backup_trle"));

    // Where an archive is remembered, its file is not touched by what follows.
    StartFirst();
    const std::string archive = box.Read("home/LevelArchive.kva");
    box.session.preferences.trlePath.clear();
    windows.trle.clear();
    ASSERT_TRUE(StartAgain());
    EXPECT_FALSE(box.session.archive.Loaded());
    EXPECT_EQ(box.session.RememberedArchive(), box / "home/LevelArchive.kva");
    EXPECT_FALSE(SaveArchiveNow(box.session));
    EXPECT_TRUE(box.host.WasTold("Missing archive!"));
    WritePreferences(box.session);
    EXPECT_EQ(box.Read("home/LevelArchive.kva"), archive);
}

TEST_F(StartUp, TheEndLosesNoChangeOfTheListThatNobodyGaveUp)
{
    StartFirst();
    const auto change = [&](const char* note) {
        box.session.preferences.autoSave = false;
        box.session.archive.levels[0].levelNote = note;
        SaveArchive(box.session);
    };
    change("first");
    // What cannot be saved is not lost by the way.
    box.session.archive.file = box / "none/a.kva";
    box.host.WillAsk("has been changed", true);
    box.host.WillAsk("could not be saved. Do you want to give them up", false);
    EXPECT_FALSE(WritePreferences(box.session));
    EXPECT_TRUE(box.session.archive.dirty);
    EXPECT_FALSE(WriteAllNow(box.session));
    box.session.archive.file = box / "home/LevelArchive.kva";

    box.host.told.clear();
    EXPECT_TRUE(WriteAllNow(box.session));
    EXPECT_TRUE(box.host.told.empty());
    EXPECT_FALSE(box.session.archive.dirty);
    ASSERT_TRUE(StartAgain()) << box.host.AllTold();
    EXPECT_EQ(box.session.archive.levels[0].levelNote, "first");

    change("second");
    box.host.WillAsk("has been changed", false);
    EXPECT_TRUE(WritePreferences(box.session));
    EXPECT_TRUE(WriteAllNow(box.session));
    ASSERT_TRUE(StartAgain()) << box.host.AllTold();
    EXPECT_EQ(box.session.archive.levels[0].levelNote, "first") << "given up is given up";
}

TEST_F(StartUp, ABackupThatIsRefusedDoesNotStopTheStart)
{
    windows.trle = box / "trle";
    windows.levels = box / "levels";
    windows.original = false;
    box.host.WillAsk("is original?", false);
    box.host.WillAsk("go on without one?", true);
    ASSERT_TRUE(InitProgram(box.session, windows, {}));
    EXPECT_FALSE(box.Has("home/backup_trle"));
    EXPECT_EQ(box.session.archive.levels.size(), 1U);

    // At a later start it is the question that it always was.
    box.host.WillAsk("is original?", true);
    box.host.WillAsk("full backup", false);
    ASSERT_TRUE(StartAgain()) << box.host.AllTold();
    EXPECT_TRUE(windows.shown.empty());
    EXPECT_TRUE(box.Has("home/backup_trle/data/tut1.tr4"));
}

TEST_F(StartUp, WithAnEditorButNoArchiveTheQuestionsStay)
{
    StartFirst();
    box.session.preferences.archivePath.clear();
    box.host.WillChoose("Select main folder", box / "more");
    ASSERT_TRUE(StartAgain()) << box.host.AllTold();
    EXPECT_EQ(windows.shown, std::vector<std::string>{"archive"});
    EXPECT_EQ(box.session.ArchivePath(), box / "home/LevelArchive2.kva");
}

TEST_F(StartUp, AnArchiveThatTheFirstStartIsGivenStandsOnThePage)
{
    StartFirst();
    std::filesystem::rename(box / "home/LevelArchive.kva", box / "old.kva");
    std::filesystem::remove(box / "home/Kestrova.prf");
    box.session.locks = {};
    box.session.preferences = DefaultPreferences();
    windows.shown.clear();
    const std::string given = (box / "old.kva").native();
    ASSERT_TRUE(InitProgram(box.session, windows, {given})) << box.host.AllTold();
    EXPECT_EQ(windows.shown, std::vector<std::string>{"page"});
    EXPECT_EQ(windows.given, given);
    EXPECT_EQ(box.session.ArchivePath(), given);
    ASSERT_TRUE(StartAgain()) << box.host.AllTold();
    EXPECT_EQ(box.session.ArchivePath(), given) << "it is remembered";
}

TEST_F(StartUp, AnArchiveThatIsGoneOrDamagedIsNamedAndTheStartGoesOn)
{
    StartFirst();
    windows.choice = StartWindows::ArchiveChoice::Load;
    for (const bool damaged : {false, true}) {
        SCOPED_TRACE(damaged);
        box.session.preferences.archivePath = (box / "home/other.kva").native();
        if (damaged)
            box.Write("home/other.kva", "no archive");
        box.host.told.clear();
        box.host.WillChoose("Load Tomb Raider Level Archive", box / "home/LevelArchive.kva");
        ASSERT_TRUE(StartAgain());
        EXPECT_TRUE(box.host.WasTold(damaged ? "Error loading last archive: "
                                             : "Last archive not found: "));
        EXPECT_EQ(box.host.told.size(), 1U) << "one box: " << box.host.AllTold();
        EXPECT_TRUE(box.host.WasTold(damaged ? "Put a copy of this file in its place"
                                             : "Once it is there again"))
            << "what to do: " << box.host.AllTold();
        EXPECT_EQ(box.session.ArchivePath(), box / "home/LevelArchive.kva");
        EXPECT_EQ(box.session.archive.levels.size(), 1U);
    }
    // A folder that is gone is asked for; without an answer nothing is loaded, and nothing
    // forgotten.
    std::filesystem::rename(box / "levels", box / "unplugged");
    box.host.WillChoose("Select folder", std::nullopt);
    box.host.WillAsk("Do you want load a different archive?", false);
    ASSERT_TRUE(StartAgain());
    EXPECT_FALSE(box.session.archive.Loaded());
    EXPECT_EQ(box.session.RememberedArchive(), box / "home/LevelArchive.kva");
}

TEST_F(StartUp, AnArchiveThatCannotBeOpenedIsNeverTheRememberedOne)
{
    StartFirst();
    box.Write("home/other.kva", "no archive");
    // A program that is killed while the box about it stands has the archive from before.
    LookingHost host;
    host.look = [&] {
        EXPECT_NE(box.Read("home/Kestrova.prf").find("LevelArchive.kva"), std::string::npos);
        EXPECT_EQ(box.Read("home/Kestrova.prf").find("other.kva"), std::string::npos);
    };
    for (const char* bad : {"home/other.kva", "home/none.kva"}) {
        box.session.locks = {};
        Session session{host, box.machine, box.list, box.session.programFolder};
        host.told.clear();
        ASSERT_TRUE(InitProgram(session, windows, {(box / bad).native()})) << host.AllTold();
        EXPECT_EQ(host.told.size(), 1U) << bad << host.AllTold();
        EXPECT_EQ(session.ArchivePath(), box / "home/LevelArchive.kva") << "it is opened instead";
    }
}

TEST_F(StartUp, AnArchiveOfTheCommandLineReplacesTheLastOne)
{
    StartFirst();
    box.Write("home/second.kva", box.Read("home/LevelArchive.kva"));
    ASSERT_TRUE(StartAgain({(box / "home/second.KVA").native()})) << box.host.AllTold();
    EXPECT_EQ(box.session.archive.levels.size(), 1U);
    EXPECT_EQ(ResolvePath(box.session.ArchivePath()), box / "home/second.kva");
}

TEST_F(StartUp, TheSecondProgramOnAFolderNamesTheFirstAndReadersNeedNotWait)
{
    StartFirst();
    ASSERT_TRUE(
        SavePreferencesNow(box.session.Folders(), box.session.preferences, box.session.settings));
    const auto before = box.Snapshot("home");
    for (const std::string home : {"home", "home2"}) {
        // The second one comes from another program's folder to the same Level Editor's folder.
        if (home == "home2")
            box.Write("home2/Kestrova.prf", box.Read("home/Kestrova.prf"));
        Session other{box.host, box.machine, box.list, box / home};
        bool firstRun = false;
        box.host.told.clear();
        EXPECT_FALSE(OpenSession(other, true, firstRun));
        EXPECT_TRUE(box.host.WasTold("process ")) << box.host.AllTold();
        EXPECT_TRUE(box.host.WasTold(home == "home" ? "/home" : "/trle"));
    }
    Session reader{box.host, box.machine, box.list, box / "home"};
    bool firstRun = true;
    EXPECT_TRUE(OpenSession(reader, false, firstRun));
    EXPECT_FALSE(firstRun);
    EXPECT_TRUE(static_cast<bool>(LoadArchiveToLook(reader)));
    EXPECT_EQ(reader.archive.levels.size(), 1U);
    EXPECT_EQ(box.Snapshot("home"), before);
}

TEST_F(StartUp, DamagedPreferencesAreToldOnceAndKeptAndWhatCanBeReadCounts)
{
    StartFirst();
    ASSERT_TRUE(
        SavePreferencesNow(box.session.Folders(), box.session.preferences, box.session.settings));
    const std::string whole = box.Read("home/Kestrova.prf");
    const std::string archive = box.session.preferences.archivePath;
    box.session.locks = {};
    std::string random(whole.size(), '\0');
    for (std::size_t i = 0; i < random.size(); ++i)
        random[i] = static_cast<char>(1 + i * 97 % 255);
    const struct {
        const char* what;
        std::string bytes;
        std::string archive;
        std::string trle;
    } rows[] = {
        {"random bytes", random, "", ""},
        {"zeros", std::string(whole.size(), '\0'), "", ""},
        {"cut in half", whole.substr(0, 400), archive, ""},
        {"a folder with an escape", std::string{whole}.replace(266, 5, "\x1B[31m"), archive, ""},
    };
    int copies = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        box.Write("home/Kestrova.prf", row.bytes);
        for (const bool again : {false, true}) {
            Session other{box.host, box.machine, box.list, box / "home"};
            bool firstRun = true;
            box.host.told.clear();
            ASSERT_TRUE(OpenSession(other, true, firstRun)) << box.host.AllTold();
            EXPECT_FALSE(firstRun);
            EXPECT_EQ(box.host.WasTold("preferences are damaged"), !again) << box.host.AllTold();
            EXPECT_EQ(other.preferences.archivePath, row.archive);
            EXPECT_EQ(other.preferences.trlePath, row.trle);
            EXPECT_EQ(other.preferences.tombExeName, "tomb4.exe");
            EXPECT_TRUE(other.preferences.autoSave);
        }
        EXPECT_EQ(box.Read("home/Kestrova.prf." + std::to_string(++copies)), row.bytes);
        EXPECT_EQ(box.Read("home/Kestrova.prf").size(), whole.size());
    }
    // Settings that make no sense are not written over either.
    box.Write("home/Kestrova.prf", whole);
    box.Write("home/kestrova.ini", std::string("\1\2no settings\0", 14));
    Session other{box.host, box.machine, box.list, box / "home"};
    bool firstRun = true;
    box.host.told.clear();
    ASSERT_TRUE(OpenSession(other, true, firstRun));
    EXPECT_TRUE(box.host.WasTold("kestrova.ini.1")) << box.host.AllTold();
    EXPECT_EQ(other.preferences.archivePath, archive);
}

TEST_F(StartUp, AFolderWithAnOddNameIsNoDamage)
{
    StartFirst();
    box.session.preferences.archivePath = (box / "two\nlines.kva").native();
    ASSERT_TRUE(
        SavePreferencesNow(box.session.Folders(), box.session.preferences, box.session.settings));
    box.session.locks = {};
    Session other{box.host, box.machine, box.list, box / "home"};
    bool firstRun = true;
    ASSERT_TRUE(OpenSession(other, true, firstRun)) << box.host.AllTold();
    EXPECT_FALSE(box.host.WasTold("damaged")) << box.host.AllTold();
    EXPECT_EQ(other.preferences.archivePath, (box / "two\nlines.kva").native());
}

TEST_F(StartUp, LookingAtADamagedArchiveGivesAnEmptyOne)
{
    box.MakeBackupAndArchive();
    const std::string whole = box.Read("home/LevelArchive.kva");
    for (const std::string& bytes : {whole.substr(0, whole.size() - 1), std::string{"x"}}) {
        box.Write("home/LevelArchive.kva", bytes);
        EXPECT_FALSE(static_cast<bool>(LoadArchiveToLook(box.session)));
        EXPECT_TRUE(box.session.archive.levels.empty());
    }
}

TEST(ProgramFolder, IsTheGivenOneWithAllFoldersAboveIt)
{
    const World box;
    const auto folder = ChooseProgramFolder(box / "a/b/../c/");
    ASSERT_TRUE(folder);
    EXPECT_EQ(*folder, box / "a/c");
    EXPECT_TRUE(box.Has("a/c"));
    EXPECT_TRUE(ChooseProgramFolder(box / "d", false));
    EXPECT_FALSE(box.Has("d"));
    box.Write("file", "");
    EXPECT_FALSE(ChooseProgramFolder(box / "file/below"));
}

TEST(CommandLineItems, GiveArchiveAndLevelEditor)
{
    const CommandLine both = ParseCommandLine({"/a/One.kva", "word", "/cd/TRLE/", "/b/two.KVA"});
    EXPECT_EQ(both.archive, "/b/two.KVA"); // the later wins
    EXPECT_EQ(both.trle, "/cd/TRLE");
    const CommandLine ended = ParseCommandLine({"/x/trle", "", "/a.kva"});
    EXPECT_EQ(ended.trle, "/x/trle");
    EXPECT_TRUE(ended.archive.empty());
    EXPECT_TRUE(ParseCommandLine({"/x/trle.old", "/kva"}).trle.empty());
}

TEST_F(StartUp, ASetupThatTheCommandLineAsksForComesFirst)
{
    StartFirst();
    std::filesystem::create_directories(box / "disc/TRLE");
    const std::string source = (box / "disc/TRLE").native();
    EXPECT_FALSE(StartAgain({source})) << "the program ends when it fails";
    EXPECT_TRUE(box.host.WasTold("Failed trle setup from folder"));
    EXPECT_EQ(windows.shown, std::vector<std::string>{"set up from TRLE"});
    EXPECT_EQ(box.session.TrleFolder(), box / "trle");
    windows.setUp = box / "trle";
    EXPECT_TRUE(StartAgain({source})) << box.host.AllTold();
    EXPECT_EQ(windows.shown, std::vector<std::string>{"set up from TRLE"});
    EXPECT_TRUE(box.session.archive.Loaded());
}

} // namespace
} // namespace kestrova::testing
