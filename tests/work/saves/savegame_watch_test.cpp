#include "history/history.h"
#include "saves/savegame_watch.h"
#include "saves/saves_world.h"
#include "session/operation.h"

#include <fstream>

namespace kestrova::testing
{

namespace
{

/// So many seconds of the program's life, two looks in each.
void Live(SavesWorld& world, SavegameWatch& watch, int seconds, bool gameRuns)
{
    for (int half = 0; half < 2 * seconds; ++half) {
        world.machine.now += 500'000'000;
        watch.Tick(world.session, gameRuns);
    }
}

std::vector<int> Kept(const SavesWorld& world)
{
    std::vector<int> numbers;
    for (const HistoryEntry& entry : HistoryOf(world.session.Folders(), world.played))
        numbers.push_back(entry.number);
    return numbers;
}

} // namespace

TEST(SavegameWatch, KeepsEachVersionWhenItIsClosed)
{
    SavesWorld world;
    SavegameWatch watch;
    world.Live("0", 1);
    Live(world, watch, 10, false);
    EXPECT_TRUE(Kept(world).empty()) << "no game, nothing to watch";
    Live(world, watch, 4, true);
    EXPECT_EQ(Kept(world), std::vector<int>{1}) << "what the game may write over";
    // Closed files are told of at once: three versions within the time of one look.
    for (const char* version : {"first", "second", "third"}) {
        world.Live("0", 2, version);
        watch.Tick(world.session, true);
    }
    EXPECT_EQ(Kept(world), (std::vector<int>{1, 2, 2, 2}))
        << "each one was kept when it was closed";
    world.Live("7", 3);
    std::filesystem::rename(world / "trle/savegame.7", world / "trle/savegame.8");
    world.Write("trle/note8.txt", "no savegame");
    watch.Tick(world.session, true);
    EXPECT_EQ(Kept(world), (std::vector<int>{1, 2, 2, 2, 3})) << "under the name that it has";
    Live(world, watch, 3, true);
    EXPECT_EQ(Kept(world), (std::vector<int>{1, 2, 2, 2, 3})) << "and not once more";
    EXPECT_EQ(HistoryOf(world.session.Folders(), world.played)[1].reason, "written by the game");
    const auto quiet = world.Snapshot("home");
    Live(world, watch, 20, true);
    EXPECT_EQ(world.Snapshot("home"), quiet) << "each version once";
}

TEST(SavegameWatch, WithoutWordOfClosedFilesKeepsWhatLiesStill)
{
    SavesWorld world;
    SavegameWatch watch;
    world.Live("0", 1);
    Live(world, watch, 3, true);
    // A file that is mapped or held open is never closed.
    std::ofstream held{world / "trle/savegame.1", std::ios::binary};
    held << SavegameBytes("held open", 2) << std::flush;
    Live(world, watch, 1, true);
    EXPECT_EQ(Kept(world), std::vector<int>{1}) << "it may still be written";
    Live(world, watch, 4, true);
    EXPECT_EQ(Kept(world), (std::vector<int>{1, 2}));
}

TEST(SavegameWatch, LooksOnceMoreBehindTheEndAndNeverDuringAnOperation)
{
    SavesWorld world;
    SavegameWatch watch;
    Live(world, watch, 3, true);
    world.Live("7", 5);
    {
        const Operation operation{world.session};
        Live(world, watch, 20, true);
        EXPECT_TRUE(Kept(world).empty());
    }
    Live(world, watch, 4, false);
    EXPECT_EQ(Kept(world), std::vector<int>{5}) << "saved at the very end";
    Live(world, watch, 4, false);
    world.Live("8", 6);
    Live(world, watch, 20, false);
    EXPECT_EQ(Kept(world), std::vector<int>{5});
}

TEST(SavegameWatch, TriesAgainLaterWhenTheDiskTakesNothing)
{
    SavesWorld world;
    SavegameWatch watch;
    world.Live("0", 1);
    world.Write("home/history", "no folder can be made here");
    Live(world, watch, 10, true);
    EXPECT_TRUE(world.host.told.empty()) << "nobody is disturbed in the game";
    std::filesystem::remove(world / "home/history");
    Live(world, watch, 20, true);
    EXPECT_TRUE(Kept(world).empty());
    Live(world, watch, 60, true);
    EXPECT_EQ(Kept(world), std::vector<int>{1});
}

} // namespace kestrova::testing
