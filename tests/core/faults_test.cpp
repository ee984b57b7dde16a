#include "core/staged_file.h"
#include "support/faults.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

/// What stays of a file that is replaced while the disk or the program fails at every step.
TEST(StagedWrite, IsAllOrNothingWhereverItFails)
{
    for (const AfterFault after : {AfterFault::Works, AfterFault::Fails})
        for (int step = 1;; ++step) {
            ASSERT_LT(step, 100);
            Sandbox box;
            box.Write("home/settings", "old");
            const auto run = WithFaultAt(
                step, [&] { return bool{WriteWholeFile(box / "home/settings", "newer text")}; },
                std::errc::no_space_on_device, after);
            const std::string content = box.Read("home/settings");
            EXPECT_TRUE(content == "old" || content == "newer text") << run.call;
            EXPECT_TRUE(!run.answer || content == "newer text") << run.call;
            EXPECT_EQ(box.Snapshot("home").size(), 1U) << run.call;
            if (!run.reached) {
                EXPECT_TRUE(run.answer);
                break;
            }
        }
}

TEST(StagedWrite, IsAllOrNothingWhereverTheProgramIsKilled)
{
    int step = 1;
    for (;; ++step) {
        ASSERT_LT(step, 100);
        Sandbox box;
        box.Write("home/settings", "old");
        const auto work = [&] { return bool{WriteWholeFile(box / "home/settings", "newer text")}; };
        const KillRun run = WithKillAt(step, work);
        const std::string content = box.Read("home/settings");
        EXPECT_TRUE(content == "old" || content == "newer text") << run.call;
        ClearStagedLeftovers(box / "home");
        EXPECT_EQ(ListFiles(box / "home", "*").size(), 1U);
        if (!run.killed) {
            EXPECT_TRUE(run.answer);
            EXPECT_EQ(content, "newer text");
            EXPECT_EQ(step, CountFileCalls(work) + 1);
            break;
        }
    }
    EXPECT_GT(step, 4) << "create, write, sync, rename and the folder's sync are calls";
}

} // namespace

} // namespace kestrova::testing
