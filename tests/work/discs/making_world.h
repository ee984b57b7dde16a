#pragma once

#include "archive/archive_saving.h"
#include "discs/create_discs.h"
#include "discs/disc_notes.h"
#include "world/world.h"

#include <fstream>
#include <gtest/gtest.h>

namespace kestrova::testing
{

/// An archive of some levels that go onto images of 10 MB, through the real tool.
class CreateDiscsTest : public ::testing::Test
{
protected:
    World world;
    std::unique_ptr<ProgressScope> progress;
    DiscPlan plan;

    void SetUp() override
    {
        world.MakeTrle();
        world.MakeBackupAndArchive();
        std::filesystem::create_directories(world / "images");
        world.machine.tools["xorriso"] = "/usr/bin/xorriso";
        progress = world.host.BeginProgress(ProgressWindow::Progress, {});
        plan.choice.megabytes = 10;
        plan.choice.imagesOnly = true;
        plan.choice.images = world / "images";
    }
    LevelCode Level(const std::string& name, std::size_t bytes)
    {
        return world.AddLevel(name, {{"data/" + name + ".tr4", std::string(bytes, name[0])},
                                     {"readme żółw.txt", name}});
    }
    DiscParts Parts() { return {world.session, *progress}; }
    void Measure()
    {
        ASSERT_TRUE(plan.Measure(world.session.Folders(), world.session.archive, *progress));
        plan.Divide();
    }
    bool Create() { return CreateDiscs(Parts(), plan); }
    ArchiveContent Saved() const { return ReadArchiveFile(world.session.archive.file).Value(); }
};

inline constexpr std::size_t millions = 1'000'000;

/// A shell script that plays a tool, where programs may be started from.
inline Path ToolIn(World& world, const std::string& script)
{
    const Path folder = std::filesystem::temp_directory_path() / world.root.filename();
    std::filesystem::create_directories(folder);
    const Path tool = folder / "xorriso";
    std::ofstream{tool} << "#!/bin/sh\n" << script << '\n';
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    return tool;
}

/// Whatever was refused, stopped or failed: the archive is as it was, every level's files are on
/// the hard disk, and nothing of the set is left in the images' folder.
inline void ExpectUntouched(World& world, const FileContents& before)
{
    const auto saved = ReadArchiveFile(world.session.archive.file);
    ASSERT_TRUE(saved);
    for (const LevelRecord& level : saved->levels)
        EXPECT_EQ(level.cdNumber, 0) << level.levelName;
    EXPECT_EQ(saved->header.cdCount, 0);
    EXPECT_FALSE(saved->header.cdMovePending);
    EXPECT_EQ(world.session.archive.levels.back().cdNumber, 0);
    FileContents now = world.Snapshot("levels");
    now.erase("discs.json");
    EXPECT_TRUE(now == before);
}

/// The same over a drive of the settings that writes, with a blank disc of 10 MB in it.
class BurnDiscsTest : public CreateDiscsTest
{
protected:
    void SetUp() override
    {
        CreateDiscsTest::SetUp();
        world.Write("media/first.img", "");
        world.session.settings.drives = {
            {"burner", world / "media/first.img", world / "seen", 10, true}};
        plan.choice.imagesOnly = false;
        plan.choice.drive = "burner";
        plan.choice.speed = 2;
        Level("Alpha", 2 * millions), Level("Beta", 2 * millions);
        Measure();
        world.host.WillAsk("Have you 2 blank CDs by 10 MB", true);
    }
    /// Each disc, and whether what was burnt is verified.
    void WillBurn(const std::string& label, bool verify = true)
    {
        world.host.WillAskYesNoCancel("Insert a blank CD (" + label, YesNoCancel::Yes);
        world.host.WillAsk("do you want verify CD contents", verify);
    }
};

} // namespace kestrova::testing
