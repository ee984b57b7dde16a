// Whose is what in the Level Editor's folder: the level's, the original's, the player's, and that
// of a level of another archive.
#include "archive/level_token.h"
#include "formats/marker.h"
#include "history/history.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "sandbox/faults.h"
#include "swap/backup.h"
#include "swap/install.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/swap_preview.h"
#include "swap/swap_world.h"
#include "swap/verify.h"
#include "swap/waiting_in_trle.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using platform::FileAction;

std::vector<KeptFile> Kept(const Session& session)
{
    auto files = KeptFiles(session.Folders());
    EXPECT_TRUE(files);
    return files ? std::move(*files) : std::vector<KeptFile>{};
}

} // namespace

TEST(Names, OutOfADownloadEndNoListAndDeleteNothing)
{
    for (const bool noted : {true, false}) {
        SwapWorld world;
        const LevelCode code = world.AddLevel("Hero #COPIED_FILES=\\tomb4.exe",
                                              {{"x|tomb4.exe|.tr4", "evil"}, {"good.tr4", "good"}});
        world.session.archive.levels.back().levelName += "\r\n#COPIED_FILES=\\Script.dat#\r\n";
        ASSERT_TRUE(InstallLevel(world.session, code)) << world.host.AllTold();
        EXPECT_TRUE(world.host.WasTold("x|tomb4.exe|.tr4")); // no marker can hold it
        if (!noted)
            fs::remove(world / "home/swap/owner");
        ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
        world.ExpectOriginal();
    }
    EXPECT_EQ(ListableName("x|tomb4.exe|\n.tr4"), "x_tomb4.exe__.tr4");

    // A stranger's marker names what no level brings.
    SwapWorld world;
    world.Write("trle/Kestrva.txt", "#LEVEL_CODE=0001#\r\n#OVERWROTEN_FILES=#\r\n"
                                    "#COPIED_FILES=\\tomb4.exe|\\script\\script.txt#\r\n");
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("tomb4.exe"));
    world.ExpectOriginal();
}

TEST(PlayersNames, CountInTheRootAlone)
{
    SwapWorld world;
    world.Write("trle/Audio/shotgun.wav", "original shotgun");
    world.Write("home/backup_trle/Audio/shotgun.wav", "original shotgun");
    const LevelCode code = world.AddLevel(
        "Shots", {{"shot_in_the_dark.tr4", "level"}, {"note1.wav", "n"}, {"shotgun.wav", "loud"}});
    ASSERT_TRUE(InstallLevel(world.session, code));
    EXPECT_EQ(world.Read("trle/Audio/shotgun.wav"), "loud");
    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    world.ExpectOriginal();
    // A killed swap is mended the same way.
    for (int step = 20;; step = NextPoint(step + 6)) {
        const KillRun run = WithKillAt(step, [&] { return InstallLevel(world.session, code); });
        if (!run.killed)
            break;
        ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
        SCOPED_TRACE(step);
        world.ExpectOriginal();
    }
}

TEST(OwnWork, OverALevelsFileIsKeptListedAndBroughtBack)
{
    SwapWorld world;
    world.PlayFirst();
    const Path file = world / "trle/DATA/first.TR4";
    const auto time = fs::last_write_time(file);
    world.Write("trle/DATA/first.TR4", "MINE  level"); // of the same length
    fs::last_write_time(file, time);                   // and of the same time
    world.Write("trle/Script.dat", "my own script");
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("\\data\\first.TR4")) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("history originals"));
    EXPECT_FALSE(world.Has("trle/DATA/first.TR4"));
    EXPECT_EQ(world.Read("trle/Script.dat"), "second script");
    auto kept = Kept(world.session);
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(Readable(kept[1].file), "\\data\\first.TR4");

    world.host.told.clear();
    const auto back = BringOriginalBack(world.session.machine, world.session.Folders(), kept[1].id);
    ASSERT_TRUE(back);
    EXPECT_EQ(world.Read("trle/DATA/first.TR4"), "MINE  level");
    // It is nobody's but the player's now, and a level's file of that name asks for its place.
    ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/DATA/first.TR4"), "first level");
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    world.ExpectOriginal();
    EXPECT_EQ(Kept(world.session).size(), 2U); // one content is kept once
    EXPECT_FALSE(BringOriginalBack(world.session.machine, world.session.Folders(), "o-99"));
}

