#include "drives/attached_discs.h"

#include "core/leftovers.h"
#include "core/look.h"
#include "drives/extracted_disc.h"
#include "drives/file_names.h"
#include "platform/file_content.h"
#include "platform/file_lock.h"
#include "platform/places.h"
#include "platform/process.h"
#include "sandbox/faults.h"
#include "world/world.h"

#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const FileContents discFiles{{"LEVEL_0001/files/data/a.tr4", "levels"},
                             {"LEVEL_0001/files/Zażółć gęślą, a name of many letters.txt", "odd"},
                             {"Cd_Archive.kva", std::string(3000, 'k')}};

/// A drive `toy` of the settings, and images made by the real tool. What mounts can be hidden, so
/// that files are taken out.
class ImageWorld : public World
{
public:
    explicit ImageWorld(bool copies = false) : copies_(copies)
    {
        tools = {session.programFolder, {}, {}, [this](const std::string& name) {
                     const bool hidden = copies_ && name != "xorriso";
                     return hidden ? Path{} : platform::FindOnPath(name);
                 }};
        session.settings.drives = {{"toy", "", (root / "seen").native(), 8, true}};
    }
    ~ImageWorld() { (void)DetachAll(tools); }

    Tools tools;

    [[nodiscard]] Path Image(const std::string& name, const std::string& label,
                             const FileContents& files = discFiles) const
    {
        const Path source = root / ("source of " + name);
        for (const auto& [file, content] : files)
            Write(source.filename().native() + "/" + file, content);
        const Path image = root / name;
        const std::string command = "xorriso -as mkisofs -quiet -J -V '" + label + "' -o '" +
                                    image.native() + "' '" + source.native() + "' >/dev/null 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        return image;
    }
    CdDrive Drive(const std::string& name = "toy")
    {
        auto drive = FindCdDrive(machine, session.programFolder, session.settings, name);
        EXPECT_TRUE(drive);
        return drive.value_or(CdDrive{});
    }
    Result<Path> Attach(CdDrive drive) { return AttachDisc(tools, machine, host, drive); }
    Result<Path> Show(const Path& image) { return AttachImage(tools, machine, host, image); }
    /// Below the program's folder and beside the drive's folder nothing of a disc is left.
    void ExpectNothingLeft(const std::string& when) const
    {
        std::vector<platform::FolderEntry> entries;
        (void)platform::ListFolder(session.programFolder / "discs" / "seen", entries);
        EXPECT_THAT(entries, IsEmpty()) << when << ": " << entries.front().name;
        entries.clear();
        EXPECT_EQ(platform::KindMountedOn(root / "seen"), "") << when;
        (void)platform::ListFolder(root / "seen", entries);
        EXPECT_THAT(entries, IsEmpty()) << when;
        entries.clear();
        (void)platform::ListFolder(root, entries);
        for (const auto& entry : entries)
            EXPECT_FALSE(entry.name.starts_with(stagedPrefix)) << when << ": " << entry.name;
    }

private:
    bool copies_;
};

FileContents FilesIn(const Path& folder)
{
    FileContents found;
    const auto tree = ScanTree(folder);
    for (const Path& file : tree ? tree->files : std::vector<Path>{})
        found[file.lexically_relative(folder)] = ReadWholeFile(file).ValueOr("");
    return found;
}

} // namespace

TEST(AttachedDiscs, AnImageIsSeenByAllWhoAskAndGivenBackByTheLast)
{
    for (const bool copies : {false, true}) {
        ImageWorld world{copies};
        const Path image = world.Image("a set, a disc.iso", "KV1");
        const auto folder = world.Show(image);
        ASSERT_TRUE(folder) << folder.Error().sentence << folder.Error().details;
        EXPECT_EQ(FilesIn(*folder), discFiles);
        EXPECT_EQ(*world.Show(world.root / "A SET, A DISC.ISO"), *folder);
        if (copies) {
            EXPECT_EQ(platform::FactsOf(*folder / "Cd_Archive.kva").mode & 0222U, 0U);
            EXPECT_EQ(platform::FactsOf(*folder).mode & 0222U, 0U);
        }
        EXPECT_THAT(DetachAll(world.tools), IsEmpty());
        EXPECT_FALSE(FolderExists(*folder));
        world.ExpectNothingLeft("given back");
        // Another content under the same name is seen anew.
        ASSERT_TRUE(world.Show(image));
        std::filesystem::remove(image);
        std::filesystem::remove_all(world.root / "source of a set, a disc.iso");
        (void)world.Image("a set, a disc.iso", "KV2", {{"other.txt", "new"}});
        const auto other = world.Show(image);
        ASSERT_TRUE(other) << other.Error().sentence;
        EXPECT_EQ(FilesIn(*other), (FileContents{{"other.txt", "new"}}));
    }
}

