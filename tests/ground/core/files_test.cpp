#include "core/activity_log.h"
#include "core/copying.h"
#include "core/files.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/removal.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "platform/file_lock.h"
#include "sandbox/faults.h"
#include "sandbox/sandbox.h"

#include <atomic>
#include <gtest/gtest.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

class Files : public ::testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directory(box / "home"); }
    [[nodiscard]] std::vector<std::string> Names(const std::string& folder,
                                                 std::string_view pattern) const
    {
        std::vector<std::string> names;
        for (const Path& file : ListFiles(box / folder, pattern).ValueOr({}))
            names.push_back(file.filename().native());
        return names;
    }
    [[nodiscard]] std::vector<std::string> AllNames(const std::string& folder) const
    {
        std::vector<std::string> names;
        for (const auto& [name, content] : box.Snapshot(folder))
            names.push_back(name);
        return names;
    }
    using List = std::vector<std::string>;
    Sandbox box;
};

TEST_F(Files, PathsAreFoundInAnySpelling)
{
    box.Write("x/DATA/Level1.TR4", "level");
    box.Write("x/data2/a", "");
    EXPECT_EQ(ResolvePath(box / "X/Data/level1.tr4"), box / "x/DATA/Level1.TR4");
    EXPECT_EQ(ResolvePath(box / "x/data/new.tr4"), box / "x/DATA/new.tr4");
    EXPECT_TRUE(FileExists(box / "x/data/LEVEL1.tr4"));
    EXPECT_TRUE(FolderExists(box / "x/data"));
    EXPECT_FALSE(FileExists(box / "x/data"));
    EXPECT_FALSE(FileExists(""));
    box.Write("x/DATA/level1.tr4", "exact");
    EXPECT_EQ(ResolvePath(box / "x/data/level1.tr4"), box / "x/DATA/level1.tr4")
        << "as spelled where that exists";
}

TEST_F(Files, AnOverwriteKeepsTheSpellingAndADeleteSparesTheTwin)
{
    box.Write("a/New.dat", "new");
    box.Write("b/SCRIPT.DAT", "old");
    ASSERT_TRUE(CopyFileOver(box / "a/new.DAT", box / "B/script.dat"));
    EXPECT_EQ(AllNames("b"), (List{"SCRIPT.DAT"}));
    EXPECT_EQ(box.Read("b/SCRIPT.DAT"), "new");
    box.Write("b/script.dat", "twin");
    EXPECT_EQ(CaseTwins(box / "b/Script.Dat")->size(), 2U);
    EXPECT_TRUE(DeleteFile(box / "b/script.dat"));
    EXPECT_EQ(AllNames("b"), (List{"SCRIPT.DAT"}));
    EXPECT_TRUE(DeleteFile(box / "b/Script.dat"));
    EXPECT_TRUE(AllNames("b").empty());
    EXPECT_TRUE(DeleteFile(box / "b/Script.dat")) << "a missing file is gone";
    EXPECT_FALSE(DeleteFile(box / "b")) << "a folder is no file";
}

TEST_F(Files, ListingsAreSortedByUpperCasedName)
{
    for (const char* name : {"b.dat", "A.DAT", "_x.dat", "a1.dat", "Z.dat", "ä.dat", "é.txt"})
        box.Write(std::string{"x/"} + name, "");
    box.Write("x/.kv~12", "staged");
    box.Write("x/sub.dat/file", "");
    EXPECT_EQ(Names("x", "*.dat"), (List{"A.DAT", "a1.dat", "b.dat", "Z.dat", "_x.dat", "ä.dat"}));
    EXPECT_EQ(Names("none", "*"), List{});
    EXPECT_EQ(*ListSubfolders(box / "X"), (std::vector<Path>{box / "x/sub.dat"}));
}

