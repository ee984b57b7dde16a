#include "upkeep/change_compression.h"

#include "archive/archive_saving.h"
#include "conversion/sound_converter.h"
#include "core/leftovers.h"
#include "pictures/convert.h"
#include "sandbox/faults.h"
#include "storage/game_files.h"
#include "storage/storage.h"
#include "storage/zl_file.h"
#include "upkeep/leftovers.h"
#include "upkeep/load_archive.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;
using Names = std::vector<std::string>;

class Compression : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.AddLevel("First", {{"a.tr4", std::string(5000, 'a')},
                               {"B.WAV", std::string(300, 'b')},
                               {"read.txt", "text"}});
        box.AddLevel("Second", {{"c.tr4", "c"}});
        ASSERT_TRUE(SaveArchive(box.session));
        EXPECT_TRUE(SaveAsBitmap({8, 8, std::vector<std::uint8_t>(8 * 8 * 3, 77)},
                                 box / "levels/LEVEL_0001/files/LOAD.BMP"));
    }
    /// What the game gets of both levels, the picture by its name alone.
    Files Read()
    {
        Files files;
        for (const char* level : {"levels/LEVEL_0001/files", "levels/LEVEL_0002/files"}) {
            const auto ready = ReadyLevelFiles(box.session.host, box.session.machine,
                                               SoundConverterOf(box.session), box / level,
                                               box / "ready", false, nullptr);
            EXPECT_TRUE(ready) << (ready ? "" : ready.Error().subject);
            if (!ready)
                return {};
            for (const ReadyFile& file : *ready) {
                const bool picture = EqualNames(file.name, "load.bmp");
                files[FoldCase(file.name)] = picture ? "picture" : ReadWholeFile(file.path).Value();
            }
            fs::remove_all(box / "ready");
        }
        return files;
    }
    std::set<std::string> NamesIn(const std::string& level)
    {
        std::set<std::string> names;
        for (const auto& [name, content] : box.Snapshot("levels/" + level + "/files"))
            names.insert(name);
        return names;
    }
    /// Staged files in the levels' folders.
    [[nodiscard]] std::ptrdiff_t Leftovers() const
    {
        const fs::recursive_directory_iterator all{box / "levels"};
        return std::count_if(begin(all), end(all), [](const fs::directory_entry& entry) {
            const std::string name = entry.path().filename().native();
            return name.starts_with(stagedPrefix) && name != lockFileName;
        });
    }
    bool Change(bool compress)
    {
        box.session.archive.header.compressLevels = compress;
        return ChangeCompression(box.session);
    }
    World box;
};

TEST_F(Compression, GoesThereAndBackOverAllLevelsOnTheDisk)
{
    box.AddLevel("On disc", {{"d.tr4", "d"}});
    box.session.archive.levels.back().cdNumber = 1;
    box.Write("levels/LEVEL_0003/files/d.tr4", "d");
    const Files before = Read();
    ASSERT_TRUE(Change(true)) << box.host.AllTold();
    EXPECT_EQ(NamesIn("LEVEL_0001"),
              (std::set<std::string>{"a.tr4.zl", "B.WAV.zl", "load.jpg", "read.txt"}));
    EXPECT_EQ(NamesIn("LEVEL_0002"), std::set<std::string>{"c.tr4.zl"});
    EXPECT_EQ(NamesIn("LEVEL_0003"), std::set<std::string>{"d.tr4"}) << "on cd";
    EXPECT_EQ(Read(), before);
    EXPECT_TRUE(box.host.WasTold("New size [files] folders = ")) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("Note: levels on cd have been not changed"));
    EXPECT_NE(box.host.told.back().reason.find("kept as JPEG now: 1."), std::string::npos);
    EXPECT_EQ(box.session.archive.levels[2].filesSize,
              *FolderSize(box / "levels/LEVEL_0002/files"));
    EXPECT_GT(box.list.refreshes, 0);

    ASSERT_TRUE(Change(false)) << box.host.AllTold();
    EXPECT_EQ(NamesIn("LEVEL_0001"),
              (std::set<std::string>{"a.tr4", "B.WAV", "load.bmp", "read.txt"}));
    EXPECT_EQ(Read(), before);
}

