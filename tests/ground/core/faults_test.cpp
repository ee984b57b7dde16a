#include "core/files.h"
#include "core/staged_file.h"
#include "sandbox/faults.h"
#include "sandbox/sandbox.h"

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
        EXPECT_EQ(ListFiles(box / "home", "*")->size(), 1U);
        if (!run.killed) {
            EXPECT_TRUE(run.answer);
            EXPECT_EQ(content, "newer text");
            EXPECT_EQ(step, CountFileCalls(work) + 1);
            break;
        }
    }
    EXPECT_GT(step, 4) << "create, write, sync, rename and the folder's sync are calls";
}

/// A shorter record is written over a longer file, whose end is another program's.
TEST(StagedWrite, KeepsTheEndOfARecordWhereverALookFails)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        Sandbox box;
        box.Write("home/record", "old and its end");
        const FaultRun run =
            failing([&] { return bool{WriteRecordFile(box / "home/record", "NEW")}; });
        EXPECT_EQ(box.Read("home/record"), run.answer ? "NEW and its end" : "old and its end");
        return run;
    });
}

/// Each call that reads can fail by itself, and what changes files is not counted among them.
TEST(ReadFaults, MakeOneReadFailOnce)
{
    Sandbox box;
    box.Write("x/a", "abc");
    const auto read = [&] { return bool{ReadWholeFile(box / "x/a")}; };
    EXPECT_EQ(CountFileCalls(read), 0);
    int reads = 0;
    for (const char* call : {"open ", "read "}) {
        const FaultRun run = WithReadFaultAt(++reads, read);
        EXPECT_TRUE(run.reached);
        EXPECT_FALSE(run.answer);
        EXPECT_TRUE(run.call.starts_with(call)) << run.call;
    }
    std::vector<platform::FolderEntry> entries;
    const FailingCalls failing{platform::FileAction::List, "/x"};
    EXPECT_TRUE(platform::ListFolder(box / "x", entries));
    EXPECT_FALSE(platform::ListFolder(box / "x", entries)) << "once is enough";
    EXPECT_EQ(failing.Failed(), 1);
}

} // namespace

} // namespace kestrova::testing
