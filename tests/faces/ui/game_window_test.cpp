// The main window and a game that comes and goes without its doing.
#include "platform/process.h"
#include "window_world.h"

#include <QTimer>
#include <csignal>

namespace kestrova::testing
{
namespace
{

TEST(GameWindow, HearsOfAGameWithoutLookingAgainAndAgain)
{
    WindowWorld world;
    world.box.Write("trle/tomb4.exe", "game");
    world.Show();
    const auto* look = world.Find<QTimer>("Timer_Game");
    const auto rests = [&] { return !look->isActive(); };
    const auto shown = [&] { return world.Find("Label_Game")->isVisible(); };
    ASSERT_TRUE(QTest::qWaitFor(rests, 5000));
    QTest::qWait(300);
    EXPECT_TRUE(rests()) << "at rest nobody looks";
    (void)world.box.Read("trle/Kestrva.txt");
    world.list.Select(originalCode);
    QTest::qWait(100);
    EXPECT_TRUE(rests()) << "to ask which level stands there is no start";

    // Another program starts it: its file is opened, and then it runs.
    std::int64_t pid = 0;
    ASSERT_FALSE(platform::StartDetached({{"sleep", "60"}, {}, {}}, pid));
    world.box.machine.running = {{pid, "tomb4.exe"}};
    EXPECT_EQ(world.box.Read("trle/tomb4.exe"), "game");
    EXPECT_TRUE(QTest::qWaitFor(shown, 5000));
    ASSERT_TRUE(QTest::qWaitFor(rests, 5000));

    world.box.machine.running.clear();
    EXPECT_TRUE(shown());
    ::kill(static_cast<pid_t>(pid), SIGKILL);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shown(); }, 5000)) << "its end is heard of";
    EXPECT_FALSE(platform::IsRunning(pid));
}

} // namespace
} // namespace kestrova::testing
