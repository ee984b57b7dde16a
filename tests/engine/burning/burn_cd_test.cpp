#include "burning/burn_cd.h"

#include "disc_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using ::testing::HasSubstr;

TEST(BurnCd, HoldsTheRulesOfItsLists)
{
    BurningWorld world;
    BurnCd engine = world.Engine();
    const std::string level = (world / "level").native();
    const auto says = [&](CwCommand command, const std::string& argument) {
        return engine.Command(command, argument) ? std::string{"done"}
                                                 : engine.error.title + ": " + engine.error.detail;
    };
    constexpr auto add = CwCommand::AddItem;
    constexpr auto leave = CwCommand::AddNoItem;
    const std::string title = "Impossible insert item in VetItems(): ";
    EXPECT_EQ(says(add, level + "/"),
              "Path not valid: It's not allowed to end a path with characters: '\\\\' or '/'");
    EXPECT_EQ(says(add, level + "/*.tr4"),
              title + "It's not allowed to use wildcards (i.e. chars like '*' or '?')");
    EXPECT_EQ(says(add, "here/level"),
              title + "In VetItems() is not allowed insert path missing of unit letters ('c:')");
    EXPECT_EQ(says(add, level + "/none"), title + "Path " + level + "/none doesn't exist");
    EXPECT_EQ(says(add, "folder=" + level),
              title + "Relative path for folders should end with characters '\\' or '/'");
    EXPECT_THAT(says(add, "../out/=" + level), HasSubstr("does not lie on the disc"));
    EXPECT_EQ(says(add, "\\Kestrova\\=" + level), "done");
    EXPECT_EQ(says(add, level), "done") << "an item that is there is not added again";
    ASSERT_EQ(engine.settings.items.size(), 1U);
    EXPECT_EQ(engine.settings.items[0], (BurnItem{"Kestrova/", level}));
    EXPECT_EQ(says(add, level + "/a=b/c=d.txt"), "done") << "a plain path may hold the sign";
    EXPECT_EQ(engine.settings.items[1].target, "");

    EXPECT_EQ(says(leave, "x=" + level),
              "Impossible insert item in VetNoItems(): It's not allowed insert a relative path "
              "(with '=' character) in VetNoItems()");
    EXPECT_EQ(says(leave, level + "/data"), "done");
    EXPECT_EQ(says(leave, level + "/data"), "Item already present: NoItem value " + level +
                                                "/data is already present in "
                                                "VetNoItems()");

    EXPECT_EQ(says(CwCommand::RelativePath, level), "done");
    EXPECT_EQ(engine.result.text, "Kestrova\\");
    EXPECT_EQ(says(CwCommand::RelativePathOfFile, level + "/a=b/c=d.txt"), "done");
    EXPECT_EQ(engine.result.text, "Kestrova\\a=b\\c=d.txt");
    EXPECT_EQ(says(CwCommand::RelativePath, "/elsewhere"),
              "Item not found: Item /elsewhere not exist in VetItems()");
    EXPECT_EQ(says(CwCommand::AbsolutePath, "x/= " + level), "done");
    EXPECT_EQ(says(CwCommand::RemoveItem, ""), "Item not found: Argomento1 not present");
    EXPECT_EQ(says(CwCommand::RemoveItem, level), "done");
    EXPECT_EQ(engine.settings.items.size(), 1U);
    EXPECT_EQ(says(CwCommand::RemoveNoItem, level + "/data"), "done");
    EXPECT_EQ(says(CwCommand::FolderBytes, level + "/none"),
              "Path not exist: Argument is not a valid folder path");
    EXPECT_EQ(says(CwCommand::ScanFolder, level), "done");
    EXPECT_EQ(engine.result.names.size(), 6U);
    EXPECT_EQ(says(CwCommand::Reset, "6"), "done");
    EXPECT_EQ(engine.settings.speed, 6);
    EXPECT_TRUE(engine.settings.items.empty());
    EXPECT_THAT(says(CwCommand::OpenDoor, "Z:"),
                HasSubstr("Error opening device with unit letter: Z:"));
}

