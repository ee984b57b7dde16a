#include "drives/cd_drives.h"

#include "world/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

using ::testing::HasSubstr;

/// A machine with one drive that becomes ready at some look; each look at the clock takes three
/// seconds.
class SlowDrive : public FakeMachine
{
public:
    int readyAt = 0;
    int looks = 0;
    DiscMedium becomes = DiscMedium::Written;

    std::int64_t NowNs() override { return now += INT64_C(3'000'000'000); }
    std::vector<platform::OpticalDrive> OpticalDrives() override
    {
        platform::OpticalDrive drive;
        drive.name = "sr0";
        drive.total = 1 << 20;
        drive.medium = ++looks >= readyAt ? becomes : DiscMedium::Unknown;
        return {drive};
    }
};

Result<CdDrive> Wait(SlowDrive& machine, ScriptedHost& host)
{
    CdDrive drive;
    drive.name = "sr0";
    return WaitReady(machine, host, "/nowhere", {}, drive);
}

} // namespace

TEST(CdDrives, ADriveHasEightSecondsBeforeSomebodyIsAsked)
{
    {
        SlowDrive machine;
        ScriptedHost host;
        machine.readyAt = 3; // after six seconds
        EXPECT_TRUE(Wait(machine, host));
    }
    {
        SlowDrive machine;
        ScriptedHost host;
        machine.readyAt = 5;
        host.WillAsk("Unit sr0 is not ready\r\nRetry to check unit ", true);
        EXPECT_TRUE(Wait(machine, host));
        EXPECT_EQ(machine.looks, 5);
    }
    {
        SlowDrive machine;
        ScriptedHost host;
        machine.readyAt = 100;
        host.WillAsk("is not ready", false);
        EXPECT_EQ(Wait(machine, host).Error().sentence, "CD unit not ready");
        host.StopAtStep(1);
        EXPECT_EQ(Wait(machine, host).Error().code, ErrorCode::Stopped);
    }
    SlowDrive machine;
    ScriptedHost host;
    machine.becomes = DiscMedium::Blank;
    EXPECT_EQ(Wait(machine, host).Error().sentence, "CD is empty");
}

TEST(CdDrives, TheWriterIsTheFirstThatWrites)
{
    World world;
    platform::OpticalDrive reader;
    reader.name = "sr0";
    platform::OpticalDrive writer;
    writer.name = "sr1";
    writer.writer = true;
    std::string warning;
    world.machine.opticalDrives = {reader};
    const auto list = [&] {
        return ListCdDrives(world.machine, world.session.programFolder, world.session.settings);
    };
    EXPECT_EQ(FindCdWriter(list(), warning).Error().sentence, "Impossible identify cd writer unit");
    world.machine.opticalDrives = {reader, writer};
    EXPECT_EQ(FindCdWriter(list(), warning)->name, "sr1");
    EXPECT_EQ(warning, "");
    world.session.settings.drives = {{"toy", "", "seen", 8, true}};
    EXPECT_EQ(FindCdWriter(list(), warning)->name, "sr1");
    EXPECT_THAT(warning, HasSubstr("Not identified in sure way"));
    // A relative place counts from the program's folder, wherever that is.
    EXPECT_EQ(list().back().place, world.session.programFolder / "seen");
}

} // namespace kestrova::testing
