#include "editor/wad_routing.h"

#include "sandbox/sandbox.h"
#include "sandbox/sound_files.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// "Install \graphics\wads\" or the goal alone.
std::string WordsOf(const WadRoute& route)
{
    static const std::map<WadGoal, std::string> goals{{WadGoal::Install, "Install "},
                                                      {WadGoal::Scripts, "Scripts"},
                                                      {WadGoal::Misplaced, "Misplaced"},
                                                      {WadGoal::Finished, "Finished"},
                                                      {WadGoal::Ignored, "Ignored"}};
    return goals.at(route.goal) + route.subfolder;
}

TEST(WadRouting, EachFileGoesWhereTheFirstRowThatFitsSays)
{
    Sandbox box;
    const std::map<std::string, std::string> expected{
        {"City.TOM", "Install \\graphics\\wads\\"},
        {"city.Wad", "Install \\graphics\\wads\\"},
        {"city.lar", "Install \\graphics\\wads\\"},
        {"city.tga", "Install \\graphics\\wads\\"},
        {"city.txt", "Install \\graphics\\wads\\"},
        {"mill.wad", "Install \\graphics\\wads\\"},
        {"Yard.PRJ", "Install \\maps\\Yard\\"},
        {"yar5.tga", "Install \\maps\\Yard\\"},
        {"sky.tga", "Ignored"},
        {"SCRIPT.txt", "Scripts"},
        {"English.TXT", "Scripts"},
        {"german.dat", "Scripts"},
        {"German.txt", "Scripts"},
        {"french.txt", "Ignored"},
        {"Sounds.Txt", "Install \\Sound\\LevelSfx Creator\\"},
        {"objects.h", "Install \\"},
        {"city.tr4", "Finished"},
        {"script.exe", "Ignored"},
        {"tom2pc.exe", "Ignored"},
        {"tomb4.exe", "Ignored"},
        {"no ending", "Ignored"},
    };
    std::vector<Path> files;
    for (const auto& [name, words] : expected) {
        box.Write(name, name);
        files.push_back(box / name);
    }
    const WadRoutes routes = RouteWads(files);
    ASSERT_EQ(routes.files.size(), files.size());
    for (const WadRoute& route : routes.files)
        EXPECT_EQ(WordsOf(route), expected.at(route.file.filename().native())) << route.file;
    EXPECT_EQ(routes.toms, std::vector<Path>{"City.TOM"});
    EXPECT_EQ(routes.wads, std::vector<Path>{"mill.wad"});
}

} // namespace

} // namespace kestrova::testing
