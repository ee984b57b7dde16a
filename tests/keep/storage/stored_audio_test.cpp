#include "conversion/audio_batch.h"
#include "conversion/mp3_tools.h"
#include "sandbox/sound_files.h"
#include "session/telling.h"
#include "storage/zl_file.h"
#include "whole_session.h"
#include "words/storage.h"
#include "world/tool_box.h"

#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

using namespace kestrova::testing;
namespace fs = std::filesystem;

/// An archive that keeps waves as mp3, with the real tools.
struct AudioArchive : ToolBox {
    AudioArchive()
    {
        UseRealTools();
        MakeTrle();
        MakeBackupAndArchive();
        session.archive.header.wavInMp3 = true;
        session.mp3Settings = {2, 64, 0};
        code = AddLevel("With sounds", {});
    }
    [[nodiscard]] std::string Files() const { return "levels/LEVEL_0001/files"; }
    bool Store()
    {
        return DoneOrTold(host, StoreLevelFiles(session, root / "in",
                                                session.archive.levels.back().levelCode, nullptr,
                                                StoreAs::ArchiveSays, Accept()));
    }
    /// Whoever stores asks so.
    AcceptLoss Accept()
    {
        return [this](const Failure& failure) {
            TellFailure(host, failure);
            return host.AskYesNo(GetMsg(Msg::ContinueFileCopy), Consent::Explicit);
        };
    }
    [[nodiscard]] std::vector<std::string> Names(const std::string& folder) const
    {
        std::vector<std::string> names;
        for (const auto& [name, bytes] : Snapshot(folder))
            names.push_back(name);
        return names;
    }
    LevelCode code = 0;
};

using Names = std::vector<std::string>;

