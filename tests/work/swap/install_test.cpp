#include "swap/install.h"

#include "history/history.h"
#include "history/standing.h"
#include "storage/zl_file.h"
#include "swap/swap_preview.h"
#include "swap/swap_world.h"

namespace kestrova::testing
{

TEST(InstallLevel, BringsFilesAndStateAndWritesTheMarkerByteForByte)
{
    SwapWorld world;
    ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();

    EXPECT_EQ(world.Read("trle/Kestrva.txt"),
              ": Don't remove this file!\r\n"
              ": It is necessary at Kestrova \r\n"
              ": to know current configuration in TRLE\r\n"
              " \r\n"
              "#LEVEL_CODE=0001#\r\n"
              "#LEVEL_NAME=The First#\r\n"
              "#OVERWROTEN_FILES=\\english.dat|\\script.dat|\\LOAD.bmp|\\data\\title.tr4|"
              "\\audio\\003.wav#\r\n"
              "#COPIED_FILES=\\english.dat|\\script.dat|\\LOAD.bmp|\\data\\first.TR4|"
              "\\data\\title.tr4|\\audio\\003.wav#\r\n");
    // An overwrite keeps the spelling that stands; a new file has its own.
    EXPECT_EQ(world.Read("trle/Script.dat"), "first script");
    EXPECT_EQ(world.Read("trle/DATA/Title.tr4"), "first title");
    EXPECT_EQ(world.Read("trle/DATA/first.TR4"), "first level");
    EXPECT_EQ(world.Read("trle/Audio/003.wav"), "first wave");
    EXPECT_FALSE(world.Has("trle/readme.txt"));
    EXPECT_EQ(world.Read("trle/savegame.0"), SavegameBytes("First", 5));
    EXPECT_EQ(world.Read("trle/shot0.jpg"), "first shot");
    EXPECT_FALSE(world.Has("trle/savegame.12"));
    EXPECT_EQ(world.Read("home/LEVEL_0000/backup_savegames/savegame.12"),
              SavegameBytes("Original late", 9));
    EXPECT_FALSE(world.Has("home/swap/journal"));
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), world.first);
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
}

TEST(InstallLevel, WalksThroughLevelsAndBackWithoutATrace)
{
    SwapWorld world;
    const auto original = world.Snapshot("trle");
    world.PlayFirst();
    ASSERT_TRUE(InstallLevel(world.session, world.second));

    // Another language comes: the installed one goes, and comes back with the originals.
    EXPECT_FALSE(world.Has("trle/English.DAT"));
    EXPECT_NE(world.Read("trle/Kestrva.txt").find("#OVERWROTEN_FILES=\\script.dat|\\English.DAT#"),
              std::string::npos)
        << world.Read("trle/Kestrva.txt");
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.4"),
              SavegameBytes("First new", 8));
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.0"),
              SavegameBytes("First later", 6));
    // The replaced state of the store is not lost.
    ASSERT_EQ(HistoryOf(world.session.Folders(), world.first).size(), 1U);
    EXPECT_EQ(HistoryOf(world.session.Folders(), world.first)[0].number, 5);
    EXPECT_EQ(HistoryOf(world.session.Folders(), world.first)[0].title, "First");

    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    auto back = world.Snapshot("trle");
    EXPECT_EQ(back.erase("shot4.bmp"), 1U); // no pattern of a swap: it stays where the game put it
    EXPECT_EQ(back, original);
    world.ExpectOriginal();
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
}

TEST(InstallLevel, DoesNothingAtAllForTheLevelThatStandsThere)
{
    SwapWorld world;
    world.PlayFirst();
    const auto before = world.Snapshot("");
    EXPECT_TRUE(InstallLevel(world.session, world.first));
    EXPECT_EQ(world.Snapshot(""), before);
}

