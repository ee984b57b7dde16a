#include "swap/swap_world.h"

namespace kestrova::testing
{
namespace
{

TEST(TheLogOfASwap, TellsEachStepInTheOrderInWhichItIsToldElsewhere)
{
    SwapWorld world;
    world.PlayFirst();
    world.session.preferences.writeLogFiles = true;
    ASSERT_TRUE(InstallLevel(world.session, world.second)) << world.host.AllTold();

    const std::string trle = (world / "trle").native();
    const std::string store = (world / "levels/LEVEL_0001/backup_savegames").native();
    const std::string backup = (world / "home/backup_trle").native();
    const std::string second = (world / "levels/LEVEL_0002").native();
    std::string told = "*** SET LEVEL: Il Secondo : CODE=2 ***\r\n"
                       "PREVIOUS LEVEL: The First :CODE= 1\r\n";
    told += "DELETE DIR \"*.*\" -> " + store + " [OK]\r\n";
    for (const char* pattern : {"savegame.*", "shot*.jpg", "note*.txt"}) {
        told += "COPYALL " + trle + "\\" + pattern + " -> " + store + " [OK]\r\n";
        told += std::string{"DELETE DIR \""} + pattern + "\" -> " + trle + " [OK]\r\n";
    }
    for (const char* file : {"english.dat", "script.dat", "LOAD.bmp", "data/first.TR4",
                             "data/title.tr4", "audio/003.wav"})
        told += "DELETE -> " + trle + "/" + file + " [OK]\r\n";
    const std::string log = world.Read("home/LevelLog_000.txt");
    EXPECT_EQ(log.substr(0, told.size()), told);
    for (const char* line :
         {"/script.dat [OK] [OVERWRITE]\r\n", "/data/second.tr4 [OK]\r\n", "/extra.h [OK]\r\n"})
        EXPECT_NE(log.find(line), std::string::npos) << line << log;
    EXPECT_NE(log.find("COPYALL " + second + "/backup_savegames\\*.* -> " + trle + " [OK]\r\n"),
              std::string::npos)
        << log;
    EXPECT_NE(log.find("COPY " + backup + "/script.dat -> " + trle + "/script.dat [OK]\r\n"),
              std::string::npos)
        << log;
    // The one stroke of another system stands before a pattern.
    for (std::size_t at = log.find('\\'); at != std::string::npos; at = log.find('\\', at + 1))
        EXPECT_TRUE(
            log.substr(at).starts_with("\\*.*") || log.substr(at).starts_with("\\savegame.*") ||
            log.substr(at).starts_with("\\shot*.jpg") || log.substr(at).starts_with("\\note*.txt"))
            << log.substr(at, 60);
}

} // namespace
} // namespace kestrova::testing
