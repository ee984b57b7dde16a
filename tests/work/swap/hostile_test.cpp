// States of the folders that no player makes on purpose, and that happen all the same.
#include "history/history.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "sandbox/faults.h"
#include "swap/backup.h"
#include "swap/install.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/swap_world.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// Somebody else writes into the folders in front of the n-th changing call.
class Intruder : public platform::FileHook
{
public:
    Intruder(int at, std::function<void()> act) : at_(at), act_(std::move(act))
    {
        platform::SetFileHook(this);
    }
    ~Intruder() override { platform::SetFileHook(nullptr); }
    std::error_code Before(platform::FileAction, const platform::Path&) override
    {
        if (++calls_ == at_) {
            platform::SetFileHook(nullptr);
            act_();
            platform::SetFileHook(this);
        }
        return {};
    }
    [[nodiscard]] bool Came() const { return calls_ >= at_; }

private:
    int at_;
    int calls_ = 0;
    std::function<void()> act_;
};

bool BeginFullRestore(SwapWorld& world)
{
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    RestoreOriginalConfiguration(world.session, *progress);
    return true;
}

/// Kills a piece of work everywhere, lets the player save over everything, starts again.
void KillThenPlay(bool (*work)(SwapWorld&))
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        SwapWorld world;
        world.host.AnswerAll(true);
        world.PlayFirst();
        // Live and stored hold the same bytes, as they do right after an install.
        world.Write("trle/savegame.0", SavegameBytes("First", 5));
        const auto before = world.Treasures();
        const KillRun run = WithKillAt(step, [&] { return work(world); });
        if (!run.killed)
            return;
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        for (const char* name : {"trle/savegame.0", "trle/savegame.4", "trle/savegame.12"})
            world.Write(name, SavegameBytes(std::string{"After "} + name, 20));
        auto treasures = world.Treasures();
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        world.ExpectNothingLost(treasures);
        ASSERT_TRUE(InstallLevel(fresh, world.second));
        world.ExpectNothingLost(treasures);
        if (::testing::Test::HasFailure())
            return;
    }
    FAIL() << "never finished";
}

} // namespace

TEST(AfterAKill, WhatWasPlayedSinceIsKept)
{
    KillThenPlay([](SwapWorld& world) { return InstallLevel(world.session, world.second); });
    KillThenPlay(BeginFullRestore);
}

TEST(DuringASwap, ASavegameThatTheGameWritesIsNeverDeleted)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        SwapWorld world;
        world.host.AnswerAll(true);
        world.PlayFirst();
        auto treasures = world.Treasures();
        // What is being overwritten by the game itself is no business of the swap.
        treasures.erase(SavegameBytes("First later", 6));
        const std::string over = SavegameBytes("Written over", 30);
        const std::string fresh = SavegameBytes("Written anew", 31);
        Intruder game{step, [&] {
                          if (!world.Has("home/swap/journal"))
                              return;
                          world.Write("trle/savegame.0", over);
                          world.Write("trle/savegame.14", fresh);
                          treasures.insert(over);
                          treasures.insert(fresh);
                      }};
        (void)InstallLevel(world.session, world.second); // it may well refuse
        SCOPED_TRACE("written at step " + std::to_string(step));
        EXPECT_EQ(world.Treasures().contains(fresh), treasures.contains(fresh));
        const auto now = world.Treasures();
        for (const std::string& content : treasures)
            EXPECT_TRUE(content == over || now.contains(content)) << content.substr(0, 20);
        if (!game.Came() || HasFailure())
            return;
    }
}

TEST(Twins, OfACaseAreSettledInsteadOfBlockingEverySwap)
{
    SwapWorld world;
    world.PlayFirst();
    world.Write("trle/Savegame.4", SavegameBytes("Twin", 2));
    world.Write("home/LEVEL_0000/backup_savegames/NOTE0.txt", "twin of a note");
    const auto treasures = world.Treasures();
    EXPECT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
    EXPECT_TRUE(world.host.WasTold("differ by case alone the newest stays"))
        << world.host.AllTold();
    world.ExpectNothingLost(treasures);
    world.ExpectOriginal();
}

TEST(VanishedLevel, WithAllOfItsArchiveIsAwayAndNeedsNoRestore)
{
    SwapWorld world;
    world.PlayFirst();
    fs::rename(world / "levels/LEVEL_0001", world / "elsewhere");
    (void)InstallLevel(world.session, world.first);
    EXPECT_TRUE(world.host.WasTold("I cann't find level folder"));
    EXPECT_FALSE(world.host.WasTold("Connect its drive first")) << world.host.AllTold();
    fs::rename(world / "levels", world / "away");
    world.host.told.clear();
    (void)InstallLevel(world.session, world.first);
    EXPECT_TRUE(world.host.WasTold("Connect its drive first")) << world.host.AllTold();
}