TEST(InstallLevel, LeavesSoundsWhenTheBackupIsCompact)
{
    SwapWorld world;
    world.session.preferences.fullBackup = false;
    world.session.preferences.writeLogFiles = true;
    std::filesystem::remove_all(world / "home/backup_trle/Audio");
    ASSERT_TRUE(InstallLevel(world.session, world.first));
    // The sound that no backup holds is kept before a level replaces it.
    EXPECT_EQ(world.Read("home/history/originals/audio/003.wav"), "wave 3");
    ASSERT_TRUE(InstallLevel(world.session, world.second));
    EXPECT_EQ(world.Read("trle/Audio/003.wav"), "first wave");
    EXPECT_FALSE(world.Has("trle/DATA/first.TR4"));
    const std::string log = world.Read("home/LevelLog_001.txt");
    EXPECT_NE(log.find("File '\\audio\\003.wav' not removed because backup is not full\r\n"),
              std::string::npos)
        << log;
    EXPECT_NE(log.find("PREVIOUS LEVEL: The First :CODE= 1\r\n"), std::string::npos);
    EXPECT_TRUE(log.starts_with("*** SET LEVEL: Il Secondo : CODE=2 ***\r\n"));
    EXPECT_NE(log.find("DELETE DIR \"*.*\" -> "), std::string::npos);
    EXPECT_NE(log.find(" [OK] [OVERWRITE]\r\n"), std::string::npos);
}

TEST(InstallLevel, ProvesEverythingBeforeItChangesAnything)
{
    SwapWorld world;
    world.PlayFirst();
    const std::string stream = CompressZlBytes(std::string(5000, 'x'));
    const struct {
        const char* what;
        const char* words;
        std::function<void()> harm;
    } cases[] = {
        {"a damaged stream", "Error decompressing files",
         [&] {
             world.Write("levels/LEVEL_0002/files/big.tr4.zl", stream.substr(0, stream.size() / 2));
         }},
        {"no room", "not enough free space",
         [&] {
             world.Write("levels/LEVEL_0002/files/big.tr4.zl", stream);
             world.machine.free = 1000;
         }},
        {"the source is gone", "not where the archive keeps them",
         [&] {
             world.machine.free = UINT64_C(1) << 40;
             std::filesystem::remove_all(world / "levels/LEVEL_0002/files");
         }},
        {"it lies on a disc", "Cd not available",
         [&] { world.session.archive.levels[2].cdNumber = 1; }},
    };
    for (const auto& fault : cases) {
        fault.harm();
        world.host.told.clear();
        const auto before = world.Snapshot("trle");
        EXPECT_FALSE(InstallLevel(world.session, world.second)) << fault.what;
        EXPECT_TRUE(world.host.WasTold(fault.words)) << fault.what << ": " << world.host.AllTold();
        EXPECT_EQ(world.Snapshot("trle"), before) << fault.what;
        EXPECT_FALSE(world.Has("trle/.kv~ready"));
        EXPECT_FALSE(world.Has("home/swap/journal"));
    }
    world.session.preferences.trlePath = (world / "nowhere").native();
    EXPECT_FALSE(InstallLevel(world.session, world.second));
    EXPECT_TRUE(world.host.WasTold("is not there"));
}

TEST(RemovePreviousLevel, RefusesNamesThatReachOutside)
{
    SwapWorld world;
    world.Write("precious.txt", "mine");
    world.Write("trle/Kestrva.txt",
                "#LEVEL_CODE=0001#\r\n#OVERWROTEN_FILES=\\..\\x.dat#\r\n"
                "#COPIED_FILES=\\..\\precious.txt|C:\\precious.txt|\\\\host\\share|\\data\\*.tr4|"
                "\\data\\old.tr4#\r\n");
    world.Write("trle/DATA/old.tr4", "old");
    ActivityLog log;
    EXPECT_EQ(RemovePreviousLevel(world.session, -1, log), 1);
    EXPECT_TRUE(world.host.WasTold("precious.txt")) << world.host.AllTold();
    EXPECT_EQ(world.Read("precious.txt"), "mine");
    EXPECT_TRUE(world.Has("trle/DATA/Title.tr4")); // a name is no pattern
    EXPECT_FALSE(world.Has("trle/DATA/old.tr4"));
    EXPECT_FALSE(world.Has("trle/Kestrva.txt"));
}

