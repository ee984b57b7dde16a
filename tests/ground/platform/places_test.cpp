#include "platform/places.h"

#include "platform/process.h"
#include "sandbox/patience.h"
#include "sandbox/sandbox.h"

#include <cstdlib>
#include <gtest/gtest.h>
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

TEST(OpenWithDesktop, WhatOpensIsNoChildThatSomebodyHasToWaitFor)
{
    const Sandbox box;
    const Path opened = box / "opened";
    box.Write("bin/xdg-open", "#!/bin/sh\necho $PPID \"$1\" >" + opened.native() + ".new\nmv " +
                                  opened.native() + ".new " + opened.native() + "\n");
    std::filesystem::permissions(box / "bin/xdg-open", std::filesystem::perms::owner_all);
    const std::string path = std::getenv("PATH");
    ::setenv("PATH", ((box / "bin").native() + ":" + path).c_str(), 1);
    const auto failure = platform::OpenWithDesktop("http://levels.example/", box.root);
    ::setenv("PATH", path.c_str(), 1);
    ASSERT_FALSE(failure) << failure.message();
    for (const auto end = std::chrono::steady_clock::now() + soon;
         !box.Has("opened") && std::chrono::steady_clock::now() < end;)
        std::this_thread::sleep_for(std::chrono::milliseconds{5});
    const std::string told = box.Read("opened");
    EXPECT_NE(told, std::to_string(platform::OwnProcess()) + " http://levels.example/\n");
    EXPECT_NE(told.find(" http://levels.example/"), std::string::npos) << told;
    // What is not there is told all the same.
    EXPECT_EQ(platform::StartAndForget({{(box / "bin/none").native()}, {}, {}}),
              std::errc::no_such_file_or_directory);
}

} // namespace
} // namespace kestrova::testing
