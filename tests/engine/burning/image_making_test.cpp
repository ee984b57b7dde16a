#include "burning/image_making.h"

#include "core/files.h"
#include "disc_world.h"
#include "platform/file_content.h"
#include "sandbox/faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using ::testing::HasSubstr;

class EachImager : public ::testing::TestWithParam<const char*>
{
};

TEST_P(EachImager, PutsEveryNameOnTheDiscAndTheDiscEqualsItsSources)
{
    BurningWorld world;
    world.UseDiscTools({GetParam()});
    const BurnSettings settings = world.Settings();
    const auto size = ImageSize(ToolsOf(world.session), settings);
    ASSERT_TRUE(size) << size.Error().sentence;
    const Path image = world / "made/disc.iso";
    std::filesystem::create_directories(image.parent_path());
    const Status made = world.Make(image, settings);
    ASSERT_TRUE(made) << made.Error().sentence << made.Error().reason << made.Error().details;
    EXPECT_EQ(FileSize(image), *size);
    EXPECT_EQ(world.Snapshot("made").size(), 1U);

    const Status same = world.Compare(image);
    ASSERT_TRUE(same) << same.Error().details;
    ASSERT_EQ(world.comparison.same.size(), 6U);
    for (const SameFile& file : world.comparison.same) {
        std::string hash;
        ASSERT_FALSE(platform::HashOfFile(file.source, hash));
        EXPECT_EQ(file.hash, hash) << file.target;
        EXPECT_EQ(file.size, FileSize(file.source));
    }
}