TEST(RemovePreviousLevel, AnswersAsItsCallersExpect)
{
    const struct {
        const char* marker;
        LevelCode answer;
        const char* words;
        bool markerStays;
    } cases[] = {
        {"", -1, "", false},
        {"no tag in it", -1, "I cann't find level folder", true},
        {"#LEVEL_CODE=0077#", 77, "I cann't find level folder", true},
        {"#level_code= 2 #", 2, "", false},
    };
    for (const auto& row : cases) {
        SwapWorld world;
        const auto treasures = world.Treasures();
        world.Write("trle/Kestrva.txt", row.marker);
        ActivityLog log;
        EXPECT_EQ(RemovePreviousLevel(world.session, -5, log), row.answer) << row.marker;
        EXPECT_EQ(world.host.told.empty(), std::string_view{row.words}.empty()) << row.marker;
        EXPECT_TRUE(*row.words == '\0' || world.host.WasTold(row.words)) << row.marker;
        EXPECT_EQ(world.Has("trle/Kestrva.txt"), row.markerStays) << row.marker;
        world.ExpectNothingLost(treasures);
    }
}

TEST(RemovePreviousLevel, KeepsTheOriginalsStateWhenNothingFollows)
{
    SwapWorld world;
    world.PlayFirst();
    const auto treasures = world.Treasures();
    ActivityLog log;
    EXPECT_EQ(RemovePreviousLevel(world.session, -1, log), world.first);
    world.ExpectOriginal();
    // Nobody's state is in the folder now; the next swap must not take that for the original's.
    ASSERT_TRUE(InstallLevel(world.session, world.second));
    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    EXPECT_EQ(world.Read("trle/savegame.12"), SavegameBytes("Original late", 9));
    world.ExpectNothingLost(treasures);
}

TEST(InstallLevel, NamesOutsideTheCodePageComeOutAgainAsTheyCameIn)
{
    SwapWorld world;
    const LevelCode code =
        world.AddLevel("Zażółć", {{"Zażółć.tr4", "polish"}, {"日本.tr4", "japan"}});
    ASSERT_TRUE(InstallLevel(world.session, code));
    EXPECT_TRUE(world.Has("trle/DATA/日本.tr4"));
    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    world.ExpectOriginal();
}

TEST(InstallLevel, LooksAfterALevelThatTheMachineLostInAPowerCut)
{
    SwapWorld world;
    world.PlayFirst();
    world.Write("trle/DATA/first.TR4", "");
    world.machine.bootId = "boot-2";
    EXPECT_TRUE(InstallLevel(world.session, world.first));
    EXPECT_EQ(world.Read("trle/DATA/first.TR4"), "first level");
    EXPECT_TRUE(world.host.WasTold("first.TR4"));
    world.host.told.clear();
    EXPECT_TRUE(InstallLevel(world.session, world.first));
    EXPECT_TRUE(world.host.told.empty());
}

TEST(PlanSwap, TellsWhatTheSwapThenDoes)
{
    SwapWorld world;
    world.PlayFirst();
    const auto before = world.Snapshot("");
    const auto plan = PlanSwap(world.session.Folders(), world.session.archive,
                               world.session.preferences, world.second);
    ASSERT_TRUE(plan);
    EXPECT_EQ(world.Snapshot(""), before);
    std::multiset<std::string> told;
    for (const PlannedFile& file : *plan)
        told.insert(std::to_string(static_cast<int>(file.action)) + file.file);
    for (const char* wanted : {"3\\data\\first.TR4", "2\\data\\title.tr4", "2\\LOAD.bmp",
                               "1\\script.dat", "0\\italian.dat", "3\\English.DAT", "0\\extra.h"})
        EXPECT_TRUE(told.contains(wanted)) << wanted;
}

} // namespace kestrova::testing