TEST_F(Files, AFolderThatCannotBeListedIsNoEmptyOne)
{
    box.Write("x/SUB/file", "1");
    const auto fails = [&](const std::string& ending, auto work) {
        const FailingCalls failing{platform::FileAction::List, ending};
        const auto result = work();
        EXPECT_EQ(failing.Failed(), 1);
        return !result && result.Error().code == ErrorCode::CannotRead;
    };
    EXPECT_TRUE(fails("/x", [&] { return ListFiles(box / "x", "*"); }));
    EXPECT_TRUE(fails("/x", [&] { return ListSubfolders(box / "x"); }));
    EXPECT_TRUE(fails("/x/SUB", [&] { return ScanTree(box / "x"); }));
    EXPECT_TRUE(fails("/x/SUB", [&] { return FolderSize(box / "x"); }));
    EXPECT_TRUE(fails("/x/SUB", [&] { return CaseTwins(box / "x/SUB/FILE"); }));
    EXPECT_TRUE(fails("/x/SUB", [&] { return DeleteFile(box / "x/SUB/FILE"); }));
    EXPECT_TRUE(fails("/x/SUB", [&] { return DeleteMatching(box / "x/SUB", "*"); }));
    EXPECT_TRUE(fails("/x", [&] { return ListFiles(box / "x/sub", "*"); }))
        << "another spelling may stand there";
    EXPECT_TRUE(fails("/x", [&] { return MakeFolder(box / "x/sub"); })) << "no second folder";
    EXPECT_EQ(box.Read("x/SUB/file"), "1");
    EXPECT_TRUE(ListFiles(box / "none", "*")->empty()) << "a missing folder is one without files";
}

TEST_F(Files, LinksAreNeverEnteredAndRemovedAsLinks)
{
    box.Write("outside/keep.txt", "keep");
    box.Write("x/real.txt", "real");
    std::filesystem::create_symlink(box / "x/real.txt", box / "x/inside.txt");
    std::filesystem::create_symlink(box / "outside/keep.txt", box / "x/out.txt");
    std::filesystem::create_directory_symlink(box / "outside", box / "x/folder");
    std::filesystem::create_symlink(box / "nowhere", box / "x/dangling");
    EXPECT_EQ(Names("x", "*"), (List{"inside.txt", "real.txt"}));
    EXPECT_EQ(*FolderSize(box / "x"), 8);
    const auto tree = ScanTree(box / "x");
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->folders.size(), 1U);
    box.Write("new", "new");
    ASSERT_TRUE(CopyFileOver(box / "new", box / "x/out.txt"));
    EXPECT_EQ(box.Read("outside/keep.txt"), "keep") << "a copy replaces a link";
    ASSERT_TRUE(RemoveTree(box / "x"));
    EXPECT_EQ(box.Read("outside/keep.txt"), "keep");
}

TEST_F(Files, FoldersAreScannedParentsFirstAndRemovedOnlyWhenTheyMay)
{
    box.Write("x/b/deep/file", "1234");
    box.Write("x/a/file", "12");
    const auto tree = ScanTree(box / "x");
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->folders,
              (std::vector<Path>{box / "x", box / "x/a", box / "x/b", box / "x/b/deep"}));
    EXPECT_EQ(tree->files.size(), 2U);
    EXPECT_EQ(*FolderSize(box / "x"), 6);
    EXPECT_EQ(*FolderSize(box / "x", "none*"), 0);
    EXPECT_EQ(*FolderSize(box / "none"), 0);
    EXPECT_FALSE(RemoveFolder(box / "x")) << "it has sub-folders";
    EXPECT_TRUE(DeleteMatching(box / "x/b/deep", "*"));
    EXPECT_TRUE(DeleteMatching(box / "x/b/deep", "*")) << "an empty folder";
    EXPECT_TRUE(RemoveFolder(box / "x/b/deep"));
    EXPECT_FALSE(ScanTree(box / "none"));
    EXPECT_FALSE(ScanTree(box / "x", [] { return false; }));
    EXPECT_TRUE(MakeFolder(box / "x"));
    EXPECT_FALSE(MakeFolder(box / "none/deeper")) << "one level only";
    EXPECT_TRUE(MakeFolders(box / "none/deeper"));
}

TEST_F(Files, ACopyHoldsTheSourcesBytesAndTimeAndCanBeWritten)
{
    box.Write("a", std::string(3'000'000, 'a'));
    ASSERT_FALSE(platform::SetModified(box / "a", 1'000'000'000'123'000'000));
    ASSERT_FALSE(platform::SetMode(box / "a", 0444));
    CopyOptions options;
    options.verify = Verify::Content;
    options.flush = true;
    ASSERT_TRUE(CopyFileOver(box / "a", box / "b", options));
    EXPECT_TRUE(SameContent(box / "a", box / "b"));
    const platform::FileFacts facts = platform::FactsOf(box / "b");
    EXPECT_EQ(facts.modifiedNs, 1'000'000'000'123'000'000);
    EXPECT_EQ(facts.mode & 0600U, 0600U);
    EXPECT_TRUE(CopyFileOver(box / "b", box / "B")) << "over itself";
    EXPECT_EQ(box.Read("b").size(), 3'000'000U);
    options.progress = [](std::uint64_t) { return false; };
    EXPECT_FALSE(CopyFileOver(box / "a", box / "c", options));
    EXPECT_FALSE(box.Has("c"));
    EXPECT_FALSE(CopyFileOver(box / "none", box / "c"));
    EXPECT_FALSE(CopyFileOver(box / "a", box / "home")) << "a folder stands there";
}

