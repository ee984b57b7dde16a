#include "intake/add_level.h"
#include "intake/draft_sources.h"
#include "intake/intake_steps.h"
#include "intake/unpacking_place.h"

#include "archive/level_folders.h"
#include "platform/file_hook.h"
#include "sandbox/faults.h"
#include "sandbox/listings.h"
#include "tools/run_to_end.h"
#include "world/tool_box.h"
#include "world/zip_builder.h"

#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

using Clock = std::chrono::steady_clock;

/// Stop is pressed some time after the beginning.
class StopAfter : public ProgressScope
{
public:
    explicit StopAfter(std::chrono::milliseconds time) : at(Clock::now() + time) {}
    Clock::time_point at;
    void SetLabel(const std::string&) override {}
    void SetBar(std::uint64_t, std::uint64_t) override {}
    void AllowStop() override {}
    bool Step() override
    {
        const bool goesOn = Clock::now() < at;
        if (goesOn)
            asked = std::clock();
        return goesOn;
    }
    /// Seconds of the processor that the program worked since it last asked and was told to go on;
    /// a disk at work for others counts nothing.
    [[nodiscard]] double WorkedSinceAsked() const
    {
        return static_cast<double>(std::clock() - asked) / CLOCKS_PER_SEC;
    }

private:
    std::clock_t asked = std::clock();
};

class ManyFiles : public ::testing::Test
{
protected:
    ToolBox box;
    LevelRecord record;

    ManyFiles()
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        box.UseRealTools();
        record.levelCode = NextLevelCode(box.session.archive);
        EXPECT_TRUE(MakeLevelSubfolders(LevelHomeOf(box.session.Folders(), record.levelCode)));
    }
    std::string ZipOf(int count, const std::string& head, const std::string& content)
    {
        std::vector<BuiltEntry> entries;
        for (int i = 0; i < count; ++i)
            entries.push_back({head + std::to_string(i) + ".bin", content});
        return BuildZip(entries);
    }
};

TEST_F(ManyFiles, AFolderIsListedOnceHoweverManyFilesComeIn)
{
    constexpr int files = 400;
    constexpr int mostListings = 80;
    StopAfter progress{std::chrono::hours{1}};
    box.Write("outer.zip", BuildZip({{"inner.zip", ZipOf(files, "f", "inner")},
                                     {"level.tr4", "level"},
                                     {"f0.bin", "outer"}}));
    box.Write("twins.zip", ZipOf(files, "F", "twin"));
    for (int i = 0; i < files; ++i)
        box.Write("in/g" + std::to_string(i) + ".txt", std::to_string(i));
    box.host.AnswerAll(true);
    Intake level{box.session, record, NewLevelSteps(), progress};
    ASSERT_TRUE(OpenNewLevel(level));
    for (const char* source : {"outer.zip", "twins.zip", "in"}) {
        const Listings listings;
        ASSERT_TRUE(AddSources(level, {box / source}, Subfolders::Take)) << box.host.AllTold();
        EXPECT_LT(listings.count, mostListings) << source;
    }
    EXPECT_EQ(level.draft.files.size(), 2U * files + 2) << "the outer one keeps a free name";
    // A second time each file is there already.
    const Listings listings;
    ASSERT_TRUE(AddSources(level, {box / "twins.zip", box / "in"}, Subfolders::Take));
    EXPECT_LT(listings.count, mostListings);
    EXPECT_EQ(level.draft.files.size(), 2U * files + 2);
}

