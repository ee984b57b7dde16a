#include "editor/folder_comparison.h"
#include "sandbox/faults.h"
#include "sandbox/patience.h"
#include "world/world.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>

namespace kestrova::testing
{
namespace
{

namespace fs = std::filesystem;
using ::testing::HasSubstr;

/// Two folders, and what a comparison says of them.
class TwoFolders : public World
{
public:
    TwoFolders()
    {
        fs::create_directory(root / "a");
        fs::create_directory(root / "b");
        comparison.SetFolder(Side::Before, root / "a");
        comparison.SetFolder(Side::After, root / "b");
    }

    FolderComparison comparison{host, machine, session.Folders()};

    /// Name and state of every file, one a line.
    std::string States()
    {
        EXPECT_TRUE(comparison.Compare()) << host.AllTold();
        std::string text;
        for (const ComparedFile& file : comparison.Files())
            text += file.name.native() + " " + std::string{WordOfState(file.state)} + "\n";
        return text;
    }
};

TEST(CompareFolders, GoesByContentAndByNamesWithoutCase)
{
    TwoFolders box;
    box.Write("a/DATA/Level.tr4", "level");
    box.Write("b/data/LEVEL.TR4", "level");
    box.Write("a/changed", "one");
    box.Write("b/changed", "two");
    box.Write("a/longer", "1");
    box.Write("b/longer", "12");
    box.Write("a/gone", "");
    box.Write("b/come", "");
    box.Write("a/empty", "");
    box.Write("b/empty", "");
    box.Write("b/.kv~half", "a copy under way");
    box.Write("a/kind", "a file");
    box.Write("b/kind/inside", "in a folder");
    EXPECT_EQ(box.States(), "changed changed\ncome new\ndata/LEVEL.TR4 equal\nempty equal\n"
                            "gone missing\nkind missing\nkind/inside new\nlonger changed\n");
    EXPECT_EQ(box.comparison.Files()[2].before, box / "a/DATA/Level.tr4");
    EXPECT_EQ(box.comparison.Files()[2].after, box / "b/data/LEVEL.TR4");
    EXPECT_EQ(box.comparison.Files().back().sizeAfter, 2u);
}

TEST(CompareFolders, PairsCaseTwinsBySpellingFirst)
{
    TwoFolders box;
    for (const char* file : {"a/TWIN", "a/Twin", "b/Twin"})
        box.Write(file, "same");
    box.Write("b/twin", "else");
    box.Write("b/tWIN", "else");
    EXPECT_EQ(box.States(), "Twin equal\ntWIN changed\ntwin new\n");
}

TEST(CompareFolders, TakesLinksForWhatTheyLeadTo)
{
    TwoFolders box;
    box.Write("elsewhere/title.tr4", "title");
    box.Write("a/data/title.tr4", "title");
    fs::create_directory_symlink(box / "elsewhere", box / "b/data");
    fs::create_directory_symlink(box / "b", box / "b/circle");
    box.Write("a/file", "linked");
    fs::create_symlink(box / "a/file", box / "b/file");
    for (const char* link : {"a/nowhere", "b/nowhere", "b/only"})
        fs::create_symlink("lost", box / link);
    EXPECT_EQ(box.States(),
              "circle new\ndata/title.tr4 equal\nfile equal\nnowhere unread\nonly new\n");
    EXPECT_NE(box.comparison.Files()[3].reason, "");
}

TEST(CompareFolders, GoesThroughALinkOnlyWhereBothHaveAFolder)
{
    TwoFolders box;
    box.Write("elsewhere/big/file", "a player's");
    box.Write("other/file", "");
    box.Write("a/data/file", "");
    box.Write("b/data/file", "");
    fs::create_directory_symlink("..", box / "a/up");
    fs::create_directory_symlink("..", box / "b/up");
    fs::create_directory_symlink(box / "elsewhere", box / "b/alone");
    fs::create_directory_symlink(box / "elsewhere", box / "b/data/deep");
    fs::create_directory_symlink(box / "elsewhere", box / "a/same");
    fs::create_directory_symlink(box / "a/same", box / "b/same");
    fs::create_directory_symlink(box / "elsewhere", box / "a/two");
    fs::create_directory_symlink(box / "other", box / "b/two");
    box.Write("a/kind", "a file");
    fs::create_directory_symlink(box / "elsewhere", box / "b/kind");
    EXPECT_EQ(box.States(), "alone new\ndata/deep new\ndata/file equal\nkind changed\nsame equal\n"
                            "two/big/file missing\ntwo/file new\nup equal\n");
}

TEST(CompareFolders, ReadsOnlyWhatIsAsLongAndSaysWhatItCannotRead)
{
    TwoFolders box;
    for (const char* folder : {"a/", "b/"}) {
        box.Write(folder + std::string{"first"}, "same");
        box.Write(folder + std::string{"second"}, std::string(300'000, 'x'));
    }
    box.Write("a/third", "short");
    box.Write("b/third", "longer");
    fs::create_hard_link(box / "a/third", box / "a/fourth");
    fs::create_hard_link(box / "a/third", box / "b/fourth");
    {
        const FailingCalls failing{platform::FileAction::Open, "", -1};
        EXPECT_EQ(box.States(), "first unread\nfourth equal\nsecond unread\nthird changed\n");
    }
    {
        const FailingCalls failing{platform::FileAction::Read, "b/second"};
        EXPECT_EQ(box.States(), "first equal\nfourth equal\nsecond unread\nthird changed\n");
    }
    // A sub-folder that nobody may look into hides no difference elsewhere, and is none itself.
    box.Write("a/closed/one", "1");
    box.Write("b/closed/two", "2");
    box.Write("b/alone/file", "");
    {
        const FailingCalls failing{platform::FileAction::List, "a/closed"};
        EXPECT_EQ(box.States(), "alone/file new\nclosed unread\nclosed/two unread\nfirst equal\n"
                                "fourth equal\nsecond equal\nthird changed\n");
        EXPECT_NE(box.comparison.Files()[2].reason, "");
    }
    {
        const FailingCalls failing{platform::FileAction::List, "b/alone"};
        EXPECT_THAT(box.States(), ::testing::StartsWith("alone unread\nclosed/one missing\n"));
    }
    const FailingCalls failing{platform::FileAction::List, "/b", -1};
    EXPECT_FALSE(box.comparison.Compare());
    EXPECT_FALSE(box.comparison.IsCompared());
    EXPECT_TRUE(box.comparison.Files().empty());
    EXPECT_TRUE(box.host.WasTold((box / "b").native()));
}

/// A disk whose first piece of a file comes only once Stop was pressed, and the window in which it
/// is pressed as soon as somebody waits for that piece.
class StopsWhileItReads : public platform::FileHook, public ProgressScope
{
public:
    StopsWhileItReads() { platform::SetFileHook(this); }
    ~StopsWhileItReads() override { platform::SetFileHook(nullptr); }
    StopsWhileItReads(const StopsWhileItReads&) = delete;
    StopsWhileItReads& operator=(const StopsWhileItReads&) = delete;

    std::error_code Before(platform::FileAction, const Path&) override { return {}; }
    std::error_code BeforeReading(platform::FileAction action, const Path&) override
    {
        waits_ = waits_ || action == platform::FileAction::Read;
        const auto start = std::chrono::steady_clock::now();
        while (waits_ && !stopped_ && std::chrono::steady_clock::now() - start < soon)
            std::this_thread::yield();
        return {};
    }
    void SetLabel(const std::string&) override {}
    void SetBar(std::uint64_t, std::uint64_t) override {}
    void AllowStop() override {}
    bool Step() override
    {
        if (waits_)
            stopped_ = true;
        return !waits_;
    }

private:
    std::atomic<bool> waits_{false};
    std::atomic<bool> stopped_{false};
};

TEST(CompareFolders, StopsWithoutAWord)
{
    TwoFolders box;
    for (const char* file : {"a/one", "b/one", "a/folder/two", "b/folder/two"})
        box.Write(file, std::string(1'000'000, 'x'));
    for (const int step : {1, 2, 3, 4, 8}) {
        box.host.StopAtStep(step);
        EXPECT_FALSE(box.comparison.Compare()) << step;
        EXPECT_TRUE(box.comparison.Files().empty()) << step;
    }
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
    box.host.StopAtStep(0);
    EXPECT_TRUE(box.comparison.Compare());
    EXPECT_EQ(box.comparison.Count(FileState::Equal), 2u);

    StopsWhileItReads disk;
    const auto stopped = CompareFolders(box / "a", box / "b", disk);
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
}

TEST(CompareFolders, OfTenThousandFilesFindsTheFew)
{
    TwoFolders box;
    for (int i = 0; i < 10'000; ++i) {
        const std::string name = "/d" + std::to_string(i % 100) + "/F" + std::to_string(i);
        box.Write("a" + name, name);
        box.Write("b" + name, i == 5'000 ? "/d0/F500x" : name);
    }
    EXPECT_TRUE(box.comparison.Compare());
    EXPECT_EQ(box.comparison.Count(FileState::Equal), 9'999u);
    ASSERT_EQ(box.comparison.Rows().size(), 1u);
    EXPECT_EQ(box.comparison.At(0).name, "d0/F5000");
}

TEST(FolderComparison, FiltersCopiesAndOpens)
{
    TwoFolders box;
    box.Write("a/data/Gone.tr4", "1");
    box.Write("a/same", "1");
    box.Write("b/same", "1");
    box.Write("b/data/new\tline.tr4", "1");
    ASSERT_TRUE(box.comparison.Compare());
    EXPECT_EQ(box.comparison.ListText(), "missing\tdata/Gone.tr4\nnew\tdata/new line.tr4\n");
    box.comparison.Show(FileState::Missing, false);
    box.comparison.Show(FileState::Equal, true);
    EXPECT_EQ(box.comparison.ListText(), "new\tdata/new line.tr4\nequal\tsame\n");
    box.comparison.Show(FileState::Missing, true);
    box.comparison.Search(" GONE ");
    ASSERT_EQ(box.comparison.Rows().size(), 1u);

    EXPECT_TRUE(box.comparison.Open(0, Side::Before));
    EXPECT_EQ(box.machine.opened, std::vector<std::string>{(box / "a/data/Gone.tr4").native()});
    EXPECT_FALSE(box.comparison.Open(0, Side::After));
    EXPECT_TRUE(box.host.WasTold("no such file in this folder: data/Gone.tr4"));
}

TEST(FolderComparison, BeginsWithTheBackupAndForgetsWithItsFolders)
{
    TwoFolders box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    FolderComparison comparison{box.host, box.machine, box.session.Folders()};
    EXPECT_EQ(comparison.Folder(Side::Before), box.session.Folders().Backup());
    EXPECT_EQ(comparison.Folder(Side::After), box / "trle");
    EXPECT_TRUE(comparison.Compare()) << box.host.AllTold();
    EXPECT_FALSE(comparison.Files().empty());
    box.host.WillChoose("Choose the folder to be compared", box / "trle");
    EXPECT_FALSE(comparison.Choose(Side::After));
    EXPECT_TRUE(comparison.IsCompared());
    box.host.WillChoose("Choose the folder to be compared", box / "gone");
    EXPECT_TRUE(comparison.Choose(Side::After));
    EXPECT_TRUE(comparison.Files().empty());
    EXPECT_FALSE(comparison.Compare());
    EXPECT_TRUE(box.host.WasTold("This folder is not there: " + (box / "gone").native()));
    comparison.SetFolder(Side::After, {});
    EXPECT_FALSE(comparison.Compare());
    EXPECT_THAT(box.host.AllTold(), HasSubstr("Two folders are needed"));
}

} // namespace
} // namespace kestrova::testing
