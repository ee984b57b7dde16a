#include "history/standing.h"
#include "sandbox/faults.h"
#include "swap/backup.h"
#include "swap/install.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/swap_preview.h"
#include "swap/swap_world.h"
#include "swap/verify.h"

namespace kestrova::testing
{

namespace
{

/// Work that may end at any of its changes to the disk.
struct Work {
    const char* name;
    void (*prepare)(SwapWorld&);
    bool (*run)(SwapWorld&);
};
void PrintTo(const Work& work, std::ostream* out)
{
    *out << work.name;
}

void Nothing(SwapWorld&) {}

void PlayFirst(SwapWorld& world)
{
    world.PlayFirst();
}

/// A designer compiled the level anew, in both folders that hold files of a level.
void PlayFirstAndWorkOnIt(SwapWorld& world)
{
    world.PlayFirst();
    world.Write("trle/DATA/first.TR4", "my own level");
    world.Write("trle/Script.dat", "my own script");
}

/// A level stands there, and another archive is loaded whose levels have the same codes.
void PlayFirstOfAnotherArchive(SwapWorld& world)
{
    world.PlayFirst();
    world.ExchangeArchive();
}

bool FullRestore(SwapWorld& world)
{
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    RestoreOriginalConfiguration(world.session, *progress);
    return world.host.WasTold("Restored original");
}

const Work works[] = {
    {"LevelToLevel", PlayFirst, [](SwapWorld& w) { return InstallLevel(w.session, w.second); }},
    {"LevelToOriginal", PlayFirst,
     [](SwapWorld& w) { return InstallLevel(w.session, originalCode); }},
    {"OriginalToLevel", Nothing, [](SwapWorld& w) { return InstallLevel(w.session, w.first); }},
    {"RemovalOfTheInstalledLevel", PlayFirst,
     [](SwapWorld& w) {
         ActivityLog log;
         return RemovePreviousLevel(w.session, -1, log) == w.first;
     }},
    {"FullRestore", PlayFirst, FullRestore},
    {"OwnWorkIsKept", PlayFirstAndWorkOnIt,
     [](SwapWorld& w) { return InstallLevel(w.session, w.second); }},
    {"AnotherArchivesLevel", PlayFirstOfAnotherArchive,
     [](SwapWorld& w) { return InstallLevel(w.session, w.first); }},
};

/// The next start of the program: everything is mended, and nothing of the player is lost, neither
/// now nor by the next swaps.
void ExpectMended(SwapWorld& world, const std::set<std::string>& treasures)
{
    Session fresh = world.Reopened();
    ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
    EXPECT_TRUE(InterruptedWork(fresh.Folders(), fresh.archive).empty());
    const auto mended = world.Snapshot("");
    world.ExpectNothingLost(treasures, mended);
    if (CurrentLevelCode(fresh.Folders(), fresh.archive) == originalCode) {
        world.ExpectOriginal();
    }
    ASSERT_TRUE(RecoverInterruptedWork(fresh)); // nothing is left to mend
    EXPECT_EQ(world.Snapshot(""), mended);
    ASSERT_TRUE(InstallLevel(fresh, world.second)) << world.host.AllTold();
    world.ExpectNothingLost(treasures);
    ASSERT_TRUE(InstallLevel(fresh, originalCode)) << world.host.AllTold();
    world.ExpectNothingLost(treasures);
    world.ExpectOriginal();
    const auto differences = VerifyFolder(fresh);
    ASSERT_TRUE(differences);
    EXPECT_TRUE(differences->empty()) << differences->front().file;
}

class Interruption : public ::testing::TestWithParam<Work>
{
};

} // namespace

TEST_P(Interruption, KilledAnywhereIsMendedAtTheNextStart)
{
    for (int step = 1; step < 2000; step = NextPoint(step)) {
        SwapWorld world;
        world.host.AnswerAll(true);
        GetParam().prepare(world);
        const auto treasures = world.Treasures();
        const KillRun run = WithKillAt(step, [&] { return GetParam().run(world); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        ExpectMended(world, treasures);
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 50);
    }
    FAIL() << "never finished";
}

TEST_P(Interruption, FailedAnywhereIsToldAndLosesNothing)
{
    for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1;; step = NextPoint(step)) {
            SwapWorld world;
            world.host.AnswerAll(true);
            GetParam().prepare(world);
            const auto treasures = world.Treasures();
            const FaultRun run = WithFaultAt(
                step, [&] { return GetParam().run(world); },
                after == AfterFault::Works ? std::errc::io_error : std::errc::no_space_on_device,
                after);
            SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
            EXPECT_TRUE(run.answer || !world.host.told.empty()) << "a failure without a word";
            world.ExpectNothingLost(treasures);
            ExpectMended(world, treasures);
            ASSERT_LT(step, 2000) << "never finished";
            if (!run.reached || HasFailure()) {
                TellPoints(step - 1, 50);
                break;
            }
        }
}

TEST_P(Interruption, FailedReadsAndLooksAreToldAndLoseNothing)
{
    // They are thousands; each work comes by other ones.
    for (const auto& [withFaultAt, stride] :
         {std::pair{&WithReadFaultAt, 5}, std::pair{&WithLookFaultAt, 23}})
        for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
            for (int step = 1;; step += stride * WalkStride()) {
                SwapWorld world;
                world.host.AnswerAll(true);
                GetParam().prepare(world);
                const auto treasures = world.Treasures();
                const FaultRun run = withFaultAt(
                    step, [&] { return GetParam().run(world); }, std::errc::io_error, after);
                SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
                EXPECT_TRUE(run.answer || !world.host.told.empty()) << "a failure without a word";
                world.ExpectNothingLost(treasures);
                ExpectMended(world, treasures);
                ASSERT_LT(step, 5000) << "never finished";
                if (!run.reached || HasFailure()) {
                    TellPoints(step / stride, 10);
                    break;
                }
            }
}

INSTANTIATE_TEST_SUITE_P(Swap, Interruption, ::testing::ValuesIn(works),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST(Recovery, IsItselfMendedWhereverItIsKilled)
{
    // A swap that ended in the middle of its copies, and recoveries that end everywhere.
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        SwapWorld world;
        world.host.AnswerAll(true);
        world.PlayFirst();
        const auto treasures = world.Treasures();
        const int calls = 45;
        ASSERT_TRUE(
            WithKillAt(calls, [&] { return InstallLevel(world.session, world.second); }).killed);
        const KillRun run = WithKillAt(step, [&] { return RecoverInterruptedWork(world.session); });
        SCOPED_TRACE("recovery killed at step " + std::to_string(step) + ": " + run.call);
        ExpectMended(world, treasures);
        EXPECT_EQ(world.Read("trle/savegame.12"), SavegameBytes("Original late", 9));
        EXPECT_EQ(world.Read("levels/LEVEL_0002/backup_savegames/savegame.1"),
                  SavegameBytes("Second", 7));
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 25);
    }
    FAIL() << "never finished";
}

