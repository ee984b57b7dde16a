#include "packages/level_config_file.h"

#include "sandbox/faults.h"
#include "session/telling.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

LevelConfig ConfigNamed(const std::string& name)
{
    LevelConfig config;
    config.name = name;
    config.files = {{"one.tr4", 1}, {"two.tr4", 2}};
    return config;
}

/// The only message, which must be an error with these words and this path.
void ExpectTold(World& box, const std::string& words, const std::string& reason = {})
{
    ASSERT_EQ(box.host.told.size(), 1U) << box.host.AllTold();
    EXPECT_EQ(box.host.told[0].tone, Tone::Error);
    EXPECT_EQ(box.host.told[0].text, words);
    EXPECT_NE(box.host.told[0].reason.find(reason), std::string::npos) << box.host.told[0].reason;
    box.host.told.clear();
}

TEST(LevelConfigFile, IsRefusedInWords)
{
    World box;
    const std::string path = (box / "work/kestrova.cfg").native();
    EXPECT_FALSE(DoneOrTold(box.host, StatusOf(ReadLevelConfig(LevelConfigPath(box / "work")))));
    ExpectTold(box, "Config file '" + path + "' not found");

    const std::string bytes = *FormatLevelConfig(ConfigNamed("after"));
    box.Write("work/kestrova.cfg", bytes.substr(0, bytes.size() - 3));
    EXPECT_FALSE(DoneOrTold(box.host, StatusOf(ReadLevelConfig(LevelConfigPath(box / "work")))));
    ExpectTold(box, "Error reading config file: " + path, "cut or damaged");

    box.Write("other/Kestrova.CFG", bytes);
    const auto config = ReadLevelConfig(LevelConfigPath(box / "other"));
    ASSERT_TRUE(config);
    EXPECT_EQ(config->name, "after");
}

TEST(LevelConfigFile, IsWrittenWholeOrNotAtAll)
{
    World box;
    const Path file = LevelConfigPath(box / "work");
    EXPECT_FALSE(DoneOrTold(box.host, WriteLevelConfig(file, ConfigNamed("new"))));
    ExpectTold(box, "Error opening for write config file: " + file.native());

    const std::string old = *FormatLevelConfig(ConfigNamed("old")) + "a long tail";
    const std::string written = *FormatLevelConfig(ConfigNamed("new"));
    for (int n = 1;; n = NextPoint(n)) {
        ASSERT_LT(n, 30);
        box.Write("work/kestrova.cfg", old);
        box.host.told.clear();
        const FaultRun run = WithFaultAt(
            n, [&] { return DoneOrTold(box.host, WriteLevelConfig(file, ConfigNamed("new"))); });
        const std::string now = box.Read("work/kestrova.cfg");
        if (!run.reached) {
            EXPECT_TRUE(run);
            EXPECT_EQ(now, written + "a long tail");
            break;
        }
        EXPECT_TRUE(now == old || now == written + "a long tail") << run.call;
        if (!run) {
            EXPECT_TRUE(box.host.WasTold("config file: " + file.native())) << run.call;
        }
    }

    LevelConfig tooLong = ConfigNamed("too long");
    tooLong.tomWads = std::string(40000, 't');
    EXPECT_FALSE(DoneOrTold(box.host, WriteLevelConfig(file, tooLong)));
    ExpectTold(box, "Error writing config file: " + file.native(), "32767");
}

} // namespace

} // namespace kestrova::testing
