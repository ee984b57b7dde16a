#include "archive/tr4_index.h"
#include "pictures/bitmap.h"
#include "pictures/jpeg.h"
#include "platform/file_content.h"
#include "sandbox/faults.h"
#include "session/telling.h"
#include "storage/files_exchange.h"
#include "storage/zl_file.h"
#include "whole_session.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

std::string LoadPicture()
{
    Picture picture{8, 8, {}};
    for (int i = 0; i < 8 * 8 * 3; ++i)
        picture.rgb.push_back(static_cast<std::uint8_t>(i));
    return EncodeBitmap(picture);
}

Files LevelSource()
{
    return {{"level1.tr4", std::string(5000, 'l')},
            {"X.TR4", "upper case"},
            {"107.wav", "wave"},
            {"108.MP3", "music"},
            {"script.dat", "script"},
            {"readme.txt", "read me"},
            {"load.bmp", LoadPicture()}};
}

class Storage : public ::testing::Test
{
protected:
    /// A level with nothing in its `files`, and a folder `source` with these.
    void Prepare(const Files& files, bool compress = true)
    {
        box.MakeBackupAndArchive();
        box.session.archive.header.compressLevels = compress;
        code = box.AddLevel("Level", {{"old.tr4", "old"}});
        index = box.session.archive.levels.size() - 1;
        for (const auto& [name, content] : files)
            box.Write("source/" + name, content);
    }
    bool Store()
    {
        return DoneOrTold(box.host, StoreLevelFiles(box.session, box / "source", code, nullptr));
    }
    [[nodiscard]] Files Stored() const { return box.Snapshot("levels/LEVEL_0001/files"); }
    /// What the stored folder gives to the game.
    Files Ready()
    {
        const auto ready = ReadyLevelFiles(box.session, box / "levels/LEVEL_0001/files",
                                           box / "home/staging", true, nullptr);
        EXPECT_TRUE(ready) << (ready ? "" : ready.Error().subject);
        Files files;
        if (ready)
            for (const ReadyFile& file : *ready) {
                std::string content;
                EXPECT_FALSE(platform::ReadAll(file.path, content)) << file.path;
                EXPECT_EQ(content.size(), file.size) << file.name;
                EXPECT_EQ(platform::FactsOf(file.path).modifiedNs, file.modifiedNs) << file.name;
                EXPECT_EQ(file.moved, file.path.parent_path() == box / "home/staging") << file.name;
                files[file.name] = content;
            }
        return files;
    }

    World box;
    LevelCode code = 0;
    std::size_t index = 0;
};

TEST_F(Storage, CompressedLevelComesBackWithTheSameBytes)
{
    Prepare(LevelSource());
    ASSERT_TRUE(Store()) << box.host.AllTold();
    std::set<std::string> names;
    for (const auto& [name, content] : Stored())
        names.insert(name);
    EXPECT_EQ(names, (std::set<std::string>{"107.wav.zl", "108.MP3.zl", "X.TR4.zl", "level1.tr4.zl",
                                            "load.jpg", "readme.txt", "script.dat"}));
    EXPECT_EQ(box.Snapshot("source"), LevelSource()) << "the source stays as it is";
    EXPECT_FALSE(box.Has("levels/LEVEL_0001/files.new"));

    Files ready = Ready();
    EXPECT_EQ(ready.extract("load.bmp").mapped().size(), LoadPicture().size());
    Files expected = LevelSource();
    expected.erase("load.bmp");
    EXPECT_EQ(ready, expected);

    const auto entries = ReadTr4Inf(box.session.Folders(), box.session.archive, index);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ((*entries)[0].name, "level1.tr4");
    EXPECT_EQ((*entries)[0].size, 5000);
    EXPECT_EQ((*entries)[1].name, "X.TR4");
}

TEST_F(Storage, ANameTooLongForItsCompressedFormStaysPlainAndTheRestGoesOn)
{
    const std::string longest = std::string(251, 'n') + ".tr4";
    Prepare({{"a.tr4", "first"}, {longest, "long"}, {"z.tr4", "last"}});
    const Files wanted{{"a.tr4.zl", CompressZlBytes("first")},
                       {longest, "long"},
                       {"z.tr4.zl", CompressZlBytes("last")}};
    ASSERT_TRUE(Store()) << box.host.AllTold();
    EXPECT_EQ(Stored(), wanted);
    std::filesystem::remove_all(box / "levels/LEVEL_0001/files");
    for (const auto& [name, content] :
         Files{{"a.tr4", "first"}, {longest, "long"}, {"z.tr4", "last"}})
        box.Write("levels/LEVEL_0001/files/" + name, content);
    ASSERT_TRUE(StoreLevelFiles(box.session, box / "levels/LEVEL_0001/files", code, nullptr))
        << box.host.AllTold();
    EXPECT_EQ(Stored(), wanted) << "in place";
}