TEST(StoredAudio, WavesAreKeptAsMp3AndComeBackInTheGamesForm)
{
    AudioArchive box;
    box.Write("in/101.WAV", ToneWave({}, 30'000));
    box.Write("in/step.wav", ToneWave({1, 22050, 16, 1}, 9000));
    box.Write("in/a.tr4", "a level");
    const auto before = box.Snapshot("in");
    for (const bool compress : {false, true}) {
        box.session.archive.header.compressLevels = compress;
        ASSERT_TRUE(box.Store()) << box.host.AllTold();
        EXPECT_EQ(box.Snapshot("in"), before) << "the source is not ours";
        EXPECT_EQ(box.Names(box.Files()), compress
                                              ? (Names{"101.mp3.zl", "a.tr4.zl", "step.mp3.zl"})
                                              : (Names{"101.mp3", "a.tr4", "step.mp3"}));
        const auto plan = PlanLevelFiles(box / box.Files());
        ASSERT_TRUE(plan);
        const auto waves = UnstoreLevelFiles(box.session, box / box.Files(), true);
        ASSERT_TRUE(waves) << box.host.AllTold();
        const Path result = *waves;
        ASSERT_EQ(ListFiles(result, "*")->size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ((*plan)[i].name, ListFiles(result, "*")->at(i).filename());
            EXPECT_NEAR(static_cast<double>((*plan)[i].size),
                        static_cast<double>(FileSize(ListFiles(result, "*")->at(i))), 2048);
        }
        for (const char* name : {"101.wav", "step.wav"})
            EXPECT_EQ(ClassifyWav(result / name, AudioKind::Adpcm).mode, 0) << name;
        ASSERT_TRUE(RemoveFolder(result));
        const auto unstored = UnstoreLevelFiles(box.session, box / box.Files(), false);
        ASSERT_TRUE(unstored);
        EXPECT_EQ(unstored->empty(), !compress) << "mp3 stays mp3";
        if (compress) {
            EXPECT_TRUE(FileExists(*unstored / "101.mp3"));
        }
    }
    EXPECT_FALSE(box.Has("home/_temp_Compr"));
}

TEST(StoredAudio, TheLevelsOwnFolderIsConvertedWhereItLies)
{
    AudioArchive box;
    box.session.archive.header.compressLevels = true;
    box.Write(box.Files() + "/101.wav", ToneWave({}, 9000));
    box.Write(box.Files() + "/readme.txt", "words");
    ASSERT_TRUE(StoreLevelFiles(box.session, box / box.Files(), 1, nullptr)) << box.host.AllTold();
    EXPECT_EQ(box.Names(box.Files()), (Names{"101.mp3.zl", "readme.txt"}));
}

TEST(StoredAudio, AWaveThatCannotBeEncodedIsAskedAboutAndNothingIsStoredOnANo)
{
    AudioArchive box;
    box.Write(box.Files() + "/old.tr4", "the old one");
    box.Write("in/101.wav", ToneWave({}, 9000));
    box.Write("in/102.wav", std::string(500, '\0'));
    box.Write("in/a.tr4", "a level");
    box.host.WillAsk("Do you want continue in file copy?", false);
    EXPECT_FALSE(box.Store());
    EXPECT_TRUE(box.host.WasTold("Audio compression failed: I cannot convert file '102.wav'"));
    EXPECT_EQ(box.Names(box.Files()), Names{"old.tr4"});
    // A yes accepts that the waves are left behind.
    box.host.WillAsk("Do you want continue in file copy?", true);
    EXPECT_TRUE(box.Store());
    EXPECT_EQ(box.Names(box.Files()), Names{"a.tr4"});
    EXPECT_EQ(box.Snapshot("in").size(), 3U);
    // Passed over one by one, they stay what they are.
    std::filesystem::remove(box / "in/102.wav");
    box.machine.tools.erase("lame");
    box.host.WillAsk("Error processing file '101.wav' : Error encoding in mp3", true);
    box.host.WillAsk("Target audio file not create", true);
    EXPECT_TRUE(box.Store());
    EXPECT_EQ(box.Names(box.Files()), (Names{"101.wav", "a.tr4"}));
}

TEST(StoredAudio, ALevelThatCannotBeDecodedIsNotUnstored)
{
    AudioArchive box;
    box.Write("in/101.wav", ToneWave({}, 9000));
    box.Write("in/a.tr4", "a level");
    box.Write("in/none.mp3", "this is called mp3 and is none");
    ASSERT_TRUE(box.Store());
    const auto stored = box.Snapshot(box.Files());
    const auto ready =
        ReadyLevelFiles(box.session, box / box.Files(), box / "ready", true, nullptr);
    ASSERT_TRUE(ready) << "what is no sound keeps no level from play";
    ASSERT_EQ(ready->size(), 3U);
    EXPECT_EQ((*ready)[0].name, "101.wav");
    EXPECT_EQ((*ready)[2].path, box / box.Files() / "none.mp3");
    box.machine.tools.erase("madplay");
    box.host.WillAsk("Missing mp3 decoder 'madplay.exe'", false);
    EXPECT_FALSE(
        DoneOrTold(box.host, StatusOf(UnstoreLevelFiles(box.session, box / box.Files(), true))));
    EXPECT_TRUE(box.host.WasTold("Failed conversion: Error decoding mp3 (101.mp3)"));
    EXPECT_EQ(box.Snapshot(box.Files()), stored);
    EXPECT_FALSE(box.Has("home/_temp_Dec"));
}

TEST(StoredAudio, StoredSoundsChangeFormBothWays)
{
    AudioArchive box;
    box.Write(box.Files() + "/101.wav", ToneWave({}, 9000));
    box.Write(box.Files() + "/a.tr4", "a level");
    ASSERT_TRUE(ChangeStoredAudio(box.session, box / box.Files(), true));
    EXPECT_EQ(box.Names(box.Files()), (Names{"101.mp3", "a.tr4"}));
    ASSERT_TRUE(ChangeStoredAudio(box.session, box / box.Files(), false));
    EXPECT_EQ(box.Names(box.Files()), (Names{"101.wav", "a.tr4"}));
    EXPECT_EQ(ClassifyWav(box / box.Files() / "101.wav", AudioKind::Adpcm).mode, 0);
    // Deflated ones too.
    ASSERT_TRUE(CompressToZl(box / box.Files() / "101.wav", box / box.Files() / "102.wav.zl"));
    ASSERT_TRUE(ChangeStoredAudio(box.session, box / box.Files(), true));
    EXPECT_EQ(box.Names(box.Files()), (Names{"101.mp3", "102.mp3", "a.tr4"}));
    // A killed run left a wave beside its own stream.
    ASSERT_TRUE(ChangeStoredAudio(box.session, box / box.Files(), false));
    ASSERT_TRUE(CompressToZl(box / box.Files() / "101.wav", box / box.Files() / "101.wav.zl"));
    ASSERT_TRUE(ChangeStoredAudio(box.session, box / box.Files(), true));
    EXPECT_EQ(box.Names(box.Files()), (Names{"101.mp3", "102.mp3", "a.tr4"}));
    box.Write(box.Files() + "/103.wav", "no wave");
    const auto before = box.Snapshot(box.Files());
    const auto refused = ChangeStoredAudio(box.session, box / box.Files(), true);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.Error().code, ErrorCode::Refused);
    EXPECT_EQ(box.Snapshot(box.Files()), before);
    EXPECT_FALSE(box.Has("home/_temp_Compr"));
}

TEST(StoredAudio, AnMp3OfTheLevelsOwnStaysBesideItsWave)
{
    AudioArchive box;
    box.Write("in/104.WAV", ToneWave({}, 30'000));
    box.Write("in/105.wav", ToneWave({}, 30'000));
    box.Write("in/a.tr4", "a level");
    box.Write("in/104.mp3", "the level's own");
    const auto source = box.Snapshot("in");
    const auto holdsBoth = [&] {
        const auto now = box.Snapshot(box.Files());
        return now.contains("104.WAV") && now.at("104.WAV") == source.at("104.WAV") &&
               now.at("104.mp3") == source.at("104.mp3") && now.contains("105.mp3") &&
               box.host.WasTold("104.WAV");
    };
    ASSERT_TRUE(box.Store()) << box.host.AllTold();
    EXPECT_TRUE(holdsBoth()) << "as it was stored";
    for (const bool inPlace : {true, false}) {
        fs::remove_all(box / box.Files());
        for (const auto& [name, content] : source)
            box.Write(box.Files() + "/" + name, content);
        box.host.told.clear();
        ASSERT_TRUE(inPlace ? EncodeWavesInPlace(box.host, SoundConverterOf(box.session),
                                                 box / box.Files(), box.Accept())
                            : ChangeStoredAudio(box.session, box / box.Files(), true))
            << box.host.AllTold();
        EXPECT_TRUE(holdsBoth()) << inPlace;
    }
}

} // namespace
} // namespace kestrova
