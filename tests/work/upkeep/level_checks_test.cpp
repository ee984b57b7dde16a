#include "upkeep/level_checks.h"

#include "app/doctor.h"
#include "history/changes.h"
#include "history/history.h"
#include "history/undo_entries.h"
#include "levels/undo_change.h"
#include "sandbox/faults.h"
#include "storage/stored_hashes.h"
#include "upkeep/change_compression.h"
#include "upkeep/last_check.h"
#include "upkeep/repair_world.h"
#include "world/zip_builder.h"

#include <fstream>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using Named = std::map<std::string, FileFault>;

/// One way in which a stored file is lost.
struct Damage {
    const char* name;
    void (*make)(RepairWorld&);
    FileFault kind;
};
void PrintTo(const Damage& damage, std::ostream* out)
{
    *out << damage.name;
}

std::string Deflated(const RepairWorld& world)
{
    return world.Read(RepairWorld::files + std::string{"dawn.tr4.zl"});
}

const Damage damages[] = {
    {"Truncated",
     [](RepairWorld& w) {
         w.Write(RepairWorld::files + std::string{"dawn.tr4.zl"}, Deflated(w).substr(0, 20));
     },
     FileFault::Damaged},
    {"Flipped",
     [](RepairWorld& w) {
         std::string bytes = Deflated(w);
         bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
         w.Write(RepairWorld::files + std::string{"dawn.tr4.zl"}, bytes);
     },
     FileFault::Damaged},
    {"AnotherContent",
     [](RepairWorld& w) {
         w.Write(RepairWorld::files + std::string{"dawn.tr4.zl"}, CompressZlBytes("another"));
     },
     FileFault::Differs},
    {"Gone",
     [](RepairWorld& w) { fs::remove(w / (RepairWorld::files + std::string{"dawn.tr4.zl"})); },
     FileFault::Missing},
};

class Repairs : public ::testing::TestWithParam<Damage>
{
};

} // namespace

TEST_P(Repairs, ComeFromWhateverHoldsTheContentAndCanBeUndone)
{
    struct Source {
        const char* name;
        void (*make)(RepairWorld&);
        bool isOffered;
    };
    const Source sources[] = {
        {"trle", [](RepairWorld& w) { w.Write("trle/data/dawn.tr4", w.Read("from/dawn.tr4")); },
         false},
        {"backup",
         [](RepairWorld& w) { w.Write("home/backup_trle/data/dawn.tr4", w.Read("from/dawn.tr4")); },
         false},
        {"another level",
         [](RepairWorld& w) {
             const LevelCode other = w.AddLevel("Dusk", {});
             EXPECT_TRUE(StoreLevelFiles(w.host, w.session.Folders(), w.session.archive,
                                         SoundConverterOf(w.session), w / "from", other, nullptr));
         },
         false},
        {"a folder that is offered", [](RepairWorld&) {}, true},
    };
    for (const Source& source : sources) {
        SCOPED_TRACE(source.name);
        RepairWorld world;
        source.make(world);
        GetParam().make(world);
        const FileContents damaged = world.Files();
        EXPECT_EQ(world.Faults(), (Named{{"dawn.tr4", GetParam().kind}}));
        EXPECT_EQ(world.Files(), damaged) << "a check changes nothing";
        ASSERT_TRUE(world.Repair(source.isOffered ? world / "from" : Path{}))
            << world.host.AllTold();
        EXPECT_EQ(world.Files(), world.whole);
        EXPECT_TRUE(world.Faults().empty());
        const auto next = NextToUndo(world.session.Folders(), world.session.archive, UndoWay::Undo);
        ASSERT_TRUE(next);
        const auto entry = ReadUndoEntry(world.session.Folders(), next->id);
        ASSERT_TRUE(entry && UndoChange(world.session, *entry)) << world.host.AllTold();
        EXPECT_EQ(world.Files(), damaged);
        EXPECT_EQ(world.Faults(), (Named{{"dawn.tr4", GetParam().kind}}))
            << "an undone repair leaves the damage known";
    }
}

