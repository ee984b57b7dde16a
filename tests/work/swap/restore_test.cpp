#include "history/swap_journal_file.h"
#include "sandbox/faults.h"
#include "swap/backup.h"
#include "swap/recovery.h"
#include "swap/restore.h"
#include "swap/restore_steps.h"
#include "swap/swap_world.h"
#include "swap/waiting_in_trle.h"

#include <sys/mount.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

bool RestoreFully(SwapWorld& world)
{
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    return RestoreOriginalConfiguration(world.session, *progress);
}

/// A folder on a disk of its own that is as small as the test wants it; needs the superuser.
class SmallDisk
{
public:
    SmallDisk(const Path& folder, const std::string& size) : folder_(folder)
    {
        mounted_ = ::mount("none", folder.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
    }
    ~SmallDisk()
    {
        if (mounted_)
            ::umount2(folder_.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    [[nodiscard]] bool Mounted() const { return mounted_; }

private:
    Path folder_;
    bool mounted_ = false;
};

/// A file of that name cannot be deleted.
class FailingDelete : public platform::FileHook
{
public:
    explicit FailingDelete(std::string name) : name_(std::move(name))
    {
        platform::SetFileHook(this);
    }
    ~FailingDelete() override { platform::SetFileHook(nullptr); }
    FailingDelete(const FailingDelete&) = delete;
    FailingDelete& operator=(const FailingDelete&) = delete;
    std::error_code Before(platform::FileAction action, const Path& path) override
    {
        return action == platform::FileAction::Unlink && path.filename() == name_
                   ? std::make_error_code(std::errc::operation_not_permitted)
                   : std::error_code{};
    }

private:
    std::string name_;
};

} // namespace

TEST(FullRestore, KeepsWhatThePlayerPatchedBeforeItWritesOverIt)
{
    SwapWorld world;
    world.Write("trle/tomb4.exe", "the game, patched by hand");
    world.Write("trle/DATA/tut1.tr4", "the tutorial, compiled anew");
    world.Write("trle/Audio/001.wav", "another tune");
    world.host.WillAsk("Restore also folders", true);
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    world.ExpectOriginal();
    const auto kept = world.Snapshot("home/history");
    for (const char* content :
         {"the game, patched by hand", "the tutorial, compiled anew", "another tune"})
        EXPECT_TRUE(std::any_of(kept.begin(), kept.end(), [&](const auto& file) {
            return file.second == content;
        })) << content;
    for (const char* file : {"tomb4.exe", "tut1.tr4", "001.wav"})
        EXPECT_TRUE(world.host.WasTold(file)) << file << " was taken out in silence";
}

TEST(FullRestore, ComesBackFromAFolderThatLacksNearlyEverything)
{
    SwapWorld world;
    world.PlayFirst();
    world.session.archive = {}; // no archive is loaded
    std::filesystem::rename(world / "levels", world / "away");
    for (const char* gone : {"tomb4.exe", "DATA/Title.tr4", "DATA/tut1.tr4", "Audio/001.wav"})
        std::filesystem::remove(world / "trle" / gone);
    std::filesystem::remove(world / "trle/DATA/first.TR4");
    const auto treasures = world.Treasures();
    world.host.AnswerAll(true);
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    world.ExpectOriginal();
    world.ExpectNothingLost(treasures);
}

TEST(FullRestore, RemembersWhatTheLevelBroughtWhenItCannotEnd)
{
    SwapWorld world;
    const std::string stem = "levels/LEVEL_0001/files/";
    world.Write(stem + "200.wav", "a wave of its own");
    world.PlayFirst();
    world.host.AnswerAll(false);
    {
        const FailingDelete disk{"200.wav"};
        EXPECT_FALSE(RestoreFully(world));
        EXPECT_TRUE(world.host.WasTold("\\audio\\200.wav")) << world.host.AllTold();
    }
    EXPECT_TRUE(world.Has("trle/Audio/200.wav"));
    EXPECT_EQ(world.Read("trle/Audio/003.wav"), "wave 3"); // it went on with the rest
    Session next = world.Reopened();
    EXPECT_TRUE(RecoverInterruptedWork(next));
    EXPECT_FALSE(world.Has("trle/Audio/200.wav")) << "nobody knows any more whose it is";
    world.ExpectOriginal();
}

TEST(FullRestore, NamesEachOriginalThatIsNotBackOnceHoweverOftenItIsTried)
{
    SwapWorld world;
    world.PlayFirst();
    world.host.AnswerAll(true);
    const auto data = ResolvePath(world / "trle/data");
    std::filesystem::remove_all(data);
    world.Write("trle/DATA", "a file in place of the folder");
    for (int i = 0; i < 3; ++i) {
        world.host.told.clear();
        EXPECT_FALSE(RestoreFully(world));
        const std::string told = FoldCase(world.host.AllTold());
        const std::size_t first = told.find("title.tr4");
        ASSERT_NE(first, std::string::npos) << told;
        EXPECT_EQ(told.find("title.tr4", first + 1), std::string::npos) << i << told;
        const auto owner = ReadOwner(world.session.Folders());
        ASSERT_TRUE(owner && *owner);
        std::set<std::string> names;
        for (const std::string& name : (*owner)->overwritten)
            EXPECT_TRUE(names.insert(FoldCase(name)).second) << name;
    }
    std::filesystem::remove(world / "trle/DATA");
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    EXPECT_EQ(ReadWholeFile(ResolvePath(world / "trle/data/title.tr4")).ValueOr(""),
              "original title");
}

TEST(FullRestore, GivesALevelItsSavegamesWhereTheOrdinaryRemovalFailed)
{
    const auto liveIsFirsts = [](const SwapWorld& world) {
        return world.Read("trle/savegame.4") == SavegameBytes("First new", 8);
    };
    const auto isAtHome = [](const SwapWorld& world) {
        const std::string store = "levels/LEVEL_0001/backup_savegames/";
        return world.Read(store + "savegame.0") == SavegameBytes("First later", 6) &&
               world.Read(store + "savegame.4") == SavegameBytes("First new", 8) &&
               !world.Has("trle/savegame.4") &&
               world.Read("trle/savegame.12") == SavegameBytes("Original late", 9);
    };
    SwapWorld world;
    world.PlayFirst();
    world.host.AnswerAll(true);
    {
        const FailingCalls failing{platform::FileAction::Rename, "/swap/journal", 1};
        EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
        EXPECT_EQ(failing.Failed(), 1);
    }
    EXPECT_TRUE(world.host.WasTold("The full restore goes on")) << world.host.AllTold();
    world.ExpectOriginal();
    EXPECT_TRUE(isAtHome(world));

    // They stay the level's while its store takes nothing; that is told, and tried at each start.
    SwapWorld other;
    other.PlayFirst();
    other.host.AnswerAll(true);
    {
        const FailingCalls failing{platform::FileAction::Rename, "/backup_savegames/savegame.4", -1,
                                   std::errc::no_space_on_device};
        EXPECT_FALSE(RestoreFully(other));
        EXPECT_TRUE(other.host.WasTold("They stay that level's")) << other.host.AllTold();
        other.ExpectOriginal();
        EXPECT_TRUE(liveIsFirsts(other));
        EXPECT_NE(WhatWaitsInTrle(other.session.Folders(), other.session.archive,
                                  other.session.preferences)
                      .find("LEVEL_0001"),
                  std::string::npos);
        Session next = other.Reopened();
        EXPECT_TRUE(RecoverInterruptedWork(next)) << "nothing that holds up a swap";
        EXPECT_TRUE(liveIsFirsts(other));
    }
    Session next = other.Reopened();
    EXPECT_TRUE(RecoverInterruptedWork(next));
    EXPECT_TRUE(isAtHome(other));
    EXPECT_EQ(
        WhatWaitsInTrle(other.session.Folders(), other.session.archive, other.session.preferences),
        "");
}

TEST(FullRestore, LeavesSavegamesWhoseArchiveIsAwayToNoOtherLevel)
{
    SwapWorld world;
    world.PlayFirst();
    const auto treasures = world.Treasures();
    world.host.AnswerAll(true);
    std::filesystem::rename(world / "levels", world / "away");
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    world.ExchangeArchive();
    Session other = world.Reopened();
    ASSERT_TRUE(InstallLevel(other, world.first)) << world.host.AllTold();
    ASSERT_TRUE(InstallLevel(other, originalCode)) << world.host.AllTold();
    for (const auto& [file, content] : world.Snapshot("")) {
        EXPECT_FALSE(content == SavegameBytes("First new", 8) && !file.starts_with("home/history/"))
            << file;
    }
    world.ExpectNothingLost(treasures);
}

TEST(FullRestore, SavegamesThatWaitGoWhereThePersonSays)
{
    enum class Moved { Trle, Archive, Gone };
    for (const Moved moved : {Moved::Trle, Moved::Archive, Moved::Gone}) {
        SwapWorld world;
        world.PlayFirst();
        const auto treasures = world.Treasures();
        world.host.AnswerAll(true);
        std::filesystem::rename(world / "levels", world / "away");
        EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
        Whereabouts said;
        if (moved == Moved::Trle) {
            std::filesystem::rename(world / "away", world / "levels");
            std::filesystem::rename(world / "trle", world / "elsewhere");
            said.trle = world / "elsewhere";
        } else if (moved == Moved::Archive) {
            said.archiveFolder = world / "away";
        } else {
            said.letGo = true;
        }
        EXPECT_NE(WhatWaitsInTrle(world.session.Folders(), world.session.archive,
                                  world.session.preferences),
                  "");
        ASSERT_TRUE(RecoverInterruptedWork(world.session, said)) << world.host.AllTold();
        EXPECT_EQ(WhatWaitsInTrle(world.session.Folders(), world.session.archive,
                                  world.session.preferences),
                  "");
        const Path store = moved == Moved::Trle ? "levels" : "away";
        const std::string name = (store / "LEVEL_0001/backup_savegames/savegame.4").native();
        EXPECT_EQ(world.Has(name) && world.Read(name) == SavegameBytes("First new", 8),
                  moved != Moved::Gone);
        for (const auto& [file, content] :
             world.Snapshot(moved == Moved::Trle ? "elsewhere" : "trle"))
            EXPECT_NE(content, SavegameBytes("First new", 8)) << file;
        world.ExpectNothingLost(treasures);
    }
}

TEST(OriginalConfiguration, IsNotToldAsSetWhileAnOriginalIsMissing)
{
    SwapWorld world;
    world.PlayFirst();
    {
        const FailingCalls failing{platform::FileAction::Rename, "/DATA/Title.tr4", -1,
                                   std::errc::no_space_on_device};
        EXPECT_FALSE(RestoreFastWithWords(world.session));
        EXPECT_TRUE(world.host.WasTold("\\data\\title.tr4")) << world.host.AllTold();
        EXPECT_FALSE(world.host.WasTold("Set in Tomb Raider Level Editor, original"));
        Session next = world.Reopened();
        EXPECT_TRUE(RecoverInterruptedWork(next));
        EXPECT_NE(FoldCase(WhatWaitsInTrle(next.Folders(), next.archive, next.preferences))
                      .find("title.tr4"),
                  std::string::npos);
    }
    Session next = world.Reopened();
    EXPECT_TRUE(RecoverInterruptedWork(next));
    EXPECT_EQ(WhatWaitsInTrle(next.Folders(), next.archive, next.preferences), "");
    world.ExpectOriginal();
    EXPECT_TRUE(RestoreFastWithWords(world.session)) << world.host.AllTold();
}

TEST(FullRestore, DeletesNothingWhileTheBackupCannotBeListed)
{
    SwapWorld world;
    world.PlayFirst();
    world.host.AnswerAll(true);
    const auto before = world.Snapshot("trle");
    {
        const FailingCalls failing{platform::FileAction::List, "/backup_trle/DATA", -1};
        EXPECT_FALSE(RestoreFully(world));
        EXPECT_TRUE(world.host.WasTold("could not be read")) << world.host.AllTold();
        RestoreReport report;
        EXPECT_FALSE(FinishRestore(world.session, world.session.Folders(), {}, report));
    }
    EXPECT_EQ(world.Snapshot("trle"), before);
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    world.ExpectOriginal();
}

TEST(FullRestore, TouchesNothingWhereItCannotBeNoted)
{
    SwapWorld world;
    world.PlayFirst();
    world.host.AnswerAll(true);
    const auto before = world.Snapshot("trle");
    {
        const FailingCalls failing{platform::FileAction::Rename, "/swap/journal", -1,
                                   std::errc::read_only_file_system};
        EXPECT_FALSE(RestoreFully(world));
    }
    EXPECT_EQ(world.Snapshot("trle"), before);
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    world.ExpectOriginal();
}

TEST(FullRestore, GoesOnWithWhatFitsOnAFullDisk)
{
    SwapWorld world;
    const std::string big(300 * 1024, 'b');
    world.Write("home/backup_trle/DATA/big.tr4", big);
    world.Write("home/backup_trle/a first.dat", "small and first");
    world.Write("home/backup_trle/DATA/zz.tr4", "small and last");
    SmallDisk disk{world / "trle", "220k"};
    if (!disk.Mounted())
        GTEST_SKIP() << "needs the right to mount";
    world.Write("trle/DATA/patched.tr4", "the player's own level");
    world.host.AnswerAll(true);
    EXPECT_FALSE(RestoreFully(world));
    EXPECT_TRUE(world.host.WasTold("\\data\\big.tr4")) << world.host.AllTold();
    EXPECT_FALSE(world.host.WasTold("\\data\\zz.tr4"));
    EXPECT_EQ(world.Read("trle/a first.dat"), "small and first");
    EXPECT_EQ(world.Read("trle/DATA/zz.tr4"), "small and last");
    EXPECT_EQ(world.Read("home/history/originals/DATA/patched.tr4"), "the player's own level");
    // Room was made: a later run ends it.
    ASSERT_EQ(::mount("none", (world / "trle").c_str(), "tmpfs", MS_REMOUNT, "size=2m"), 0);
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    EXPECT_TRUE(world.Read("trle/DATA/big.tr4") == big);
    EXPECT_FALSE(world.Has("trle/DATA/patched.tr4"));
}

TEST(FullRestore, CountsTheRoomThatTheLevelGivesBack)
{
    SwapWorld world;
    const std::string big(150 * 1024, 'b');
    world.Write("home/backup_trle/DATA/big.tr4", big);
    world.Write("levels/LEVEL_0001/files/large.tr4", std::string(160 * 1024, 'l'));
    SmallDisk disk{world / "trle", "240k"};
    if (!disk.Mounted())
        GTEST_SKIP() << "needs the right to mount";
    world.host.AnswerAll(true);
    ASSERT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    // The empty disk had no folders whose spelling could have been kept.
    EXPECT_TRUE(world.Read("trle/data/big.tr4") == big) << world.host.AllTold();
    EXPECT_FALSE(world.Has("trle/data/large.tr4"));
    EXPECT_EQ(world.Read("trle/audio/003.wav"), "wave 3");
}

// An interrupted swap whose folders are somewhere else now.

namespace
{

/// The first level stands, and the swap to the second one ends in the middle of its files.
class Moved : public ::testing::TestWithParam<int>
{
protected:
    void SetUp() override
    {
        world.host.AnswerAll(true);
        world.PlayFirst();
        treasures = world.Treasures();
        ASSERT_TRUE(WithKillAt(GetParam(), [&] {
                        return InstallLevel(world.session, world.second);
                    }).killed);
        ASSERT_TRUE(FileExists(JournalPath(world.session.Folders())));
    }
    void ExpectMendedAt(Session& session, const char* folder)
    {
        world.ExpectNothingLost(treasures);
        EXPECT_TRUE(InterruptedWork(session.Folders(), session.archive).empty());
        EXPECT_TRUE(InstallLevel(session, originalCode)) << world.host.AllTold();
        EXPECT_TRUE(world.Has(std::string{folder} + "/DATA/tut1.tr4"));
        EXPECT_FALSE(world.Has(std::string{folder} + "/Kestrva.txt"));
        world.ExpectNothingLost(treasures);
    }
    SwapWorld world;
    std::set<std::string> treasures;
};

} // namespace

TEST_P(Moved, AFreshFolderAtTheOldPathIsNeverFilled)
{
    std::filesystem::rename(world / "trle", world / "elsewhere");
    world.MakeTrle(5);
    const auto fresh = world.Snapshot("trle");
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("mend --trle DIR")) << world.host.AllTold();
    EXPECT_NE(InterruptedWork(world.session.Folders(), world.session.archive)
                  .find((world / "trle").native()),
              std::string::npos);
    EXPECT_FALSE(InstallLevel(world.session, world.first));
    EXPECT_EQ(world.Snapshot("trle"), fresh);

    ASSERT_TRUE(RecoverInterruptedWork(world.session, {world / "elsewhere", {}, false}))
        << world.host.AllTold();
    EXPECT_EQ(world.Snapshot("trle"), fresh);
    EXPECT_EQ(world.session.TrleFolder(), world / "elsewhere");
    ExpectMendedAt(world.session, "elsewhere");
}

TEST_P(Moved, AFolderThatThePreferencesNameByNowIsFollowedWithoutAQuestion)
{
    std::filesystem::rename(world / "trle", world / "elsewhere");
    world.session.preferences.trlePath = (world / "elsewhere").native();
    ASSERT_TRUE(RecoverInterruptedWork(world.session)) << world.host.AllTold();
    ExpectMendedAt(world.session, "elsewhere");
}

TEST_P(Moved, AnArchiveThatWasMovedIsNamedAndAWrongOneNotTaken)
{
    std::filesystem::rename(world / "levels", world / "moved");
    const auto stores = world.Snapshot("moved");
    // A fresh folder with levels of the same numbers stands in its place.
    for (const char* level : {"LEVEL_0001", "LEVEL_0002"})
        world.Write(std::string{"levels/"} + level + "/backup_savegames/savegame.0", "a stranger");
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    EXPECT_TRUE(world.host.WasTold("mend --archive-folder DIR")) << world.host.AllTold();
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.0"), "a stranger");
    EXPECT_EQ(world.Read("levels/LEVEL_0002/backup_savegames/savegame.0"), "a stranger");

    ASSERT_TRUE(RecoverInterruptedWork(world.session, {{}, world / "moved", false}))
        << world.host.AllTold();
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.0"), "a stranger");
    std::filesystem::remove_all(world / "levels");
    std::filesystem::rename(world / "moved", world / "levels");
    ExpectMendedAt(world.session, "trle");
}

TEST_P(Moved, WhatIsGoneForGoodIsGivenUpAndItsStateIsInTheHistory)
{
    std::filesystem::rename(world / "levels", world / "gone");
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    ASSERT_TRUE(RecoverInterruptedWork(world.session, {{}, {}, true})) << world.host.AllTold();
    EXPECT_TRUE(InterruptedWork(world.session.Folders(), world.session.archive).empty());
    world.ExpectNothingLost(treasures);
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    world.ExpectOriginal();
    world.ExpectNothingLost(treasures);
}

TEST_P(Moved, WithoutTheLevelEditorsFolderItCanBeGivenUpToo)
{
    std::filesystem::rename(world / "trle", world / "gone");
    EXPECT_FALSE(RecoverInterruptedWork(world.session));
    ASSERT_TRUE(RecoverInterruptedWork(world.session, {{}, {}, true})) << world.host.AllTold();
    EXPECT_TRUE(InterruptedWork(world.session.Folders(), world.session.archive).empty());
    world.ExpectNothingLost(treasures);
    world.MakeTrle(5);
    EXPECT_TRUE(InstallLevel(world.session, world.first)) << world.host.AllTold();
    world.ExpectNothingLost(treasures);
}

TEST_P(Moved, TheFullRestoreDoesNotWaitForTheArchive)
{
    std::filesystem::rename(world / "levels", world / "away");
    world.session.archive = {};
    EXPECT_TRUE(RestoreFully(world)) << world.host.AllTold();
    world.ExpectOriginal();
    world.ExpectNothingLost(treasures);
}

// Before the store is emptied, while it is filled, and among the new level's files.
INSTANTIATE_TEST_SUITE_P(Recovery, Moved, ::testing::Values(8, 25, 40, 70));

} // namespace kestrova::testing
