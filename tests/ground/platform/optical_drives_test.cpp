#include "platform/optical_drives.h"

#include "platform/places.h"
#include "sandbox/sandbox.h"

#include <gtest/gtest.h>

namespace kestrova::platform
{

namespace
{

using testing::Sandbox;

/// A system of four drives and a disk, as Linux tells of them.
OpticalPlaces MadeUpSystem(const Sandbox& box)
{
    const auto drive = [&](const std::string& name, const std::string& number) {
        box.Write("sys/" + name + "/dev", number + "\n");
        box.Write("sys/" + name + "/size", "1400\n");
        box.Write("sys/" + name + "/device/vendor", "HL-DT-ST \n");
        box.Write("sys/" + name + "/device/model", "DVDRAM GP60NB60 \n");
    };
    drive("sr0", "11:0");
    drive("sr1", "11:1");
    drive("sr2", "11:2");
    drive("sr10", "11:10");
    box.Write("sys/sda/dev", "8:0\n");
    box.Write("sys/srx/dev", "8:1\n");
    box.Write("sys/sr/dev", "8:2\n");
    box.Write("info", "CD-ROM information, Id: cdrom.c 3.20 2003/12/17\n\n"
                      "drive name:\t\tsr2\tsr1\tsr0\ndrive speed:\t\t24\t8\t48\n"
                      "Can write CD-R:\t\t1\t0\t0\nCan write DVD-R:\t0\t0\t0\n\n\n");
    box.Write("udev/b11:0", "S:cdrom\nE:ID_CDROM_MEDIA=1\nE:ID_CDROM_MEDIA_STATE=complete\n"
                            "E:ID_FS_TYPE=iso9660\nE:ID_FS_LABEL=KESTROVA=1\nE:\nE:=\n");
    box.Write("udev/b11:1", "E:ID_CDROM_CD_RW=1\nE:ID_CDROM_MEDIA_STATE=blank\n");
    box.Write("dev/sr0", "");
    box.Write("mnt/a disc/x", "");
    const std::string folder = (box / "mnt/a disc").native();
    box.Write("mounts", (box / "dev/sr0").native() + " " + folder.substr(0, folder.size() - 6) +
                            "a\\040disc iso9660 ro 0 0\nproc /proc proc rw 0 0\nnonsense\n");
    return {box / "sys", box / "dev", box / "info", box / "udev", box / "mounts"};
}

} // namespace

TEST(OpticalDrives, AreWhatTheSystemTellsOfThem)
{
    const Sandbox box;
    const OpticalPlaces places = MadeUpSystem(box);
    const std::vector<OpticalDrive> drives = OpticalDrives(places);
    ASSERT_EQ(drives.size(), 4U);
    EXPECT_EQ(drives[0].name + drives[1].name + drives[2].name + drives[3].name, "sr0sr1sr2sr10");
    EXPECT_EQ(drives[0].model, "HL-DT-ST DVDRAM GP60NB60");
    EXPECT_FALSE(drives[0].writer);
    EXPECT_TRUE(drives[1].writer); // by udev
    EXPECT_TRUE(drives[2].writer); // by the table
    EXPECT_EQ(drives[0].medium, Medium::Written);
    EXPECT_EQ(drives[0].label, "KESTROVA=1");
    EXPECT_EQ(drives[0].total, 1400U * 512);
    EXPECT_EQ(drives[0].folder, box / "mnt/a disc");
    EXPECT_EQ(drives[0].device, box / "dev/sr0");
    EXPECT_EQ(drives[1].medium, Medium::Blank);
    EXPECT_EQ(drives[2].medium, Medium::Unknown); // no device, no word about it
    EXPECT_EQ(drives[2].folder, "");

    // A drive that is pulled out between two looks, and tables of nonsense.
    std::filesystem::remove_all(box / "sys/sr0");
    box.Write("info", "drive name:\nCan write CD-R: 1 1 1 1 1 1\nCan write");
    EXPECT_EQ(OpticalDrives(places).size(), 3U);
    EXPECT_EQ(OpticalDrives({box / "none", box / "none", box / "none", box / "none", box / "none"})
                  .size(),
              0U);
    EXPECT_TRUE(MoveDoor(box / "none", DoorMove::Open));
    EXPECT_TRUE(MoveDoor(box / "info", DoorMove::Shut)); // no drive
}

TEST(OpticalDrives, ADiscTellsItsLabelAndHowLongItIs)
{
    const Sandbox box;
    std::string bytes(18 * 2048, '\0');
    DiscHead head;
    box.Write("a.iso", bytes);
    EXPECT_TRUE(ReadDiscHead(box / "a.iso", head));
    bytes.replace(32768, 6, "\1CD001");
    bytes.replace(32768 + 40, 32, "KESTROVA #2                     ");
    bytes.replace(32768 + 80, 4, std::string{"\x12\0\0\0", 4});
    box.Write("a.iso", bytes);
    ASSERT_FALSE(ReadDiscHead(box / "a.iso", head));
    EXPECT_EQ(head.label, "KESTROVA #2");
    EXPECT_EQ(head.bytes, bytes.size());
    box.Write("a.iso", bytes.substr(0, 32768 + 2047));
    EXPECT_TRUE(ReadDiscHead(box / "a.iso", head));
    EXPECT_TRUE(ReadDiscHead(box / "none.iso", head));
}

TEST(OpticalDrives, TheKindOnTopOfAFolderIsTold)
{
    const Sandbox box;
    box.Write("mounts", "fuseiso /a\\040b fuse.fuseiso ro 0 0\n/dev/sda1 /c ext4 rw 0 0\n"
                        "tmpfs /c tmpfs rw 0 0\n");
    EXPECT_EQ(KindMountedOn("/a b", box / "mounts"), "fuse.fuseiso");
    EXPECT_EQ(KindMountedOn("/c", box / "mounts"), "tmpfs");
    EXPECT_EQ(KindMountedOn("/d", box / "mounts"), "");
    EXPECT_EQ(KindMountedOn("/d", box / "none"), "");
}

} // namespace kestrova::platform