TEST_F(Files, ATargetIsTheOldFileOrTheNewOneWhereverACopyFails)
{
    box.Write("new", std::string(5000, 'n'));
    for (const std::errc error : {std::errc::no_space_on_device, std::errc::io_error})
        for (int step = 1;; ++step) {
            ASSERT_LT(step, 50);
            box.Write("x/target", "old");
            CopyOptions options;
            options.verify = Verify::Content;
            options.flush = true;
            const FaultRun run = WithFaultAt(
                step, [&] { return bool{CopyFileOver(box / "new", box / "x/target", options)}; },
                error);
            const bool isNew = box.Read("x/target") == std::string(5000, 'n');
            EXPECT_TRUE(isNew || box.Read("x/target") == "old") << run.call;
            EXPECT_TRUE(isNew || !run.answer) << run.call;
            EXPECT_EQ(box.Snapshot("x").size(), 1U) << run.call;
            if (!run.reached)
                break;
        }
}

TEST_F(Files, ARecordKeepsTheOldLongerTailAndItsMode)
{
    box.Write("record", "0123456789");
    ASSERT_FALSE(platform::SetMode(box / "record", 0640));
    ASSERT_TRUE(WriteRecordFile(box / "RECORD", "abc"));
    EXPECT_EQ(box.Read("record"), "abc3456789");
    EXPECT_EQ(platform::FactsOf(box / "record").mode & 0777U, 0640U);
    ASSERT_TRUE(WriteRecordFile(box / "record", "longer than before"));
    EXPECT_EQ(box.Read("record"), "longer than before");
    ASSERT_TRUE(WriteWholeFile(box / "record", "whole"));
    EXPECT_EQ(box.Read("record"), "whole");

    EXPECT_FALSE(WriteRecordFile(box / "home", "x"));
    EXPECT_FALSE(WriteRecordFile(box / "none/record", "x"));
}

TEST_F(Files, ALinkIsWrittenThroughOnlyWhereItIsThePersonsDocument)
{
    box.Write("elsewhere", "of somebody else");
    const auto link = [&](const char* target) {
        std::filesystem::remove(box / "link");
        std::filesystem::create_symlink(target, box / "link");
    };
    for (const char* target : {"elsewhere", "nowhere", "home"}) {
        for (const auto write : {&WriteWholeFile, &WriteRecordFile}) {
            link(target);
            ASSERT_TRUE(write(box / "link", "a record of the program", true)) << target;
            EXPECT_FALSE(std::filesystem::is_symlink(box / "link")) << target;
            EXPECT_EQ(box.Read("link"), "a record of the program") << target;
        }
    }
    EXPECT_FALSE(box.Has("nowhere"));
    EXPECT_EQ(box.Read("elsewhere"), "of somebody else");

    link("elsewhere");
    ASSERT_TRUE(WriteDocument(box / "link", "a document"));
    EXPECT_EQ(box.Read("elsewhere"), "a documenty else") << "the old longer tail stays";
    EXPECT_TRUE(std::filesystem::is_symlink(box / "link"));
    ASSERT_TRUE(WriteKeptFile(box / "link", "a note"));
    EXPECT_EQ(box.Read("elsewhere"), "a note");
    EXPECT_TRUE(std::filesystem::is_symlink(box / "link"));
    EXPECT_EQ(*ReadKeptFile(box / "LINK"), "a note");
    link("nowhere");
    const auto away = ReadKeptFile(box / "link");
    ASSERT_FALSE(away) << "it is not nothing";
    EXPECT_EQ(away.Error().code, ErrorCode::CannotRead);
    EXPECT_TRUE(ReadKeptFile(box / "no such file"));

    box.Write("x/elsewhere", "of somebody else");
    std::filesystem::create_symlink("elsewhere", box / "x/.kv~lock");
    platform::FileLock lock;
    std::string holder;
    ASSERT_FALSE(platform::FileLock::Take(box / "x/.kv~lock", "the holder", lock, holder));
    EXPECT_EQ(box.Read("x/elsewhere"), "of somebody else");
    EXPECT_EQ(box.Read("x/.kv~lock"), "the holder");
}

