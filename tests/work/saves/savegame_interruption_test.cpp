#include "history/changes.h"
#include "platform/file_content.h"
#include "sandbox/faults.h"
#include "saves/savegame_transfer.h"
#include "saves/saves_world.h"
#include "swap/recovery.h"

namespace kestrova::testing
{

namespace
{

/// Three live savegames and two archive slots, notes and pictures on both sides, a number that
/// lies on both sides with other bytes, and a count in the record.
void Fill(SavesWorld& world)
{
    const std::string slot = SavesWorld::store + std::string{"slot1/"};
    world.Live("0", 12);
    world.Write("trle/note0.txt", "note of twelve");
    world.Live("3", 14);
    world.Write("trle/shot3.bmp", "picture of fourteen");
    world.Live("4", 9, "nine, live");
    world.Write("trle/note1.txt", "a note without a savegame");
    world.Archived(1, "2", 3);
    world.Archived(1, "5", 9, "nine, archived");
    world.Archived(1, "6", 20);
    world.Write(slot + "note6.txt", "note of twenty");
    world.Write(slot + "shot2.jpg", "picture of three");
    world.Write(SavesWorld::store + std::string{"slot2/note8.txt"}, "in a slot without savegames");
    ASSERT_TRUE(
        LoadSavegameStore(world.session.Folders(), world.session.preferences, world.played));
}

/// The everyday case after a first freeing: the newest stands in slot 0 already, with its note.
void FillWithKeeperInSlotZero(SavesWorld& world)
{
    Fill(world);
    world.Live("0", 30, "the newest");
}

/// The newest has a name that keeps its place.
void FillWithOtherKeeper(SavesWorld& world)
{
    Fill(world);
    world.Live("bak", 31, "the newest");
}

struct SlotWork {
    const char* name;
    Result<SavegamesMoved> (*run)(const ArchiveParts&, LevelCode);
    void (*fill)(SavesWorld&) = Fill;
};
void PrintTo(const SlotWork& work, std::ostream* out)
{
    *out << work.name;
}
const SlotWork slotWorks[] = {
    {"Archive", ArchiveSavegamesOf},
    {"ArchiveKeeperInSlotZero", ArchiveSavegamesOf, FillWithKeeperInSlotZero},
    {"ArchiveOtherKeeper", ArchiveSavegamesOf, FillWithOtherKeeper},
    {"Restore", RestoreSavegamesOf},
    {"RestoreKeeperInSlotZero", RestoreSavegamesOf, FillWithKeeperInSlotZero}};

std::string Everything(const SavesWorld& world)
{
    return world.Shown("trle") + " | " + world.ShownSlot(1) + " | " + world.ShownSlot(3);
}

KillRun RestoreKilledAt(int step, SavesWorld& world)
{
    Fill(world);
    return WithKillAt(step, [&] { return bool(RestoreSavegamesOf(world.session, world.played)); });
}

/// The first step at which some live savegame has given way to another.
int StepInTheMiddle()
{
    for (int step = 1; step < 500; ++step) {
        SavesWorld world;
        if (!RestoreKilledAt(step, world).killed)
            break;
        if (ReadSavegameInfo(world / "trle/savegame.0").number == 3)
            return step;
    }
    ADD_FAILURE() << "no such step";
    return 1;
}

/// A restore that was killed when some live savegames had changed already and others had not.
void RestoreHalf(SavesWorld& world)
{
    static const int step = StepInTheMiddle();
    ASSERT_TRUE(RestoreKilledAt(step, world).killed);
    ASSERT_TRUE(ChangeWaits(world.session.Folders()));
}

class SavegameInterruption : public ::testing::TestWithParam<SlotWork>
{
protected:
    void SetUp() override
    {
        SavesWorld world;
        GetParam().fill(world);
        before = Everything(world);
        ASSERT_TRUE(GetParam().run(world.session, world.played));
        after = Everything(world);
        ASSERT_NE(before, after);
    }

    /// The next start: what was begun is finished or as it never was, and nothing is lost.
    void ExpectSettled(SavesWorld& world, const std::set<std::string>& treasures) const
    {
        world.ExpectNothingLost(treasures);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        EXPECT_TRUE(InterruptedWork(fresh.Folders(), fresh.archive).empty());
        world.ExpectNothingLost(treasures);
        const std::string now = Everything(world);
        EXPECT_TRUE(now == after || world.Shown("trle") == before.substr(0, before.find(" |")))
            << now;
        ASSERT_TRUE(GetParam().run(fresh, world.played));
        world.ExpectNothingLost(treasures);
    }

    std::string before;
    std::string after;
};

} // namespace

TEST_P(SavegameInterruption, KilledAnywhereIsFinishedOrUndoneAtTheNextStart)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        SavesWorld world;
        GetParam().fill(world);
        const auto treasures = world.Treasures();
        const KillRun run =
            WithKillAt(step, [&] { return bool(GetParam().run(world.session, world.played)); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        ExpectSettled(world, treasures);
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 10);
    }
    FAIL() << "never finished";
}

