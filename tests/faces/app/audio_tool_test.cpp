#include "app/audio_tool.h"
#include "core/size_words.h"
#include "sandbox/sound_files.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

using namespace kestrova::testing;

TEST(AudioTool, GathersConvertsAndClearsUp)
{
    ToolBox box;
    box.UseRealTools();
    std::filesystem::create_directory(box / "out");
    box.Write("tools/_audio_temp/left over.wav", "of a killed program");
    box.Write("music/one.wav", ToneWave({1, 22050, 16, 1}, 2000));
    box.Write("music/sub/a rather long name.WAV", ToneWave({}, 2000));
    box.Write("music/cover.jpg", "no sound");
    const auto sources = box.Snapshot("music");

    AudioTool tool{box.session, AudioToolMode::Convert};
    ASSERT_TRUE(tool.Open());
    EXPECT_EQ(tool.Rows().size(), 0U) << "leftovers go first";
    EXPECT_FALSE(tool.Convert(AudioKind::Standard));
    EXPECT_TRUE(box.host.WasTold("Please, set target folder"));
    box.host.WillChoose("Select target folder", box / "out");
    tool.BrowseTarget();
    EXPECT_FALSE(tool.Convert(AudioKind::Standard));
    EXPECT_TRUE(box.host.WasTold("No audio files to convert"));

    box.host.WillChoose("Select source folder", box / "music");
    box.host.WillAsk("In folder \"music\" there are also sub folders.", true);
    tool.AddFolder();
    tool.AddPaths({box / "music/cover.jpg"});
    EXPECT_TRUE(box.host.WasTold("Left out: cover.jpg"));
    ASSERT_EQ(tool.Rows().size(), 2U);
    EXPECT_EQ(tool.Rows()[0].text, "a rather long name.WAV 44100Hz 16 bits stereo");
    EXPECT_EQ(tool.Rows()[1].text, "one.wav           22050Hz 16 bits mono");
    EXPECT_EQ(tool.SizeText(), "2 files (" + FormatSize(8044 + 4044) + ")");
    tool.Listen(1);
    ASSERT_EQ(box.machine.opened.size(), 1U);

    // From 22050 mono there is no way to the game's form.
    EXPECT_FALSE(tool.Convert(AudioKind::Adpcm));
    EXPECT_TRUE(box.host.WasTold("Failed conversion: I cannot convert file 'one.wav'"));
    EXPECT_TRUE(box.Snapshot("out").empty());

    tool.Remove(7);
    EXPECT_TRUE(box.host.WasTold("No file selected"));
    box.host.WillAsk("Are you sure to remove file: one.wav", true);
    tool.Remove(1);
    box.host.WillAsk("Do you want listen audio file 'a rather long name.wav'", true);
    box.host.WillAsk("Do you want exit from Audio Converter tool?", false);
    EXPECT_FALSE(tool.Convert(AudioKind::Adpcm));
    EXPECT_EQ(box.machine.opened.size(), 2U);
    box.host.WillAsk("Do you want listen", false);
    box.host.WillAsk("Do you want exit", true);
    EXPECT_TRUE(tool.Convert(AudioKind::Standard));
    EXPECT_FALSE(FolderExists(box.session.programFolder / "_audio_temp"));
    EXPECT_EQ(box.Snapshot("music"), sources);
}

} // namespace
} // namespace kestrova