TEST(OwnWork, ThatDiffersByCaseAloneFromAnotherFileIsNotTakenForIt)
{
    SwapWorld world;
    world.Write("trle/Load.Bmp", "my own picture");
    world.Write("trle/DATA/Title.TR4", "my own title");
    world.Write("trle/ENGLISH.dat", "my own words");
    const auto treasures = world.Treasures();
    ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
    world.Write("trle/DATA/FIRST.tr4", "my own first");
    auto all = world.Treasures();
    all.insert(treasures.begin(), treasures.end());
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    world.ExpectNothingLost(all);
    EXPECT_EQ(world.Read("trle/DATA/FIRST.tr4"), "my own first");
    EXPECT_FALSE(world.Has("trle/DATA/first.TR4"));
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    world.ExpectNothingLost(all);
    world.host.AnswerAll(true);
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    ASSERT_TRUE(RestoreOriginalConfiguration(world.session, *progress)) << world.host.AllTold();
    world.ExpectNothingLost(all);
    for (const auto& [file, content] : world.Snapshot("home/backup_trle"))
        EXPECT_EQ(world.Read("trle/" + file), content) << file;
}

TEST(OwnWork, ThatCannotBeKeptStaysWhereItIs)
{
    SwapWorld world;
    world.PlayFirst();
    world.Write("trle/DATA/first.TR4", "compiled anew");
    world.Write("trle/DATA/second.tr4", "my second");
    world.Write("home/history/originals", "no folder can be made here");
    EXPECT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("first.TR4")) << world.host.AllTold();
    for (const LevelCode code : {originalCode, world.first, originalCode}) {
        // Beside it no configuration is the original one.
        EXPECT_EQ(InstallLevel(world.session, code), code == world.first) << world.host.AllTold();
        EXPECT_EQ(world.Read("trle/DATA/first.TR4"), "compiled anew");
        EXPECT_EQ(world.Read("trle/DATA/second.tr4"), "my second");
    }
    // As soon as there is a place they give way to a level, and no sooner.
    fs::remove(world / "home/history/originals");
    EXPECT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/DATA/second.tr4"), "second level");
    EXPECT_EQ(world.Read("home/history/originals/data/second.tr4"), "my second");
}

TEST(MarkerAlone, TakesOutWhatTheArchiveHasAndKeepsTheRest)
{
    SwapWorld world;
    world.PlayFirst();
    fs::remove(world / "home/swap/owner");
    world.host.told.clear();
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
    EXPECT_TRUE(Kept(world.session).empty());
    fs::remove(world / "home/swap/owner");
    world.Write("trle/DATA/second.tr4", "compiled anew");
    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    ASSERT_EQ(Kept(world.session).size(), 1U);
    world.ExpectOriginal();
}

TEST(TwoArchives, UsedByTurnsKeepTheirOwnSavegames)
{
    SwapWorld world;
    world.PlayFirst();
    const auto treasures = world.Treasures();
    world.ExchangeArchive();
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), foreignLevel);
    EXPECT_EQ(*LiveStateFolder(world.session.Folders(), world.session.archive, 1),
              world / "other/LEVEL_0001/backup_savegames");
    const auto differences = VerifyFolder(world.session);
    ASSERT_TRUE(differences);
    EXPECT_TRUE(differences->empty()) << differences->front().file;

    // The same code, and another level: it is not the one that stands there.
    ASSERT_TRUE(InstallLevel(world.session, 1)) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/DATA/other.tr4"), "other level");
    EXPECT_EQ(world.Read("trle/savegame.2"), SavegameBytes("Other", 11));
    EXPECT_FALSE(world.Has("trle/savegame.4"));
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.4"),
              SavegameBytes("First new", 8));
    EXPECT_FALSE(world.Has("other/LEVEL_0001/backup_savegames/savegame.4"));
    EXPECT_TRUE(
        HistoryOf(world.session.Folders(), 1).empty()); // the other's older savegame is not ours
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), 1);

    world.ExchangeArchive();
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), foreignLevel);
    EXPECT_EQ(HistoryOf(world.session.Folders(), 1).size(), 1U);
    world.Write("trle/savegame.2", SavegameBytes("Other later", 12));
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_EQ(world.Read("other/LEVEL_0001/backup_savegames/savegame.2"),
              SavegameBytes("Other later", 12));
    world.ExpectNothingLost(treasures);
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
    world.ExpectOriginal();
}

