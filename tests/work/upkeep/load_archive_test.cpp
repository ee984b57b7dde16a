#include "archive/archive_saving.h"
#include "archive/level_document.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "levels/new_level.h"
#include "levels/remove_level.h"
#include "sandbox/faults.h"
#include "upkeep/archive_sizes.h"
#include "upkeep/load_archive.h"
#include "upkeep/new_archive.h"
#include "upkeep/save_archive_as.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

class ArchiveLife : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.AddLevel("First", {{"a.tr4", "a"}});
        ASSERT_TRUE(WriteArchive(box.session, box.session.ArchivePath()));
    }
    /// A folder with the folder of a level in it.
    Path LevelsIn(const std::string& name)
    {
        std::filesystem::create_directories(box / name / "LEVEL_0001");
        return box / name;
    }
    /// Another archive with two levels, in the file `other.kva`, with its own folder.
    void MakeOther()
    {
        Session other = box.Reopened();
        other.archive.header.mainFolder = other.archive.header.secondaryFolder =
            (box / "elsewhere").native();
        other.archive.levels[1].levelName = "Other";
        ASSERT_TRUE(WriteArchive(other, box / "home/other.kva"));
    }
    World box;
};

TEST_F(ArchiveLife, ALoadTakesTheFileAndShowsTheCurrentLevel)
{
    MakeOther();
    LevelsIn("elsewhere");
    box.Write("trle/Kestrva.txt", "#LEVEL_CODE=0001#\r\n");
    ASSERT_TRUE(ReadArchive(box.session, box / "home/other.kva")) << box.host.AllTold();
    EXPECT_EQ(box.session.archive.levels.at(1).levelName, "Other");
    EXPECT_EQ(box.session.ArchivePath(), box / "home/other.kva");
    EXPECT_EQ(box.list.refreshes, 1);
    EXPECT_EQ(box.list.selected, 1);
}

TEST_F(ArchiveLife, WhatIsNoArchiveIsRefusedAndTheLoadedOneStays)
{
    const std::string bytes = box.Read("home/LevelArchive.kva");
    std::string tooMany = bytes;
    tooMany[516] = 3;
    std::string none = bytes;
    none[516] = 0;
    for (const std::string& wrong :
         {std::string{}, bytes.substr(0, 545), bytes.substr(0, bytes.size() - 1), tooMany, none,
          std::string(100, '\xFF'), std::string(5000, '\xFF')}) {
        box.host.told.clear();
        box.Write("home/wrong.kva", wrong);
        EXPECT_FALSE(ReadArchive(box.session, box / "home/wrong.kva"));
        EXPECT_TRUE(box.host.WasTold("cannot be opened")) << wrong.size();
        EXPECT_EQ(box.session.archive.levels.at(1).levelName, "First");
        EXPECT_EQ(box.session.ArchivePath(), box / "home/LevelArchive.kva");
    }
    EXPECT_FALSE(ReadArchive(box.session, box / "home/none.kva"));
    EXPECT_FALSE(ReadArchive(box.session, box / "home"));
}

TEST_F(ArchiveLife, UnsavedChangesAreAskedAboutAndNeverForgottenByAFailedLoad)
{
    box.session.preferences.autoSave = false;
    box.session.archive.levels[1].levelNote = "changed";
    SaveArchive(box.session);
    EXPECT_TRUE(box.session.archive.dirty);
    box.host.WillAsk("Current archive 'LevelArchive.kva' has been changed.\r\nDo you want save it?",
                     false);
    EXPECT_FALSE(ReadArchive(box.session, box / "home/none.kva"));
    EXPECT_TRUE(box.session.archive.dirty) << "the changes are still only in memory";

    box.host.WillAsk("has been changed", true);
    EXPECT_FALSE(ReadArchive(box.session, box / "home/none.kva"));
    EXPECT_FALSE(box.session.archive.dirty);
    ASSERT_TRUE(ReadArchive(box.session, box / "home/LevelArchive.kva"));
    EXPECT_EQ(box.session.archive.levels[1].levelNote, "changed");
    EXPECT_FALSE(box.session.preferences.autoSave);
}

