#include "making_world.h"

namespace kestrova::testing
{

namespace
{

/// A person who presses Stop a few steps after something is so.
class StopOnce : public ProgressScope
{
public:
    explicit StopOnce(std::function<bool()> isSo) : isSo_(std::move(isSo)) {}
    void SetLabel(const std::string&) override {}
    void SetBar(std::uint64_t, std::uint64_t) override {}
    void SetPart(std::uint64_t, std::uint64_t) override {}
    void AllowStop() override {}
    bool Step() override { return !isSo_() || ++steps_ < 5; }

private:
    std::function<bool()> isSo_;
    int steps_ = 0;
};

} // namespace

TEST_F(BurnDiscsTest, BurnsEachDiscThroughAnImageOrAPipeAndProvesIt)
{
    WillBurn("Kestrova #1"), WillBurn("Kestrova #2");
    world.host.WillAsk("Remove from local disk (hard disk) 2 levels", true);
    ASSERT_TRUE(Create()) << world.host.AllTold();
    const auto note = ReadDiscNote(world / "levels");
    ASSERT_TRUE(note);
    EXPECT_TRUE(FindNoted(*note, 1, 1)->verified);
    EXPECT_TRUE(FindNoted(*note, 2, 2)->verified);
    EXPECT_EQ(note->Find(1)->image, (world / "media/first.img").native());
    EXPECT_EQ(note->Find(2)->image, (world / "media/Kestrova 02 levels.iso").native());
    EXPECT_EQ(Saved().levels[2].cdNumber, 2);
    EXPECT_EQ(Path{Saved().header.mainFolder}.filename(), "levels");

    world.session.archive.levels[1].cdNumber = world.session.archive.levels[2].cdNumber = 0;
    Measure();
    plan.choice.imageFirst = false;
    plan.choice.unattended = true;
    plan.choice.remove = false;
    EXPECT_TRUE(Create()) << world.host.AllTold();
}

TEST_F(BurnDiscsTest, ADiscThatWasSkippedOrNotVerifiedCountsOnlyWhenThePersonSaysSo)
{
    world.host.WillAskYesNoCancel("Insert a blank CD (Kestrova #1", YesNoCancel::No);
    WillBurn("Kestrova #2", false);
    world.host.WillAsk("2 levels were not read back from their discs: Alpha, Beta", false);
    ASSERT_TRUE(Create()) << world.host.AllTold();
    EXPECT_EQ(world.session.archive.levels[1].cdNumber, 0);
    EXPECT_FALSE(Saved().header.cdMovePending);
    // The disc that nobody read back is known by what it should hold.
    const auto noted = ReadDiscNote(world / "levels");
    ASSERT_TRUE(noted && FindNoted(*noted, 2, 2) != nullptr);
    EXPECT_FALSE(FindNoted(*noted, 2, 2)->verified);
    EXPECT_TRUE(HoldsNotedFiles(world / "levels/LEVEL_0002/files", *FindNoted(*noted, 2, 2)));

    // What an earlier run proved needs no second disc.
    world.host.WillAsk("Have you 2 blank CDs", true);
    WillBurn("Kestrova #1");
    world.host.WillAskYesNoCancel("Insert a blank CD (Kestrova #2", YesNoCancel::Cancel);
    EXPECT_FALSE(Create());
    world.host.WillAsk("Have you 2 blank CDs", true);
    world.host.WillAskYesNoCancel("Insert a blank CD (Kestrova #1", YesNoCancel::No);
    WillBurn("Kestrova #2");
    world.host.WillAsk("Remove from local disk (hard disk) 2 levels", true);
    ASSERT_TRUE(Create()) << world.host.AllTold();
    EXPECT_EQ(Saved().levels[1].cdNumber, 1);
}

TEST_F(BurnDiscsTest, AFailedBurnIsTriedAgainAtHalfTheSpeedOrGivenUp)
{
    // The tool makes images and burns nothing.
    world.machine.tools["xorriso"] =
        ToolIn(world, "[ \"$2\" = cdrecord ] && { echo 'cdrecord: Error: no laser' >&2; exit 5; }; "
                      "exec /usr/bin/xorriso \"$@\"");
    const FileContents before = world.Snapshot("levels");
    world.host.WillAskYesNoCancel("Insert a blank CD (Kestrova #1", YesNoCancel::Yes);
    world.host.WillAskYesNoCancel("To RETRY burning", YesNoCancel::Yes);
    world.host.WillAskYesNoCancel("The speed is 1 already", YesNoCancel::Yes);
    world.host.WillAskYesNoCancel("The speed is 0 already", YesNoCancel::Cancel);
    EXPECT_FALSE(Create());
    EXPECT_TRUE(world.host.WasTold("Insert a blank CD (Kestrova #1) in unit "))
        << world.host.AllTold();
    ExpectUntouched(world, before);
    EXPECT_FALSE(world.Has("home/_temp_burn"));
    std::filesystem::remove_all(world.machine.tools["xorriso"].parent_path());
}

TEST_F(BurnDiscsTest, AnImageThatAnotherProgramBurntIsReadBackAndOneThatNobodyBurntIsAskedAbout)
{
    // The tool burns nothing; what the person burns by hand is the first disc alone.
    const std::string medium = (world / "media/first.img").native();
    world.machine.tools["xorriso"] =
        ToolIn(world, "[ \"$2\" = cdrecord ] || exec /usr/bin/xorriso \"$@\"\n"
                      "for image; do :; done\n[ -s '" +
                          medium + "' ] || cp \"$image\" '" + medium + "'\nexit 5");
    for (const char* disc : {"Kestrova #1", "Kestrova #2"}) {
        world.host.WillAskYesNoCancel(std::string{"Insert a blank CD ("} + disc, YesNoCancel::Yes);
        world.host.WillAskYesNoCancel("To RETRY burning", YesNoCancel::No);
        world.host.WillAsk("Now you must burn on cd", true);
    }
    world.host.WillAsk("1 levels were not read back from their discs: Beta", false);
    world.host.WillAsk("Remove from local disk (hard disk) 1 levels", true);
    ASSERT_TRUE(Create()) << world.host.AllTold();
    EXPECT_EQ(Saved().levels[1].cdNumber, 1);
    EXPECT_EQ(Saved().levels[2].cdNumber, 0);
    std::filesystem::remove_all(world.machine.tools["xorriso"].parent_path());
}

TEST_F(CreateDiscsTest, AToolThatHangsIsStoppedAndLeavesNothing)
{
    Level("Alpha", millions);
    Measure();
    const FileContents before = world.Snapshot("levels");
    world.machine.tools["xorriso"] =
        ToolIn(world, "trap '' TERM INT HUP\necho > \"$0.runs\"\nwhile :; do sleep 0.1; done");
    const Path runs = world.machine.tools["xorriso"].native() + ".runs";
    progress = std::make_unique<StopOnce>([&] { return FileExists(runs); });
    EXPECT_FALSE(Create());
    EXPECT_TRUE(world.host.WasTold("No disc is made any more")) << world.host.AllTold();
    ExpectUntouched(world, before);
    EXPECT_TRUE(world.Snapshot("images").empty());
    std::filesystem::remove_all(runs.parent_path());
}

TEST_F(CreateDiscsTest, AFileThatChangesWhileDiscsAreMadeKeepsItsLevelOnTheHardDisk)
{
    Level("Alpha", millions), Level("Beta", millions);
    Measure();
    // After the note of what comes, and before the image.
    world.machine.tools["xorriso"] = ToolIn(
        world, "printf newer >'" + (world / "levels/LEVEL_0002/files/readme żółw.txt").native() +
                   "'\nexec /usr/bin/xorriso \"$@\"");
    plan.choice.remove = true;
    world.host.WillAsk("1 levels were not read back from their discs: Beta", false);
    ASSERT_TRUE(Create()) << world.host.AllTold();
    EXPECT_EQ(Saved().levels[1].cdNumber, 1);
    EXPECT_EQ(Saved().levels[2].cdNumber, 0) << "the disc tells of another file";
    std::filesystem::remove_all(world.machine.tools["xorriso"].parent_path());
}

} // namespace kestrova::testing