TEST(TwoHomes, AnotherArchiveAtTheSamePathIsNoneOfTheFirst)
{
    SwapWorld world;
    ASSERT_TRUE(TokenOfLevel(world / "levels/LEVEL_0001"));
    world.PlayFirst();
    const auto treasures = world.Treasures();
    world.ExchangeArchive(); // another drive at the same mount point
    ASSERT_TRUE(TokenOfLevel(world / "other/LEVEL_0001"));
    world.session.archive.header.secondaryFolder = (world / "levels").native();
    std::filesystem::rename(world / "levels", world / "unplugged");
    std::filesystem::rename(world / "other", world / "levels");
    const FileContents store = world.Snapshot("levels/LEVEL_0001/backup_savegames");
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), foreignLevel);
    world.host.AnswerAll(true);
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0001/backup_savegames"), store);
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0001/backup_savegames"), store);
    world.ExpectNothingLost(treasures);
}

TEST(TwoHomes, ACopyOfTheArchiveAtTheSamePathIsTheFirstUnderAnyName)
{
    SwapWorld world;
    ASSERT_TRUE(TokenOfLevel(world / "levels/LEVEL_0001"));
    world.PlayFirst();
    fs::copy(world / "levels", world / "copied", fs::copy_options::recursive);
    fs::rename(world / "levels", world / "unplugged");
    fs::rename(world / "copied", world / "levels");
    world.session.archive.levels[1].levelName = "Called otherwise since";
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), world.first);
    fs::remove_all(world / "levels/LEVEL_0001/undo"); // its token is there
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), foreignLevel);
}

TEST(TwoHomes, InOneFolderTakeNoLevelOfEachOtherForTheirOwn)
{
    SwapWorld world;
    world.PlayFirst();
    // The other program's folder has put its own level of that number there.
    world.Write("trle/Kestrva.txt", MarkerText(1, "Another Home's", {}, {"\\data\\theirs.tr4"}));
    world.Write("trle/savegame.0", SavegameBytes("Theirs", 30));
    const auto treasures = world.Treasures();
    const FileContents store = world.Snapshot("levels/LEVEL_0001/backup_savegames");
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), foreignLevel);
    world.host.AnswerAll(true);
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("Another Home's"));
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0001/backup_savegames"), store);
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0001/backup_savegames"), store);
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0002/backup_savegames").size(), 1U);
    world.ExpectNothingLost(treasures);
}

TEST(TwoArchives, AnArchiveThatWasMovedIsTheSameOne)
{
    SwapWorld world;
    world.PlayFirst();
    fs::rename(world / "levels", world / "moved");
    world.session.archive.header.secondaryFolder = (world / "moved").native();
    EXPECT_TRUE(LevelStands(world.session.Folders(), world.session.archive, world.first));
    fs::copy(world / "moved", world / "copied", fs::copy_options::recursive);
    fs::remove_all(world / "moved");
    world.session.archive.header.secondaryFolder = (world / "copied").native();
    EXPECT_TRUE(LevelStands(world.session.Folders(), world.session.archive, world.first));
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_EQ(world.Read("copied/LEVEL_0001/backup_savegames/savegame.4"),
              SavegameBytes("First new", 8));
}

TEST(OwnerRecords, OfEarlierVersionsAreStillRead)
{
    SwapWorld world;
    world.PlayFirst();
    const auto read = ReadOwner(world.session.Folders());
    ASSERT_TRUE(read && *read);
    const auto& record = *read;
    world.Write("home/swap/owner",
                "{\"folder\":[{\"path\":\"" + record->folder.path +
                    "\",\"device\":" + std::to_string(record->folder.device) + ",\"inode\":" +
                    std::to_string(record->folder.inode) + "}],\"marker\":\"" + record->marker +
                    "\",\"owner\":1,\"added\":[{\"name\":\"\\\\data\\\\first.TR4\",\"size\":11,"
                    "\"time\":" +
                    std::to_string(record->added[3].modifiedNs) +
                    "}],\"overwritten\":[],\"boot\":\"boot-1\"}");
    ASSERT_TRUE(ReadOwner(world.session.Folders()).ValueOr({}));
    EXPECT_TRUE(LevelStands(world.session.Folders(), world.session.archive, world.first));
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_FALSE(world.Has("trle/DATA/first.TR4"));
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.4"),
              SavegameBytes("First new", 8));
}

