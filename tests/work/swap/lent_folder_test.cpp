#include "originals/folder_loan.h"
#include "originals/vault.h"
#include "sandbox/faults.h"
#include "swap/recovery.h"
#include "world/world.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>

namespace kestrova::testing
{

namespace
{

/// A Level Editor's folder in which a builder works: wads of the builder's own, a level compiled
/// over an original, no folder of samples; and a level's sources that want the same names.
class LoanWorld : public World
{
public:
    LoanWorld()
    {
        MakeTrle();
        MakeBackupAndArchive();
        for (const char* place : {"trle/sound/samples", "home/backup_trle/sound/samples"})
            std::filesystem::remove_all(root / place);
        std::filesystem::remove(root / "trle/DATA/Title.tr4"); // the backup has it
        Write("trle/graphics/wads/Mill.WAS", "the builder's own wad");
        Write("trle/graphics/wads/mill.was", "its twin");
        Write("trle/DATA/tut1.tr4", "the builder's own level");
        Write("trle/script/SCRIPT.DAT", "the builder's own script");
        for (const char* name : {"city.was", "mill.was", "mill.swd"})
            Write("sources/" + std::string{name}, std::string{"the level's "} + name);
        Write("sources/step.wav", "the level's step");
        before = Snapshot("trle");
    }

    [[nodiscard]] std::vector<LoanWish> Wishes() const
    {
        return {{"\\data\\tut1.tr4", {}},
                {"\\data\\title.tr4", {}},
                {"\\data\\new.tr4", {}},
                {"\\graphics\\wads\\city.was", root / "sources/city.was"},
                {"\\graphics\\wads\\mill.was", root / "sources/mill.was"},
                {"\\graphics\\wads\\mill.swd", root / "sources/mill.swd"},
                {"\\sound\\samples\\step.wav", root / "sources/step.wav", true}};
    }

    /// Another program writes a file; no hook hears of it.
    void Program(const std::string& relative, const std::string& text) const
    {
        std::ofstream{root / relative} << text;
    }

    /// Lends the folder, has a program work in it, and gives it back.
    bool Lend(LoanEnd end = LoanEnd::Whole)
    {
        FolderLoan loan{machine, session.Folders()};
        const auto wishes = Wishes();
        if (!loan.Begin(wishes, {"\\script\\*.dat"}))
            return false;
        for (std::size_t i = 0; i < wishes.size(); ++i)
            if (!wishes[i].source.empty() && !loan.Put(i))
                return loan.GiveBack() && false;
        EXPECT_EQ(Read("trle/graphics/wads/mill.was"), "the level's mill.was");
        Program("trle/DATA/tut1.tr4", "a program's work");
        Program("trle/DATA/new.tr4", "a program's work");
        Program("trle/DATA/NEW.tr4", "a program's work");
        Program("trle/script/french.dat", "a program's work");
        return bool{loan.GiveBack(end)};
    }

    /// What a whole return gives: as it was, and what the backup has besides.
    void ExpectBack()
    {
        EXPECT_FALSE(LoanWaits(session.Folders()));
        std::error_code isNone;
        EXPECT_TRUE(std::filesystem::is_empty(root / "trle/.kv~lent", isNone) || isNone);
        auto now = Snapshot("trle");
        now.erase("DATA/Title.tr4"); // may be back from the backup
        for (const auto& [file, content] : now)
            EXPECT_TRUE(before.contains(file)) << file << " came";
        for (const auto& [file, content] : before)
            EXPECT_EQ(now[file], content) << file;
    }