TEST(AttachedDiscs, ADriveOfTheSettingsTakesDiscsAndGivesThemUp)
{
    for (const bool copies : {false, true}) {
        ImageWorld world{copies};
        CdDrive drive = world.Drive();
        EXPECT_EQ(drive.medium, DiscMedium::None);
        EXPECT_THAT(world.Attach(drive).Error().sentence, HasSubstr("No disc lies"));
        ASSERT_TRUE(InsertMedium(world.tools, drive, world.root / "blank.iso"));
        drive = world.Drive();
        EXPECT_EQ(drive.medium, DiscMedium::Blank);
        EXPECT_EQ(drive.free, UINT64_C(8) << 20);
        EXPECT_EQ(drive.device, world.root / "blank.iso");
        EXPECT_THAT(world.Attach(drive).Error().sentence, HasSubstr("blank"));

        ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1")));
        drive = world.Drive();
        EXPECT_EQ(drive.medium, DiscMedium::Written);
        EXPECT_EQ(drive.label, "KV1");
        const auto folder = world.Attach(drive);
        ASSERT_TRUE(folder) << folder.Error().sentence;
        EXPECT_EQ(*folder, world.root / "seen");
        EXPECT_EQ(FilesIn(*folder), discFiles);
        EXPECT_EQ(world.Drive().folder, *folder);
        EXPECT_EQ(
            *FoldersOfDiscs(world.tools, world.machine, world.host, world.session.settings).begin(),
            *folder);

        drive = world.Drive();
        ASSERT_TRUE(MoveDoor(world.tools, world.machine, drive, platform::DoorMove::Open));
        EXPECT_EQ(world.Drive().medium, DiscMedium::None);
        EXPECT_TRUE(FileExists(world.root / "one.iso"));
        EXPECT_TRUE(FolderExists(world.root / "seen")); // it was there before
        world.ExpectNothingLeft("ejected");
    }
}

TEST(AttachedDiscs, ADriveWhoseFolderIsReachedThroughALinkIsTheSame)
{
    ImageWorld world;
    std::filesystem::create_directory_symlink(world.root, world.root / "link");
    world.session.settings.drives[0].folder = (world.root / "link" / "seen").native();
    CdDrive drive = world.Drive();
    ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1")));
    ASSERT_TRUE(world.Attach(world.Drive()));
    EXPECT_EQ(FilesIn(world.root / "seen"), discFiles);
    EXPECT_EQ(world.Attach(world.Drive()).ValueOr({}), world.root / "link" / "seen");
    EXPECT_THAT(DetachAll(world.tools), IsEmpty());
    world.ExpectNothingLeft("given back");
}

TEST(AttachedDiscs, NothingIsPulledOutWhileAnotherRunIsAtWork)
{
    ImageWorld world{true};
    CdDrive drive = world.Drive();
    ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1")));
    ASSERT_TRUE(world.Attach(world.Drive()));
    platform::FileLock lock;
    std::string holder;
    ASSERT_FALSE(
        platform::FileLock::Take(world.session.programFolder / "discs" / "lock", "", lock, holder));
    drive = world.Drive();
    EXPECT_THAT(InsertMedium(world.tools, drive, {}).Error().sentence, HasSubstr("Another"));
    world.host.StopAtStep(2);
    EXPECT_EQ(world.Attach(world.Drive()).Error().code, ErrorCode::Stopped);
    EXPECT_THAT(DetachAll(world.tools), IsEmpty());
    EXPECT_EQ(FilesIn(world.root / "seen"), discFiles);
}