TEST_P(SavegameInterruption, FailedAnywhereIsAnsweredAndLosesNothing)
{
    for (const AfterFault after_ : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1;; step = NextPoint(step)) {
            SavesWorld world;
            GetParam().fill(world);
            const auto treasures = world.Treasures();
            const FaultRun run = WithFaultAt(
                step, [&] { return bool(GetParam().run(world.session, world.played)); },
                after_ == AfterFault::Works ? std::errc::io_error : std::errc::no_space_on_device,
                after_);
            SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
            if (!run.answer && !ChangeWaits(world.session.Folders())) {
                EXPECT_EQ(world.Shown("trle"), before.substr(0, before.find(" |")))
                    << "a failure that leaves nothing to finish has changed nothing";
            }
            ExpectSettled(world, treasures);
            ASSERT_LT(step, 1000) << "never finished";
            if (!run.reached || HasFailure()) {
                TellPoints(step - 1, 10);
                break;
            }
        }
}

TEST_P(SavegameInterruption, FailedReadsAndLooksAreAnsweredAndLoseNothing)
{
    for (const auto& [withFaultAt, stride] :
         {std::pair{&WithReadFaultAt, 7}, std::pair{&WithLookFaultAt, 19}})
        for (const AfterFault after_ : {AfterFault::Works, AfterFault::Fails})
            for (int step = 1;; step += stride * WalkStride()) {
                SavesWorld world;
                GetParam().fill(world);
                const auto treasures = world.Treasures();
                const FaultRun run = withFaultAt(
                    step, [&] { return bool(GetParam().run(world.session, world.played)); },
                    std::errc::io_error, after_);
                SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
                if (!run.answer && !ChangeWaits(world.session.Folders())) {
                    EXPECT_EQ(world.Shown("trle"), before.substr(0, before.find(" |")))
                        << "a failure that leaves nothing to finish has changed nothing";
                }
                ExpectSettled(world, treasures);
                ASSERT_LT(step, 5000) << "never finished";
                if (!run.reached || HasFailure()) {
                    TellPoints(step / stride, 10);
                    break;
                }
            }
}

INSTANTIATE_TEST_SUITE_P(Saves, SavegameInterruption, ::testing::ValuesIn(slotWorks),
                         [](const auto& row) { return std::string{row.param.name}; });

TEST(SavegameTransfer, KilledOrFailedAnywhereLosesNothing)
{
    const auto work = [](SavesWorld& world, bool import) {
        std::vector<Path> live;
        for (const char* name : {"savegame.0", "savegame.3", "savegame.4"})
            live.push_back(world / "trle" / name);
        return (import ? CopyIntoSlots(world.session, world.resting, live)
                       : ExportSavegames(world.session, world.played, live, world / "out", true))
            .empty();
    };
    enum class Trouble { Kill, Change, Read, Look };
    for (const bool import : {true, false})
        for (const Trouble trouble : {Trouble::Kill, Trouble::Change, Trouble::Read, Trouble::Look})
            for (int step = 1;; step = NextPoint(step)) {
                SavesWorld world;
                Fill(world);
                world.Write("out/savegame.3", SavegameBytes("of another level", 2));
                const auto everywhere = world.Treasures();
                const auto inside = world.Treasures(false);
                bool reached = false;
                std::string call;
                if (trouble == Trouble::Kill) {
                    const KillRun run = WithKillAt(step, [&] { return work(world, import); });
                    reached = run.killed;
                    call = run.call;
                } else {
                    const auto withFaultAt = trouble == Trouble::Change ? &WithFaultAt
                                             : trouble == Trouble::Read ? &WithReadFaultAt
                                                                        : &WithLookFaultAt;
                    const FaultRun run = withFaultAt(
                        step, [&] { return work(world, import); }, std::errc::io_error,
                        AfterFault::Works);
                    reached = run.reached;
                    call = run.call;
                }
                SCOPED_TRACE((import ? "import" : "export") + std::string{", step "} +
                             std::to_string(step) + ": " + call);
                world.ExpectNothingLost(everywhere);
                world.ExpectNothingLost(inside, false);
                ASSERT_LT(step, 500) << "never finished";
                if (!reached || HasFailure()) {
                    TellPoints(step - 1, 10);
                    break;
                }
            }
}

TEST(SavegameRecovery, IsItselfFinishedWhereverItIsKilled)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        SavesWorld world;
        RestoreHalf(world);
        const auto treasures = world.Treasures();
        const KillRun run = WithKillAt(step, [&] { return RecoverInterruptedWork(world.session); });
        SCOPED_TRACE("recovery killed at step " + std::to_string(step) + ": " + run.call);
        ASSERT_TRUE(RecoverInterruptedWork(world.session));
        world.ExpectNothingLost(treasures);
        EXPECT_EQ(ReadSavegameInfo(world / "trle/savegame.0").number, 3);
        EXPECT_EQ(world.Count(), -3);
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 10);
    }
    FAIL() << "never finished";
}