TEST_F(ArchiveLife, MissingFoldersAreAskedFor)
{
    MakeOther();
    std::filesystem::create_directory(box / "moved");
    box.host.WillChoose("Select folder: elsewhere", std::nullopt);
    EXPECT_FALSE(ReadArchive(box.session, box / "home/other.kva"));
    EXPECT_TRUE(box.host.WasTold("Warning: not found main folder of current archive: "));
    EXPECT_EQ(box.session.archive.levels.at(1).levelName, "First") << "the old archive, whole";
    EXPECT_EQ(box.session.ArchivePath(), box / "home/LevelArchive.kva");
    EXPECT_EQ(box.session.RememberedArchive(), box / "home/LevelArchive.kva");
    const std::string other = box.Read("home/other.kva");
    ASSERT_TRUE(SaveArchive(box.session));
    EXPECT_EQ(box.Read("home/other.kva"), other) << "a list is written to its own file alone";

    box.host.WillChoose("Select folder: elsewhere", box / "moved");
    box.host.WillAsk("lies none of this archive's levels", false);
    EXPECT_FALSE(ReadArchive(box.session, box / "home/other.kva"));
    EXPECT_EQ(box.Read("home/other.kva"), other);
    box.host.WillChoose("Select folder: elsewhere", box / "moved");
    box.host.WillAsk("lies none of this archive's levels", true);
    ASSERT_TRUE(ReadArchive(box.session, box / "home/other.kva"));
    EXPECT_EQ(box.session.archive.header.mainFolder, (box / "moved").native());
    EXPECT_EQ(box.session.archive.header.secondaryFolder, (box / "moved").native());
    EXPECT_TRUE(ReadArchive(box.session, box / "home/other.kva")) << "and it was saved";

    box.session.archive.header.secondaryFolder = (box / "gone").native();
    box.session.archive.header.cdCount = 2; // then the main folder is a drive's
    std::filesystem::create_directories(box / "moved/LEVEL_0001");
    box.host.WillChoose("Select folder: gone", box / "moved");
    EXPECT_TRUE(CheckArchiveFolders(box.session, box.session.archive));
    EXPECT_TRUE(box.host.WasTold("Warning: not found secondary folder of current archive: "));
}

TEST_F(ArchiveLife, AMountPointThatStandsEmptyIsNoFolderOfTheArchive)
{
    std::filesystem::rename(box / "levels", box / "the drive");
    std::filesystem::create_directory(box / "levels");
    EXPECT_FALSE(ArchiveFolderIsThere(box.session.archive));
    box.host.WillChoose("levels", std::nullopt);
    EXPECT_FALSE(ReadArchive(box.session, box.session.ArchivePath()));
    EXPECT_TRUE(box.host.WasTold("not found main folder")) << box.host.AllTold();
    // A list of the original configuration alone has nothing that could be away.
    Archive fresh = box.session.archive;
    fresh.levels.resize(1);
    EXPECT_TRUE(ArchiveFolderIsThere(fresh));
    std::filesystem::remove_all(box / "levels");
    std::filesystem::rename(box / "the drive", box / "levels");
    EXPECT_TRUE(ReadArchive(box.session, box.session.ArchivePath())) << box.host.AllTold();
}