TEST_F(Storage, PlainLevelIsACopy)
{
    Prepare(LevelSource(), false);
    box.Write("levels/LEVEL_0001/files/own/note.txt", "somebody's");
    ASSERT_TRUE(Store()) << box.host.AllTold();
    Files stored = Stored();
    EXPECT_EQ(stored.extract("own/note.txt").mapped(), "somebody's") << "sub-folders stay";
    EXPECT_EQ(stored, LevelSource());
    EXPECT_EQ(Ready(), LevelSource());
    EXPECT_FALSE(box.Has("home/staging")) << "nothing was expanded";
}

TEST_F(Storage, OriginalConfigurationIsNeverConverted)
{
    Prepare(LevelSource());
    ASSERT_TRUE(StoreLevelFiles(box.session, box / "source", 0, nullptr));
    EXPECT_EQ(box.Snapshot("home/LEVEL_0000/files"), LevelSource());
    EXPECT_FALSE(StoreLevelFiles(box.session, box / "home/LEVEL_0000/files", 0, nullptr));
}

TEST_F(Storage, ConvertsInPlaceWhenSourceIsTarget)
{
    Prepare({});
    box.Write("levels/LEVEL_0001/files/load.bmp", "no picture at all");
    ASSERT_TRUE(StoreLevelFiles(box.session, box / "levels/level_0001/FILES", code, nullptr));
    Files stored = Stored();
    EXPECT_EQ(stored["load.bmp"], "no picture at all");
    EXPECT_EQ(*ExpandZlBytes(stored["old.tr4.zl"], 100), "old");
    EXPECT_EQ(stored.size(), 2U);
}

TEST_F(Storage, StoredTwiceOverItselfChangesNothing)
{
    Prepare(LevelSource());
    ASSERT_TRUE(Store());
    const Files stored = Stored();
    ASSERT_TRUE(StoreLevelFiles(box.session, box / "levels/LEVEL_0001/files", code, nullptr));
    EXPECT_EQ(Stored(), stored);
    EXPECT_EQ(ReadTr4Inf(box.session.Folders(), box.session.archive, index)->size(), 2U)
        << "the index of the true files stays";
}

TEST_F(Storage, IsTheOldLevelOrTheNewOneWhereverItFails)
{
    for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1;; step = NextPoint(step)) {
            ASSERT_LT(step, 500);
            World own;
            own.host.AnswerAll(true);
            own.MakeBackupAndArchive();
            own.session.archive.header.compressLevels = true;
            own.AddLevel("Level", {{"old.tr4", "old"}});
            for (const auto& [name, content] : LevelSource())
                own.Write("source/" + name, content);
            const auto run = WithFaultAt(
                step,
                [&] {
                    return DoneOrTold(own.host,
                                      StoreLevelFiles(own.session, own / "source", 1, nullptr));
                },
                std::errc::no_space_on_device, after);
            const Files stored = own.Snapshot("levels/LEVEL_0001/files");
            EXPECT_EQ(own.Snapshot("source"), LevelSource()) << run.call;
            EXPECT_EQ(run.answer, stored.size() == 7) << run.call;
            EXPECT_TRUE(run.answer || stored == (Files{{"old.tr4", "old"}})) << run.call;
            EXPECT_TRUE(run.answer || own.host.WasTold("Errore copying/compressing level files"))
                << run.call;
            if (!run.reached)
                break;
        }
}

TEST_F(Storage, ATakenExchangeLeavesOneWholeFolderWhereverItIsKilled)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 500);
        World own;
        own.host.AnswerAll(true);
        own.MakeBackupAndArchive();
        own.AddLevel("Level", {{"old.tr4", "old"}});
        own.Write("source/new.tr4", "new");
        const auto work = [&] {
            return bool{StoreLevelFiles(own.session, own / "source", 1, nullptr)};
        };
        const KillRun run = WithKillAt(step, work);
        const Files stored = own.Snapshot("levels/LEVEL_0001/files");
        EXPECT_TRUE(stored == (Files{{"old.tr4", "old"}}) || stored == (Files{{"new.tr4", "new"}}))
            << run.call;
        // The next store clears what the killed one left.
        EXPECT_TRUE(work()) << run.call << own.host.AllTold();
        EXPECT_EQ(own.Snapshot("levels/LEVEL_0001").size(), 3U)
            << run.call; // tr4.inf, the note of hashes and the level
        if (!run.killed)
            break;
    }
}