TEST(VanishedLevel, LeavesNoFilesBehindForEver)
{
    SwapWorld world;
    world.PlayFirst();
    auto treasures = world.Treasures();
    fs::rename(world / "levels/LEVEL_0001", world / "elsewhere");
    EXPECT_TRUE(InstallLevel(world.session, world.second));
    EXPECT_TRUE(world.host.WasTold("I cann't find level folder"));
    EXPECT_TRUE(InstallLevel(world.session, originalCode));
    world.ExpectOriginal();
    world.ExpectNothingLost(treasures);
}

TEST(UnpluggedArchive, MakesRecoveryWaitInsteadOfGuessing)
{
    SwapWorld world;
    world.host.AnswerAll(true);
    world.PlayFirst();
    const auto treasures = world.Treasures();
    for (int step = 30; step < 60; step += 10) {
        ASSERT_TRUE(
            WithKillAt(step, [&] { return InstallLevel(world.session, world.second); }).killed);
        fs::rename(world / "levels", world / "unplugged");
        EXPECT_FALSE(RecoverInterruptedWork(world.session)) << step;
        EXPECT_FALSE(world.Has("levels"));
        EXPECT_FALSE(InstallLevel(world.session, originalCode));
        fs::rename(world / "unplugged", world / "levels");
        EXPECT_TRUE(RecoverInterruptedWork(world.session));
        world.ExpectNothingLost(treasures);
        if (CurrentLevelCode(world.session.Folders(), world.session.archive) != world.first) {
            ASSERT_TRUE(InstallLevel(world.session, world.first));
        }
    }
}

TEST(Markers, OfStrangersHarmNobody)
{
    SwapWorld world;
    world.Write("trle/shot4.bmp", "a big shot");
    world.Write("trle/Kestrva.txt",
                "#LEVEL_CODE=0001#\r\n#COPIED_FILES=\\shot4.bmp|\\note9.txt#\r\n");
    const auto treasures = world.Treasures();
    EXPECT_TRUE(InstallLevel(world.session, world.second));
    EXPECT_TRUE(world.host.WasTold("shot4.bmp"));
    world.ExpectNothingLost(treasures);
    EXPECT_EQ(world.Read("trle/shot4.bmp"), "a big shot");

    fs::remove(world / "trle/Kestrva.txt");
    fs::create_directory(world / "trle/Kestrva.txt");
    (void)InstallLevel(world.session, world.first); // a folder of that name is no marker
    world.ExpectNothingLost(treasures);
}

TEST(Markers, ThatSayNothingLeaveNoLevelUntold)
{
    for (const char* marker : {"", "nothing of use"}) {
        SwapWorld world;
        world.PlayFirst();
        const auto treasures = world.Treasures();
        world.Write("trle/Kestrva.txt", marker);
        EXPECT_FALSE(RestoreFastWithWords(world.session)) << marker;
        EXPECT_FALSE(world.host.WasTold("Set in Tomb Raider Level Editor")) << marker;
        EXPECT_TRUE(world.host.WasTold("original --full")) << world.host.AllTold();
        world.host.AnswerAll(true);
        EXPECT_TRUE(BeginFullRestore(world));
        world.ExpectOriginal();
        world.ExpectNothingLost(treasures);

        world.Write("trle/Kestrva.txt", marker);
        EXPECT_TRUE(RestoreFastWithWords(world.session)) << "nothing of a level is there";
    }
}

TEST(LostHome, LeadsOutByTheWordThatTheFolderIsOriginalAgain)
{
    SwapWorld world;
    world.PlayFirst();
    const std::string later = world.Read("trle/savegame.0");
    fs::remove_all(world / "home");
    fs::create_directories(world / "home");
    world.host.WillAsk("Did you install the Level Editor anew", false);
    EXPECT_FALSE(MakeTrleBackup(world.session, false, {BackupForm::Full}));
    EXPECT_TRUE(world.host.WasTold("--folder-is-original")) << world.host.AllTold();
    EXPECT_TRUE(world.Has("trle/Kestrva.txt"));
    EXPECT_EQ(world.Read("trle/savegame.0"), later);

    EXPECT_TRUE(MakeTrleBackup(world.session, false, {BackupForm::Full, true}))
        << world.host.AllTold();
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), originalCode);
    EXPECT_TRUE(world.Has("home/backup_trle/Script.dat"));
    EXPECT_FALSE(world.Has("trle/savegame.0"));
    const auto kept = HistoryOf(world.session.Folders(), world.first);
    for (const char* name : {"savegame.0", "savegame.4", "note0.txt", "shot0.jpg", "shot4.bmp"})
        EXPECT_TRUE(std::any_of(kept.begin(), kept.end(), [&](const HistoryEntry& entry) {
            return entry.name == name;
        })) << name;
}