TEST_F(ArchiveLife, AFolderThatIsNamedCountsOrIsRefused)
{
    const Path file = box / "home/LevelArchive.kva";
    const auto folder = [&] { return box.session.archive.header.secondaryFolder; };
    ASSERT_TRUE(ReadArchive(box.session, file));
    const std::string before = folder();
    const std::string list = box.Read("home/LevelArchive.kva");
    std::filesystem::create_directory(box / "empty");
    for (const auto& [named, words] : {std::pair{"empty", "lies none of this archive's levels"},
                                       {"none", "There is no folder"}}) {
        EXPECT_FALSE(ReadArchive(box.session, file, box / named));
        EXPECT_TRUE(box.host.WasTold(words)) << box.host.AllTold();
        EXPECT_EQ(folder(), before);
        EXPECT_EQ(box.Read("home/LevelArchive.kva"), list);
    }
    std::filesystem::copy(before, box / "copy", std::filesystem::copy_options::recursive);
    for (const std::string& named : {(box / "copy").native(), before}) {
        ASSERT_TRUE(ReadArchive(box.session, file, named)) << box.host.AllTold();
        EXPECT_EQ(folder(), named);
        ASSERT_TRUE(ReadArchive(box.session, file)) << "it was saved";
        EXPECT_EQ(folder(), named);
    }
}

TEST_F(ArchiveLife, AFolderBeyondTheCodePageComesBackExactly)
{
    const Path folder = LevelsIn("Łódź μ");
    box.session.archive.header.mainFolder = box.session.archive.header.secondaryFolder =
        folder.native();
    const Path file = box / "home/My = [archive] Ł.kva";
    ASSERT_TRUE(WriteArchive(box.session, file));

    Session fresh = box.Reopened();
    fresh.settings = *ReadSettings(box / "home");
    ASSERT_TRUE(ReadArchive(fresh, file)) << box.host.AllTold();
    EXPECT_EQ(fresh.archive.header.mainFolder, folder.native());
    EXPECT_EQ(fresh.archive.header.secondaryFolder, folder.native());
}

TEST_F(ArchiveLife, StaleExtrasAreMeasuredAtALoad)
{
    box.session.archive.levels[1].extrasDirty = true;
    box.session.archive.levels[1].extrasSize = 3;
    box.session.archive.header.secondaryFolderSize = 3;
    ASSERT_TRUE(WriteArchive(box.session, box.session.ArchivePath()));
    box.Write("levels/LEVEL_0001/savegames/slot1/savegame.0", "12345");
    box.Write("levels/LEVEL_0001/screenshots/a.bmp", "12");
    ASSERT_TRUE(ReadArchive(box.session, box.session.ArchivePath()));
    EXPECT_EQ(box.session.archive.levels[1].extrasSize, 7);
    EXPECT_EQ(box.session.archive.header.secondaryFolderSize, 7);
    ASSERT_TRUE(ReadArchive(box.session, box.session.ArchivePath()));
    EXPECT_FALSE(box.session.archive.levels[1].extrasDirty);
}

TEST_F(ArchiveLife, ANewArchiveTakesAnEmptyFolderOrMakesOne)
{
    std::filesystem::create_directory(box / "empty");
    box.Write("home/LEVEL_0000/files/manual.htm", "manual");
    ASSERT_TRUE(CreateArchive(box.session, box / "empty")) << box.host.AllTold();
    EXPECT_EQ(box.session.archive.header.mainFolder, (box / "empty").native());
    EXPECT_EQ(box.session.ArchivePath(), box / "home/LevelArchive2.kva");
    const auto content = ParseArchive(box.Read("home/LevelArchive2.kva"));
    ASSERT_TRUE(content);
    ASSERT_EQ(content->levels.size(), 1U);
    EXPECT_EQ(content->levels[0].levelName, "- TRLE: Original configuration -");
    EXPECT_EQ(content->levels[0].moreInfoFile, "manual.htm");
    EXPECT_EQ(Split(content->levels[0].authorSites, '\0').size(), 2U);
    EXPECT_EQ(content->levels[0].filesSize, 6);
    EXPECT_EQ(content->header.mainFolderSize, 0) << "the record at index 0 counts in no total";
    EXPECT_EQ(box.Read("home/LevelArchive2.kva").size(), 2180U);

    // A folder with something in it, and a chooser in place of an argument.
    box.Write("full/file", "x");
    box.host.WillChoose("Select main folder for new archive", box / "full");
    ASSERT_TRUE(CreateArchive(box.session));
    EXPECT_TRUE(
        box.host.WasTold("Folder has been changed in: " + (box / "full/LevelFolder").native()));
    EXPECT_EQ(box.session.archive.header.secondaryFolder, (box / "full/LevelFolder").native());
    EXPECT_FALSE(FolderExists(box.host.lastStart))
        << "the proposed folder goes when it is not used";
}