TEST(AttachedDiscs, WhatLiesInAFolderIsNeverCoveredNorDeleted)
{
    ImageWorld world{true};
    CdDrive drive = world.Drive();
    ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1")));
    world.Write("seen/mine.txt", "the player's");
    const auto refused = world.Attach(world.Drive());
    ASSERT_FALSE(refused);
    EXPECT_THAT(refused.Error().sentence, HasSubstr((world.root / "seen").native()));
    EXPECT_EQ(world.Read("seen/mine.txt"), "the player's");

    // What came into a disc's folder later is the person's too, and so is what was changed there.
    std::filesystem::remove(world.root / "seen" / "mine.txt");
    for (const char* changed : {"seen/LEVEL_0001/mine.txt", "seen/Cd_Archive.kva"}) {
        ASSERT_TRUE(world.Attach(world.Drive()));
        EXPECT_EQ(std::system(("chmod -R u+w '" + (world.root / "seen").native() + "'").c_str()),
                  0);
        world.Write(changed, "the player's");
        EXPECT_THAT(DetachAll(world.tools), ElementsAre(HasSubstr((world.root / "seen").native())));
        EXPECT_EQ(world.Read(changed), "the player's");
        EXPECT_THAT(DetachAll(world.tools), IsEmpty()); // it is told once
        EXPECT_EQ(world.Read(changed), "the player's");
        std::filesystem::remove_all(world.root / "seen");
    }
    // Nor is a folder that took the place of the disc's, or a link to one.
    ASSERT_TRUE(world.Attach(world.Drive()));
    std::filesystem::rename(world.root / "seen", world.root / "moved");
    world.Write("other/mine.txt", "the player's");
    std::filesystem::create_directory_symlink(world.root / "other", world.root / "seen");
    EXPECT_THAT(DetachAll(world.tools), SizeIs(1));
    EXPECT_EQ(world.Read("other/mine.txt"), "the player's");
    EXPECT_EQ(FilesIn(world.root / "moved"), discFiles);
}