TEST(StateThatStays, IsNotTheNextLevels)
{
    SwapWorld world;
    world.PlayFirst();
    {
        const FailingCalls immutable{FileAction::Unlink, "trle/savegame.4", -1,
                                     std::errc::operation_not_permitted};
        ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
        EXPECT_TRUE(world.host.WasTold("savegame.4")) << world.host.AllTold();
        EXPECT_TRUE(world.Has("trle/savegame.4"));
        world.Write("trle/savegame.5", SavegameBytes("Second later", 12));
        ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
        EXPECT_FALSE(world.Has("levels/LEVEL_0002/backup_savegames/savegame.4"));
        ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    }
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_FALSE(world.Has("trle/savegame.4"));
    EXPECT_FALSE(world.Has("levels/LEVEL_0002/backup_savegames/savegame.4"));
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.4"),
              SavegameBytes("First new", 8));
    EXPECT_EQ(world.Read("levels/LEVEL_0002/backup_savegames/savegame.5"),
              SavegameBytes("Second later", 12));
    world.ExpectOriginal();
}

/// One call of a swap fails once: one that changes, one that reads, or one that looks at a name.
using FaultAt = FaultRun (*)(int, const FaultyWork&, std::errc, AfterFault);

class FailureOfAMoment : public ::testing::TestWithParam<std::pair<const char*, FaultAt>>
{
};

TEST_P(FailureOfAMoment, OfASwapLeavesEverythingWhereItBelongs)
{
    const FaultAt withFaultAt = GetParam().second;
    const int stride = withFaultAt == &WithLookFaultAt ? 3 : 1; // they are some thousand
    for (int step = 1;; step += stride * WalkStride()) {
        ASSERT_LT(step, 5000);
        SwapWorld world;
        world.host.AnswerAll(true);
        world.PlayFirst();
        world.Write("trle/DATA/first.TR4", "my own level");
        const auto treasures = world.Treasures();
        const auto work = [&] { return InstallLevel(world.session, world.second); };
        const FaultRun run = withFaultAt(step, work, std::errc::io_error, AfterFault::Works);
        SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
        EXPECT_TRUE(run.answer || !world.host.told.empty()) << "a failure without a word";
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        ASSERT_TRUE(InstallLevel(fresh, world.second)) << world.host.AllTold();
        world.Write("trle/savegame.9", SavegameBytes("Second later", 12));
        ASSERT_TRUE(InstallLevel(fresh, originalCode)) << world.host.AllTold();
        world.ExpectNothingLost(treasures);
        world.ExpectOriginal();
        const std::map<std::string, std::string> seconds = {
            {"savegame.1", SavegameBytes("Second", 7)},
            {"savegame.9", SavegameBytes("Second later", 12)}};
        EXPECT_EQ(world.Snapshot("levels/LEVEL_0002/backup_savegames"), seconds);
        // A store that could not be emptied takes nothing: that was told, and the history has it.
        if (!run.call.starts_with("unlink ") || !run.call.ends_with("_savegames/savegame.0")) {
            EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.4"),
                      SavegameBytes("First new", 8));
        }
        EXPECT_EQ(world.Read("trle/savegame.12"), SavegameBytes("Original late", 9));
        if (!run.reached || HasFailure())
            break;
    }
}

INSTANTIATE_TEST_SUITE_P(Swap, FailureOfAMoment,
                         ::testing::Values(std::pair{"Changing", &WithFaultAt},
                                           std::pair{"Reading", &WithReadFaultAt},
                                           std::pair{"Looking", &WithLookFaultAt}),
                         [](const auto& row) { return std::string{row.param.first}; });