TEST(SavegameRecovery, LeavesWhatTheGameWroteSince)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        SavesWorld world;
        Fill(world);
        const auto treasures = world.Treasures();
        const KillRun run =
            WithKillAt(step, [&] { return bool(RestoreSavegamesOf(world.session, world.played)); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        if (!run.killed)
            return TellPoints(step - 1, 10);
        const std::string newest = SavegameBytes("Saved after the crash", 99);
        for (const char* name : {"0", "1", "4"})
            world.Write(std::string{"trle/savegame."} + name, newest + name);
        const auto written = world.Treasures();
        ASSERT_TRUE(RecoverInterruptedWork(world.session));
        for (const char* name : {"0", "1", "4"})
            EXPECT_EQ(world.Read(std::string{"trle/savegame."} + name), newest + name);
        world.ExpectNothingLost(written);
        if (HasFailure())
            return;
    }
    FAIL() << "never finished";
}

TEST(SavegameRecovery, WaitsForAFolderThatIsGoneAndSwapsWaitToo)
{
    SavesWorld world;
    RestoreHalf(world);
    std::filesystem::rename(world / "trle", world / "elsewhere");
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("could not be finished yet"));
    EXPECT_FALSE(InterruptedWork(world.session.Folders(), world.session.archive).empty());
    EXPECT_FALSE(ArchiveSavegamesOf(world.session, world.resting)) << "one move at a time";
    std::filesystem::rename(world / "elsewhere", world / "trle");
    EXPECT_TRUE(ArchiveSavegamesOf(world.session, world.resting)) << "and the next one finishes it";
    EXPECT_EQ(ReadSavegameInfo(world / "trle/savegame.0").number, 3);
    EXPECT_TRUE(InterruptedWork(world.session.Folders(), world.session.archive).empty());
}

TEST(ChangeNote, FailsBeforeAnythingChangesWhenWhatIsToComeIsNowhere)
{
    SavesWorld world;
    Fill(world);
    const auto before = world.Snapshot("");
    Change change;
    change.code = world.played;
    change.header = (world / "levels/LEVEL_0001/savegames/savegames.bva").native();
    change.folders = {{(world / "trle").native(), false, {}, {}},
                      {(world / "levels/LEVEL_0001/savegames/slot9").native(), true, {}, {}}};
    std::string hash;
    ASSERT_FALSE(platform::HashOfFile(world / "trle/savegame.3", hash));
    change.folders[0].before = {{"savegame.3", hash}};
    change.folders[1].after = {
        {"savegame.3", hash, (world / "trle/savegame.3").native()},
        {"savegame.5", std::string(32, 'c'), (world / "trle/savegame.5").native()}};
    const auto made = MakeChange(world.session, change);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.Error().subject, (world / "trle/savegame.5").native());
    EXPECT_EQ(world.Snapshot(""), before);
    EXPECT_FALSE(ChangeWaits(world.session.Folders()));

    // A later run goes on without it, and does not count it.
    change.archivedCount = 2;
    world.Write("home/swap/savegames", FormatChange(change));
    ASSERT_TRUE(RecoverInterruptedWork(world.session)) << world.host.AllTold();
    EXPECT_EQ(world.ShownSlot(9), "savegame.3=14");
    EXPECT_EQ(world.Count(), 1);
}

TEST(ChangeNote, ANoteComesBackAsItWasWrittenOrNotAtAll)
{
    Change change;
    change.code = 7;
    change.reason = "slots freed";
    change.header = "/levels/x \xFF/savegames.bva";
    change.archivedCount = -2;
    change.folders = {{"/trle %41",
                       true,
                       {{"savegame.0", std::string(32, 'a')}},
                       {{"note0.txt", std::string(32, 'b'), "/levels/a\xFE/note3.txt"}}}};
    const std::string text = FormatChange(change);
    const auto back = ParseChange(text);
    ASSERT_TRUE(back);
    EXPECT_EQ(FormatChange(*back), text);
    EXPECT_EQ(back->header, change.header);
    EXPECT_EQ(back->folders[0].after[0].source, change.folders[0].after[0].source);
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(ParseChange(std::string_view{text}.substr(0, length))) << length;
    change.folders[0].after[0].name = "../note0.txt";
    EXPECT_FALSE(ParseChange(FormatChange(change)));
    change.folders[0].after[0] = {"note0.txt", std::string(32, 'b'), "note3.txt"};
    EXPECT_FALSE(ParseChange(FormatChange(change)));

    SavesWorld world;
    world.Write("home/swap/savegames", text.substr(0, 30));
    EXPECT_TRUE(RecoverInterruptedWork(world.session));
    EXPECT_EQ(world.Read("home/swap/savegames.1"), text.substr(0, 30));
    EXPECT_TRUE(world.host.WasTold("cannot be read. It was set aside as"));
    EXPECT_FALSE(world.host.WasTold("has been finished now"));
}

} // namespace kestrova::testing