TEST(Recovery, LosesNothingWhereverItCannotReadOrLook)
{
    for (const auto& [withFaultAt, stride] :
         {std::pair{&WithReadFaultAt, 3}, std::pair{&WithLookFaultAt, 7}})
        for (const int calls : {30, 45, 70, 100})
            for (int step = 1;; step += stride * WalkStride()) {
                SwapWorld world;
                world.host.AnswerAll(true);
                world.PlayFirst();
                const auto treasures = world.Treasures();
                ASSERT_TRUE(WithKillAt(calls, [&] {
                                return InstallLevel(world.session, world.second);
                            }).killed);
                const FaultRun run = withFaultAt(
                    step, [&] { return RecoverInterruptedWork(world.session); },
                    std::errc::io_error, AfterFault::Works);
                SCOPED_TRACE("killed at call " + std::to_string(calls) + ", recovery failed at " +
                             std::to_string(step) + ": " + run.call);
                world.ExpectNothingLost(treasures);
                ExpectMended(world, treasures);
                EXPECT_EQ(world.Read("trle/savegame.12"), SavegameBytes("Original late", 9));
                EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.4"),
                          SavegameBytes("First new", 8));
                EXPECT_EQ(world.Read("levels/LEVEL_0002/backup_savegames/savegame.1"),
                          SavegameBytes("Second", 7));
                ASSERT_LT(step, 5000) << "never finished";
                if (!run.reached || HasFailure()) {
                    TellPoints(step / stride, 10);
                    break;
                }
            }
}

TEST(Recovery, WaitsForAFolderThatIsGone)
{
    SwapWorld world;
    world.host.AnswerAll(true);
    world.PlayFirst();
    const auto treasures = world.Treasures();
    ASSERT_TRUE(WithKillAt(40, [&] { return InstallLevel(world.session, world.second); }).killed);
    std::filesystem::rename(world / "trle", world / "elsewhere");
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("Connect its drive"));
    std::filesystem::rename(world / "elsewhere", world / "trle");
    ExpectMended(world, treasures);
}

TEST(Recovery, SetsAsideAJournalThatNobodyCanRead)
{
    SwapWorld world;
    world.Write("home/swap/journal", "{ half a jour");
    EXPECT_TRUE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("cannot be read"));
    EXPECT_EQ(world.Read("home/swap/journal.1"), "{ half a jour");
    EXPECT_TRUE(InstallLevel(world.session, world.first));
}

} // namespace kestrova::testing