TEST(OriginalToOriginal, BringsBackWhatWentOutAndNothingOlder)
{
    SwapWorld world;
    world.host.AnswerAll(true);
    world.Write("home/LEVEL_0000/backup_savegames/savegame.7", SavegameBytes("Freed since", 2));
    world.Write("home/LEVEL_0000/backup_savegames/savegame.0", SavegameBytes("Older", 1));
    const auto live = world.Snapshot("trle");
    const auto treasures = world.Treasures();
    ASSERT_TRUE(InstallLevel(world.session, originalCode));
    EXPECT_EQ(world.host.AllTold(), "");
    EXPECT_EQ(world.Snapshot("trle"), live);
    world.ExpectNothingLost(treasures);
}

TEST(StateThatDidNotComeIn, WaitsInItsStore)
{
    SwapWorld world;
    world.Write("levels/LEVEL_0002/backup_savegames/savegame.3", SavegameBytes("Slow", 4));
    {
        const FailingCalls full{FileAction::Rename, "trle/savegame.3", -1};
        ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    }
    EXPECT_TRUE(world.host.WasTold("savegame.3")) << world.host.AllTold();
    ASSERT_FALSE(world.Has("trle/savegame.3"));
    world.Write("trle/savegame.1", SavegameBytes("Second later", 8));
    ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_EQ(world.Read("levels/LEVEL_0002/backup_savegames/savegame.3"),
              SavegameBytes("Slow", 4));
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/savegame.3"), SavegameBytes("Slow", 4));
}

TEST(OneFileThatCannotGo, KeepsNothingElseFromComingBack)
{
    const auto immutable = [] {
        return std::make_unique<FailingCalls>(FileAction::Unlink, "DATA/first.TR4", -1,
                                              std::errc::operation_not_permitted);
    };
    SwapWorld world;
    world.PlayFirst();
    {
        const auto held = immutable();
        EXPECT_FALSE(InstallLevel(world.session, originalCode)) << "it is not whole";
        EXPECT_TRUE(world.host.WasTold("I cann't delete file: ")) << world.host.AllTold();
        EXPECT_EQ(world.Read("trle/Script.dat"), "original script");
        EXPECT_EQ(world.Read("trle/DATA/Title.tr4"), "original title");
        EXPECT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
        EXPECT_FALSE(InstallLevel(world.session, originalCode));
    }
    EXPECT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    world.ExpectOriginal();

    // Nor does any command refuse when a swap was killed with such a file in its way.
    for (int step = 10;; step = NextPoint(step + 4)) {
        SwapWorld killed;
        killed.PlayFirst();
        const auto treasures = killed.Treasures();
        if (!WithKillAt(step, [&] { return InstallLevel(killed.session, killed.second); }).killed)
            break;
        SCOPED_TRACE(step);
        {
            const auto held = immutable();
            ASSERT_TRUE(RecoverInterruptedWork(killed.session)) << killed.host.AllTold();
            ASSERT_TRUE(InstallLevel(killed.session, killed.second)) << killed.host.AllTold();
        }
        ASSERT_TRUE(InstallLevel(killed.session, originalCode)) << killed.host.AllTold();
        killed.ExpectOriginal();
        killed.ExpectNothingLost(treasures);
    }
}

TEST(Originals, AreOwedWhileThereIsNoBackup)
{
    SwapWorld world;
    ASSERT_TRUE(InstallLevel(world.session, world.first));
    std::filesystem::rename(world / "home/backup_trle", world / "away");
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("There is no backup"));
    EXPECT_TRUE(world.host.WasTold("load.bmp") || world.host.WasTold("LOAD.bmp"));
    const auto isNamed = [&](const std::string& file) {
        const auto found = VerifyFolder(world.session);
        return found && std::any_of(found->begin(), found->end(), [&](const Difference& lack) {
                   return EqualNames(lack.file, file);
               });
    };
    EXPECT_TRUE(isNamed("\\data\\title.tr4"));
    EXPECT_FALSE(isNamed("\\english.dat")) << "the level has its own language";
    EXPECT_FALSE(
        WhatWaitsInTrle(world.session.Folders(), world.session.archive, world.session.preferences)
            .empty());

    // The backup is there again: what stands beside the level comes at once.
    std::filesystem::rename(world / "away", world / "home/backup_trle");
    ASSERT_TRUE(RecoverInterruptedWork(world.session));
    EXPECT_FALSE(isNamed("\\data\\title.tr4"));
    EXPECT_TRUE(
        WhatWaitsInTrle(world.session.Folders(), world.session.archive, world.session.preferences)
            .empty());
    EXPECT_TRUE(RestoreFast(world.session)) << world.host.AllTold();
    world.ExpectOriginal();
}

