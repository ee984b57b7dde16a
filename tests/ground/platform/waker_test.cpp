#include "platform/waker.h"

#include "platform/process.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>

namespace kestrova::platform::testing
{
namespace
{

bool IsReadable(const Waker& waker, int withinMs)
{
    pollfd one{waker.Descriptor(), POLLIN, 0};
    return ::poll(&one, 1, withinMs) == 1;
}

TEST(Waker, TellsTheEndOfAProcessAndStaysTold)
{
    std::int64_t pid = 0;
    ASSERT_FALSE(StartDetached({{"sleep", "60"}, {}, {}}, pid));
    Waker end = Waker::OnEndOf(pid);
    ASSERT_TRUE(end.Works());
    EXPECT_FALSE(IsReadable(end, 50));
    ::kill(static_cast<pid_t>(pid), SIGKILL);
    EXPECT_TRUE(IsReadable(end, 5000));
    EXPECT_FALSE(IsRunning(pid));
    EXPECT_TRUE(IsReadable(end, 0));
    EXPECT_FALSE(Waker::OnEndOf(pid).Works()) << "nobody has that number now";
    EXPECT_FALSE(Waker::OnEndOf(0).Works());
}

TEST(Waker, NamesTheFilesThatWereOpenedInTheFolderItself)
{
    const auto folder =
        std::filesystem::temp_directory_path() / ("waker_test_" + std::to_string(OwnProcess()));
    std::filesystem::create_directories(folder / "deep");
    std::ofstream{folder / "tomb4.exe"} << "game";
    std::ofstream{folder / "deep/other.exe"} << "other";
    const Waker openings = Waker::OnOpenIn(folder);
    ASSERT_TRUE(openings.Works());
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        EXPECT_TRUE(entry.exists()); // to list is not to open a file
    EXPECT_TRUE(openings.Opened().empty());
    {
        std::ifstream{folder / "deep/other.exe"}.get();
    }
    EXPECT_TRUE(openings.Opened().empty());
    {
        std::ifstream{folder / "tomb4.exe"}.get();
    }
    EXPECT_TRUE(IsReadable(openings, 5000));
    EXPECT_EQ(openings.Opened(), std::vector<std::string>{"tomb4.exe"});
    EXPECT_FALSE(IsReadable(openings, 0));
    EXPECT_FALSE(Waker::OnOpenIn(folder / "tomb4.exe").Works());
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace kestrova::platform::testing