TEST_F(Compression, AsksAboutWhatFailsAndStopsBetweenLevels)
{
    ASSERT_TRUE(Change(true));
    box.Write("levels/LEVEL_0001/files/B.WAV.zl", "damaged");
    const std::string question =
        "Error decompression file: " + (box / "levels/LEVEL_0001/files/B.WAV.zl").native() +
        "\r\nDo you want continue?";
    box.host.WillAsk(question, false);
    EXPECT_FALSE(Change(false));
    EXPECT_EQ(box.Read("levels/LEVEL_0001/files/B.WAV.zl"), "damaged");
    EXPECT_TRUE(box.Has("levels/LEVEL_0001/files/a.tr4")) << "the others were changed";
    EXPECT_EQ(NamesIn("LEVEL_0002"), std::set<std::string>{"c.tr4.zl"});
    box.host.WillAsk(question, true);
    EXPECT_TRUE(Change(false));
    EXPECT_EQ(NamesIn("LEVEL_0002"), std::set<std::string>{"c.tr4"});

    std::vector<std::string> sounds;
    const AudioStep audio = [&](const std::string& name, const Path& files) {
        sounds.push_back(name + FileNameOf(files.native()));
        return name != "Second";
    };
    box.host.WillAsk(question, true); // still damaged
    EXPECT_FALSE(ChangeCompression(box.session, audio));
    EXPECT_EQ(sounds, (std::vector<std::string>{"Firstfiles", "Secondfiles"}));

    box.host.StopAtStep(1);
    box.host.told.clear();
    EXPECT_FALSE(Change(true));
    ASSERT_EQ(box.host.told.size(), 1U);
    EXPECT_NE(box.host.told[0].reason.find("ended before the last level"), std::string::npos);
    EXPECT_EQ(NamesIn("LEVEL_0002"), std::set<std::string>{"c.tr4"});
}

TEST_F(Compression, TheQuestionComesWithAChangeOnly)
{
    const ArchiveHeader before = box.session.archive.header;
    OfferChangeCompression(box.session, before);
    box.session.archive.header.compressLevels = true;
    box.host.WillAsk("Compression settings have been changed. \r\nDo you want", false);
    OfferChangeCompression(box.session, before);
    EXPECT_EQ(NamesIn("LEVEL_0002"), std::set<std::string>{"c.tr4"});
    box.host.WillAsk("Compression settings have been changed.", true);
    OfferChangeCompression(box.session, before);
    EXPECT_EQ(NamesIn("LEVEL_0002"), std::set<std::string>{"c.tr4.zl"});
}

TEST_F(Compression, NoFileTakesThePlaceOfAnotherOne)
{
    const std::string files = "levels/LEVEL_0001/files/";
    ASSERT_TRUE(SaveAsJpeg({1, 1, {1, 2, 3}}, box / (files + "load.jpg"))); // the level's own
    box.Write(files + "A.TR4", "a twin of a.tr4");
    box.Write(files + "b.wav.zl", CompressZlBytes("newer than B.WAV"));
    box.Write(files + "own.tr4", "own");
    box.Write(files + "own.tr4.zl", CompressZlBytes("own")); // what a killed run leaves
    const Files all = box.Snapshot("levels/LEVEL_0001/files");
    const auto kept = [&](bool compressed) {
        Files now = all;
        now.erase(compressed ? "own.tr4" : "own.tr4.zl");
        return now;
    };
    for (const bool compress : {true, false, true}) {
        box.host.told.clear();
        ASSERT_TRUE(Change(compress)) << box.host.AllTold();
        EXPECT_EQ(box.Snapshot("levels/LEVEL_0001/files"), kept(compress));
        const Names named =
            compress ? Names{"a.tr4", "A.TR4", "B.WAV", "LOAD.BMP"} : Names{"b.wav.zl", "load.jpg"};
        for (const std::string& name : named)
            EXPECT_TRUE(box.host.WasTold(name)) << name << ": " << box.host.AllTold();
    }
}

TEST_F(Compression, EveryLevelStaysReadableWhereverItIsKilledOrTheDiskFails)
{
    const Files content = Read();
    box.host.AnswerAll(true);
    for (const bool compress : {true, false}) {
        const Files stored = box.Snapshot("levels");
        const auto again = [&] {
            fs::remove_all(box / "levels");
            for (const auto& [name, bytes] : stored)
                box.Write("levels/" + name, bytes);
        };
        const auto work = [&] {
            NotePlacesIn(WorkNotes(box.session.Folders()));
            return Change(compress);
        };
        bool reached = true;
        for (int n = 1; reached; n = NextPoint(n)) {
            again();
            const KillRun killed = WithKillAt(n, work);
            EXPECT_EQ(Read(), content) << "killed at " << n << ": " << killed.call;
            Session fresh = box.Reopened();
            ASSERT_TRUE(ReadArchive(fresh, box.session.ArchivePath())) << box.host.AllTold();
            EXPECT_EQ(Leftovers(), 0) << "killed at " << n << ": " << killed.call;
            again();
            const FaultRun failed = WithFaultAt(n, work);
            EXPECT_EQ(Read(), content) << "failed at " << n << ": " << failed.call;
            reached = killed.killed || failed.reached;
            ASSERT_LT(n, 500);
        }
        again();
        ASSERT_TRUE(Change(compress));
    }
}

} // namespace

} // namespace kestrova::testing
