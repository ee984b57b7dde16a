// Every operation that changes the Level Editor's folder asks while a program runs there.
#include "swap/folder_guard.h"

#include "core/activity_log.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "levels/level_language.h"
#include "swap/backup.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/swap_world.h"

namespace kestrova::testing
{
namespace
{

class GuardedFolder : public ::testing::Test
{
protected:
    void SetUp() override
    {
        world.PlayFirst();
        std::filesystem::rename(world / "home/backup_trle/English.DAT",
                                world / "home/backup_trle/italiano.dat");
        world.machine.running = {{7, "tomb4.exe"}};
    }
    SwapWorld world;
};

TEST_F(GuardedFolder, NoOperationChangesItAgainstTheAnswer)
{
    Session& session = world.session;
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    const auto setMine = [&] {
        LanguageFailure failure;
        const bool set = ChangeLanguage(session, world / "levels/LEVEL_0001/files",
                                        LanguageChange::Mine, true, failure);
        EXPECT_TRUE(set || failure.declined);
    };
    const struct {
        const char* what;
        std::function<void()> run;
    } operations[] = {
        {"install", [&] { InstallLevel(session, world.second); }},
        {"install the original", [&] { InstallLevel(session, originalCode); }},
        {"install after a restart",
         [&] {
             world.machine.bootId = "boot-2";
             InstallLevel(session, world.first);
             world.machine.bootId = "boot-1";
         }},
        {"remove",
         [&] {
             ActivityLog log;
             RemovePreviousLevel(session, -1, log);
         }},
        {"fast restore", [&] { RestoreFast(session); }},
        {"fast restore in words", [&] { RestoreFastWithWords(session); }},
        {"full restore", [&] { RestoreOriginalConfiguration(session, *progress); }},
        {"language", setMine},
        {"language of a level",
         [&] { ChangeLanguageOfLevel(session, world.first, LanguageChange::Mine, true); }},
        {"language of all", [&] { ChangeLanguageOfAll(session, LanguageChange::Mine); }},
    };
    const auto before = world.Snapshot("");
    for (const auto& operation : operations) {
        world.host.WillAsk("tomb4.exe", false);
        operation.run();
        EXPECT_EQ(world.Snapshot(""), before) << operation.what;
        EXPECT_TRUE(world.host.told.empty()) << operation.what << world.host.AllTold();
    }
    EXPECT_TRUE(ChangeLanguageOfLevel(session, world.second, LanguageChange::Mine, false))
        << "what does not stand there may change at any time";
}

TEST_F(GuardedFolder, OneAnswerIsEnoughForOneOperation)
{
    world.host.WillAsk("tomb4.exe", true);
    EXPECT_TRUE(RestoreFastWithWords(world.session));
    EXPECT_EQ(CurrentLevelCode(world.session.Folders(), world.session.archive), originalCode);
    world.host.WillAsk("tomb4.exe", false);
    EXPECT_FALSE(InstallLevel(world.session, world.second)) << "the next one asks anew";

    // The game that was started here counts wherever it runs.
    world.machine.running = {};
    EXPECT_TRUE(ProgramsInTrle(world.session, world.session.Folders()).empty());
}

TEST_F(GuardedFolder, WhatWaitsToBeMendedWaitsForTheGamesEnd)
{
    const auto before = world.Snapshot("trle");
    SwapJournal journal;
    journal.from = world.first;
    journal.to = world.second;
    journal.phase = SwapPhase::Planned;
    journal.fromStore = StateStoreOf(world.session.Folders(), world.first).native();
    journal.toStore = StateStoreOf(world.session.Folders(), world.second).native();
    journal.folder = *MarkOf(world / "trle");
    ASSERT_TRUE(WriteJournal(world.session.Folders(), journal));
    world.host.WillAsk("tomb4.exe", false);
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    EXPECT_EQ(world.Snapshot("trle"), before);
    EXPECT_FALSE(InterruptedWork(world.session.Folders(), world.session.archive).empty());
    world.machine.running.clear();
    EXPECT_TRUE(RecoverInterruptedWork(world.session)) << world.host.AllTold();
}

} // namespace
} // namespace kestrova::testing