    FileContents before;
};

TEST(LentFolder, WhatIsTooLargeToBeCopiedFirstComesBackWhenItWasDeleted)
{
    World world;
    world.MakeTrle();
    world.MakeBackupAndArchive();
    for (const char* name : {"trle/deleted.wad", "trle/written.wad"}) {
        world.Write(name, "a builder's");
        std::filesystem::resize_file(world / name,
                                     (std::uintmax_t{1} << 30) + 1); // no room is used
    }
    FolderLoan loan{world.machine, world.session.Folders()};
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    ASSERT_TRUE(loan.Begin({}));
    ASSERT_TRUE(loan.KeepRest(*progress));
    std::filesystem::remove(world / "trle/deleted.wad");
    std::ofstream{world / "trle/written.wad", std::ios::app} << "more";
    const auto rest = loan.ReturnRest();
    ASSERT_TRUE(rest);
    EXPECT_EQ(rest->back, std::vector<Path>{"deleted.wad"});
    EXPECT_EQ(rest->changed, std::vector<Path>{"written.wad"}) << "it is told";
    EXPECT_EQ(std::filesystem::file_size(world / "trle/deleted.wad"),
              (std::uintmax_t{1} << 30) + 1);
    ASSERT_TRUE(loan.GiveBack());
    EXPECT_FALSE(FileExists(world / "trle/.kv~lent"));
}

TEST(LentFolder, ComesBackAsItWas)
{
    LoanWorld world;
    EXPECT_TRUE(world.Lend());
    world.ExpectBack();
    EXPECT_TRUE(world.Has("trle/DATA/Title.tr4")) << "what the backup has comes back";
    EXPECT_FALSE(world.Has("trle/sound/samples"));
}

TEST(LentFolder, KilledAnywhereItComesBackAtTheNextStart)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        LoanWorld world;
        world.host.AnswerAll(true);
        const KillRun run = WithKillAt(step, [&] { return world.Lend(); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        EXPECT_EQ(InterruptedWork(fresh.Folders(), fresh.archive).empty(),
                  !LoanWaits(fresh.Folders()));
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        world.ExpectBack();
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 30);
    }
    FAIL() << "never finished";
}

TEST(LentFolder, FailedAnywhereItComesBack)
{
    for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1;; step = NextPoint(step)) {
            LoanWorld world;
            world.host.AnswerAll(true);
            const FaultRun run = WithFaultAt(
                step, [&] { return world.Lend(); }, std::errc::io_error, after);
            SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
            Session fresh = world.Reopened();
            ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
            world.ExpectBack();
            ASSERT_LT(step, 500) << "never finished";
            if (!run.reached || ::testing::Test::HasFailure()) {
                TellPoints(step - 1, 30);
                break;
            }
        }
}

TEST(LentFolder, TheReturnIsItselfMendedWhereverItIsKilled)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        LoanWorld world;
        world.host.AnswerAll(true);
        constexpr int amidTheCopies = 45;
        (void)WithKillAt(amidTheCopies, [&] { return world.Lend(); });
        ASSERT_TRUE(LoanWaits(world.session.Folders()));
        Session killed = world.Reopened();
        const KillRun run = WithKillAt(step, [&] { return RecoverInterruptedWork(killed); });
        SCOPED_TRACE("recovery killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        world.ExpectBack();
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 15);
    }
    FAIL() << "never finished";
}

TEST(LentFolder, WhatSomebodyPutThereMeanwhileIsInTheVault)
{
    LoanWorld world;
    world.host.AnswerAll(true);
    const auto begun = [](LoanWorld& in, FolderLoan& loan) {
        const auto wishes = in.Wishes();
        EXPECT_TRUE(loan.Begin(wishes, {"\\script\\*.dat"}));
        for (std::size_t i = 3; i < wishes.size(); ++i)
            EXPECT_TRUE(loan.Put(i));
        return true;
    };
    LoanWorld counted;
    FolderLoan other{counted.machine, counted.session.Folders()};
    const int calls = CountFileCalls([&] { return begun(counted, other); });
    const KillRun run = WithKillAt(calls + 1, [&] {
        FolderLoan loan{world.machine, world.session.Folders()};
        begun(world, loan);
        world.Program("trle/DATA/new.tr4", "compiled by hand");
        world.Program("trle/graphics/wads/city.was", "changed by hand");
        world.Program("trle/script/french.dat", "made by hand");
        return bool{loan.GiveBack()};
    });
    EXPECT_TRUE(run.killed);
    ASSERT_TRUE(LoanWaits(world.session.Folders()));
    Session fresh = world.Reopened();
    ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
    world.ExpectBack();
    const auto files = KeptFiles(fresh.Folders());
    ASSERT_TRUE(files);
    std::set<std::string> kept;
    for (const KeptFile& file : *files)
        kept.insert(*ReadWholeFile(file.content));
    EXPECT_EQ(kept, (std::set<std::string>{"compiled by hand", "changed by hand", "made by hand"}));
}