TEST(BurnCd, ReportsWhatTheDiscShouldHoldAndWhatTheImageHolds)
{
    for (const char* lister : {"xorriso", "isoinfo"}) {
        BurningWorld world;
        BurnCd engine = world.Engine();
        engine.settings = world.Settings();
        engine.settings.image = world / "disc.iso";
        EXPECT_FALSE(engine.Command(CwCommand::ReportImage, "FlatList"));
        EXPECT_EQ(engine.error.detail, "There are no ISO image to read");
        EXPECT_EQ(engine.error.code, BurnCode::ReportFailed);
        ASSERT_TRUE(engine.Command(CwCommand::MakeImage));
        world.UseDiscTools({lister});
        BurnCd reporter = world.Engine();
        reporter.settings = engine.settings;
        const auto report = [&](CwCommand command, const std::string& kind) {
            EXPECT_TRUE(reporter.Command(command, kind))
                << reporter.error.title << reporter.error.detail;
            return reporter.result.text;
        };
        EXPECT_THAT(report(CwCommand::ReportImage, "flatlist"),
                    HasSubstr("/Kestrova1/LEVEL_0001/files/a=b/c=d.txt\r\n"));
        EXPECT_THAT(report(CwCommand::ReportImage, "TreeList"),
                    HasSubstr("    files/\r\n      a=b/\r\n        c=d.txt\r\n      data/\r\n"
                              "        level1.tr4\r\n"));
        const std::string reference = report(CwCommand::ReportImage, "ReferenceList");
        EXPECT_THAT(reference, HasSubstr("/Kestrova1/LEVEL_0001/files/data/level1.tr4\t300003\t"));
        EXPECT_THAT(reference, HasSubstr("/Kestrova1/LEVEL_0001/files/nothing here\t--\t--\r\n"));
        EXPECT_EQ(reference.find("Zażółć 日本語.txt\t7\t") != std::string::npos,
                  std::string_view{lister} == "xorriso");
        EXPECT_FALSE(reporter.Command(CwCommand::ReportImage, "Some"));
        EXPECT_EQ(reporter.error.title, "Not valid option");

        reporter.settings.noItems = {world / "level/data"};
        const std::string targets = report(CwCommand::ReportItems, "Target");
        EXPECT_THAT(targets, HasSubstr("Kestrova1\\LEVEL_0001\\files\\a=b\\c=d.txt\t5\t"));
        EXPECT_EQ(targets.find("level1.tr4"), std::string::npos);
        EXPECT_THAT(report(CwCommand::ReportItems, "source"),
                    HasSubstr((world / "level/empty.dat").native() + "\t0\t"));
        EXPECT_FALSE(reporter.Command(CwCommand::ReportItems, "Both"));
        EXPECT_EQ(reporter.error.detail, "Valid arguments are: \"Target\" or \"Source");
    }
}

TEST(BurnCd, AutoRunNamesTheProgramByItsPlaceOnTheDisc)
{
    BurningWorld world;
    world.Write("setup.exe", "program");
    BurnCd engine = world.Engine();
    EXPECT_FALSE(engine.Command(CwCommand::AddAutoRunInf));
    EXPECT_EQ(engine.error.detail, "You must insert full path of source file where it's now");
    const std::string item = "Kestrova/=" + (world / "setup.exe").native();
    ASSERT_TRUE(engine.Command(CwCommand::AddAutoRunInf, item, "NotAddFile"));
    EXPECT_EQ(engine.settings.items.size(), 1U);
    ASSERT_TRUE(engine.Command(CwCommand::AddAutoRunInf, item));
    EXPECT_EQ(engine.settings.items.size(), 2U);
    EXPECT_EQ(world.Read("tools/autorun.inf"), "[autorun]\r\nOPEN=Kestrova\\setup.exe\r\n");
    EXPECT_EQ(engine.settings.items[0].source.filename(), "autorun.inf");
}

} // namespace

} // namespace kestrova::testing
