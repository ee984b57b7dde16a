// Work that reads and looks before it writes, while each of these calls fails once: what was there
// is there afterwards, and nothing is told that is not so.
#include "history/history.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "sandbox/faults.h"
#include "saves/bring_back.h"
#include "swap/recovery.h"
#include "swap/swap_preview.h"
#include "swap/swap_world.h"
#include "swap/verify.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

} // namespace

TEST(FailedLook, NoFileThatIsBroughtBackTakesThePlaceOfAnother)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        SwapWorld world;
        const std::string store = "levels/LEVEL_0001/backup_savegames/";
        std::vector<std::string> ids;
        EXPECT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                                  world.session.settings, 1, {world / (store + "savegame.0")},
                                  "test", &ids));
        world.Write(store + "savegame.0", SavegameBytes("First again", 9));
        world.Write("trle/Script.dat", "my own script");
        EXPECT_TRUE(KeepOriginal(world.session.machine, world.session.Folders(), "Script.dat"));
        world.Write("trle/Script.dat", "my second script");
        const FaultRun run = failing([&] {
            const bool save = bool{BringBack(world.session, 1, ids[0])};
            return BringOriginalBack(world.session.machine, world.session.Folders(), "o-1") && save;
        });
        EXPECT_EQ(world.Read(store + "savegame.0"), SavegameBytes("First again", 9));
        EXPECT_EQ(world.Read("home/history/originals/Script.dat"), "my own script");
        EXPECT_TRUE(world.Read("trle/Script.dat") == "my second script" ||
                    world.Read("home/history/originals/Script.dat.2") == "my second script");
        // Lists are never begun anew for one that could not be read.
        EXPECT_EQ(HistoryOf(world.session.Folders(), 1).size(), 1U);
        const auto kept = KeptFiles(world.session.Folders());
        EXPECT_TRUE(kept && !kept->empty() && kept->front().id == "o-1");
        return run;
    });
}

TEST(FailedLook, VerifyAndPlanTellNoDifferenceThatIsNone)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        SwapWorld world;
        EXPECT_TRUE(InstallLevel(world.session, world.first));
        Result<std::vector<Difference>> found{std::vector<Difference>{}};
        const FaultRun run = failing([&] {
            found = VerifyFolder(world.session);
            return bool{found};
        });
        for (const Difference& difference : found ? *found : std::vector<Difference>{}) {
            EXPECT_EQ(difference.kind, Mismatch::Differs) << difference.file; // it was not read
        }
        return run;
    });
}

TEST(FailedLook, NotesThatCannotBeReadAreNeitherAbsentNorWrittenOver)
{
    SwapWorld world;
    world.PlayFirst();
    const std::string owner = world.Read("home/swap/owner");
    for (const char* note : {"swap/owner", "trle/Kestrva.txt"}) {
        const FailingCalls failing{platform::FileAction::Open, note, -1};
        EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), unknownLevel)
            << note;
        EXPECT_FALSE(InstallLevel(world.session, world.second)) << note;
        EXPECT_FALSE(RestoreFast(world.session)) << note;
        EXPECT_FALSE(LiveStateFolder(world.session.Folders(), world.session.archive, world.first))
            << note;
    }
    EXPECT_EQ(world.Read("home/swap/owner"), owner);
    EXPECT_TRUE(LevelStands(world.session.Folders(), world.session.archive, world.first));
    ASSERT_TRUE(WithKillAt(30, [&] { return InstallLevel(world.session, world.second); }).killed);
    const std::string journal = world.Read("home/swap/journal");
    {
        const FailingCalls failing{platform::FileAction::Open, "swap/journal", -1};
        EXPECT_FALSE(RecoverInterruptedWork(world.session));
        EXPECT_FALSE(InterruptedWork(world.session.Folders(), world.session.archive).empty());
        EXPECT_FALSE(InstallLevel(world.session, world.second));
    }
    EXPECT_EQ(world.Read("home/swap/journal"), journal);
}

TEST(FailedLook, OriginalToOriginalBringsBackWhatWentOutOrSaysWhatWaits)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        SwapWorld world;
        world.Write("trle/savegame.4", SavegameBytes("Original", 4));
        world.Write("home/LEVEL_0000/backup_savegames/savegame.7", SavegameBytes("Freed", 2));
        const auto live = world.Snapshot("trle");
        const FaultRun run = failing([&] { return InstallLevel(world.session, originalCode); });
        EXPECT_TRUE(world.Snapshot("trle") == live || !world.host.told.empty());
        EXPECT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
        for (const auto& [file, content] : live)
            EXPECT_EQ(world.Read("trle/" + file), content) << file;
        return run;
    });
}

TEST(LetGo, SavegamesOfAnArchiveThatIsGoneStayThatArchives)
{
    for (int step = 30;; step = NextPoint(step + 8)) {
        SwapWorld world;
        world.host.AnswerAll(true);
        world.PlayFirst();
        const auto treasures = world.Treasures();
        const KillRun run =
            WithKillAt(step, [&] { return InstallLevel(world.session, world.second); });
        if (!run.killed)
            break;
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        fs::rename(world / "levels", world / "away");
        world.ExchangeArchive(); // of the same codes
        EXPECT_FALSE(RecoverInterruptedWork(world.session));
        ASSERT_TRUE(RecoverInterruptedWork(world.session, {{}, {}, true})) << world.host.AllTold();
        fs::rename(world / "away", world / "levels");
        EXPECT_TRUE(HistoryOf(world.session.Folders(), 1).empty())
            << "they are of the other archive's level";
        EXPECT_TRUE(HistoryOf(world.session.Folders(), 2).empty());
        ASSERT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
        ASSERT_TRUE(InstallLevel(world.session, 1)) << world.host.AllTold();
        const std::map<std::string, std::string> others = {
            {"savegame.2", SavegameBytes("Other", 11)}};
        EXPECT_EQ(world.Snapshot("other/LEVEL_0001/backup_savegames"), others);
        world.ExpectNothingLost(treasures);
    }
}

} // namespace kestrova::testing