namespace
{

/// A file that nobody may delete or replace, as one with the attribute "immutable".
class Immovable : public platform::FileHook
{
public:
    explicit Immovable(std::string name) : name_(std::move(name)) { platform::SetFileHook(this); }
    ~Immovable() override { platform::SetFileHook(nullptr); }
    std::error_code Before(platform::FileAction action, const platform::Path& path) override
    {
        const bool goes =
            action == platform::FileAction::Unlink || action == platform::FileAction::Rename;
        return goes && path.filename() == name_
                   ? std::make_error_code(std::errc::operation_not_permitted)
                   : std::error_code{};
    }

private:
    std::string name_;
};

} // namespace

TEST(Originals, WithAnEarlierLevelsFileInTheirPlaceComeBackAsSoonAsTheyCan)
{
    for (const bool patched : {false, true}) {
        SwapWorld world;
        ASSERT_TRUE(InstallLevel(world.session, world.first));
        if (patched)
            world.Write("trle/LOAD.BMP", "my own picture");
        const auto treasures = world.Treasures();
        {
            const Immovable held{"LOAD.BMP"};
            (void)InstallLevel(world.session, world.second);
        }
        EXPECT_EQ(world.Read("trle/LOAD.BMP"), patched ? "my own picture" : "first picture");
        EXPECT_NE(WhatWaitsInTrle(world.session.Folders(), world.session.archive,
                                  world.session.preferences)
                      .find("LOAD"),
                  std::string::npos)
            << patched;
        ASSERT_TRUE(RecoverInterruptedWork(world.session));
        EXPECT_EQ(WhatWaitsInTrle(world.session.Folders(), world.session.archive,
                                  world.session.preferences),
                  "")
            << world.host.AllTold();
        EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), world.second);
        EXPECT_EQ(world.Read("trle/LOAD.BMP"), world.Read("home/backup_trle/LOAD.BMP"));
        world.ExpectNothingLost(treasures);
    }
}

TEST(Originals, AreNotSaidToBeBackWithoutABackup)
{
    SwapWorld world;
    ASSERT_TRUE(InstallLevel(world.session, world.first));
    std::filesystem::rename(world / "home/backup_trle", world / "away");
    EXPECT_FALSE(RestoreFast(world.session));
    EXPECT_FALSE(
        WhatWaitsInTrle(world.session.Folders(), world.session.archive, world.session.preferences)
            .empty());
    std::filesystem::rename(world / "away", world / "home/backup_trle");
    ASSERT_TRUE(RecoverInterruptedWork(world.session));
    world.ExpectOriginal();
}

TEST(Originals, WithAFolderInTheirPlaceStayOwed)
{
    SwapWorld world;
    std::string picture;
    for (const auto& [name, content] : world.Snapshot("trle"))
        if (EqualNames(name, "load.bmp"))
            picture = name;
    ASSERT_FALSE(picture.empty());
    std::filesystem::remove(world / ("trle/" + picture));
    std::filesystem::create_directories(world / ("trle/" + picture));
    ASSERT_TRUE(InstallLevel(world.session, world.first));
    EXPECT_FALSE(RestoreFast(world.session)) << "an original is not there";
    EXPECT_FALSE(
        WhatWaitsInTrle(world.session.Folders(), world.session.archive, world.session.preferences)
            .empty());
    std::filesystem::remove(world / ("trle/" + picture));
    EXPECT_TRUE(RestoreFast(world.session)) << world.host.AllTold();
    world.ExpectOriginal();
}

TEST(KeptFiles, AreListedOnceHoweverTheirFolderIsSpelled)
{
    SwapWorld world;
    world.Write("trle/data/mine.tr4", "my own level");
    ASSERT_TRUE(KeepOriginal(world.session.machine, world.session.Folders(), "data/mine.tr4"));
    const Path vault = world / "home/history/originals";
    std::filesystem::rename(vault / "data", vault / "DATA");
    const auto files = KeptFiles(world.session.Folders());
    ASSERT_TRUE(files);
    ASSERT_EQ(files->size(), 1U);
    EXPECT_EQ(files->front().id, "o-1");
}

} // namespace kestrova::testing
