#include "upkeep/equal_check.h"

#include "archive/tr4_index.h"
#include "storage/zl_file.h"
#include "upkeep/create_tr4_infos.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

class EqualCheck : public ::testing::Test
{
protected:
    void SetUp() override { box.MakeBackupAndArchive(); }
    std::size_t Add(const std::string& name, const std::map<std::string, std::string>& files)
    {
        box.AddLevel(name, files);
        return box.session.archive.levels.size() - 1;
    }
    World box;
};

TEST_F(EqualCheck, AsksAtEachPairAndTellsTheCount)
{
    Add("First", {{"one.tr4", "same"}, {"two.tr4", "two"}});
    Add("  Second ", {{"ONE.tr4", "size"}});
    Add("Third", {{"two.tr4", "other size"}});
    ASSERT_TRUE(CreateTr4Infos(box.session.host, box.session.Folders(), box.session.archive));
    const std::string first = "Warning: tr4 file \"one.tr4\"\r\nhas same name and same size of tr4 "
                              "file in level: \"Second\"\r\n\r\nContinue scanning for equal "
                              "levels?";
    box.host.WillAsk(first, true);
    box.host.WillAsk("in level: \"First\"\r\n\r\n", true);
    EXPECT_TRUE(CheckEqualLevels(box.session.host, box.session.Folders(), box.session.archive));
    EXPECT_TRUE(box.host.WasTold("Check for equal levels terminated.\r\nThere are 2 equal levels"));
    EXPECT_EQ(box.host.progressTexts.back(), "Scanning for equal levels 4 of: 4 level");

    box.host.told.clear();
    box.host.WillAsk(first, false);
    EXPECT_TRUE(CheckEqualLevels(box.session.host, box.session.Folders(), box.session.archive));
    EXPECT_TRUE(box.host.WasTold("There are 1 equal levels"));

    box.host.told.clear();
    box.session.archive.levels.erase(box.session.archive.levels.begin() + 2);
    EXPECT_TRUE(CheckEqualLevels(box.session.host, box.session.Folders(), box.session.archive));
    EXPECT_TRUE(box.host.WasTold("Check for equal levels terminated.\r\nThere is no equal level."));
}

TEST_F(EqualCheck, NeedsADiscOnlyWhereNothingIsKnownOfItsLevel)
{
    const std::size_t known = Add("Known", {{"one.tr4", "one"}});
    const std::size_t unknown = Add("Unknown", {});
    ASSERT_TRUE(CreateTr4Infos(box.session.host, box.session.Folders(), box.session.archive));
    box.session.archive.levels[known].cdNumber = 1;
    EXPECT_TRUE(CheckEqualLevels(box.session.host, box.session.Folders(), box.session.archive));
    EXPECT_TRUE(box.host.WasTold("There is no equal level."));

    box.host.told.clear();
    box.session.archive.levels[unknown].cdNumber = 2;
    EXPECT_FALSE(CheckEqualLevels(box.session.host, box.session.Folders(), box.session.archive));
    ASSERT_EQ(box.host.told.size(), 1U) << box.host.AllTold();
    EXPECT_EQ(box.host.told[0].text, "Cd not available: control for equal level aborted");
}

TEST_F(EqualCheck, Tr4InfosAreTheSameHoweverTheFilesAreStored)
{
    const std::size_t plain = Add("Plain", {{"a.TR4", "content"}, {"b.tr4", "longer content"}});
    const std::size_t deflated = Add("Deflated", {});
    const std::size_t done = Add("Done", {{"c.tr4", "changed since"}});
    ASSERT_TRUE(WriteTr4Inf(box.session.Folders(), box.session.archive, done, {{"c.tr4", 2, 3}}));
    const std::string before = box.Read("levels/LEVEL_0003/tr4.inf");
    for (const char* name : {"a.TR4", "b.tr4"})
        ASSERT_TRUE(CompressToZl(box / ("levels/LEVEL_0001/files/" + std::string{name}),
                                 box / ("levels/LEVEL_0002/files/" + std::string{name} + ".zl")));
    const auto untouched = box.Snapshot("levels/LEVEL_0002/files");

    EXPECT_TRUE(CreateTr4Infos(box.session.host, box.session.Folders(), box.session.archive))
        << box.host.AllTold();
    const auto entries = ReadTr4Inf(box.session.Folders(), box.session.archive, plain);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ((*entries)[1].name, "b.tr4");
    EXPECT_EQ((*entries)[1].size, 14);
    EXPECT_GT((*entries)[1].date, 40000);
    EXPECT_TRUE(ReadTr4Inf(box.session.Folders(), box.session.archive, deflated));
    EXPECT_EQ(box.Read("levels/LEVEL_0002/tr4.inf"), box.Read("levels/LEVEL_0001/tr4.inf"));
    EXPECT_EQ(box.Read("levels/LEVEL_0003/tr4.inf"), before);
    EXPECT_EQ(box.Snapshot("levels/LEVEL_0002/files"), untouched);
    EXPECT_FALSE(box.Has("home/LEVEL_0000/tr4.inf"));
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
}

TEST_F(EqualCheck, Tr4InfosNameWhatTheyCannotDoAndGoOn)
{
    Add("First", {{"a.tr4", "a"}});
    const std::size_t broken = Add("Broken", {{"b.tr4.zl", "no stream"}});
    Add("Last", {{"c.tr4", "c"}});
    EXPECT_FALSE(CreateTr4Infos(box.session.host, box.session.Folders(), box.session.archive));
    ASSERT_EQ(box.host.told.size(), 1U) << box.host.AllTold();
    EXPECT_EQ(box.host.told[0].text, "Error decompressing files of level [Broken]");
    EXPECT_NE(box.host.told[0].reason.find("b.tr4.zl"), std::string::npos);
    EXPECT_TRUE(box.Has("levels/LEVEL_0001/tr4.inf"));
    EXPECT_TRUE(box.Has("levels/LEVEL_0003/tr4.inf"));

    for (int n = 0; n < 30; ++n)
        std::filesystem::remove_all(
            box / ("levels/LEVEL_" + ZeroPadded(static_cast<std::int64_t>(Add("Gone", {})), 4)));
    Add("Behind", {{"d.tr4", "d"}});
    box.host.told.clear();
    EXPECT_FALSE(CreateTr4Infos(box.session.host, box.session.Folders(), box.session.archive));
    ASSERT_EQ(box.host.told.size(), 2U) << box.host.AllTold();
    EXPECT_EQ(box.host.told[1].text.substr(0, 34), "Levels whose folders are gone: 30.");
    EXPECT_NE(box.host.told[1].reason.find("and 10 more"), std::string::npos);
    EXPECT_TRUE(box.Has("levels/LEVEL_0034/tr4.inf"));

    box.host.told.clear();
    box.session.archive.levels[broken].cdNumber = 1;
    EXPECT_FALSE(CreateTr4Infos(box.session.host, box.session.Folders(), box.session.archive));
    EXPECT_TRUE(box.host.WasTold("Missing cd. Creating tr4.inf files aborted"));
}

} // namespace

} // namespace kestrova::testing
