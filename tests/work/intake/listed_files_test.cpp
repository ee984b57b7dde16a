#include "intake/listed_files.h"

#include "intake/config_world.h"

namespace kestrova::testing
{

namespace
{

/// A level of sources whose list is looked at.
class ListWorld : public ConfigWorld
{
public:
    ListWorld()
    {
        Write("in/mill.tom", "tom");
        Write("in/mill.wad", "a wad");
    }
    Intake& Begin(const std::vector<ConfigFile>& files)
    {
        config.files = files;
        EXPECT_TRUE(Add()) << host.AllTold();
        EXPECT_TRUE(Draft().configApplied);
        return *opened;
    }
};

TEST(ListedFiles, AreThereWithTheirSizes)
{
    ListWorld world;
    world.Write("in/Ж.wav", "1");
    world.Write("in/Ш.wav", "22");
    world.Write("in/größe.txt", "333");
    Intake& level = world.Begin({{"MILL.tom", 3},
                                 {" mill.wad", 5},
                                 {"Ш.wav", 2},
                                 {"Ж.wav", 1},
                                 {"GRÖSSE.txt", 3},
                                 {"größe.TXT", 3}});
    level.draft.listedFiles.erase(level.draft.listedFiles.begin() + 4); // of other letters
    EXPECT_EQ(level.draft.listedFiles[2].name, "?.wav") << "as the file has it";
    EXPECT_TRUE(CheckLevelFileList(level, Checking::Silent));
    EXPECT_TRUE(CheckLevelFileList(level, Checking::Interactive));
    for (const ConfigFile& wrong :
         {ConfigFile{"mill.tom", 4}, ConfigFile{"mill.tom", -3}, ConfigFile{"..\\in\\mill.tom", 3},
          ConfigFile{"/etc/passwd", 3}, ConfigFile{"*.tom", 3}, ConfigFile{"?.wav", 3},
          ConfigFile{"", 0}}) {
        level.draft.listedFiles = {wrong};
        EXPECT_FALSE(CheckLevelFileList(level, Checking::Silent)) << wrong.name;
        level.draft.onlineConfig = true;
        EXPECT_TRUE(CheckLevelFileList(level, Checking::Silent)) << "the author made no list";
        level.draft.onlineConfig = false;
    }
    EXPECT_TRUE(world.host.told.empty()) << world.host.AllTold();
}

TEST(ListedFiles, AreAskedAboutOneByOneUpToABound)
{
    ListWorld world;
    Intake& level = world.Begin({{"c:\\x\\gone.tr4", 1}, {"mill.wad", 4}, {"mill.tom", 3}});
    const std::string missing = "Warning: File 'gone.tr4 in internal file list of configuration "
                                "file, it's not present in current level files\r\n"
                                "Do you want continue?";
    world.host.WillAsk(missing, false);
    EXPECT_FALSE(CheckLevelFileList(level, Checking::Interactive));
    world.host.WillAsk(missing, true);
    world.host.WillAsk("Size of file 'mill.wad in internal file list", true);
    EXPECT_TRUE(CheckLevelFileList(level, Checking::Interactive));

    level.draft.listedFiles.assign(100'000, {"gone", 1});
    for (int i = 0; i < 20; ++i)
        world.host.WillAsk("'gone in internal file list", true);
    world.host.WillAsk("99980 more files", true);
    EXPECT_TRUE(CheckLevelFileList(level, Checking::Interactive));
}

TEST(ListedFiles, WithoutTomFilesThereIsNothingToConvert)
{
    ConfigWorld world;
    world.Write("in/level.tr4", "level");
    ASSERT_TRUE(world.Add());
    EXPECT_FALSE(CheckLevelFileList(*world.opened, Checking::Silent));
    EXPECT_TRUE(world.host.told.empty());
    EXPECT_FALSE(CheckLevelFileList(*world.opened, Checking::Interactive));
    EXPECT_TRUE(world.host.WasTold("Missing [.tom] files to convert"));
}

} // namespace

} // namespace kestrova::testing