TEST_P(EachImager, AnImageThatIsDamagedOrCutIsNamed)
{
    BurningWorld world;
    world.UseDiscTools({GetParam()});
    const Path image = world / "disc.iso";
    ASSERT_TRUE(world.Make(image, world.Settings()));
    std::string bytes = world.Read("disc.iso");
    const std::size_t data = bytes.find(std::string(1000, 'L') + "") + 100'000;

    std::string damaged = bytes;
    damaged[data] = 'X';
    world.Write("disc.iso", damaged);
    Status status = world.Compare(image);
    ASSERT_FALSE(status);
    EXPECT_EQ(status.Error().code, ErrorCode::Differs);
    EXPECT_THAT(status.Error().sentence, HasSubstr("level1.tr4"));
    EXPECT_EQ(world.comparison.same.size(), 5U);

    world.Write("disc.iso", std::string_view{bytes}.substr(0, bytes.size() - 2048));
    status = world.Compare(image);
    ASSERT_FALSE(status);
    EXPECT_EQ(status.Error().code, ErrorCode::Damaged);

    world.Write("disc.iso", std::string(100'000, 'x'));
    EXPECT_EQ(world.Compare(image).Error().code, ErrorCode::Damaged);

    world.Write("disc.iso", bytes);
    world.Write("level/new.txt", "came later");
    world.Write("level/a=b/c=d.txt", "other size");
    status = world.Compare(image);
    ASSERT_FALSE(status);
    EXPECT_EQ(world.comparison.differences.size(), 2U);
    EXPECT_THAT(status.Error().details, HasSubstr("new.txt not exist on CD"));
    EXPECT_THAT(status.Error().details, HasSubstr("c=d.txt has on cd a size different"));
}

INSTANTIATE_TEST_SUITE_P(Tools, EachImager, ::testing::Values("xorriso", "genisoimage"));

TEST(ImageMaking, RefusesInWordsWhatNoToolMayDrop)
{
    struct Case {
        const char* words;
        std::function<void(BurningWorld&)> prepare;
    };
    const Case cases[] = {
        {"link to a folder",
         [](BurningWorld& world) {
             std::filesystem::create_directory_symlink(world / "level/data",
                                                       world / "level/linked");
         }},
        {"leads to nothing",
         [](BurningWorld& world) {
             std::filesystem::create_symlink("nowhere", world / "level/dangling");
         }},
        {"line end", [](BurningWorld& world) { world.Write("level/two\nlines.txt", "x"); }},
        {"another file takes already",
         [](BurningWorld& world) {
             world.Write("other/data", "a file where the level has a folder");
             world.items.push_back({"Kestrova1/LEVEL_0001/files/", world / "other"});
         }},
    };
    for (const Case& row : cases) {
        BurningWorld world;
        row.prepare(world);
        const Status made = world.Make(world / "disc.iso", world.Settings());
        ASSERT_FALSE(made) << row.words;
        EXPECT_THAT(made.Error().sentence, HasSubstr(row.words));
        EXPECT_FALSE(world.Has("disc.iso"));
    }
    BurningWorld unread;
    const FailingCalls closed{platform::FileAction::Open, "level1.tr4", -1};
    const Status made = unread.Make(unread / "disc.iso", unread.Settings());
    ASSERT_FALSE(made);
    EXPECT_THAT(made.Error().sentence, HasSubstr("cannot be read"));
}

TEST(ImageMaking, RefusesWhatThisToolOrTheDiscHasNoPlaceFor)
{
    BurningWorld world;
    BurnSettings settings = world.Settings();
    settings.volumeId = std::string(33, 'x');
    EXPECT_THAT(world.Make(world / "disc.iso", settings).Error().sentence, HasSubstr("32 letters"));
    // Without a byte on the disk.
    std::filesystem::resize_file(world / "level/empty.dat", UINT64_C(1) << 32);
    world.UseDiscTools({"genisoimage"});
    const Status made = world.Make(world / "disc.iso", world.Settings());
    ASSERT_FALSE(made);
    EXPECT_THAT(made.Error().sentence, HasSubstr("empty.dat' has 4 GB or more"));
    EXPECT_FALSE(world.Has("disc.iso"));
}

TEST(ImageMaking, AComparisonCanBeStoppedAndStepsWithinAFile)
{
    class Counting : public ProgressScope
    {
    public:
        int steps = 0;
        int last = 1'000'000;
        void SetLabel(const std::string&) override {}
        void SetBar(std::uint64_t, std::uint64_t) override {}
        void AllowStop() override {}
        bool Step() override { return ++steps < last; }
    };
    BurningWorld world;
    world.Write("level/large.wad", std::string(std::size_t{8} << 20, 'w'));
    ASSERT_TRUE(world.Make(world / "disc.iso", world.Settings()));
    Counting whole;
    ASSERT_TRUE(CompareWithSources(world / "disc.iso", world.items, {}, &whole, world.comparison));
    EXPECT_GT(whole.steps, 8 + 6);
    Counting stopped;
    stopped.last = whole.steps - 1;
    const Status status =
        CompareWithSources(world / "disc.iso", world.items, {}, &stopped, world.comparison);
    ASSERT_FALSE(status);
    EXPECT_EQ(status.Error().code, ErrorCode::Stopped);
}

TEST(ImageMaking, FollowsALinkToAFileAndKeepsWhatIsExcludedAway)
{
    BurningWorld world;
    world.Write("elsewhere.dat", "behind a link");
    std::filesystem::create_symlink(world / "elsewhere.dat", world / "level/linked.dat");
    BurnSettings settings = world.Settings();
    settings.noItems = {world / "level/data", world / "level/empty.dat"};
    ASSERT_TRUE(world.Make(world / "disc.iso", settings));
    ASSERT_TRUE(CompareWithSources(world / "disc.iso", settings.items, settings.noItems, nullptr,
                                   world.comparison));
    EXPECT_EQ(world.comparison.same.size(), 5U);
    EXPECT_FALSE(world.Compare(world / "disc.iso"));
    EXPECT_EQ(world.comparison.differences.size(), 2U);
}

TEST(ImageMaking, LeavesNothingWhenItIsStoppedKilledOrItsToolFails)
{
    BurningWorld world;
    world.Write("disc.iso", "an older image");
    const auto onlyOld = [&] {
        std::size_t staged = 0;
        for (const auto& entry : std::filesystem::directory_iterator(world.root))
            staged += entry.path().filename().string().starts_with(stagedPrefix) ? 1U : 0U;
        return staged == 0 && world.Read("disc.iso") == "an older image";
    };
    // What each does is said by the words that come of it.
    world.AddTool("xorriso", "shift 2; while [ \"$1\" != -o ]; do shift; done; echo half >\"$2\"; "
                             "echo 'xorriso : FAILURE : No space left on device' >&2; exit 5");
    Status made = world.Make(world / "disc.iso", world.Settings());
    ASSERT_FALSE(made);
    EXPECT_THAT(made.Error().reason, HasSubstr("No space left"));
    EXPECT_TRUE(onlyOld());

    world.AddTool("xorriso", "shift 2; while [ \"$1\" != -o ]; do shift; done; echo half >\"$2\"; "
                             "echo 'Written to medium : 900 sectors at LBA 0' >&2; exit 0");
    made = world.Make(world / "disc.iso", world.Settings());
    ASSERT_FALSE(made) << "a tool that claims more than it wrote";
    EXPECT_TRUE(onlyOld());

    world.AddTool("xorriso", "kill -9 $$");
    EXPECT_FALSE(world.Make(world / "disc.iso", world.Settings()));

    world.AddTool("xorriso", "shift 2; while [ \"$1\" != -o ]; do shift; done; echo half >\"$2\"; "
                             "exec sleep 60");
    auto making = ImageMaking::Start(ToolsOf(world.session), world.Settings(), world / "disc.iso");
    ASSERT_TRUE(making);
    EXPECT_TRUE((*making)->Poll());
    (*making)->Stop();
    while ((*making)->Poll())
        std::this_thread::sleep_for(std::chrono::milliseconds{5});
    EXPECT_EQ((*making)->Outcome().Error().code, ErrorCode::Stopped);
    EXPECT_TRUE(onlyOld());
}

TEST(ImageMaking, WhereStopIsNotAllowedOnlyASilentToolCanBeStopped)
{
    /// Somebody who holds Stop down, which counts where it may.
    class Impatient : public ProgressScope
    {
    public:
        void SetLabel(const std::string&) override {}
        void SetBar(std::uint64_t, std::uint64_t) override {}
        void SetPart(std::uint64_t, std::uint64_t) override {}
        void AllowStop() override { allowed = true; }
        bool Step() override { return !pressed; }
        bool allowed = false;
        bool pressed = false;
    };
    BurningWorld world;
    Impatient person;
    BurnSettings settings = world.Settings();
    settings.progress = &person;
    settings.stopAllowed = false;
    settings.quietLimit = std::chrono::hours{1};
    auto making = ImageMaking::Start(ToolsOf(world.session), settings, world / "whole.iso");
    ASSERT_TRUE(making);
    person.pressed = true;
    EXPECT_TRUE((*making)->Finish(settings)) << "the tool was at work";
    EXPECT_FALSE(person.allowed);
    person.pressed = false;

    world.AddTool("xorriso", "echo 'xorriso : UPDATE : 1% done' >&2; exec sleep 600");
    settings.quietLimit = std::chrono::milliseconds{300};
    making = ImageMaking::Start(ToolsOf(world.session), settings, world / "none.iso");
    ASSERT_TRUE(making);
    person.pressed = true;
    const Status made = (*making)->Finish(settings);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.Error().code, ErrorCode::Stopped);
    EXPECT_TRUE(person.allowed);
    EXPECT_FALSE(world.Has("none.iso"));
}

TEST(ImageMaking, OneIsMadeWhileAnotherGoesOn)
{
    BurningWorld world;
    const BurnSettings settings = world.Settings();
    auto next = ImageMaking::Start(ToolsOf(world.session), settings, world / "next.iso");
    ASSERT_TRUE(next);
    BurnSettings first = settings;
    int polls = 0;
    first.meanwhile = [&] {
        ++polls;
        (*next)->Poll();
    };
    ASSERT_TRUE(world.Make(world / "first.iso", first));
    while ((*next)->Poll())
        std::this_thread::sleep_for(std::chrono::milliseconds{5});
    EXPECT_TRUE((*next)->Outcome());
    EXPECT_TRUE(world.Compare(world / "first.iso"));
    EXPECT_TRUE(world.Compare(world / "next.iso"));
}

} // namespace

} // namespace kestrova::testing