TEST_F(Storage, AHalfExchangeIsEndedOrLeftWhereverALookFails)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        World own;
        own.MakeBackupAndArchive();
        own.Write("levels/LEVEL_0001/files.old/old.tr4", "old");
        own.Write("levels/LEVEL_0001/files.new/half.tr4", "half");
        const auto work = [&] { return bool{FinishExchange(own / "levels/LEVEL_0001/files")}; };
        const FaultRun run = failing(work);
        EXPECT_TRUE(work());
        EXPECT_EQ(own.Snapshot("levels/LEVEL_0001"), (Files{{"files/old.tr4", "old"}}));
        return run;
    });
}

TEST_F(Storage, InPlaceNoFileIsLostWhereverItIsKilled)
{
    for (int step = 1;; step = NextPoint(step)) {
        ASSERT_LT(step, 500);
        World own;
        own.host.AnswerAll(true);
        own.MakeBackupAndArchive();
        own.session.archive.header.compressLevels = true;
        own.AddLevel("Level", {{"a.tr4", "first"}, {"b.wav", "second"}, {"c.dat", "third"}});
        const Path files = own / "levels/LEVEL_0001/files";
        const KillRun run =
            WithKillAt(step, [&] { return bool{StoreLevelFiles(own.session, files, 1, nullptr)}; });
        const auto ready = ReadyLevelFiles(own.session, files, own / "home/staging", true, nullptr);
        ASSERT_TRUE(ready) << run.call;
        Files content;
        for (const ReadyFile& file : *ready)
            content[file.name] = own.Read(file.path.lexically_relative(own.root).native());
        EXPECT_EQ(content, (Files{{"a.tr4", "first"}, {"b.wav", "second"}, {"c.dat", "third"}}))
            << run.call;
        if (!run.killed)
            break;
    }
}

TEST_F(Storage, WhatIsConvertedComesInPlaceOfWhatHasThatName)
{
    Prepare({});
    const Picture black{2, 1, {0, 0, 0, 0, 0, 0}};
    box.Write("levels/LEVEL_0001/files/X.tr4", "plain");
    box.Write("levels/LEVEL_0001/files/x.tr4.zl", CompressZlBytes("expanded"));
    box.Write("levels/LEVEL_0001/files/LOAD.JPG", *EncodeJpeg(black));
    box.Write("levels/LEVEL_0001/files/Load.bmp", "old picture");
    Files ready = Ready();
    EXPECT_EQ(ready["X.tr4"], "expanded");
    EXPECT_EQ(ready["Load.bmp"], EncodeBitmap(black));
    EXPECT_EQ(ready.size(), 3U) << "old.tr4 beside them";

    box.Write("levels/LEVEL_0001/files/LOAD.JPG", "no picture at all");
    ready = Ready();
    EXPECT_EQ(ready["Load.bmp"], "old picture");
    EXPECT_EQ(ready["LOAD.JPG"], "no picture at all");
}

TEST_F(Storage, NoStoredFormTakesThePlaceOfAnotherFile)
{
    const Files source = {{"load.bmp", LoadPicture()}, {"LOAD.JPG", "the level's own"},
                          {"x.tr4", "plain"},          {"X.tr4.zl", CompressZlBytes("another")},
                          {"twin.wav", "one"},         {"TWIN.WAV", "two"}};
    Prepare(source);
    for (const auto& [name, content] : source)
        box.Write("levels/LEVEL_0001/files/" + name, content);
    box.Write("levels/LEVEL_0001/files/old.tr4.zl", CompressZlBytes("old"));
    ASSERT_TRUE(StoreLevelFiles(box.session, box / "levels/LEVEL_0001/files", code, nullptr));
    Files stored = Stored();
    EXPECT_EQ(stored.erase("old.tr4.zl"), 1U) << "made of old.tr4, which went";
    EXPECT_EQ(stored, source) << box.host.AllTold();
    ASSERT_TRUE(Store());
    EXPECT_EQ(Stored(), source);
    for (const char* name : {"load.bmp", "x.tr4", "twin.wav", "TWIN.WAV"})
        EXPECT_TRUE(box.host.WasTold(name)) << name;
}

TEST_F(Storage, FilesComeInListingOrderOfTheirTrueNames)
{
    Prepare({});
    for (const char* name : {"b.dat", "a.tr4.zl", "A-first.dat", "c.wav.zl"})
        box.Write(std::string{"levels/LEVEL_0001/files/"} + name, CompressZlBytes(name));
    std::vector<std::string> names;
    const auto plan = PlanLevelFiles(box / "levels/LEVEL_0001/files");
    ASSERT_TRUE(plan);
    for (const ReadyFile& file : *plan)
        names.push_back(file.name);
    EXPECT_EQ(names,
              (std::vector<std::string>{"A-first.dat", "a.tr4", "b.dat", "c.wav", "old.tr4"}));
    EXPECT_EQ((*plan)[1].size, std::string{"a.tr4.zl"}.size());
    EXPECT_EQ(box.Snapshot("levels/LEVEL_0001/files").size(), 5U) << "planning touches nothing";
}

