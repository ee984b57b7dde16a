#include "discs/verify_discs.h"

#include "world/folder_discs.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(VerifyDiscs, FindsWhatIsNotAsItWasAndProvesWhatNobodyHadProved)
{
    World world;
    world.MakeTrle();
    world.MakeBackupAndArchive();
    FolderDiscs discs{world.root};
    world.session.discs = &discs;
    for (const char* name : {"Alpha", "Beta"}) {
        const LevelCode code = world.AddLevel(name, {{"a.tr4", name}});
        world.session.archive.levels.back().cdNumber = code;
        world.Write("levels" + std::to_string(code) + "/LEVEL_000" + std::to_string(code) +
                        "/files/a.tr4",
                    name);
    }
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    const DiscParts parts{world.session, *progress};
    const auto good = [&](Verifying verifying) {
        const auto found = VerifyDiscs(parts, verifying);
        EXPECT_TRUE(found);
        std::string text;
        for (const VerifiedLevel& level : *found)
            text += level.good ? "good " : "bad(" + level.fault + ") ";
        return text;
    };
    EXPECT_EQ(good(Verifying::Fast), "good good ");
    EXPECT_FALSE(FileExists(world / "levels/discs.json")) << "that proves nothing";
    EXPECT_EQ(good(Verifying::All), "good good ");
    EXPECT_TRUE(FindNoted(ReadDiscNote(world / "levels").Value(), 2, 2)->verified);

    // Against the note, once the hard disk has no files of it.
    std::filesystem::remove_all(world / "levels/LEVEL_0002/files");
    EXPECT_EQ(good(Verifying::All), "good good ");
    world.Write("levels2/LEVEL_0002/files/a.tr4", "BetA");
    EXPECT_EQ(good(Verifying::Fast), "good good ");
    EXPECT_EQ(good(Verifying::All),
              "good bad(Beta is not on Kestrova #2 as it was written there: a.tr4) ");
    EXPECT_FALSE(FindNoted(ReadDiscNote(world / "levels").Value(), 2, 2)->verified);
    world.Write("levels2/LEVEL_0002/files/a.tr4", "Beta");
    EXPECT_EQ(good(Verifying::All), "good good ");

    // A document that was copied to the hard disk is not what the disc has to hold: neither where
    // the disc was noted and not compared yet, nor where nothing is known of it.
    DiscNote note = ReadDiscNote(world / "levels").Value();
    NotedDisc second = *note.Find(2);
    second.levels[0].verified = false;
    note.Put(second);
    ASSERT_TRUE(WriteDiscNote(world / "levels", note));
    world.Write("levels/LEVEL_0002/files/readme.txt", "copied");
    EXPECT_EQ(good(Verifying::All), "good good ");
    note.CutAfter(1);
    ASSERT_TRUE(WriteDiscNote(world / "levels", note));
    EXPECT_NE(good(Verifying::All).find("Nothing is known of what Beta had"), std::string::npos);
    EXPECT_EQ(ReadDiscNote(world / "levels").Value(), note);
}

} // namespace kestrova::testing