TEST_F(ManyFiles, StopIsHeardWithinASecondWheneverItComes)
{
    const int files = 8000 / WalkStride();
    box.Write("many.zip", ZipOf(files, "f", "x"));
    for (int wait = 20;; wait *= 2) {
        StopAfter progress{std::chrono::milliseconds{wait}};
        Intake level{box.session, record, NewLevelSteps(), progress};
        ASSERT_TRUE(OpenNewLevel(level));
        const Status all = AddSources(level, {box / "many.zip"});
        EXPECT_LT(progress.WorkedSinceAsked(), 2) << wait; // sanitizers take their part
        EXPECT_EQ(IsStop(all), !all);
        EXPECT_FALSE(std::filesystem::exists(UnpackingFolder(box.session.Folders()))) << wait;
        if (all) {
            EXPECT_EQ(level.draft.files.size(), static_cast<std::size_t>(files));
            break;
        }
        ASSERT_LT(wait, 100'000);
        std::filesystem::remove_all(level.draft.workFolder);
        std::filesystem::create_directory(level.draft.workFolder);
    }
}

TEST_F(ManyFiles, WhatAKilledIntakeLeftHoldsUpNoOther)
{
    const Path left = UnpackingFolder(box.session.Folders());
    const Path shut = left / ".kv~unpack/shut";
    std::filesystem::create_directories(shut);
    ASSERT_EQ(::mkfifo((shut / "pipe").c_str(), 0), 0);
    std::filesystem::create_symlink(box / "trle", shut / "link");
    ASSERT_EQ(::chmod(shut.c_str(), 0), 0);
    // Deeper than any path can say.
    int place = ::open(left.c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < 5000; ++i) {
        ASSERT_EQ(::mkdirat(place, "dd", 0700), 0);
        const int next = ::openat(place, "dd", O_RDONLY | O_DIRECTORY);
        ::close(place);
        place = next;
    }
    ::close(place);
    const auto trle = box.Snapshot("trle");
    box.Write("p.zip", BuildZip({{"level.tr4", "level"}}));
    StopAfter progress{std::chrono::hours{1}};
    Intake level{box.session, record, NewLevelSteps(), progress};
    ASSERT_TRUE(OpenNewLevel(level));
    EXPECT_TRUE(AddSources(level, {box / "p.zip"})) << box.host.AllTold();
    EXPECT_EQ(level.draft.files.size(), 1U);
    EXPECT_FALSE(std::filesystem::exists(left));
    EXPECT_EQ(box.Snapshot("trle"), trle);
    for (const auto& entry : std::filesystem::directory_iterator(box.session.programFolder))
        EXPECT_FALSE(entry.path().filename().native().starts_with(".kv~")) << entry.path();
}

TEST_F(ManyFiles, NoProgramIsStartedForEachOfManySmallPackages)
{
    constexpr int many = 120;
    std::vector<BuiltEntry> entries{{"level.tr4", "level"}};
    for (int i = 0; i < many; ++i)
        entries.push_back({"inner" + std::to_string(i) + ".zip",
                           ZipOf(1, "f" + std::to_string(i) + "_", "content")});
    entries.push_back({"inner.zip", "no zip at all"});
    box.Write("outer.zip", BuildZip(entries));
    for (const std::string name : {"unzip", "bsdtar"})
        box.AddTool(name, "echo run >>'" + (box / "runs").native() + "'\nexec '" +
                              platform::FindOnPath(name).native() + "' \"$@\"");
    StopAfter progress{std::chrono::hours{1}};
    Intake level{box.session, record, NewLevelSteps(), progress};
    ASSERT_TRUE(OpenNewLevel(level));
    EXPECT_FALSE(AddSources(level, {box / "outer.zip"}));
    EXPECT_EQ(level.draft.report.failed, 1U) << box.host.AllTold();
    EXPECT_TRUE(box.host.WasTold("inner.zip"));
    EXPECT_EQ(level.draft.files.size(), many + 1U);
    EXPECT_EQ(box.Read("runs"), "run\n") << "for the one that the program cannot read";
    EXPECT_FALSE(FolderExists(UnpackingFolder(box.session.Folders())));
}

TEST_F(ManyFiles, InnerPackagesShareOneCountOfEntries)
{
    box.Write("outer.zip", BuildZip({{"level.tr4", "level"},
                                     {"inner0.zip", ZipOf(10'100, "f", "")},
                                     {"inner1.zip", ZipOf(10'100, "g", "")}}));
    StopAfter progress{std::chrono::hours{1}};
    Intake level{box.session, record, NewLevelSteps(), progress};
    ASSERT_TRUE(OpenNewLevel(level));
    EXPECT_FALSE(AddSources(level, {box / "outer.zip"}));
    EXPECT_EQ(level.draft.report.failed, 1U) << box.host.AllTold();
    EXPECT_EQ(level.draft.files.size(), 10'101U);
    EXPECT_TRUE(box.host.WasTold("inner1.zip' holds 10100 files")) << box.host.AllTold();
}

} // namespace

} // namespace kestrova::testing