TEST(Journals, OfStrangersReachNothingOutside)
{
    SwapWorld world;
    world.Write("outside.txt", "outside");
    SwapJournal journal;
    journal.folder = *MarkOf(world / "trle");
    journal.fromStore = (world / "levels/LEVEL_0001/backup_savegames").native();
    journal.store = {{"../../../evil", "../../../outside.txt"}};
    world.Write("home/swap/journal", FormatJournal(journal));
    EXPECT_TRUE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("cannot be read"));
    EXPECT_FALSE(world.Has("evil"));
}

TEST(Links, AreNeverFollowedByARemoval)
{
    SwapWorld world;
    world.Write("documents/thesis.txt", "years of work");
    fs::create_directory_symlink(world / "documents", world / "trle/.kv~ready");
    fs::create_symlink(world / "documents/thesis.txt", world / "trle/savegame.7");
    EXPECT_TRUE(InstallLevel(world.session, world.first));
    EXPECT_EQ(world.Read("documents/thesis.txt"), "years of work");
}

TEST(Links, InThePlaceOfTheProgramsNotesAreNotWrittenThrough)
{
    SwapWorld world;
    fs::create_directories(world / "home/swap");
    for (const char* note :
         {"trle/Kestrva.txt", "home/swap/owner", "home/history/originals.jsonl"}) {
        const std::string victim = "out/" + Path{note}.filename().native();
        world.Write(victim, "my own, behind a link");
        fs::create_directories((world / note).parent_path());
        fs::create_symlink(world / victim, world / note);
    }
    world.Write("trle/extra.h", "my own header");
    EXPECT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
    EXPECT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), world.second);
    EXPECT_FALSE(fs::is_symlink(world / "trle/Kestrva.txt"));
    for (const auto& [file, content] : world.Snapshot("out"))
        EXPECT_EQ(content, "my own, behind a link") << file;
}

TEST(Twins, OfAnOriginalAreKeptAsTheFileThatGoes)
{
    for (const bool full : {false, true}) {
        SwapWorld world;
        world.host.AnswerAll(true);
        ASSERT_TRUE(InstallLevel(world.session, world.first));
        // Both spellings of what the level brought and of what it replaced, each of another hand.
        for (const char* file :
             {"script.dat", "SCRIPT.DAT", "Script.Dat", "data/title.tr4", "data/TITLE.TR4",
              "data/Title.tr4", "audio/003.WAV", "audio/003.wav"})
            world.Write("trle/" + std::string{file}, "my own " + std::string{file});
        const auto treasures = world.Treasures();
        (void)(full ? BeginFullRestore(world) : InstallLevel(world.session, originalCode));
        world.ExpectNothingLost(treasures);
        EXPECT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();
        EXPECT_TRUE(InstallLevel(world.session, originalCode)) << world.host.AllTold();
        world.ExpectNothingLost(treasures);
    }
}

TEST(HistoryIndex, ThatCannotBeReadIsNeverReplaced)
{
    SwapWorld world;
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, 0, {world / "trle/savegame.0"}, "test"));
    const std::string old = world.Read("home/history/level_0000.jsonl");
    world.Write("home/history/level_0000.jsonl", old + "{\"of\": \"a later version\"}\n");
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, 0, {world / "trle/savegame.12"}, "test"));
    const std::string now = world.Read("home/history/level_0000.jsonl");
    EXPECT_NE(now.find("a later version"), std::string::npos);
    EXPECT_NE(now.find(old), std::string::npos);
    fs::remove(world / "home/history/level_0000.jsonl");
    fs::create_directory(world / "home/history/level_0000.jsonl");
    EXPECT_FALSE(KeepInHistory(world.session.machine, world.session.Folders(),
                               world.session.settings, 0, {world / "trle/note0.txt"}, "test"));
}

TEST(AfterARestart, WhatTheDesignerRebuiltStays)
{
    SwapWorld world;
    world.PlayFirst();
    world.Write("trle/DATA/first.TR4", "rebuilt by its designer");
    world.machine.bootId = "boot-2";
    EXPECT_TRUE(InstallLevel(world.session, world.first));
    EXPECT_EQ(world.Read("trle/DATA/first.TR4"), "rebuilt by its designer");
    fs::remove_all(world / "levels/LEVEL_0001/files");
    world.machine.bootId = "boot-3";
    EXPECT_TRUE(InstallLevel(world.session, world.first)); // it stands there all the same
}

} // namespace kestrova::testing
