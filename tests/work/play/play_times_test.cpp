#include "archive/archive_saving.h"
#include "archive/level_token.h"
#include "archive/library_notes.h"
#include "play/play_times.h"
#include "swap/install.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

constexpr std::int64_t oneSecond = 1'000'000'000;
std::int64_t steady = 1000 * oneSecond;
std::int64_t Steady()
{
    return steady;
}

/// A level that stands in the folder, and a clock that the test sets.
class Counting : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        code = box.AddLevel("Dawn", {{"dawn.tr4", "level"}});
        ASSERT_TRUE(InstallLevel(box.session, code)) << box.host.AllTold();
    }
    bool Look(PlayTimes& times) { return times.Look(box.machine.running); }
    void Pass(std::int64_t seconds)
    {
        steady += seconds * oneSecond;
        box.machine.now += seconds * oneSecond;
    }
    void GameRuns(std::int64_t pid = 4711) { box.machine.running = {{pid, "tomb4.exe"}}; }
    [[nodiscard]] LevelNote Note(LevelCode of) const
    {
        return NoteOf(box.session.Folders(), box.session.archive, of).ValueOr({});
    }
    [[nodiscard]] LevelNote Note() const { return Note(code); }

    World box;
    LevelCode code = 0;
};

TEST_F(Counting, WhatIsPlayedIsNotedWhenTheGameEnds)
{
    PlayTimes times{box.session, Steady};
    EXPECT_FALSE(Look(times));
    EXPECT_FALSE(box.Has("levels/library.json")) << "nothing is noted while nothing is played";
    GameRuns();
    const std::int64_t began = box.machine.now / oneSecond;
    EXPECT_TRUE(Look(times));
    EXPECT_EQ(Note().lastPlayed, began);
    EXPECT_EQ(Note().status, LevelStatus::Playing);
    Pass(59);
    EXPECT_FALSE(Look(times));
    Pass(61);
    box.machine.running.push_back({1, "script.exe"});
    EXPECT_FALSE(Look(times));
    box.machine.running = {{1, "script.exe"}};
    EXPECT_TRUE(Look(times));
    EXPECT_EQ(Note().secondsPlayed, 120);
    EXPECT_FALSE(box.Has("home/swap/played"));
    Pass(500);
    EXPECT_FALSE(Look(times)) << "another program of the folder is not played";

    ASSERT_TRUE(
        ChangeNotes(box.session.Folders(), box.session.archive, {code},
                    [](LevelCode, LevelNote& note) { note.status = LevelStatus::Finished; }));
    GameRuns(4712);
    Look(times);
    Pass(30);
    GameRuns(4713);
    Look(times);
    Pass(30);
    box.machine.running.clear();
    Look(times);
    EXPECT_EQ(Note().secondsPlayed, 180) << "two games, one after the other";
    EXPECT_EQ(Note().status, LevelStatus::Finished) << "what was said stays";
    EXPECT_EQ(Note(originalCode), LevelNote{});
}

