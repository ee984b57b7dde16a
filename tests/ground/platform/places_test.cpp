#include "platform/places.h"

#include "platform/process.h"
#include "sandbox/patience.h"
#include "sandbox/sandbox.h"

#include <cstdlib>
#include <future>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>

namespace kestrova::testing
{
namespace
{

TEST(MountedDrives, AFixedOneIsNeitherRemovableNorOnANetwork)
{
    const Sandbox box;
    const auto disk = [&](const std::string& at, const std::string& name, const char* removable) {
        box.Write("devices/" + at + "/removable", removable);
        std::filesystem::create_directories(box / "block");
        std::filesystem::create_directory_symlink(box / ("devices/" + at), box / ("block/" + name));
    };
    disk("pci/ata/sda", "sda", "0\n");
    disk("pci/usb1/sdb", "sdb", "0\n");
    disk("pci/mmc/mmcblk0", "mmcblk0", "1\n");
    disk("virtual/dm-0", "dm-0", "0\n");
    disk("virtual/dm-1", "dm-1", "0\n");
    for (const auto& [part, of] : {std::pair{"sda1", "pci/ata/sda"},
                                   {"sdb1", "pci/usb1/sdb"},
                                   {"mmcblk0p1", "pci/mmc/mmcblk0"}}) {
        const Path place = box / ("devices/" + std::string{of} + "/" + part);
        std::filesystem::create_directories(place);
        std::filesystem::create_directory_symlink(place, box / ("block/" + std::string{part}));
    }
    box.Write("devices/virtual/dm-0/slaves/sda1", "");
    box.Write("devices/virtual/dm-1/slaves/mmcblk0p1", "");
    const std::vector<std::pair<std::string, bool>> rows{
        {"/dev/sda1 ext4", true},        {"/dev/sdb1 vfat", false},
        {"/dev/mmcblk0p1 exfat", false}, {"/dev/dm-0 ext4", true},
        {"/dev/dm-1 ext4", false},       {"/dev/unknown xfs", true},
        {"server:/export nfs4", false},  {"//server/share cifs", false},
        {"overlay overlay", true},       {"/dev/sda2 fuseblk", true},
    };
    std::string table;
    for (const auto& [row, fixed] : rows) {
        const Path folder = box / ("mount" + std::to_string(table.size()));
        std::filesystem::create_directory(folder);
        const std::size_t blank = row.find(' ');
        table += row.substr(0, blank) + " " + folder.native() + row.substr(blank) + " rw 0 0\n";
    }
    box.Write("mounts", table);
    const auto drives = platform::MountedDrives(box / "mounts", box / "block");
    ASSERT_EQ(drives.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(drives[i].fixed, rows[i].second) << rows[i].first;
}

/// What stands as `xdg-open` while this lives.
class Opener
{
public:
    Opener(const Sandbox& box, const std::string& script) : path_(std::getenv("PATH"))
    {
        box.Write("bin/xdg-open", "#!/bin/sh\n" + script);
        std::filesystem::permissions(box / "bin/xdg-open", std::filesystem::perms::owner_all);
        ::setenv("PATH", ((box / "bin").native() + ":" + path_).c_str(), 1);
    }
    ~Opener() { ::setenv("PATH", path_.c_str(), 1); }
    Opener(const Opener&) = delete;
    Opener& operator=(const Opener&) = delete;

private:
    std::string path_;
};

TEST(OpenWithDesktop, WhatOpensIsWaitedForByNobodyAndARefusalIsTold)
{
    const Sandbox box;
    const Path opened = box / "opened";
    const std::string note = "echo \"$1\" >" + opened.native() + ".new\nmv " + opened.native() +
                             ".new " + opened.native() + "\n";
    const auto until = [](const auto& is) {
        const auto end = std::chrono::steady_clock::now() + soon;
        while (!is() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds{5});
        return is();
    };
    {
        // A viewer that goes on does not hold the program up.
        const Opener opener{box, note + "while [ ! -e " + (box / "end").native() +
                                     " ]; do sleep 0.05; done\nexit 1\n"};
        const auto failure = platform::OpenWithDesktop("http://levels.example/", box.root);
        EXPECT_FALSE(failure) << failure.message();
        EXPECT_TRUE(until([&] { return box.Has("opened"); }));
        EXPECT_EQ(box.Read("opened"), "http://levels.example/\n");
        box.Write("end", "");
        EXPECT_TRUE(until([] {
            siginfo_t one{};
            return ::waitid(P_ALL, 0, &one, WEXITED | WNOHANG | WNOWAIT) == -1;
        })) << "a zombie";
    }
    {
        const Opener opener{box, "exit 3\n"};
        EXPECT_EQ(platform::OpenWithDesktop("readme.odd", box.root), std::errc::not_supported);
    }
    {
        // A busy desktop's answer comes when nobody waits any more.
        const Opener opener{box, "while [ ! -e " + (box / "late").native() +
                                     " ]; do sleep 0.05; done\nexit 3\n"};
        std::promise<std::string> told;
        EXPECT_FALSE(platform::OpenWithDesktop(
            "late.odd", box.root, [&](const std::string& what) { told.set_value(what); }));
        box.Write("late", "");
        auto what = told.get_future();
        ASSERT_EQ(what.wait_for(soon), std::future_status::ready);
        EXPECT_EQ(what.get(), "late.odd");
    }
    // What is not there is told all the same.
    EXPECT_EQ(platform::StartAndForget({{(box / "bin/none").native()}, {}, {}}),
              std::errc::no_such_file_or_directory);
}

} // namespace
} // namespace kestrova::testing
