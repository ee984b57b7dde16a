#include "editor/wad_import.h"

#include "core/text.h"
#include "editor/wad_world.h"
#include "originals/vault.h"
#include "sandbox/faults.h"

#include <gtest/gtest.h>
#include <set>

namespace kestrova::testing
{

namespace
{

TEST(WadImport, FilesGoIntoBothTreesAndTheLevelIntoTheScripts)
{
    WadWorld world;
    std::vector<std::string> asked;
    ASSERT_TRUE(world.Import([&](const std::string& name) {
        asked.push_back(name);
        return std::string{"Die Stadt"};
    })) << world.host.AllTold();
    EXPECT_EQ(asked, std::vector<std::string>{"The City"});
    EXPECT_TRUE(world.host.WasTold("Wads update finished"));
    EXPECT_EQ(world.report, "city.tom -> backup_trle\\graphics\\wads\\ [OK]\r\n"
                            "city.tom -> trle\\graphics\\wads\\ [OK]\r\n"
                            "city.wad -> backup_trle\\graphics\\wads\\ [OK]\r\n"
                            "city.wad -> trle\\graphics\\wads\\ [OK]\r\n"
                            "english.txt -> Temp folder to analyse [OK]\r\n"
                            "mill.wad -> backup_trle\\graphics\\wads\\ [OK]\r\n"
                            "mill.wad -> trle\\graphics\\wads\\ [OK]\r\n"
                            "objects.h -> backup_trle\\ [OK]\r\n"
                            "objects.h -> trle\\ [OK]\r\n"
                            "script.exe -> [IGNORED]\r\n"
                            "SCRIPT.TXT -> Temp folder to analyse [OK]\r\n"
                            "sounds.TXT -> backup_trle\\Sound\\LevelSfx Creator\\ [OK]\r\n"
                            "sounds.TXT -> trle\\Sound\\LevelSfx Creator\\ [OK]\r\n"
                            "yard.prj -> backup_trle\\maps\\yard\\ [OK]\r\n"
                            "yard.prj -> trle\\maps\\yard\\ [OK]\r\n"
                            "yar_1.tga -> backup_trle\\maps\\yard\\ [OK]\r\n"
                            "yar_1.tga -> trle\\maps\\yard\\ [OK]\r\n"
                            "city.tom -> [OK COMPILE]\r\n"
                            "city.tom -> \\backup_trle\\data\\ [OK]\r\n"
                            "mill.tom -> [OK COMPILE]\r\n"
                            "mill.tom -> \\backup_trle\\data\\ [OK]\r\n"
                            "german.TXT -> Compiling [OK]\r\n"
                            "script.TXT -> Compiling [OK]\r\n"
                            "script.dat -> backup_trle\\ [OK]\r\n"
                            "script.dat -> trle\\ [OK]\r\n"
                            "german.dat -> backup_trle\\ [OK]\r\n"
                            "german.dat -> trle\\ [OK]\r\n"
                            "COPYALL " +
                                (world / "trle/script").native() + "\\*.* -> " +
                                (world / "home/backup_trle/script").native() +
                                " [OK]\r\n"
                                "\r\n*** Wads update finished ***");
    const FileContents now = world.Both();
    EXPECT_EQ(now.at("trle/script/script.txt"),
              "; header\r\n[Level]\r\nName= Mine\r\nLevel= DATA\\mine,101\r\n"
              "[Level]\r\nName= The City\r\nLevel= DATA\\city,102\r\n");
    EXPECT_EQ(now.at("trle/script/german.txt"), "before\r\n[Strings]\r\nAltstadt\r\nDie Stadt\r\n"
                                                "[PSXStrings]\r\nbehind\r\n");
    EXPECT_EQ(now.at("trle/script/english.txt"),
              "[Strings]\r\nOld Town\r\nThe City\r\n[PSXStrings]\r\n");
    for (const std::string tree : {"trle/", "backup/"}) {
        EXPECT_EQ(now.at(tree + "DATA/city.tr4"), "new city's wad");
        EXPECT_EQ(now.at(tree + "DATA/mill.tr4"), "new mill's wad") << "a wad of a known tom file";
        EXPECT_EQ(now.at(tree + "script/german.txt"), now.at("trle/script/german.txt"));
        EXPECT_EQ(now.at(tree + "german.dat"), now.at("trle/script/german.txt"));
        EXPECT_EQ(now.at(tree + "maps/yard/yar_1.tga"), "its texture");
    }
    EXPECT_FALSE(world.Has("home/temp"));
    EXPECT_FALSE(world.Has("home/_temp_script"));

    std::set<std::string> kept;
    for (const KeptFile& file : KeptFiles(world.session.Folders()).ValueOr({}))
        kept.insert(*ReadWholeFile(file.content));
    for (const char* lost : {"the builder's own city", "the original city", "old sounds",
                             "the original mill's level", "old german"})
        EXPECT_TRUE(kept.contains(lost)) << lost;

    Session fresh = world.Reopened();
    EXPECT_TRUE(RecoverInterruptedWork(fresh));
    std::string subject;
    ASSERT_TRUE(UndoNewestImport(fresh, subject)) << world.host.AllTold();
    EXPECT_EQ(subject, "new wads.zip");
    EXPECT_EQ(world.Both(), world.before);
    EXPECT_FALSE(NewestImport(fresh.Folders()));
}

/// The trees are as they were, or all of the import stands and is undone.
void ExpectAsItWas(WadWorld& world, Session& fresh)
{
    EXPECT_FALSE(ImportWaits(fresh.Folders()));
    if (NewestImport(fresh.Folders())) {
        std::string subject;
        EXPECT_TRUE(UndoNewestImport(fresh, subject)) << world.host.AllTold();
    }
    const FileContents now = world.Both();
    for (const auto& [file, content] : world.before)
        EXPECT_EQ(now.contains(file) ? now.at(file) : "(gone)", content) << file;
    for (const auto& [file, content] : now)
        EXPECT_TRUE(world.before.contains(file)) << file << " came";
    EXPECT_FALSE(world.Has("trle/maps/yard"));
}

TEST(WadImport, KilledAnywhereItIsTakenBackAtTheNextStart)
{
    for (int step = 1; step < 2000; step = NextPoint(step + step / 12)) {
        WadWorld world;
        world.host.AnswerAll(true);
        const KillRun run = WithKillAt(step, [&] { return world.Import(); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        if (ImportWaits(fresh.Folders())) {
            EXPECT_FALSE(InterruptedWork(fresh.Folders(), fresh.archive).empty());
        }
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        ExpectAsItWas(world, fresh);
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 60);
    }
    FAIL() << "never finished";
}

TEST(WadImport, AnUndoThatIsKilledAnywhereIsBroughtToItsEnd)
{
    for (int step = 1; step < 2000; step = NextPoint(step + step / 12)) {
        WadWorld world;
        world.host.AnswerAll(true);
        ASSERT_TRUE(world.Import());
        std::string subject;
        const KillRun run =
            WithKillAt(step, [&] { return UndoNewestImport(world.session, subject); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        ExpectAsItWas(world, fresh);
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 30);
    }
    FAIL() << "never finished";
}

TEST(WadImport, UndoneItIsDoneAgainWhereverThatIsKilled)
{
    for (int step = 1; step < 2000; step = NextPoint(step + step / 12)) {
        WadWorld world;
        world.host.AnswerAll(true);
        ASSERT_TRUE(world.Import());
        const FileContents after = world.Both();
        std::string subject;
        ASSERT_TRUE(UndoNewestImport(world.session, subject));
        EXPECT_FALSE(NewestImport(world.session.Folders()));
        const auto undone = NewestImport(world.session.Folders(), UndoState::Undone);
        ASSERT_TRUE(undone);
        const KillRun run = WithKillAt(step, [&] { return UndoWads(world.session, *undone); });
        SCOPED_TRACE("killed at step " + std::to_string(step) + ": " + run.call);
        Session fresh = world.Reopened();
        ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
        const auto again = NewestImport(fresh.Folders(), UndoState::Undone);
        EXPECT_NE(bool{again}, bool{NewestImport(fresh.Folders())});
        EXPECT_EQ(world.Both(), again ? world.before : after);
        if (again) {
            EXPECT_TRUE(UndoWads(fresh, *again)) << world.host.AllTold();
        }
        EXPECT_EQ(world.Both(), after);
        ExpectAsItWas(world, fresh);
        EXPECT_EQ(ListSubfolders(world.root / "home/history/imports")->size(), 1u)
            << "nothing is kept that no entry needs";
        if (!run.killed || ::testing::Test::HasFailure())
            return TellPoints(step - 1, 30);
    }
    FAIL() << "never finished";
}

TEST(WadImport, AnUndoThatHasNoRoomToKeepWhatGoesChangesNothing)
{
    WadWorld world;
    ASSERT_TRUE(world.Import());
    const FileContents after = world.Both();
    std::string subject;
    int failed = 0;
    for (int step = 1; step < 200; ++step) {
        const FaultRun run = WithFaultAt(
            step, [&] { return UndoNewestImport(world.session, subject); },
            std::errc::no_space_on_device, AfterFault::Fails);
        if (run.reached && ImportWaits(world.session.Folders()))
            break; // it is under way from here on
        if (NewestImport(world.session.Folders())) {
            ++failed;
            EXPECT_EQ(world.Both(), after) << step << run.call;
        }
    }
    EXPECT_GT(failed, 3);
}

TEST(WadImport, TheOldestUndoGoesWithAllThatItKept)
{
    WadWorld world;
    world.session.settings.undoCount = 2;
    for (int i = 0; i < 4; ++i) {
        world.package["city.wad"] = "city's wad number " + std::to_string(i);
        ASSERT_TRUE(world.Import());
    }
    const auto imports = ReadImports(world.session.Folders());
    ASSERT_TRUE(imports);
    EXPECT_EQ(imports->size(), 2u);
    EXPECT_EQ(ListSubfolders(world.root / "home/history/imports")->size(), 2u);
    EXPECT_EQ(imports->back().id, imports->front().id + 1);
    world.session.settings.undoMegabytes = 0;
    std::string subject;
    ASSERT_TRUE(UndoNewestImport(world.session, subject)) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/graphics/wads/city.wad"), "city's wad number 2");
    const auto undone = NewestImport(world.session.Folders(), UndoState::Undone);
    ASSERT_TRUE(undone) << "the newest stays";
    EXPECT_EQ(ReadImports(world.session.Folders())->size(), 1u);
    EXPECT_TRUE(UndoWads(world.session, *undone)) << world.host.AllTold();
    EXPECT_EQ(world.Read("trle/graphics/wads/city.wad"), "city's wad number 3");
}

TEST(WadImport, OnAFailingDiskNothingIsLost)
{
    for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1; step < 2000; step = NextPoint(step + step / 12)) {
            WadWorld world;
            world.host.AnswerAll(true);
            const FaultRun run = WithFaultAt(
                step, [&] { return world.Import(); }, std::errc::io_error, after);
            SCOPED_TRACE("failed at step " + std::to_string(step) + ": " + run.call);
            Session fresh = world.Reopened();
            ASSERT_TRUE(RecoverInterruptedWork(fresh)) << world.host.AllTold();
            ExpectAsItWas(world, fresh);
            if (::testing::Test::HasFailure())
                return;
            if (!run.reached)
                break;
        }
}

TEST(WadImport, StoppedAnywhereAllIsAsItWas)
{
    int stopped = 0;
    for (int step = 1; step < 1000; step = NextPoint(step + step / 10)) {
        WadWorld world;
        world.host.AnswerAll(true);
        world.host.StopAtStep(step);
        const bool done = world.Import();
        world.host.StopAtStep(0);
        SCOPED_TRACE("stopped at step " + std::to_string(step));
        Session fresh = world.Reopened();
        if (!done) {
            ++stopped;
            EXPECT_FALSE(NewestImport(fresh.Folders()));
            EXPECT_TRUE(world.host.WasTold("The import of wads was stopped. All is as it was."));
        }
        ExpectAsItWas(world, fresh);
        if (done || ::testing::Test::HasFailure())
            break;
    }
    EXPECT_GT(stopped, 5);
}

TEST(WadImport, WhatFailsIsALineAndTheRestGoesOn)
{
    WadWorld world;
    world.AddCompiler("broken.exe", "exit 1");
    std::filesystem::rename(world / "trle/broken.exe", world / "trle/tom2pc.exe");
    std::filesystem::remove_all(world.root / "home/backup_trle/Sound");
    std::filesystem::create_directory(world.root / "trle/objects.h");
    world.Write("home/backup_trle/maps/yard", "a file in the way");
    world.package[".prj"] = "without a stem";
    world.package["..prj"] = "leads out";
    world.before = world.Both();
    ASSERT_TRUE(world.Import());
    for (const char* line :
         {"city.tom -> [ERROR COMPILE] \r\n", "mill.tom -> [ERROR COMPILE] \r\n",
          "sounds.TXT -> backup_trle\\Sound\\LevelSfx Creator\\ [OK]\r\n",
          "sounds.TXT -> trle\\Sound\\LevelSfx Creator\\ [OK]\r\n", ".prj -> [IGNORED]\r\n",
          "..prj -> trle\\maps\\.\\ [ERROR]\r\n",
          "yard.prj -> backup_trle\\maps\\yard\\ [ERROR]\r\n",
          "yard.prj -> trle\\maps\\yard\\ [OK]\r\n", "objects.h -> backup_trle\\ [OK]\r\n",
          "objects.h -> trle\\ [ERROR]\r\n", "script.TXT -> Compiling [OK]\r\n"})
        EXPECT_NE(world.report.find(line), std::string::npos) << line;
    EXPECT_EQ(world.Read("trle/DATA/mill.tr4"), "the original mill's level");
    EXPECT_EQ(world.Read("trle/script/script.txt"), world.before["trle/script/script.txt"]);
    std::string subject;
    ASSERT_TRUE(UndoNewestImport(world.session, subject)) << world.host.AllTold();
    EXPECT_EQ(world.Both(), world.before);
}

TEST(WadImport, SourcesThatCannotBeUsedLeaveThePersonsOwnAlone)
{
    WadWorld damaged; // the package's: its compiled files are taken instead
    damaged.package["SCRIPT.TXT"] = "[Level]\r\nno name\r\n";
    damaged.package["german.dat"] = "the package's german";
    damaged.AddCompiler("script/broken.exe", "exit 1");
    std::filesystem::rename(damaged / "trle/script/broken.exe", damaged / "trle/script/script.exe");
    ASSERT_TRUE(damaged.Import());
    EXPECT_TRUE(damaged.host.WasTold("Error compiling 'german.DAT'"));
    EXPECT_TRUE(damaged.host.WasTold(
        "Missing 'script.TXT' or 'english.TXT'\r\nI shall use .DAT source files without changes"));
    EXPECT_EQ(damaged.Read("home/backup_trle/SCRIPT.TXT"), "[Level]\r\nno name\r\n");
    std::string subject;
    ASSERT_TRUE(UndoNewestImport(damaged.session, subject)) << damaged.host.AllTold();
    EXPECT_EQ(damaged.Both(), damaged.before);

    for (const char* own : {"script.txt", "german.txt"}) {
        WadWorld world;
        world.Write("trle/script/" + std::string{own}, "[Level]\r\nof the builder, cut");
        world.before = world.Both();
        ASSERT_TRUE(world.Import());
        EXPECT_TRUE(world.host.WasTold("Your own script sources cannot be used"));
        for (const char* file : {"script.txt", "german.txt", "english.txt"})
            EXPECT_EQ(world.Read("trle/script/" + std::string{file}),
                      world.before["trle/script/" + std::string{file}]);
    }
}

TEST(WadImport, HalfOfTheSourcesDoesNotTakeThePlaceOfThePersonsOwn)
{
    for (const char* lacking : {"english.txt", "SCRIPT.TXT"}) {
        WadWorld world;
        world.package.erase(lacking);
        ASSERT_TRUE(world.Import()) << world.host.AllTold();
        EXPECT_TRUE(world.host.WasTold("Your own script sources stay as they are"));
        for (const char* file : {"script.txt", "german.txt", "english.txt"})
            EXPECT_EQ(world.Read("trle/script/" + std::string{file}),
                      world.before["trle/script/" + std::string{file}])
                << file << " without " << lacking;
    }
    WadWorld none; // a package of wads alone lacks nothing
    none.package.erase("english.txt");
    none.package.erase("SCRIPT.TXT");
    ASSERT_TRUE(none.Import());
    EXPECT_TRUE(std::none_of(none.host.told.begin(), none.host.told.end(), [](const auto& told) {
        return told.tone == Tone::Error;
    })) << none.host.AllTold();
}

TEST(WadImport, LevelsWithoutDataOrNameAreTold)
{
    WadWorld world;
    world.package["tower.tom"] = "new tower";
    world.package["tower.tr4"] = "the finished tower";
    world.package["bridge.tr4"] = "belongs to no tom file";
    world.package["SCRIPT.TXT"] = "[Level]\r\nName= The Town\r\nLevel= DATA\\city,102\r\n";
    ASSERT_TRUE(world.Import());
    EXPECT_TRUE(
        world.host.WasTold("Error. Missing data for level 'tower.tr4' in new file script.TXT"));
    EXPECT_TRUE(world.host.WasTold("Error: missing level name 'The Town' in new english.TXT"));
    EXPECT_EQ(world.Read("trle/DATA/tower.tr4"), "the finished tower");
    EXPECT_EQ(world.Read("home/backup_trle/DATA/tower.tr4"), "the finished tower");
    EXPECT_FALSE(world.Has("trle/DATA/bridge.tr4"));
    EXPECT_EQ(world.report.find("bridge"), std::string::npos);
}

TEST(WadImport, WhatChangedSinceIsNotUndone)
{
    WadWorld world;
    ASSERT_TRUE(world.Import());
    world.Write("trle/script/script.txt", "the builder went on");
    const FileContents after = world.Both();
    std::string subject;
    EXPECT_FALSE(UndoNewestImport(world.session, subject));
    EXPECT_TRUE(world.host.WasTold("was not undone, and nothing has been changed"));
    EXPECT_EQ(world.Both(), after);
    EXPECT_TRUE(NewestImport(world.session.Folders()));
}

TEST(WadImport, ThreeHundredTomFilesAndALogFile)
{
    WadWorld world;
    world.session.preferences.writeLogFiles = true;
    for (int i = 0; i < 300; ++i) {
        const std::string stem = "tom" + ZeroPadded(i, 3);
        world.package[stem + ".tom"] = "tom";
        world.package[stem + ".tr4"] = "level " + stem;
        world.package["SCRIPT.TXT"] +=
            "[Level]\r\nName= N" + stem + "\r\nLevel= DATA\\" + stem + ",1\r\n";
    }
    ASSERT_TRUE(world.Import());
    EXPECT_EQ(world.Read("home/backup_trle/DATA/tom299.tr4"), "level tom299");
    EXPECT_NE(world.Read("trle/script/script.txt").find("DATA\\tom299,1"), std::string::npos);
    EXPECT_EQ(world.Read("home/LevelLog_000.txt"), world.report + "\r\n");
    std::string subject;
    ASSERT_TRUE(UndoNewestImport(world.session, subject)) << world.host.AllTold();
    EXPECT_EQ(world.Both(), world.before);
}

} // namespace

} // namespace kestrova::testing