TEST_F(ArchiveLife, ANewArchiveThatIsNotMadeLeavesTheOldFile)
{
    const std::string before = box.Read("home/LevelArchive.kva");
    box.host.WillChoose("Select main folder for new archive", std::nullopt);
    EXPECT_FALSE(CreateArchive(box.session));
    EXPECT_EQ(box.session.archive.levels.size(), 1U);
    EXPECT_TRUE(box.session.ArchivePath().empty()) << "the list belongs to no file";
    EXPECT_EQ(box.session.RememberedArchive(), box / "home/LevelArchive.kva");
    EXPECT_FALSE(FolderExists(box.host.lastStart)) << "the folder was there only to be shown";

    EXPECT_FALSE(CreateArchive(box.session, box / std::string(230, 'x')));
    EXPECT_TRUE(box.host.WasTold("too long for an archive"));
    box.Write("file", "x");
    EXPECT_FALSE(CreateArchive(box.session, box / "file/below"));
    EXPECT_TRUE(box.host.WasTold("Error: I can not write in main archive folder: "));
    box.host.WillAsk("There is an archive", false);
    EXPECT_FALSE(CreateArchive(box.session, box / "new", box / "home/LevelArchive.kva"));
    EXPECT_EQ(box.Read("home/LevelArchive.kva"), before);
}

TEST_F(ArchiveLife, AListThatBelongsToNoFileChangesNothingOnTheDisk)
{
    box.session.preferences.autoSave = false;
    const Files before = box.Snapshot("home");
    const Files levels = box.Snapshot("levels");
    for (const bool cancelled : {true, false}) {
        SCOPED_TRACE(cancelled ? "New Archive and Cancel"
                               : "nothing loaded, as without a Level Editor");
        if (cancelled) {
            box.host.WillChoose("Select main folder for new archive", std::nullopt);
            EXPECT_FALSE(CreateArchive(box.session));
        } else {
            box.session.archive = {};
        }
        for (const bool autoSave : {true, false}) {
            box.session.preferences.autoSave = autoSave;
            LevelRecord level;
            box.host.told.clear();
            EXPECT_FALSE(SaveArchiveNow(box.session));
            EXPECT_FALSE(AskSaveArchiveAs(box.session));
            EXPECT_FALSE(BeginNewLevel(box.session, level));
            EXPECT_FALSE(RemoveLevel(box.session, 1));
            EXPECT_FALSE(ShowArchiveSizes(box.session));
            EXPECT_EQ(box.host.told.size(), 5U) << "each says why, once: " << box.host.AllTold();
            EXPECT_FALSE(SaveArchive(box.session));
            EXPECT_FALSE(box.session.archive.dirty) << "there is nothing to be asked about";
            EXPECT_TRUE(RecomputeArchiveSize(box.session, false));
            AskSaveChanges(box.session);
        }
    }
    box.session.archive.file = box / "home/LevelArchive.kva";
    EXPECT_FALSE(WriteArchive(box.session, box.session.archive.file)) << "a list without code 0";
    EXPECT_EQ(box.Snapshot("home"), before);
    EXPECT_EQ(box.Snapshot("levels"), levels);
}

