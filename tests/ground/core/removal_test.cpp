#include "core/removal.h"
#include "sandbox/faults.h"
#include "sandbox/sandbox.h"

#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// Folders in one another, more of them than any path can name, with a file in the deepest.
void MakeDeep(const Path& root, int depth, const std::string& name)
{
    fs::create_directories(root);
    int folder = ::open(root.c_str(), O_PATH | O_DIRECTORY);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(::mkdirat(folder, name.c_str(), 0777), 0);
        const int next = ::openat(folder, name.c_str(), O_PATH | O_DIRECTORY);
        ASSERT_EQ(::close(folder), 0);
        folder = next;
    }
    ASSERT_EQ(::close(::openat(folder, "file", O_WRONLY | O_CREAT, 0666)), 0);
    ASSERT_EQ(::close(folder), 0);
}

/// An ordinary user for a while, whom modes hold up.
class AsOrdinaryUser
{
public:
    AsOrdinaryUser() : was_(::geteuid()) { EXPECT_TRUE(was_ != 0 || ::seteuid(65534) == 0); }
    ~AsOrdinaryUser() { EXPECT_TRUE(was_ != 0 || ::seteuid(0) == 0); }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

private:
    uid_t was_;
};

} // namespace

TEST(Removal, TakesEveryKindOfEntryAndLeavesWhatLinksLeadTo)
{
    Sandbox box;
    box.Write("outside/keep.txt", "keep");
    fs::permissions(box.root, fs::perms::all);
    const AsOrdinaryUser user;
    box.Write("x/shut/deeper/file", "1");
    box.Write("x/read only/file", "2");
    box.Write("x/line\nend", "3");
    fs::create_directory_symlink(box / "outside", box / "x/folder");
    fs::create_symlink(box / "nowhere", box / "x/shut/dangling");
    ASSERT_EQ(::mkfifo((box / "x/pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mknod((box / "x/socket").c_str(), S_IFSOCK | 0600, 0), 0);
    fs::permissions(box / "x/shut/deeper", fs::perms::none);
    fs::permissions(box / "x/shut", fs::perms::none);
    fs::permissions(box / "x/read only", fs::perms::owner_read | fs::perms::owner_exec);
    const auto removed = RemoveTree(box / "x/");
    EXPECT_TRUE(removed) << removed.Error().subject << removed.Error().reason;
    EXPECT_FALSE(fs::exists(box / "x"));
    EXPECT_EQ(box.Read("outside/keep.txt"), "keep");

    ASSERT_EQ(::mkfifo((box / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(ClearPlace(box / "pipe"));
    EXPECT_FALSE(fs::exists(box / "pipe"));
    EXPECT_TRUE(ClearPlace(box / "pipe")) << "nothing is there";
    EXPECT_FALSE(RemoveTree(box / ".."));
    EXPECT_FALSE(RemoveTree(box / "outside/."));
    EXPECT_TRUE(box.Has("outside/keep.txt"));
}

TEST(Removal, GoesAsDeepAsFoldersGo)
{
    Sandbox box;
    MakeDeep(box / "long", 17, std::string(240, 'd')); // about 4,080 bytes
    MakeDeep(box / "deep", 5000, "d");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(RemoveTree(box / "long"));
    EXPECT_TRUE(RemoveTree(box / "deep"));
    EXPECT_FALSE(fs::exists(box / "long"));
    EXPECT_FALSE(fs::exists(box / "deep"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{10});
}

TEST(Removal, WhatCannotGoIsNamedAndRenamedAside)
{
    Sandbox box;
    for (const char* file : {"a/1", "a/stuck", "a/z", "b/2", "c"})
        box.Write(std::string{"place/work/"} + file, "x");
    {
        const FailingCalls failing{platform::FileAction::Unlink, "/stuck", -1,
                                   std::errc::operation_not_permitted};
        const auto removed = RemoveTree(box / "place/work");
        ASSERT_FALSE(removed);
        EXPECT_EQ(removed.Error().code, ErrorCode::CannotDelete);
        EXPECT_EQ(removed.Error().subject, TextOf(box / "place/work/a/stuck"));
        EXPECT_EQ(box.Snapshot("place/work").size(), 1U) << "what could go has gone";
        EXPECT_TRUE(ClearPlace(box / "place/work"));
        EXPECT_FALSE(fs::exists(box / "place/work"));
        EXPECT_TRUE(ListSubfolders(box / "place")->empty()) << "no listing shows it";
        EXPECT_FALSE(fs::is_empty(box / "place"));
    }
    box.Write("work/a", "x");
    const FailingCalls failing{platform::FileAction::List, "/work", 1};
    EXPECT_FALSE(RemoveTree(box / "work")) << "a folder that cannot be listed is not empty";
    EXPECT_TRUE(box.Has("work/a"));
}

TEST(Removal, StopIsHeardWhileFilesGo)
{
    Sandbox box;
    for (int i = 0; i < 3000; ++i)
        box.Write("x/" + std::to_string(i), "");
    int steps = 0;
    const auto stopped = RemoveTree(box / "x", [&] { return ++steps < 1; });
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
    EXPECT_EQ(box.Snapshot("x").size(), 3000U);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(RemoveTree(box / "x", [&] { return ++steps, true; }));
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_GE(steps, 1 + took / std::chrono::milliseconds{100});
}

} // namespace kestrova::testing