TEST_P(Repairs, KilledAnywhereAreOldOrNewAndCanBeDoneAgain)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        RepairWorld world;
        GetParam().make(world);
        const FileContents damaged = world.Files();
        const KillRun run = WithKillAt(step, [&] { return world.Repair(world / "from"); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        ASSERT_TRUE(RecoverInterruptedWork(world.session)) << world.host.AllTold();
        EXPECT_TRUE(world.Files() == damaged || world.Files() == world.whole);
        if (world.Files() == damaged) {
            EXPECT_EQ(world.Faults(), (Named{{"dawn.tr4", GetParam().kind}}));
            EXPECT_TRUE(world.Repair(world / "from")) << world.host.AllTold();
        }
        EXPECT_TRUE(world.Faults().empty());
        EXPECT_EQ(world.Files(), world.whole);
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 5);
    }
    FAIL() << "never finished";
}

INSTANTIATE_TEST_SUITE_P(Each, Repairs, ::testing::ValuesIn(damages),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(LevelChecks, KeepWhatTheyReplacedWhenItCanBeUndoneNoMore)
{
    const std::string readme = RepairWorld::files + std::string{"readme.txt"};
    const auto repair = [&](RepairWorld& world, const std::string& own) {
        world.Write(readme, own);
        EXPECT_TRUE(world.Repair(world / "from")) << world.host.AllTold();
    };
    // count and megabytes of what can be undone, and how many repairs follow
    for (const auto& [count, megabytes, later] :
         {std::tuple{0, 500, 0}, std::tuple{50, 0, 0}, std::tuple{1, 500, 2}}) {
        RepairWorld world;
        world.session.settings.undoCount = count;
        world.session.settings.undoMegabytes = megabytes;
        repair(world, "a translation of my own");
        for (int i = 0; i < later; ++i)
            repair(world, "damage " + std::to_string(i));
        bool isKept = false;
        const Folders folders = world.session.Folders();
        for (const HistoryEntry& entry : HistoryOf(folders, {world.code}))
            isKept = isKept || ReadWholeFile(HistoryContent(folders, entry.hash)).ValueOr({}) ==
                                   "a translation of my own";
        EXPECT_TRUE(isKept) << count << ", " << megabytes << ", " << later;
    }
}

TEST(LevelChecks, TakeNamesInOtherCapitalsForTheSame)
{
    RepairWorld world;
    const Path files = world / RepairWorld::files;
    fs::rename(files / "readme.txt", files / "README.TXT");
    fs::rename(files / "dawn.tr4.zl", files / "DAWN.TR4.ZL");
    EXPECT_TRUE(world.Faults().empty());
    world.Write(RepairWorld::files + std::string{"README.TXT"}, "how to pxay");
    EXPECT_EQ(world.Faults(), (Named{{"README.TXT", FileFault::Differs}}));
    EXPECT_TRUE(world.Repair(world / "from")) << world.host.AllTold();
    EXPECT_EQ(world.Files().size(), world.whole.size()) << "no twin";
    EXPECT_TRUE(world.Faults().empty());
}

TEST(LevelChecks, WithoutRoomChangeNothingAndLeaveNothingToMend)
{
    RepairWorld world;
    world.Write(RepairWorld::files + std::string{"readme.txt"}, "how to pxay");
    world.Write(RepairWorld::files + std::string{"dawn.tr4.zl"}, CompressZlBytes("another"));
    const FileContents damaged = world.Files();
    world.machine.free = 10;
    EXPECT_FALSE(world.Repair(world / "from"));
    EXPECT_EQ(world.Files(), damaged);
    const Folders folders = world.session.Folders();
    EXPECT_FALSE(ChangeWaits(folders));
    EXPECT_TRUE(ReadUndoList(folders)->entries.empty());
    world.machine.free = UINT64_C(1) << 40;
    EXPECT_TRUE(world.Repair(world / "from")) << world.host.AllTold();
}

TEST(LevelChecks, PackagesAreTakenByHashesAlone)
{
    RepairWorld world;
    fs::remove(world / (RepairWorld::files + std::string{"dawn.tr4.zl"}));
    fs::remove(world / (RepairWorld::files + std::string{"load.jpg"}));
    world.Write("hostile.zip", BuildZip({{"../dawn.tr4", "leads out"},
                                         {"dawn.tr4", std::string(5004, 'x')},
                                         {"load.bmp", "no picture"}}));
    EXPECT_FALSE(world.Repair(world / "hostile.zip"));
    EXPECT_FALSE(world.Has(RepairWorld::files + std::string{"dawn.tr4.zl"}));
    // Another name, deep in a package, among others of its name.
    world.Write("good.zip", BuildZip({{"dawn.tr4", std::string(5004, 'x')},
                                      {"deep/er/Sunrise.TR4", world.Read("from/dawn.tr4")},
                                      {"load.bmp", world.Read("from/load.bmp")}}));
    EXPECT_TRUE(world.Repair(world / "good.zip")) << world.host.AllTold();
    EXPECT_EQ(world.Files(), world.whole);
    // A package inside of another one.
    fs::remove(world / (RepairWorld::files + std::string{"dawn.tr4.zl"}));
    world.Write("outer.zip", BuildZip({{"inner.zip", world.Read("good.zip")}}));
    EXPECT_TRUE(world.Repair(world / "outer.zip")) << world.host.AllTold();
    EXPECT_EQ(world.Files(), world.whole);
    EXPECT_FALSE(world.Repair(world / "gone.zip"));
}

TEST(LevelChecks, NameWhatTheyCannotBringBackAndLeaveItAlone)
{
    RepairWorld world;
    const Path readme = world / (RepairWorld::files + std::string{"readme.txt"});
    fs::remove(readme);
    fs::create_directory(readme);
    fs::remove(world / (RepairWorld::files + std::string{"dawn.tr4.zl"}));
    world.Write(RepairWorld::files + std::string{"added.txt"}, "by hand");
    EXPECT_EQ(world.Faults(), (Named{{"readme.txt", FileFault::InTheWay},
                                     {"dawn.tr4", FileFault::Missing},
                                     {"added.txt", FileFault::Unexpected}}));
    const FileContents before = world.Files();
    LevelChecks checks{world.session};
    ASSERT_TRUE(checks.Check({world.code}));
    EXPECT_EQ(checks.Harmed(), 2U);
    EXPECT_TRUE(checks.Repair({}));
    EXPECT_EQ(checks.Harmed(), 2U);
    EXPECT_EQ(world.Files(), before);
    for (const CheckedRow& row : checks.Rows())
        EXPECT_EQ(row.remedy.empty(), row.fault.kind == FileFault::Unexpected) << row.fault.file;
    fs::remove(readme);
    world.Write("outside.txt", "how to play");
    fs::create_symlink(world / "outside.txt", readme);
    EXPECT_EQ(world.Faults()["readme.txt"], FileFault::InTheWay) << "a link that leads out";
    fs::remove(readme);
    EXPECT_TRUE(world.Repair(world / "from")) << world.host.AllTold();
    EXPECT_EQ(world.Read("outside.txt"), "how to play");
}

TEST(LevelChecks, WhatCannotBeReadIsNamed)
{
    RepairWorld world;
    const std::string readme = RepairWorld::files + std::string{"readme.txt"};
    {
        const FailingCalls unreadable{platform::FileAction::Open, "readme.txt", -1};
        EXPECT_EQ(world.Faults(), (Named{{"readme.txt", FileFault::Unreadable}}));
    }
    EXPECT_TRUE(world.Faults().empty());
}

TEST(LevelChecks, NoteWhatNobodyNotedAndTellIt)
{
    for (const bool damaged : {false, true}) {
        RepairWorld world;
        const Path note = StoredNoteOf(world / "levels/LEVEL_0001");
        if (damaged)
            world.Write("levels/LEVEL_0001/undo/stored.json", "{\"version\":");
        else
            fs::remove(note);
        LevelChecks checks{world.session};
        ASSERT_TRUE(checks.Check({world.code}));
        EXPECT_TRUE(checks.Rows().empty());
        EXPECT_EQ(checks.NotedNow(), std::vector<LevelCode>{world.code});
        ASSERT_TRUE(world.Note());
        EXPECT_TRUE(world.Note()->whole);
        EXPECT_EQ(world.Note()->files.size(), 3U);
        ASSERT_TRUE(checks.Check({world.code}));
        EXPECT_TRUE(checks.NotedNow().empty());
    }
    // Without a note nothing is repaired, though a file of its name is offered.
    RepairWorld world;
    fs::remove(StoredNoteOf(world / "levels/LEVEL_0001"));
    fs::remove(world / (RepairWorld::files + std::string{"dawn.tr4.zl"}));
    EXPECT_FALSE(world.Repair(world / "from"));
    EXPECT_EQ(world.Faults(), (Named{{"dawn.tr4", FileFault::Missing}})) << "by the index";
    // What is damaged at once is not taken for good.
    world.Write(RepairWorld::files + std::string{"dawn.tr4.zl"}, "no stream");
    EXPECT_EQ(world.Faults(), (Named{{"dawn.tr4", FileFault::Damaged}}));
    ASSERT_TRUE(world.Note());
    EXPECT_EQ(world.Note()->Find("dawn.tr4.zl"), nullptr);
}

TEST(LevelChecks, ForgedNotesHarmNothing)
{
    RepairWorld world;
    auto note = *world.Note();
    for (StoredEntry& entry : note.files)
        entry.hash = std::string(32, '0');
    ASSERT_TRUE(WriteStoredNote(world / "levels/LEVEL_0001", note));
    const FileContents before = world.Files();
    LevelChecks checks{world.session};
    ASSERT_TRUE(checks.Check({world.code}));
    EXPECT_EQ(checks.Harmed(), 3U);
    // What fits to where it came from counts; nothing else is replaced.
    EXPECT_TRUE(checks.Repair(world / "from"));
    EXPECT_EQ(world.Files(), before);
}

TEST(LevelChecks, OwnWorkIsNoDamageButOthersDamageBeforeItIs)
{
    RepairWorld world;
    world.Write(RepairWorld::files + std::string{"readme.txt"}, "scribbled over");
    const auto compress = [&](bool on) {
        world.session.archive.header.compressLevels = on;
        world.host.AnswerAll(true);
        return ChangeCompression(world.session);
    };
    ASSERT_TRUE(compress(false)) << world.host.AllTold();
    EXPECT_EQ(world.Faults(), (Named{{"readme.txt", FileFault::Differs}}));
    ASSERT_TRUE(compress(true)) << world.host.AllTold();
    EXPECT_EQ(world.Faults(), (Named{{"readme.txt", FileFault::Differs}}));
    EXPECT_TRUE(world.Repair(world / "from")) << world.host.AllTold();
    // Work that was killed: what it changed is noted, what it did not touch is still compared.
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        RepairWorld killed;
        killed.session.archive.header.compressLevels = false;
        const KillRun run = WithKillAt(step, [&] { return ChangeCompression(killed.session); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        for (const auto& [file, kind] : killed.Faults())
            EXPECT_EQ(kind, FileFault::Unexpected) << file;
        if (!run.killed || HasFailure())
            return TellPoints(step - 1, 5);
    }
    FAIL() << "never finished";
}

TEST(LevelChecks, GoesWithAMovedArchiveAndNotWithAReusedNumber)
{
    RepairWorld world;
    const Path home = world / "levels/LEVEL_0001";
    fs::remove(home / "files/readme.txt");
    fs::rename(world / "levels", world / "elsewhere");
    world.session.archive.header.secondaryFolder = (world / "elsewhere").native();
    EXPECT_EQ(world.Faults(), (Named{{"readme.txt", FileFault::Missing}}));
    // Another level in its place has a note of its own.
    fs::remove_all(world / "elsewhere/LEVEL_0001");
    fs::create_directories(world / "elsewhere/LEVEL_0001/files");
    world.Write("other/b.tr4", "other level");
    ASSERT_TRUE(world.Store("other"));
    EXPECT_TRUE(world.Faults().empty());
}

TEST(LevelChecks, AreRememberedUntilTheLevelIsWhole)
{
    RepairWorld world;
    const auto harmed = [&] {
        return HarmedAtLastCheck(world.session.Folders(), world.session.archive);
    };
    EXPECT_TRUE(world.Faults().empty());
    EXPECT_TRUE(harmed().empty());
    fs::remove(world / (RepairWorld::files + std::string{"readme.txt"}));
    EXPECT_TRUE(harmed().empty()) << "nobody has looked yet";
    (void)world.Faults();
    EXPECT_EQ(harmed(), std::vector<LevelCode>{world.code});
    bool told = false;
    for (const Finding& finding : Examine(world.session))
        told = told || (!finding.fine && finding.state.find("0001") != std::string::npos);
    EXPECT_TRUE(told);
    LevelChecks others{world.session};
    ASSERT_TRUE(others.Check({}));
    EXPECT_EQ(harmed(), std::vector<LevelCode>{world.code}) << "of others nothing was found";
    ASSERT_TRUE(world.Repair(world / "from"));
    EXPECT_TRUE(harmed().empty());
    world.Write("home/swap/checked", "{\"version\":1,\"archive\":");
    EXPECT_TRUE(harmed().empty());
}

TEST(LevelChecks, TellALevelThatIsAwayAsNotChecked)
{
    RepairWorld world;
    world.session.archive.levels.back().cdNumber = 1;
    LevelChecks checks{world.session};
    ASSERT_TRUE(checks.Check({world.code}));
    EXPECT_TRUE(checks.Rows().empty());
    ASSERT_EQ(checks.Unchecked().size(), 1U);
    EXPECT_FALSE(checks.Unchecked().front().reason.empty());
    EXPECT_TRUE(checks.Unchecked().front().isAway);
    EXPECT_NE(checks.Summary().find("could not be checked: 1"), std::string::npos);
}

/// Each leaves something in the note's place that no check can read.
TEST(LevelChecks, SayWhatToDoAboutANoteThatCannotBeRead)
{
    const auto put = [](const Path& note, const std::string& what) {
        fs::remove(note);
        if (what == "a folder")
            fs::create_directory(note);
        else if (what == "too large")
            std::ofstream{note} << "{", fs::resize_file(note, longestStoredNote + 1);
        else
            fs::create_symlink(note, note);
    };
    for (const std::string what : {"a folder", "too large", "a link to itself"}) {
        SCOPED_TRACE(what);
        RepairWorld world;
        const Path note = StoredNoteOf(world / "levels/LEVEL_0001");
        put(note, what);
        const FileContents before = world.Files();
        LevelChecks checks{world.session};
        ASSERT_TRUE(checks.Check({world.code}));
        ASSERT_EQ(checks.Unchecked().size(), 1U);
        const UncheckedLevel& level = checks.Unchecked().front();
        EXPECT_FALSE(level.isAway);
        EXPECT_NE(level.reason.find("Move " + TextOf(note) + " away"), std::string::npos)
            << level.reason;
        EXPECT_EQ(world.Files(), before);
        const auto isNamed = [&] {
            const auto findings = Examine(world.session);
            return std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
                return !finding.fine && finding.state.find("0001") != std::string::npos &&
                       finding.remedy.find("stored.json") != std::string::npos;
            });
        };
        EXPECT_TRUE(what == "a link to itself" || isNamed());
        fs::rename(note, world / "away");
        EXPECT_TRUE(world.Faults().empty()) << "and it is noted anew";
        EXPECT_TRUE(world.Note());
        EXPECT_FALSE(isNamed());
    }
}

TEST(LevelChecks, SetWhatCannotBeReadAsideWhereNoGameTakesItFrom)
{
    RepairWorld world;
    const std::string readme = RepairWorld::files + std::string{"readme.txt"};
    world.Write(readme, "cannot be read");
    {
        // By the check, and by the repair's own look.
        const FailingCalls unreadable{platform::FileAction::Open, "files/readme.txt", 2};
        EXPECT_TRUE(world.Repair(world / "from")) << world.host.AllTold();
    }
    EXPECT_EQ(world.Files(), world.whole);
    EXPECT_EQ(world.Read("levels/LEVEL_0001/unreadable/readme.txt"), "cannot be read");
    EXPECT_TRUE(world.host.WasTold("unreadable/readme.txt")) << world.host.AllTold();
}

} // namespace kestrova::testing