TEST_F(Storage, ADamagedStreamIsFoundAndNamedAndLeavesNothing)
{
    Prepare({});
    box.Write("levels/LEVEL_0001/files/good.tr4.zl", CompressZlBytes("good"));
    box.Write("levels/LEVEL_0001/files/bad.tr4.zl", CompressZlBytes("bad").substr(0, 8));
    const Files before = box.Snapshot("levels");
    const Path files = box / "levels/LEVEL_0001/files";
    const auto ready = ReadyLevelFiles(box.session, files, box / "home/staging", true, nullptr);
    ASSERT_FALSE(ready);
    EXPECT_EQ(ready.Error().code, ErrorCode::Damaged);
    EXPECT_EQ(FileNameOf(ready.Error().subject), "bad.tr4.zl");
    EXPECT_FALSE(box.Has("home/staging"));
    EXPECT_FALSE(PlanLevelFiles(files));

    EXPECT_FALSE(DoneOrTold(box.host, StatusOf(UnstoreLevelFiles(box.session, files, true))));
    EXPECT_TRUE(box.host.WasTold("Errore decompressing file 'bad.tr4.zl'"));
    EXPECT_FALSE(box.Has("home/_temp_Dec"));
    EXPECT_FALSE(DoneOrTold(box.host, StatusOf(DecompressSingleFile(
                                          box.session.host, box.session.machine,
                                          box.session.Folders(), files / "bad.tr4.zl", true))));
    EXPECT_TRUE(box.host.WasTold("Error decompressing file 'bad.tr4.zl'"));
    EXPECT_EQ(box.Snapshot("levels"), before);
}

TEST_F(Storage, WhatDoesNotFitOnTheDiskIsFoundBeforeItIsWritten)
{
    Prepare({});
    box.Write("levels/LEVEL_0001/files/big.tr4.zl", CompressZlBytes(std::string(200'000, 'b')));
    box.Write("levels/LEVEL_0001/files/too.tr4.zl", CompressZlBytes(std::string(200'000, 't')));
    const Path files = box / "levels/LEVEL_0001/files";
    box.machine.free = 399'999;
    const auto ready = ReadyLevelFiles(box.session, files, box / "home/staging", true, nullptr);
    ASSERT_FALSE(ready);
    EXPECT_EQ(ready.Error().code, ErrorCode::NoSpace);
    EXPECT_FALSE(box.Has("home/staging"));
    box.machine.free = 400'000;
    EXPECT_TRUE(ReadyLevelFiles(box.session, files, box / "home/staging", true, nullptr));
}

TEST_F(Storage, AVanishedOrStoppedSourceIsToldAndLeavesNothing)
{
    Prepare(LevelSource());
    EXPECT_FALSE(DoneOrTold(box.host, StoreLevelFiles(box.session, box / "gone", code, nullptr)));
    EXPECT_TRUE(box.host.WasTold("Errore copying/compressing level files"));
    const auto gone =
        ReadyLevelFiles(box.session, box / "gone", box / "home/staging", true, nullptr);
    ASSERT_FALSE(gone);
    EXPECT_EQ(gone.Error().code, ErrorCode::Missing);
    EXPECT_FALSE(UnstoreLevelFiles(box.session, box / "gone", true));
    EXPECT_EQ(Stored(), (Files{{"old.tr4", "old"}}));
}

TEST_F(Storage, UnstoreGivesACopyOnlyWhenThereIsSomethingToDo)
{
    Prepare({});
    const Path files = box / "levels/LEVEL_0001/files";
    auto result = UnstoreLevelFiles(box.session, files, true);
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->empty());
    box.Write("home/_temp_Dec/left over.txt", "from an earlier use");
    box.Write("levels/LEVEL_0001/files/level1.tr4.zl", CompressZlBytes("level"));
    const Files before = Stored();
    result = UnstoreLevelFiles(box.session, files, true);
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, box / "home/_temp_Dec");
    EXPECT_EQ(box.Snapshot("home/_temp_Dec"), (Files{{"level1.tr4", "level"}, {"old.tr4", "old"}}));
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(RemoveFolder(*result));

    const auto single = DecompressSingleFile(box.session.host, box.session.machine,
                                             box.session.Folders(), files / "level1.tr4.zl", true);
    ASSERT_TRUE(single);
    EXPECT_EQ(*single, box / "home/_temp_/level1.tr4");
    EXPECT_EQ(box.Read("home/_temp_/level1.tr4"), "level");
}

} // namespace

} // namespace kestrova::testing
