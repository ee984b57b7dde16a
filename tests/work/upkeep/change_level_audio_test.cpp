#include "upkeep/change_level_audio.h"

#include "sandbox/faults.h"
#include "sandbox/sound_files.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

TEST(ChangeLevelAudio, AFailureIsAskedAboutWithTheLevelsName)
{
    ToolBox box;
    box.session.archive.header.wavInMp3 = true;
    box.AddLevel("With sounds", {});
    const Path files = box / "levels/LEVEL_0001/files";
    box.Write("levels/LEVEL_0001/files/103.wav", "no wave");
    const auto before = box.Snapshot("levels/LEVEL_0001/files");
    for (const bool goOn : {true, false}) {
        box.host.told.clear();
        box.host.WillAsk("Error converting audio files for level: With sounds", goOn);
        EXPECT_EQ(ChangeLevelAudio(box.session, "With sounds", files), goOn);
        ASSERT_EQ(box.host.told.size(), 1U) << box.host.AllTold();
        EXPECT_NE(box.host.told[0].text.find("I cannot convert file '103.wav'"), std::string::npos);
    }
    // What the conversion's window cannot have said is told before the question.
    box.Write("levels/LEVEL_0001/files/104.wav.zl", "no stream");
    box.host.told.clear();
    box.host.WillAsk("Error converting audio files for level: With sounds", false);
    EXPECT_FALSE(ChangeLevelAudio(box.session, "With sounds", files));
    ASSERT_EQ(box.host.told.size(), 1U) << box.host.AllTold();
    EXPECT_NE(box.host.told[0].text.find("104.wav.zl"), std::string::npos);
    EXPECT_EQ(box.Read("levels/LEVEL_0001/files/103.wav"), before.at("103.wav"));
    // What fails among the sounds that can be converted is told as well.
    box.UseRealTools();
    std::filesystem::remove(files / "104.wav.zl");
    box.Write("levels/LEVEL_0001/files/105.wav", ToneWave({}, 9000));
    box.host.told.clear();
    box.host.WillAsk("Error converting audio files for level: With sounds", true);
    const FailingCalls stays{platform::FileAction::Unlink, "105.wav", 100};
    EXPECT_TRUE(ChangeLevelAudio(box.session, "With sounds", files));
    EXPECT_GT(stays.Failed(), 0);
    EXPECT_TRUE(box.host.WasTold("105.wav")) << box.host.AllTold();
}

} // namespace

} // namespace kestrova::testing