TEST_F(Counting, AKilledProgramLosesAMinuteAtMostAndCountsNothingTwice)
{
    std::string note;
    {
        PlayTimes killed{box.session, Steady};
        GameRuns();
        Look(killed);
        Pass(60);
        Look(killed);
        note = box.Read("home/swap/played");
        Pass(20);
    }
    box.Write("home/swap/played", note); // as a kill leaves it
    {
        PlayTimes next{box.session, Steady};
        Pass(100);
        Look(next);
        Pass(20);
        Look(next);
        EXPECT_EQ(Note().secondsPlayed, 0) << "the game runs still";
    }
    Pass(40);
    box.machine.running.clear();
    {
        PlayTimes next{box.session, Steady};
        Pass(10'000);
        EXPECT_TRUE(Look(next));
    }
    EXPECT_EQ(Note().secondsPlayed, 200) << "nobody saw when it ended after that";
    EXPECT_FALSE(box.Has("home/swap/played"));
    const std::size_t at = note.find("\"seconds\": 60");
    ASSERT_NE(at, std::string::npos) << note;
    box.Write("home/swap/played", note.replace(at, 13, "\"seconds\": 200"));
    PlayTimes last{box.session, Steady};
    Look(last);
    EXPECT_EQ(Note().secondsPlayed, 200) << "killed when the level had it and the note not yet";
}

TEST_F(Counting, ClocksThatJumpAndNewStartsOfTheMachineMakeNoTimes)
{
    {
        PlayTimes times{box.session, Steady};
        GameRuns();
        Look(times);
        box.machine.now += INT64_C(40'000'000) * oneSecond; // somebody set the clock
        steady += 100 * oneSecond;                          // it slept meanwhile
        Look(times);
        box.machine.now = 5 * oneSecond;
        steady -= 50 * oneSecond;
        Look(times);
        steady += 70 * oneSecond;
        Look(times);
    }
    box.machine.bootId = "boot-2";
    steady = 7000 * oneSecond; // the same number belongs to another program now
    PlayTimes times{box.session, Steady};
    EXPECT_TRUE(Look(times));
    EXPECT_EQ(Note().secondsPlayed, 170);
    EXPECT_GT(Note().lastPlayed.value_or(0), 1'000'000'000) << "a clock that is not set tells none";
    steady += INT64_C(1'000'000'000) * oneSecond;
    box.machine.running.clear();
    Look(times);
    EXPECT_LE(Note().secondsPlayed, 170 + mostSecondsOfGame);
    box.Write("home/swap/played", "{\"games\": [{}]}");
    box.machine.running.clear();
    PlayTimes afterDamage{box.session, Steady};
    EXPECT_FALSE(Look(afterDamage));
}

TEST_F(Counting, TimesOfALevelWaitWhileAnotherArchiveIsLoaded)
{
    const std::string token = TokenOfLevel(box / "levels/LEVEL_0001").ValueOr({});
    {
        PlayTimes times{box.session, Steady};
        GameRuns();
        Look(times);
        Pass(90);
    }
    box.machine.running.clear();
    const Archive first = box.session.archive;
    const std::string folder = (box / "others").native();
    box.Write("others/LEVEL_0001/files/other.tr4", "other");
    box.session.archive.header.secondaryFolder = folder;
    PlayTimes times{box.session, Steady};
    EXPECT_FALSE(Look(times));
    EXPECT_FALSE(box.Has("others/library.json"));
    EXPECT_TRUE(box.Has("home/swap/played"));

    // The first archive stands elsewhere when it is loaded again.
    std::filesystem::rename(box / "levels", box / "moved");
    box.session.archive = first;
    box.session.archive.header.secondaryFolder = (box / "moved").native();
    EXPECT_TRUE(Look(times));
    EXPECT_EQ(Note().secondsPlayed, 90);
    EXPECT_FALSE(box.Has("home/swap/played"));
    EXPECT_FALSE(token.empty());
}

TEST_F(Counting, ALevelThatWasRemovedWhileItWasPlayedLeavesNoTimesToTheNextOne)
{
    PlayTimes times{box.session, Steady};
    GameRuns();
    Look(times);
    Pass(90);
    std::filesystem::remove_all(box / "levels/LEVEL_0001");
    box.Write("levels/LEVEL_0001/files/other.tr4", "other");
    box.session.archive.levels.back().levelName = "Another";
    box.machine.running.clear();
    EXPECT_FALSE(Look(times));
    EXPECT_EQ(Note().secondsPlayed, 0);
}

TEST_F(Counting, WhatCannotBeNotedNowWaitsForTheNextStart)
{
    PlayTimes times{box.session, Steady};
    GameRuns();
    Look(times);
    Pass(90);
    std::filesystem::remove(box / "levels/library.json");
    std::filesystem::create_directory(box / "levels/library.json");
    box.machine.running.clear();
    EXPECT_FALSE(Look(times));
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
    std::filesystem::remove(box / "levels/library.json");
    PlayTimes next{box.session, Steady};
    EXPECT_TRUE(Look(next));
    EXPECT_EQ(Note().secondsPlayed, 90);
}

} // namespace
} // namespace kestrova::testing