TEST_F(ArchiveLife, WhoeverOpensAnArchiveHoldsItsFolderAlone)
{
    MakeOther();
    LevelsIn("elsewhere");
    ASSERT_TRUE(ReadArchive(box.session, box.session.ArchivePath()));
    {
        FolderLocks stranger;
        EXPECT_FALSE(stranger.Hold(box / "levels"));
        ASSERT_TRUE(stranger.Hold(box / "elsewhere"));
        box.host.WillChoose("Load Tomb Raider Level Archive", box / "home/other.kva");
        EXPECT_FALSE(AskLoadArchive(box.session));
        EXPECT_TRUE(box.host.WasTold("Another Kestrova already works on the folder"));
        EXPECT_EQ(box.session.archive.levels.at(1).levelName, "First");
        EXPECT_FALSE(stranger.Hold(box / "levels")) << "the old archive's folder is still held";
    }
    box.host.WillChoose("Load Tomb Raider Level Archive", box / "home/other.kva");
    ASSERT_TRUE(AskLoadArchive(box.session)) << box.host.AllTold();
    FolderLocks stranger;
    EXPECT_FALSE(stranger.Hold(box / "elsewhere"));
    EXPECT_TRUE(stranger.Hold(box / "levels")) << "nobody works there any more";
    std::filesystem::create_directory(box / "fresh");
    ASSERT_TRUE(CreateArchive(box.session, box / "fresh")) << box.host.AllTold();
    EXPECT_FALSE(stranger.Hold(box / "fresh"));
}

TEST_F(ArchiveLife, ChangesThatCannotBeSavedAreGivenUpOnlyWhenThePersonSaysSo)
{
    MakeOther();
    LevelsIn("elsewhere");
    box.session.archive.levels[1].levelName = "Changed";
    box.session.archive.dirty = true;
    box.session.archive.file = box / "gone/LevelArchive.kva";
    box.host.WillAsk("could not be saved", false);
    EXPECT_FALSE(ReadArchive(box.session, box / "home/other.kva"));
    EXPECT_EQ(box.session.archive.levels.at(1).levelName, "Changed");
    EXPECT_TRUE(box.session.archive.dirty);
    box.host.WillAsk("could not be saved", true);
    EXPECT_TRUE(ReadArchive(box.session, box / "home/other.kva"));
}

TEST_F(ArchiveLife, TextsBeyondTheCodePageComeBackAndWhatWasChangedElsewhereSpeaks)
{
    LevelRecord& level = box.session.archive.levels[1];
    level.levelName = "Zamek Książ";
    level.levelNote = "Ποιος φοβάται;";
    level.authorName = std::string(79, 'x') + "Řč";
    level.authorEmails = std::string{"a@ł.pl"} + '\0' + "b@c.gr";
    level.moreInfoFile = "Инструкция.txt";
    box.Write("levels/LEVEL_0001/files/Инструкция.txt", "how to");
    ASSERT_TRUE(SaveArchive(box.session));
    const auto record = ParseArchive(box.Read("home/LevelArchive.kva"))->levels.at(1);
    EXPECT_EQ(record.levelName, "Zamek Ksi??") << "the record holds what its code page can";
    EXPECT_EQ(record.moreInfoFile, "??????????.txt");
    const Path files = box / "levels/LEVEL_0001/files";
    EXPECT_EQ(*FindDocument(files, record.moreInfoFile), files / "Инструкция.txt");
    box.Write("levels/LEVEL_0001/files/Документац.txt", "another of that form");
    EXPECT_FALSE(*FindDocument(files, record.moreInfoFile)) << "nobody can tell which is meant";

    ASSERT_TRUE(ReadArchive(box.session, box.session.ArchivePath()));
    const LevelRecord& back = box.session.archive.levels.at(1);
    EXPECT_EQ(back.levelName, "Zamek Książ");
    EXPECT_EQ(back.levelNote, "Ποιος φοβάται;");
    EXPECT_EQ(back.authorName, std::string(79, 'x') + "Ř") << "as long as its field";
    EXPECT_EQ(back.authorEmails, (std::string{"a@ł.pl"} + '\0' + "b@c.gr"));
    EXPECT_EQ(*FindDocument(files, back.moreInfoFile), files / "Инструкция.txt");

    // Another program renames the level; a damaged line harms no other.
    ArchiveContent content = *ParseArchive(box.Read("home/LevelArchive.kva"));
    content.levels[1].levelName = "Zamek Ksi?";
    box.Write("home/LevelArchive.kva", FormatArchive(content));
    box.Write("levels/exact-names.jsonl", "{\"code\":\n" + box.Read("levels/exact-names.jsonl"));
    ASSERT_TRUE(ReadArchive(box.session, box.session.ArchivePath()));
    EXPECT_EQ(box.session.archive.levels.at(1).levelName, "Zamek Ksi?");
    EXPECT_EQ(box.session.archive.levels.at(1).levelNote, "Ποιος φοβάται;");

    // Where the exact forms cannot be kept the list is not written without them.
    std::filesystem::remove(box / "levels/exact-names.jsonl");
    std::filesystem::create_directory(box / "levels/exact-names.jsonl");
    const std::string before = box.Read("home/LevelArchive.kva");
    EXPECT_FALSE(SaveArchive(box.session));
    EXPECT_EQ(box.Read("home/LevelArchive.kva"), before);
}