TEST_F(Files, WhatAWriteInPlaceCouldNotChangeIsNotReplaced)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is read-only for this user";
    box.Write("record", "old");
    ASSERT_FALSE(platform::SetMode(box / "record", 0444));
    EXPECT_FALSE(WriteRecordFile(box / "record", "new"));
    EXPECT_EQ(box.Read("record"), "old");
}

TEST_F(Files, LeftoversOfAKilledWriteAreClearedAndALockStays)
{
    box.Write("x/.kv~dead", "half");
    box.Write("x/.kv~lock", "process 1");
    box.Write("x/file", "whole");
    ClearStagedLeftovers(box / "x");
    EXPECT_FALSE(box.Has("x/.kv~dead"));
    EXPECT_TRUE(box.Has("x/.kv~lock"));
    EXPECT_TRUE(box.Has("x/file"));
}

TEST_F(Files, SizesAreTextAsTheMasksSay)
{
    const struct {
        double bytes;
        const char* told;
        const char* ours;
    } rows[] = {{0, "0", "0 bytes"},
                {1, "1", "1 byte"},
                {1024, "1024", "1024 bytes"},
                {1025, "1 Kb", "1 KB"},
                {2047, "1 Kb", "1 KB"},
                {2048, "2 Kb", "2 KB"},
                {1048576, "1024 Kb", "1024 KB"},
                {1048577, "1.0 Mb", "1.0 MB"},
                {1572864, "1.5 Mb", "1.5 MB"},
                {1073741824, "1024.0 Mb", "1024.0 MB"},
                {1610612736, "1.5 Gb", "1.5 GB"},
                {5e12, "4656.6 Gb", "4656.6 GB"}};
    for (const auto& row : rows) {
        EXPECT_EQ(FormatSize(row.bytes), row.told) << row.bytes;
        EXPECT_EQ(SizeInWords(row.bytes), row.ours) << row.bytes;
    }
}

TEST_F(Files, TheLogTellsEachStepAndHowItEnded)
{
    box.Write("a/x.dat", "x");
    box.Write("b/x.dat", "old");
    const std::string a = (box / "a").native();
    const std::string b = (box / "b").native();
    ActivityLog log;
    log += CopyLine(box / "a/x.dat", box / "b/x.dat", true, true);
    EXPECT_FALSE(LogCopyFile(box / "a/none", box / "b/y", log));
    EXPECT_TRUE(LogCopyMatching(box / "a", box / "b", log, "*.*"));
    log += DeleteDirLine(box / "b", "*.dat", true);
    EXPECT_TRUE(LogDeleteFile(box / "b/x.dat", box / "b/x.dat", log));
    EXPECT_EQ(log, "COPY " + a + "/x.dat -> " + b + "/x.dat [OK] [OVERWRITE]\r\n" + "COPY " + a +
                       "/none -> " + b + "/y [ERROR]\r\n" + "COPYALL " + a + "\\*.* -> " + b +
                       " [OK]\r\n" + "DELETE DIR \"*.dat\" -> " + b + " [OK]\r\n" + "DELETE -> " +
                       b + "/x.dat [OK]\r\n");
    box.Write("home/levellog_000.TXT", "taken");
    ASSERT_TRUE(WriteLogFile(box / "home", "line\r\n"));
    EXPECT_EQ(box.Read("home/LevelLog_001.txt"), "line\r\n\r\n");
}

TEST(Parallel, EveryJobRunsOnceUntilAStop)
{
    std::vector<std::atomic<int>> runs(500);
    EXPECT_TRUE(RunOnAllCores(runs.size(), [&](std::size_t i) { ++runs[i]; }));
    for (const auto& count : runs)
        EXPECT_EQ(count, 1);
    std::atomic<std::size_t> begun{0};
    EXPECT_FALSE(RunOnAllCores(
        10'000,
        [&](std::size_t) {
            ++begun;
            ::usleep(1000);
        },
        [] { return false; }));
    EXPECT_LT(begun, 10'000U);
    EXPECT_TRUE(RunOnAllCores(0, [](std::size_t) { FAIL(); }));
}

} // namespace

} // namespace kestrova::testing