TEST(LentFolder, ACancelLeavesTheSamplesButForABuildersOwn)
{
    LoanWorld world;
    EXPECT_TRUE(world.Lend(LoanEnd::Cancelled));
    EXPECT_EQ(world.Read("trle/sound/samples/step.wav"), "the level's step");
    std::filesystem::remove_all(world.root / "trle/sound/samples");
    world.ExpectBack();

    world.Write("trle/sound/samples/Step.wav", "the builder's own step");
    EXPECT_TRUE(world.Lend(LoanEnd::Cancelled));
    EXPECT_EQ(world.Read("trle/sound/samples/Step.wav"), "the builder's own step");
    world.Write("home/backup_trle/sound/samples/step.wav", "sample");
    world.Write("trle/sound/samples/Step.wav", "sample");
    EXPECT_TRUE(world.Lend(LoanEnd::Cancelled));
    EXPECT_EQ(world.Read("trle/sound/samples/Step.wav"), "the level's step");
}

TEST(LentFolder, WaitsForItsFolderAndStopsNobody)
{
    LoanWorld world;
    world.host.AnswerAll(true);
    constexpr int amidTheCopies = 45;
    ASSERT_TRUE(WithKillAt(amidTheCopies, [&] { return world.Lend(); }).killed);
    std::filesystem::rename(world.root / "trle", world.root / "moved");
    Session fresh = world.Reopened();
    EXPECT_TRUE(RecoverInterruptedWork(fresh));
    EXPECT_TRUE(world.host.WasTold("which is not there now"));
    EXPECT_TRUE(LoanWaits(fresh.Folders()));
    EXPECT_NE(InterruptedWork(fresh.Folders(), fresh.archive), "");
    Whereabouts said;
    said.trle = world.root / "moved";
    EXPECT_TRUE(RecoverInterruptedWork(fresh, said)) << world.host.AllTold();
    std::filesystem::rename(world.root / "moved", world.root / "trle");
    world.ExpectBack();

    ASSERT_TRUE(WithKillAt(amidTheCopies, [&] { return world.Lend(); }).killed);
    world.Write("home/swap/lent", "{\"folder\": 1}");
    EXPECT_TRUE(RecoverInterruptedWork(fresh));
    EXPECT_TRUE(world.host.WasTold("cannot be read"));
    EXPECT_TRUE(world.Has("home/swap/lent.1")) << "it is not lost";
    EXPECT_TRUE(world.Lend()) << "and what is aside still is not";
    EXPECT_TRUE(std::filesystem::exists(world.root / "trle/.kv~lent.1"));
}

TEST(LentFolder, ANoteThatLeadsElsewhereIsNone)
{
    LoanNote note;
    note.places = {{"\\data\\a\xFF.tr4", true, true, 5, 6}};
    note.made = {"\\sound\\samples"};
    note.swept = {"\\script\\*.dat"};
    const std::string text = FormatLoanNote(note);
    const auto read = ParseLoanNote(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(FormatLoanNote(*read), text);
    EXPECT_EQ(read->places.front().name, note.places.front().name);
    for (std::size_t length = 0; length + 1 < text.size(); ++length)
        EXPECT_FALSE(ParseLoanNote(std::string_view{text}.substr(0, length))) << length;
    for (const char* name : {"\\..\\a", "C:\\a", "\\\\a", ""}) {
        LoanNote leads = note;
        leads.places.front().name = name;
        EXPECT_FALSE(ParseLoanNote(FormatLoanNote(leads))) << name;
        leads = note;
        leads.made = leads.swept = {name};
        EXPECT_FALSE(ParseLoanNote(FormatLoanNote(leads))) << name;
    }
}

TEST(LentFolder, OnAnotherDiskComesBackToo)
{
    LoanWorld world;
    std::string elsewhere = (std::filesystem::temp_directory_path() / "kestrova-wads-XXXXXX");
    ASSERT_NE(::mkdtemp(elsewhere.data()), nullptr);
    std::filesystem::remove_all(world.root / "trle/graphics/wads");
    std::filesystem::create_directory_symlink(elsewhere, world.root / "trle/graphics/wads");
    std::ofstream{elsewhere + "/City.was"} << "the builder's own";
    EXPECT_TRUE(world.Lend());
    EXPECT_EQ(*ReadWholeFile(elsewhere + "/City.was"), "the builder's own");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{elsewhere}, {}), 1);
    std::filesystem::remove_all(elsewhere);
}

} // namespace

} // namespace kestrova::testing
