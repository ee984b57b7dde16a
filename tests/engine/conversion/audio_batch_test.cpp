#include "audio/mpeg_frames.h"
#include "audio/sound_info.h"
#include "audio/wave_converter.h"
#include "audio/wave_reader.h"
#include "conversion/audio_batch.h"
#include "conversion/level_audio.h"
#include "conversion/mp3_tools.h"
#include "conversion/sound_lines.h"
#include "conversion/sound_tools.h"
#include "core/staged_file.h"
#include "sandbox/sound_files.h"
#include "session/telling.h"
#include "words/conversion.h"
#include "world/tool_box.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

namespace kestrova
{
namespace
{

using namespace kestrova::testing;

/// A box with the real tools and a folder `in` of sounds; `out` is the target.
struct SoundBox : ToolBox {
    SoundBox()
    {
        UseRealTools();
        std::filesystem::create_directory(root / "out");
        session.mp3Settings = {2, 64, 0};
    }
    /// A second of a tone as mp3.
    std::string Mp3(std::size_t frames = 44100)
    {
        Write("make.wav", ToneWave({}, frames));
        ToolWatch state;
        EXPECT_TRUE(state.Done(EncodeMp3(ToolsOf(session), session.mp3Settings, root / "make.wav",
                                         root / "make.mp3", state)))
            << state.error;
        std::filesystem::remove(root / "make.wav");
        std::string bytes = Read("make.mp3");
        std::filesystem::remove(root / "make.mp3");
        return bytes;
    }
    std::vector<Path> In() const { return *ListFiles(root / "in", "*"); }
    bool Run(AudioKind kind, const Path& folder, std::string* status = nullptr)
    {
        AudioBatch batch{session.host, SoundConverterOf(session), In(), folder, kind};
        const Status done = batch.Run();
        converted = batch.Converted().size();
        if (status != nullptr)
            *status = done ? "" : done.Error().sentence;
        return bool{done};
    }
    std::size_t converted = 0;
};

TEST(AudioBatch, EveryFileBecomesTheTarget)
{
    SoundBox box;
    const std::string mp3 = box.Mp3();
    box.Write("in/a name with blanks ü.mp3", mp3);
    box.Write("in/-dash.MP3", mp3);
    box.Write("in/low.mp3", [&] {
        box.session.mp3Settings = {1, 16, 8000};
        const std::string low = box.Mp3();
        box.session.mp3Settings = {2, 64, 0};
        return low;
    }());
    box.Write("in/standard.wav", ToneWave({}, 50'000));
    const auto before = box.Snapshot("in");
    const std::vector<std::string> names = {"-dash.wav", "a name with blanks ü.wav", "low.wav",
                                            "standard.wav"};
    for (const AudioKind kind : {AudioKind::Standard, AudioKind::Adpcm, AudioKind::Mono}) {
        ASSERT_TRUE(box.Run(kind, box / "out")) << box.host.AllTold();
        EXPECT_EQ(box.converted, 4U);
        for (const std::string& name : names)
            EXPECT_EQ(ClassifyWav(box / "out" / name, AudioKind::Mp3).kind, kind) << name;
    }
    ASSERT_TRUE(box.Run(AudioKind::Mp3, box / "out"));
    EXPECT_EQ(ScanMpeg(box.Read("out/low.mp3")).first.kbits, 64) << "decoded and encoded again";
    const MpegFacts encoded = ScanMpeg(box.Read("out/standard.mp3"));
    EXPECT_GE(encoded.samples * 44100, 50'000U * static_cast<unsigned>(encoded.first.rate));
    EXPECT_EQ(box.Snapshot("in"), before);
    EXPECT_EQ(box.Snapshot("out").size(), 8U) << "nothing temporary stays";
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
    const auto& shown = box.host.progressTexts;
    for (const char* words :
         {"[1\\4]  Decode \"-dash.MP3\" --> WAV ~ stereo 16 bits",
          "[4\\4]  Convert \"standard.wav\" --> 44100 stereo 4 bits", "Conversion terminated"})
        EXPECT_NE(std::find(shown.begin(), shown.end(), words), shown.end()) << words;
}

TEST(AudioBatch, WhatIsTheTargetAlreadyIsOnlyCopiedOrLeft)
{
    SoundBox box;
    box.Write("in/A.WAV", ToneWave({}, 3000));
    const auto before = box.Snapshot("in");
    ASSERT_TRUE(box.Run(AudioKind::Standard, box / "in"));
    EXPECT_EQ(box.Snapshot("in"), before);
    ASSERT_TRUE(box.Run(AudioKind::Standard, box / "out"));
    EXPECT_EQ(box.Read("out/A.wav"), before.at("A.WAV"));
    // In its own folder a wave is replaced by what it became.
    ASSERT_TRUE(box.Run(AudioKind::Adpcm, box / "in"));
    EXPECT_EQ(ClassifyWav(box / "in/a.wav", AudioKind::Adpcm).mode, 0);
    EXPECT_EQ(box.Snapshot("in").size(), 1U);
}

TEST(AudioBatch, OneFileWithoutAWayStopsAllBeforeAnythingChanges)
{
    SoundBox box;
    const std::string wave = ToneWave({}, 3000);
    struct Row {
        const char* name;
        std::string bytes;
        const char* words;
    };
    const Row rows[] = {
        {"zeros.wav", std::string(500, '\0'), "[UNKNOWN 0Hz   0 bits]"},
        {"empty.wav", "", "I cannot convert file 'empty.wav'"},
        {"zeros.mp3", std::string(5000, '\0'), "[mp3 without any sound]"},
        {"empty.mp3", "", "to format [44100 stereo 4 bits]"},
        {"mono.wav", ToneWave({1, 22050, 16, 1}, 100), "[PCM 22050Hz mono 16 bits]"},
        // The first bytes say what it is, and nothing is behind them.
        {"head.wav", wave.substr(0, 36), "[PCM 44100Hz stereo 16 bits]"},
        // What it is called, and what it is.
        {"wave.mp3", wave, "[a wave that is called .mp3; give it the ending .wav]"},
        {"sound.wav", box.Mp3(5000), "[an mp3 that is called .wav; give it the ending .mp3]"},
        {"rate.wav", ToneWave({2, -1, 32, 3}, 100), "[a wave whose header is damaged]"},
        {"fraction.wav", ToneWave({2, 44100, 32, 3}, 100), "[UNKNOWN 44100Hz stereo 32 bits]"},
    };
    for (const Row& row : rows) {
        std::filesystem::remove_all(box / "in");
        box.Write("in/a.wav", wave);
        box.Write(std::string{"in/"} + row.name, row.bytes);
        const auto before = box.Snapshot("in");
        EXPECT_FALSE(box.Run(AudioKind::Adpcm, box / "in"));
        EXPECT_TRUE(box.host.WasTold(row.words)) << row.name << box.host.AllTold();
        EXPECT_EQ(box.Snapshot("in"), before) << row.name;
    }
}

TEST(AudioBatch, AFailureIsAskedAboutInTheOrderOfTheList)
{
    SoundBox box;
    const std::string mp3 = box.Mp3(4000);
    for (const char* name : {"1.mp3", "2.mp3", "3.mp3"})
        box.Write(std::string{"in/"} + name, mp3);
    // A decoder that breaks off at the second one with half of the sound.
    const std::string real = platform::FindOnPath("madplay").native();
    box.machine.tools["madplay"] =
        box.AddTool("half", "case $1 in *2.mp3) for last; do :; done; head -c 600 /dev/zero > "
                            "\"${last#-owave:}\"; exit 0;; esac\nexec " +
                                real + " \"$@\"");
    box.host.WillAsk("Error processing file '2.mp3' : Error decoding '2.mp3' : What came out",
                     true);
    EXPECT_TRUE(box.Run(AudioKind::Standard, box / "out"));
    EXPECT_EQ(box.converted, 2U);
    EXPECT_TRUE(box.Has("out/3.wav") && !box.Has("out/2.wav"));

    std::filesystem::remove_all(box / "out");
    std::filesystem::create_directory(box / "out");
    box.Write("out/2.wav", "an older one");
    box.host.WillAsk("Error processing file '2.mp3' : ", false);
    std::string status;
    EXPECT_FALSE(box.Run(AudioKind::Standard, box / "out", &status));
    EXPECT_EQ(status.find("Error decoding mp3 (2.mp3) : Error decoding '2.mp3' : "), 0U) << status;
    EXPECT_TRUE(box.Has("out/1.wav"));
    EXPECT_FALSE(box.Has("out/3.wav")) << "what was done ahead is dropped";
    EXPECT_EQ(box.Read("out/2.wav"), "an older one");
    EXPECT_EQ(box.Snapshot("out").size(), 2U);
}

TEST(AudioBatch, MissingToolsAreNamedWithThePackageThatBringsThem)
{
    SoundBox box;
    box.Write("in/a.mp3", box.Mp3(3000));
    box.machine.tools.clear();
    box.host.WillAsk("Missing mp3 decoder 'madplay.exe'.", false);
    EXPECT_FALSE(box.Run(AudioKind::Standard, box / "out"));
    std::filesystem::remove(box / "in/a.mp3");
    box.Write("in/a.wav", ToneWave({}, 3000));
    box.host.WillAsk("Install the package 'lame'", true);
    box.host.WillAsk("Target audio file not create", true);
    EXPECT_TRUE(box.Run(AudioKind::Mp3, box / "out"));
    EXPECT_EQ(box.converted, 0U);
}

TEST(AudioBatch, AStopTakesEffectBetweenFiles)
{
    SoundBox box;
    for (int i = 0; i < 6; ++i)
        box.Write("in/" + std::to_string(i) + ".wav", ToneWave({1, 8000, 8, 1}, 200'000));
    const auto before = box.Snapshot("in");
    box.host.StopAtStep(4);
    std::string status;
    EXPECT_FALSE(box.Run(AudioKind::Standard, box / "in", &status));
    EXPECT_EQ(status, "Break user: conversion cancelled");
    const auto after = box.Snapshot("in");
    ASSERT_EQ(after.size(), before.size());
    for (const auto& [name, bytes] : after)
        EXPECT_TRUE(bytes == before.at(name) ||
                    ClassifyWav(box / "in" / name, AudioKind::Standard).mode == 0)
            << name;
    EXPECT_NE(after.at("5.wav").size(), 0U);
}

TEST(AudioBatch, FilesOfOneNameTakeTheirTurns)
{
    SoundBox box;
    box.Write("in/a.mp3", box.Mp3(44100));
    box.Write("in/a.wav", ToneWave({}, 100));
    ASSERT_TRUE(box.Run(AudioKind::Standard, box / "in")) << box.host.AllTold();
    // The list begins with the mp3; the wave that it became is what the second entry finds.
    EXPECT_GT(FileSize(box / "in/a.wav"), 44100U * 4);
}

TEST(AudioBatch, NamesStayAsTheyAreAndOfTwoThatBecomeOneTheFirstIsKept)
{
    SoundBox box;
    for (const char* name : {"a:b.wav", "c:b.wav", "d\\b.wav", "Twin.wav", "twin.wav"})
        box.Write(std::string{"in/"} + name, ToneWave({}, name[0] == 'T' ? 100 : 5000));
    AudioBatch batch{box.host, SoundConverterOf(box.session), box.In(), box / "in", AudioKind::Mp3};
    ASSERT_TRUE(batch.Run()) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("'Twin.wav' and 'twin.wav' both become 'Twin.mp3'"));
    ASSERT_TRUE(DeleteConverted(batch));
    std::vector<std::string> left;
    for (const auto& [name, bytes] : box.Snapshot("in"))
        left.push_back(name);
    EXPECT_EQ(left,
              (std::vector<std::string>{"Twin.mp3", "Twin.wav", "a:b.mp3", "c:b.mp3", "d\\b.mp3"}));
    EXPECT_EQ(box.Read("in/Twin.wav"), ToneWave({}, 100));
}

TEST(AudioBatch, WhatAKilledRunLeftIsClearedAndWhatALivingOneNeedsIsNot)
{
    SoundBox box;
    const Path killed = StagedNameFor(box / "out/x");
    const std::string dead = "out/.kv~7fffffff-1";
    const std::string alive = "out/" + killed.filename().native();
    box.Write(dead, "half a wave");
    box.Write(alive, "half a wave");
    box.Write("in/a.wav", ToneWave({}, 100));
    ASSERT_TRUE(box.Run(AudioKind::Adpcm, box / "out"));
    EXPECT_FALSE(box.Has(dead));
    EXPECT_TRUE(box.Has(alive) && box.Has("out/a.wav"));
}

TEST(Mp3Tools, ATagThatTellsOfMoreThanThereIsHidesNoSound)
{
    SoundBox box;
    box.Write("a.mp3", std::string("ID3\3\0\0\x7F\0\0\0", 10) + std::string(100, '\0') + box.Mp3());
    ToolWatch state;
    ASSERT_TRUE(state.Done(DecodeMp3(ToolsOf(box.session), box / "a.mp3", box / "a.wav", state)))
        << state.error;
    EXPECT_GT(FileSize(box / "a.wav"), 22050U * 4) << "the encoder lowers the rate";
    EXPECT_EQ(box.Snapshot("").size(), 2U);
}

/// The loudest sample of a wave, from 0 to 1.
float LoudestOf(const Path& wave)
{
    auto reader = WaveReader::Open(wave);
    if (!reader)
        return -1;
    std::vector<float> samples(static_cast<std::size_t>(reader->Frames()) *
                               static_cast<std::size_t>(reader->Channels()));
    reader->Read(std::span(samples));
    float loudest = 0;
    for (const float sample : samples)
        loudest = std::max(loudest, std::abs(sample));
    return loudest;
}

/// An mp3 with checksums; `spoil` gets each frame, header included.
std::string Mp3WithChecksums(const SoundBox& box, const std::function<void(std::span<char>)>& spoil)
{
    box.Write("make.wav", ToneWave({}, 88'200));
    const std::string tool = "lame --quiet -p -b 64 '" + (box / "make.wav").native() + "' '" +
                             (box / "make.mp3").native() + "'";
    EXPECT_EQ(std::system(tool.c_str()), 0);
    std::string bytes = box.Read("make.mp3");
    std::filesystem::remove(box / "make.wav");
    std::filesystem::remove(box / "make.mp3");
    for (std::size_t place = SkipMpegTags(bytes); place + 4 <= bytes.size();) {
        const auto frame = ParseMpegHeader(std::string_view{bytes}.substr(place));
        if (!frame || place + frame->size > bytes.size())
            break;
        spoil(std::span(bytes).subspan(place, frame->size));
        place += frame->size;
    }
    return bytes;
}

TEST(Mp3Tools, FramesWithAWrongChecksumAreHeardAndWhatCannotBeHeardIsRefused)
{
    SoundBox box;
    ToolWatch state;
    const auto decode = [&](const std::string& mp3) {
        box.Write("in/a.mp3", mp3);
        std::filesystem::remove(box / "in/a.wav");
        return state.Done(
            DecodeMp3(ToolsOf(box.session), box / "in/a.mp3", box / "in/a.wav", state));
    };
    ASSERT_TRUE(decode(Mp3WithChecksums(box, [](std::span<char>) {}))) << state.error;
    const float loudest = LoudestOf(box / "in/a.wav");
    ASSERT_GT(loudest, 0.1F);
    // A program that changes the loudness leaves the two bytes behind the header as they were.
    const auto wrongChecksum = [](std::span<char> frame) { frame[4] ^= 0x55; };
    ASSERT_TRUE(decode(Mp3WithChecksums(box, wrongChecksum))) << state.error;
    EXPECT_NEAR(LoudestOf(box / "in/a.wav"), loudest, 0.05F);

    // Its frames are there, but no sound comes out of them; the mp3 stays where it is.
    const std::string lost = Mp3WithChecksums(box, [](std::span<char> frame) {
        std::fill(frame.begin() + 4,
                  frame.begin() + std::min<std::ptrdiff_t>(40, std::ssize(frame)), '\xFF');
    });
    EXPECT_FALSE(decode(lost));
    EXPECT_FALSE(box.Has("in/a.wav"));
    box.host.AnswerAll(true);
    box.session.archive.header.wavInMp3 = true;
    EXPECT_TRUE(DecodeLevelMp3(box.host, SoundConverterOf(box.session), box.session.archive,
                               box / "in", box.In(), true, false));
    EXPECT_EQ(box.Read("in/a.mp3"), lost);

    // A decoder that leaves most of it silent, the length being right.
    box.AddTool("madplay", "for a; do case $a in -owave:*) o=${a#-owave:};; esac; done\n"
                           "sox -n -r 44100 -c 2 -b 16 -t wav \"$o\" trim 0 2\n"
                           "n=0; while [ $n -lt 60 ]; do echo \"error: frame $n: bad\" >&2; "
                           "n=$((n+1)); done");
    EXPECT_FALSE(decode(Mp3WithChecksums(box, [](std::span<char>) {})));
    EXPECT_NE(state.error.find("parts of the sound came out silent"), std::string::npos)
        << state.error << state.report.output;
    EXPECT_FALSE(box.Has("in/a.wav"));
}

TEST(AudioBatch, OtherCodingsOfTheGamesFormAreConvertedAndNotCopied)
{
    SoundBox box;
    box.Write("make.wav", ToneWave({}, 44100));
    const auto sox = [&](const char* options, const char* name) {
        const std::string tool = "sox '" + (box / "make.wav").native() + "' " + options + " '" +
                                 (box / "in" / name).native() + "'";
        std::filesystem::create_directories(box / "in");
        EXPECT_EQ(std::system(tool.c_str()), 0);
    };
    sox("-e ima-adpcm", "ima.wav");
    ASSERT_EQ(ClassifyWav(box / "in/ima.wav", AudioKind::Adpcm).kind, AudioKind::Adpcm);
    ASSERT_TRUE(box.Run(AudioKind::Adpcm, box / "out")) << box.host.AllTold();
    EXPECT_TRUE(HoldsWave(box / "out/ima.wav", {44100, 2, true}, 44100))
        << "the game reads Microsoft's coding alone";
    EXPECT_GT(LoudestOf(box / "out/ima.wav"), 0.1F);

    std::filesystem::remove_all(box / "in");
    const SoundForm standard;
    box.Write("in/extended.wav", Riff(Chunk("fmt ", FormatBlock(standard, 40)) +
                                      Chunk("data", std::string(4000, '\x11'))));
    box.Write("in/strange.wav", Riff(Chunk("fmt ", FormatBlock({2, 44100, 16, 0x1234})) +
                                     Chunk("data", std::string(4000, '\x11'))));
    const auto before = box.Snapshot("in");
    EXPECT_FALSE(box.Run(AudioKind::Standard, box / "out"));
    EXPECT_TRUE(box.host.WasTold("I cannot convert file 'strange.wav'"));
    EXPECT_EQ(box.Snapshot("in"), before);
    std::filesystem::remove(box / "in/strange.wav");
    ASSERT_TRUE(box.Run(AudioKind::Standard, box / "out")) << box.host.AllTold();
    WavHeader header;
    EXPECT_TRUE(ReadWavHeader(box / "out/extended.wav", header));
}

TEST(AudioBatch, ACutWaveIsToldOfAndASourceIsNeverReplaced)
{
    SoundBox box;
    const std::string wave = ToneWave({}, 10'000);
    box.Write("in/cut.wav", wave.substr(0, 44 + 4000 * 4));
    ASSERT_TRUE(box.Run(AudioKind::Adpcm, box / "out"));
    EXPECT_TRUE(box.host.WasTold("'cut.wav' is cut: it tells of 40000 bytes of sound, and 16000 "
                                 "are there"));
    EXPECT_TRUE(HoldsWave(box / "out/cut.wav", {44100, 2, true}, 4000));

    box.Write("in/whole.wav", wave);
    const auto before = box.Snapshot("in");
    std::filesystem::create_directory_symlink(box / "in", box / "same");
    for (const char* folder : {"in", "same"}) {
        AudioBatch batch{box.host,
                         SoundConverterOf(box.session),
                         {box / "in/whole.wav"},
                         box / folder,
                         AudioKind::Adpcm};
        batch.Protect({box / "in/whole.wav"});
        const Status done = batch.Run();
        ASSERT_FALSE(done);
        EXPECT_EQ(done.Error().code, ErrorCode::Refused);
        EXPECT_TRUE(box.host.WasTold("'whole.wav' would be written over itself"));
    }
    EXPECT_EQ(box.Snapshot("in"), before);
}

TEST(Mp3Tools, WhatNeedsAStandardWaveOrAnMp3SaysSo)
{
    SoundBox box;
    ToolWatch state;
    box.Write("mono.wav", ToneWave({1, 22050, 16, 1}, 3000));
    EXPECT_FALSE(state.Done(EncodeMp3(ToolsOf(box.session), box.session.mp3Settings,
                                      box / "mono.wav", box / "x.mp3", state)));
    EXPECT_EQ(state.error, "Error: file 'mono.wav' is not standard waw 44100 stereo 16 bits");
    EXPECT_FALSE(
        state.Done(DecodeMp3(ToolsOf(box.session), box / "none.mp3", box / "x.wav", state)));
    EXPECT_EQ(state.error, "Mp3 file not found in: " + (box / "none.mp3").native());
    box.Write("wave.mp3", ToneWave({}, 3000));
    EXPECT_FALSE(
        state.Done(DecodeMp3(ToolsOf(box.session), box / "wave.mp3", box / "x.wav", state)));
    EXPECT_EQ(state.error, GetMsg(Msg::Mp3IsWave));
    box.Write("b.mp3", box.Mp3(3000));
    EXPECT_FALSE(
        state.Done(DecodeMp3(ToolsOf(box.session), box / "b.mp3", box / "nowhere/x.wav", state)));
    EXPECT_FALSE(state.error.empty());
    EXPECT_FALSE(box.Has("x.mp3") || box.Has("x.wav"));
    // The tools' own switches.
    EXPECT_EQ(
        EncoderArguments("/a.wav", "/a.mp3", {1, 24, 0}),
        (ToolArguments{"--nohist", "--disptime", "0.1", "-b", "24", "-a", "/a.wav", "/a.mp3"}));
    EXPECT_EQ(EncoderArguments("/a.wav", "/a.mp3", {2, 128, 22050}),
              (ToolArguments{"--nohist", "--disptime", "0.1", "-b", "128", "--resample", "22050",
                             "/a.wav", "/a.mp3"}));
}

TEST(SoundInfo, TellsOfNoSoundThatCannotBe)
{
    SoundBox box;
    const auto reason = [&](const SoundForm& form) {
        box.Write("odd.wav", ToneWave(form, 100));
        const auto info = LookAtSound(box / "odd.wav");
        return info ? std::string{} : info.Error().reason;
    };
    EXPECT_NE(reason({2, -1, 16, 1}).find("4294967295 Hz, 2 channels and 16 bits"),
              std::string::npos);
    EXPECT_EQ(reason({2, 44100, 16, 1}), "");
    // The format block stands behind another chunk, and the form is that of the sound.
    const SoundForm mono{1, 22050, 16, 1};
    box.Write("late.wav",
              Riff(Chunk("junk", std::string(300, '\xFF')) + Chunk("fmt ", FormatBlock(mono)) +
                   Chunk("data", std::string(400, 'x'))));
    const auto late = LookAtSound(box / "late.wav");
    ASSERT_TRUE(late);
    EXPECT_EQ(late->form, "PCM 22050Hz mono 16 bits");
}

TEST(LevelAudio, TracksBecomeTheGamesFormAndSamplesMono)
{
    SoundBox box;
    const std::string mp3 = box.Mp3(5000);
    const auto fill = [&] {
        std::filesystem::remove_all(box / "in");
        for (const char* name : {"101.mp3", "step.mp3", "readme.txt"})
            box.Write(std::string{"in/"} + name, mp3);
    };
    const auto decode = [&](bool force, bool samplesOnly) {
        return DoneOrTold(box.host, DecodeLevelMp3(box.host, SoundConverterOf(box.session),
                                                   box.session.archive, box / "in", box.In(), force,
                                                   samplesOnly));
    };
    fill();
    const auto before = box.Snapshot("in");
    EXPECT_TRUE(decode(false, false));
    EXPECT_EQ(box.Snapshot("in"), before) << "the archive keeps waves as waves";
    EXPECT_TRUE(decode(true, true));
    EXPECT_TRUE(box.Has("in/101.mp3") && box.Has("in/step.wav") && !box.Has("in/step.mp3"));
    fill();
    box.session.archive.header.wavInMp3 = true;
    EXPECT_TRUE(decode(false, false));
    EXPECT_EQ(ClassifyWav(box / "in/101.wav", AudioKind::Adpcm).mode, 0);
    EXPECT_EQ(ClassifyWav(box / "in/step.wav", AudioKind::Mono).mode, 0);
    EXPECT_EQ(box.Snapshot("in").size(), 3U);
    fill();
    box.machine.tools.clear();
    box.host.WillAsk("Missing mp3 decoder", false);
    EXPECT_FALSE(decode(false, false));
    EXPECT_TRUE(box.host.WasTold("Failed conversion: Error decoding mp3 (101.mp3)"));
    EXPECT_EQ(box.Snapshot("in"), before);
}

} // namespace
} // namespace kestrova