TEST_F(ArchiveLife, DefaultNamesEndAtAHundred)
{
    EXPECT_EQ(DefaultArchivePath(box.session.Folders()), box / "home/LevelArchive2.kva");
    for (int n = 2; n <= 100; ++n)
        box.Write("home/levelarchive" + std::to_string(n) + ".KVA", "");
    EXPECT_TRUE(DefaultArchivePath(box.session.Folders()).empty());
    EXPECT_EQ(DefaultArchiveFolder("/"), "/LevelFolder");
}

TEST_F(ArchiveLife, LoadAndSaveAsTellCancelApartFromAChoice)
{
    MakeOther();
    box.host.WillChoose("Load Tomb Raider Level Archive", std::nullopt);
    EXPECT_FALSE(AskLoadArchive(box.session));
    EXPECT_EQ(box.host.lastStart, box / "home");
    box.host.WillChoose("Save current archive as ...", std::nullopt);
    EXPECT_TRUE(AskSaveArchiveAs(box.session));
    EXPECT_EQ(box.session.ArchivePath(), box / "home/LevelArchive.kva");
    box.host.WillChoose("Save current archive as ...", box / "home/copy.kva");
    EXPECT_TRUE(AskSaveArchiveAs(box.session));
    EXPECT_EQ(box.session.ArchivePath(), box / "home/copy.kva");
    EXPECT_EQ(box.Read("home/copy.kva"), box.Read("home/LevelArchive.kva"));
    box.host.WillChoose("Save current archive as ...", box / "none/copy.kva");
    EXPECT_FALSE(AskSaveArchiveAs(box.session));
    EXPECT_TRUE(box.host.WasTold("Error while saving archive: "));
    EXPECT_EQ(box.session.ArchivePath(), box / "home/copy.kva");
}

TEST_F(ArchiveLife, AnArchiveWriteIsTheOldFileOrTheNewOneWherverItFailsOrIsKilled)
{
    const std::string before = box.Read("home/LevelArchive.kva");
    box.session.archive.levels[1].levelName = "New";
    const auto write = [&] {
        return bool{WriteArchive(box.session, box / "home/LevelArchive.kva")};
    };
    World twin;
    twin.session.archive = box.session.archive;
    ASSERT_TRUE(WriteArchive(twin.session, twin / "a.kva"));
    const std::string after = twin.Read("a.kva");
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        box.Write("home/LevelArchive.kva", before);
        const FaultRun fault = WithFaultAt(step, write, std::errc::no_space_on_device);
        const std::string content = box.Read("home/LevelArchive.kva");
        EXPECT_TRUE(content == before || content == after) << fault.call;
        EXPECT_TRUE(!fault.answer || content == after) << fault.call;
        box.Write("home/LevelArchive.kva", before);
        const KillRun kill = WithKillAt(step, write);
        const std::string killed = box.Read("home/LevelArchive.kva");
        EXPECT_TRUE(killed == before || killed == after) << kill.call;
        if (!fault.reached && !kill.killed)
            return;
    }
    FAIL() << "never finished";
}

} // namespace

} // namespace kestrova::testing
