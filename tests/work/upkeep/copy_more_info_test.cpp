#include "upkeep/copy_more_info.h"

#include "world/world.h"

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

} // namespace
} // namespace kestrova::testing
