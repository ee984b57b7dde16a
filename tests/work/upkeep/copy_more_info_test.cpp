#include "upkeep/copy_more_info.h"

#include "discs/disc_world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

TEST(CopyMoreInfo, NamesWhatItCannotCopyAndGoesOn)
{
    World box;
    EXPECT_FALSE(CopyMoreInfoFiles(box.session));
    EXPECT_TRUE(box.host.WasTold("Missing archive!"));
    box.MakeBackupAndArchive();
    for (const char* name : {"one", "two", "three"})
        box.AddLevel(name, {});
    EXPECT_TRUE(CopyMoreInfoFiles(box.session));
    EXPECT_TRUE(box.host.WasTold(
        "Current archive is not on CD. All [more info] file are already on HD :-)"));

    box.host.told.clear();
    box.session.archive.header.cdCount = 1;
    for (const std::size_t level : {1U, 3U}) {
        box.session.archive.levels[level].cdNumber = 1;
        box.session.archive.levels[level].moreInfoFile = "read" + std::to_string(level) + ".txt";
    }
    EXPECT_FALSE(CopyMoreInfoFiles(box.session));
    ASSERT_EQ(box.host.told.size(), 2U) << "the one on the hard disk has its document";
    EXPECT_EQ(box.host.told[0].text, "Error copying read1.txt");
    EXPECT_EQ(box.host.told[1].text, "Error copying read3.txt");
}

TEST(CopyMoreInfo, TakesThemFromOneDiscAfterTheOther)
{
    DiscWorld box;
    for (const std::int32_t number : {2, 1, 2})
        box.AddOnDisc("On " + std::to_string(number), number, number == 1 ? "one" : "two",
                      {{"Readme.TXT", "as it came"}});
    for (LevelRecord& level : box.session.archive.levels)
        if (level.cdNumber != 0)
            level.moreInfoFile = "readme.txt";
    const std::string document = "/files/Readme.TXT";
    box.Write("levels/LEVEL_0001/files/readme.txt", "with notes of somebody's own");
    // The second disc is not there: it is asked for once.
    box.places.drives = {box.DriveWith("one")};
    int asked = 0;
    box.windows.insert = [&](InsertCd&) { return ++asked, false; };
    box.NewShelf();
    EXPECT_FALSE(CopyMoreInfoFiles(box.session));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(box.Read("levels/LEVEL_0002" + document), "as it came");
    EXPECT_FALSE(box.Has("levels/LEVEL_0003" + document));

    box.places.drives.push_back(box.DriveWith("two"));
    box.host.StopAtStep(2);
    EXPECT_FALSE(CopyMoreInfoFiles(box.session));
    EXPECT_FALSE(box.Has("levels/LEVEL_0003" + document)) << "the level before was the last one";
    box.host.StopAtStep(0);
    EXPECT_TRUE(CopyMoreInfoFiles(box.session)) << box.host.AllTold();
    EXPECT_EQ(box.Read("levels/LEVEL_0001/files/readme.txt"), "as it came");
    EXPECT_EQ(box.Read("levels/LEVEL_0001/replaced/readme.txt"), "with notes of somebody's own");
    EXPECT_TRUE(box.host.WasTold("replaced/readme.txt")) << box.host.AllTold();
    EXPECT_EQ(box.Read("levels/LEVEL_0003" + document), "as it came");
    EXPECT_EQ(std::filesystem::status(box / ("levels/LEVEL_0003" + document)).permissions(),
              static_cast<std::filesystem::perms>(0644));
}

} // namespace
} // namespace kestrova::testing
