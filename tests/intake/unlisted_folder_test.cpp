#include "intake/file_placing.h"
#include "intake/files_before.h"
#include "support/faults.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using Files = std::map<std::string, std::string>;

} // namespace

TEST(UnlistedFolder, NoFileGoesThereUnderANameThatMayBeTaken)
{
    Sandbox box;
    box.Write("in/Level.TR4", "coming");
    box.Write("files/level.tr4", "stands");
    const auto progress = box.host.BeginProgress(ProgressWindow::Progress, {});
    SourceReport report;
    const auto put = [&] {
        return PutFile(box.session, box / "in/Level.TR4", box / "files",
                       {Replace::Silent, true, {}}, *progress, report);
    };
    {
        const FailingCalls failing{platform::FileAction::List, "/files"};
        EXPECT_FALSE(put());
        EXPECT_EQ(failing.Failed(), 1);
    }
    EXPECT_EQ(box.Snapshot("files"), (Files{{"level.tr4", "stands"}}));
    EXPECT_TRUE(put()) << "the folder is looked at once more";
    EXPECT_EQ(box.Snapshot("files"), (Files{{"level.tr4", "coming"}}));
}

TEST(UnlistedFolder, AnEditThatIsGivenUpDeletesNothingForIt)
{
    Sandbox box;
    box.Write("level/files/a.tr4", "old");
    FilesBefore before{box / "level/files", {}};
    {
        const FailingCalls failing{platform::FileAction::List, "/files"};
        EXPECT_FALSE(before.Keep({}));
        EXPECT_EQ(failing.Failed(), 1);
    }
    ASSERT_TRUE(before.Keep({}));
    box.Write("level/files/new.dat", "came with the edit");
    {
        const FailingCalls failing{platform::FileAction::List, "/.kv~before_edit/files"};
        EXPECT_FALSE(before.PutBack());
        EXPECT_EQ(failing.Failed(), 1);
    }
    EXPECT_EQ(box.Read("level/files/a.tr4"), "old");
    EXPECT_EQ(box.Read("level/.kv~before_edit/files/a.tr4"), "old");
}

} // namespace kestrova::testing