TEST(AttachedDiscs, AnImageThatIsDamagedOrLiesIsToldInWords)
{
    for (const bool copies : {false, true}) {
        ImageWorld world{copies};
        const Path image = world.Image("one.iso", "KV1");
        const std::string whole = *ReadWholeFile(image);
        EXPECT_EQ(world.Show(world.root / "none.iso").Error().code, ErrorCode::Missing);
        EXPECT_EQ(world.Show(world.root).Error().code, ErrorCode::Missing);
        std::string larger = whole;
        larger.replace(32768 + 80, 4, "\xff\xff\xff\x7f");
        for (const std::string& bytes :
             {std::string{}, std::string(100'000, 'x'), whole.substr(0, 40'000),
              whole.substr(0, 70'000), larger}) {
            world.Write("bad.iso", bytes);
            const auto shown = world.Show(world.root / "bad.iso");
            ASSERT_FALSE(shown) << bytes.size();
            EXPECT_EQ(shown.Error().code, ErrorCode::Damaged) << bytes.size();
            EXPECT_THAT(shown.Error().sentence, HasSubstr("bad.iso"));
        }
        CdDrive drive = world.Drive();
        const auto put = InsertMedium(world.tools, drive, world.root / "bad.iso");
        EXPECT_TRUE(put); // its beginning is a disc's
        EXPECT_EQ(world.Attach(world.Drive()).Error().code, ErrorCode::Damaged);
        std::filesystem::remove(world.root / "bad.iso");
        EXPECT_EQ(world.Drive().medium, DiscMedium::None);
        EXPECT_EQ(world.Drive().gone, world.root / "bad.iso");
        world.ExpectNothingLeft("refused");
    }
    // Its own directory is broken: no tool that mounts reads it, and the last one says so.
    ImageWorld world{true};
    std::string bytes = *ReadWholeFile(world.Image("one.iso", "KV1"));
    bytes.replace(18 * 2048, bytes.size() - 18 * 2048, bytes.size() - 18 * 2048, '\xff');
    world.Write("bad.iso", bytes);
    const auto shown = world.Show(world.root / "bad.iso");
    ASSERT_FALSE(shown);
    EXPECT_THAT(shown.Error().sentence, HasSubstr("bad.iso"));
    world.machine.free = 1000;
    EXPECT_EQ(world.Show(world.root / "one.iso").Error().code, ErrorCode::NoSpace);
    world.ExpectNothingLeft("refused");
}

TEST(AttachedDiscs, ADiscLiesInOneDriveAndABlankOneInADriveThatWrites)
{
    ImageWorld world;
    world.session.settings.drives.push_back({"reader", "", (world.root / "shown").native()});
    CdDrive toy = world.Drive();
    CdDrive reader = world.Drive("reader");
    const Path image = world.Image("one.iso", "KV1");
    ASSERT_TRUE(InsertMedium(world.tools, toy, image));
    EXPECT_THAT(InsertMedium(world.tools, reader, image).Error().sentence, HasSubstr("toy"));
    EXPECT_FALSE(InsertMedium(world.tools, reader, world.root / "new.iso"));
    EXPECT_FALSE(FileExists(world.root / "new.iso"));
    world.Write("empty.iso", "");
    EXPECT_FALSE(InsertMedium(world.tools, reader, world.root / "empty.iso"));
    EXPECT_EQ(world.Drive("reader").medium, DiscMedium::None);
    // What the settings put into two drives is seen in both.
    world.session.settings.drives[1].medium = image.native();
    ASSERT_TRUE(world.Attach(world.Drive()));
    ASSERT_TRUE(world.Attach(world.Drive("reader")));
    EXPECT_EQ(FilesIn(world.root / "shown"), discFiles);
    CdDrive real;
    real.name = "sr0";
    EXPECT_THAT(InsertMedium(world.tools, real, image).Error().sentence, HasSubstr("sr0"));
}

TEST(AttachedDiscs, WhatAnotherRunUsesStaysUntilThatRunHasEnded)
{
    for (const bool copies : {false, true}) {
        ImageWorld world{copies};
        CdDrive drive = world.Drive();
        ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1")));
        int ready[2] = {};
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t other = ::fork();
        if (other == 0) {
            const bool shown = static_cast<bool>(world.Attach(world.Drive()));
            (void)!::write(ready[1], shown ? "y" : "n", 1);
            for (;;)
                ::pause();
        }
        char answer = 0;
        ASSERT_EQ(::read(ready[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        EXPECT_THAT(DetachAll(world.tools), IsEmpty());
        EXPECT_EQ(FilesIn(world.root / "seen"), discFiles);
        drive = world.Drive();
        EXPECT_FALSE(InsertMedium(world.tools, drive, {})); // it would be pulled from under it
        EXPECT_EQ(world.Drive().medium, DiscMedium::Written);
        ::kill(other, SIGKILL);
        ::waitpid(other, nullptr, 0);
        EXPECT_THAT(DetachAll(world.tools), IsEmpty());
        world.ExpectNothingLeft("the other one was killed");
        ::close(ready[0]);
        ::close(ready[1]);
    }
}

/// The lengths of the files' names in the root of an image make no sense.
void BreakRoot(std::string& image)
{
    const auto at = [&](std::size_t place) { return static_cast<unsigned char>(image.at(place)); };
    for (std::size_t volume = 16 * 2048; at(volume) != 255; volume += 2048) {
        if (at(volume) != 1 && at(volume) != 2)
            continue;
        std::size_t record = 2048 * (at(volume + 158) + 256U * at(volume + 159));
        for (; at(record) != 0; record += at(record))
            if ((at(record + 25) & 2) == 0)
                image.at(record + 32) = '\xff';
    }
}

TEST(AttachedDiscs, WhatCannotBeListedIsNotLeftMounted)
{
    ImageWorld world;
    const Path image = world.Image("one.iso", "KV1");
    const std::string whole = *ReadWholeFile(image);
    std::string broken = whole;
    BreakRoot(broken);
    ASSERT_NE(broken, whole);
    world.Write("one.iso", broken);
    if (const auto shown = world.Show(image); !shown) {
        world.ExpectNothingLeft("refused");
    }
    world.Write("one.iso", whole + std::string(2048, '\0')); // as another file
    const auto folder = world.Show(image);
    ASSERT_TRUE(folder) << folder.Error().sentence << folder.Error().reason;
    EXPECT_EQ(FilesIn(*folder), discFiles);

    // Of a mount without its note nobody knows: it goes at the next use.
    if (platform::KindMountedOn(*folder).empty())
        return; // nothing can be mounted here
    ASSERT_TRUE(std::filesystem::remove(InFolder(folder->parent_path(), OnDisk::FragSeenNote)));
    const auto again = world.Show(image);
    ASSERT_TRUE(again) << again.Error().sentence << again.Error().reason;
    EXPECT_EQ(FilesIn(*again), discFiles);
    EXPECT_THAT(DetachAll(world.tools), IsEmpty());
    world.ExpectNothingLeft("given back");
}

TEST(AttachedDiscs, AMountWhoseProgramWasKilledIsMadeAnew)
{
    ImageWorld world;
    CdDrive drive = world.Drive();
    ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1")));
    ASSERT_TRUE(world.Attach(world.Drive()));
    const std::string mounted = platform::KindMountedOn(world.root / "seen");
    std::vector<platform::FolderEntry> processes;
    (void)platform::ListFolder("/proc", processes);
    int killed = 0;
    for (const auto& process : processes) {
        std::string words;
        (void)platform::ReadAll(Path{"/proc"} / process.name / "cmdline", words);
        if (words.find("fuseiso") != std::string::npos &&
            words.find(world.root.native()) != std::string::npos &&
            ::kill(std::atoi(process.name.c_str()), SIGKILL) == 0) {
            ++killed;
            while (platform::IsRunning(std::atoi(process.name.c_str())))
                ::usleep(1000);
        }
    }
    EXPECT_EQ(killed, mounted.empty() ? 0 : 1); // nothing is mounted where that is not allowed
    const auto folder = world.Attach(world.Drive());
    ASSERT_TRUE(folder) << folder.Error().sentence;
    EXPECT_EQ(FilesIn(*folder), discFiles);
    EXPECT_THAT(DetachAll(world.tools), IsEmpty());
    world.ExpectNothingLeft("given back");
}

TEST(AttachedDiscs, AStopWhileFilesComeOutLeavesNothing)
{
    ImageWorld world{true};
    const std::string large(40'000'000, 'l');
    CdDrive drive = world.Drive();
    ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1", {{"l", large}})));
    world.host.StopAtStep(1);
    const auto stopped = world.Attach(world.Drive());
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.Error().code, ErrorCode::Stopped);
    world.ExpectNothingLeft("stopped");
    EXPECT_EQ(world.Drive().medium, DiscMedium::Written);
}

TEST(AttachedDiscs, KilledAnywhereTheNextStartGivesTheFolderBack)
{
    for (const bool copies : {false, true}) {
        ImageWorld world{copies};
        world.Write("neighbour/mine.txt", "the player's");
        CdDrive drive = world.Drive();
        ASSERT_TRUE(InsertMedium(world.tools, drive, world.Image("one.iso", "KV1")));
        int points = 0;
        for (int n = 1; n < 1000; n = NextPoint(n), ++points) {
            const KillRun run = WithKillAt(n, [&] {
                const bool shown = static_cast<bool>(world.Attach(world.Drive()));
                return shown && DetachAll(world.tools).empty();
            });
            EXPECT_THAT(DetachAll(world.tools), IsEmpty()) << run.call;
            world.ExpectNothingLeft(run.call);
            EXPECT_EQ(world.Drive().device, world.root / "one.iso") << run.call;
            if (!run.killed) {
                EXPECT_TRUE(run.answer);
                break;
            }
        }
        TellPoints(points, copies ? 20 : 8);
        const auto folder = world.Attach(world.Drive());
        ASSERT_TRUE(folder);
        EXPECT_EQ(FilesIn(*folder), discFiles);
        EXPECT_EQ(world.Read("neighbour/mine.txt"), "the player's");
    }
}

TEST(AttachedDiscs, AFailingDiskLeavesWholeFoldersOrNone)
{
    for (const bool copies : {false, true}) {
        ImageWorld world{copies};
        CdDrive drive = world.Drive();
        const Path image = world.Image("one.iso", "KV1");
        int points = 0;
        for (int n = 1; n < 1000; n = NextPoint(n), ++points) {
            FaultRun run = WithFaultAt(n, [&] {
                if (!InsertMedium(world.tools, drive, image))
                    return false;
                const auto folder = world.Attach(world.Drive());
                EXPECT_TRUE(!folder || FilesIn(*folder) == discFiles) << n;
                return static_cast<bool>(folder);
            });
            // A folder that could not go at once goes with the next end or start.
            (void)DetachAll(world.tools);
            EXPECT_THAT(DetachAll(world.tools), IsEmpty()) << run.call;
            EXPECT_THAT(ClearLeftoversIn(world.root), IsEmpty()) << run.call;
            world.ExpectNothingLeft(run.call);
            const platform::FileFacts facts = platform::FactsOf(image);
            EXPECT_GT(facts.size, 100'000U) << run.call;
            if (!run.reached) {
                EXPECT_TRUE(run.answer);
                break;
            }
        }
        TellPoints(points, copies ? 20 : 8);
    }
}

} // namespace kestrova::testing
