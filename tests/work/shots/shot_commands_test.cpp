#include "sandbox/faults.h"
#include "shots/shot_capture.h"
#include "shots/shot_commands.h"
#include "shots/shot_files.h"
#include "shots/shot_import.h"
#include "world/pixel.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

const std::string folder = "levels/LEVEL_0001/screenshots/";

class ShotWorld : public World
{
public:
    ShotList shots;
    LevelCode code = 0;

    explicit ShotWorld(const std::string& name = "Lost City")
    {
        MakeTrle();
        MakeBackupAndArchive();
        code = AddLevel(name, {});
        session.preferences.autoSave = true;
    }
    void Put(const std::string& name, const std::string& content) const
    {
        Write(folder + name, content);
    }
    void Load() { ASSERT_TRUE(shots.Load(session.Folders(), code)); }
    std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (const Path& shot : shots.Files())
            names.push_back(shot.filename().native());
        return names;
    }
};

using Names = std::vector<std::string>;

} // namespace

TEST(NewShotName, CountsUpInTheFolderAndKeepsToWhatANameCanBe)
{
    for (const auto& [title, name] : {std::pair{"  Lost City ", "1) Lost City.jpg"},
                                      {"a/b:c?", "1) a b c .jpg"},
                                      {R"(<\>|"*)", "1)      *.jpg"},
                                      {"", "1) .jpg"},
                                      {"..", "1) ...jpg"}}) {
        ShotWorld world{title};
        std::string extension;
        EXPECT_EQ(
            NewShotName(world.session.Folders(), world.session.archive, 1, extension)->filename(),
            name);
        EXPECT_EQ(extension, ".jpg");
    }
    ShotWorld world;
    world.Put("1) lost city.JPG", "taken, however it is spelled");
    world.Put("3) Lost City.jpg", "a number further up");
    std::string extension = ".jpg";
    EXPECT_EQ(NewShotName(world.session.Folders(), world.session.archive, 1, extension)->filename(),
              "2) Lost City.jpg");
    extension = ".bmp";
    EXPECT_EQ(NewShotName(world.session.Folders(), world.session.archive, 1, extension)->filename(),
              "1) Lost City.bmp");

    // 256 letters of two bytes each fit the archive, but no file name; no letter is torn.
    std::string longTitle = "x";
    for (int i = 0; i < 255; ++i)
        longTitle += "é";
    world.session.archive.levels[1].levelName = longTitle;
    const Path path = *NewShotName(world.session.Folders(), world.session.archive, 1, extension);
    EXPECT_LE(path.filename().native().size(), 255U);
    EXPECT_TRUE(IsUtf8(path.filename().native()));
    world.Put(path.filename().native(), "can be made");
}

TEST(ShotCommands, TakeTheChosenPictureOrAskWhichPane)
{
    ShotWorld world;
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
        world.Put(name, "xxx");
    world.Load();

    // Left or right is asked while both panes show pictures of the list.
    world.host.WillAsk("Execute command on LEFT screenshot? \r\n\r\n(Click on NO", false);
    world.host.WillAsk("Delete screen-shot \"" + (world / (folder + "b.jpg")).native() + "\"",
                       false);
    EXPECT_FALSE(DeleteShot(world.session, world.shots));
    EXPECT_TRUE(world.Has(folder + "b.jpg"));
    world.shots.Next(); // c and the default picture
    world.host.WillAsk("c.jpg", true);
    EXPECT_TRUE(DeleteShot(world.session, world.shots));
    EXPECT_EQ(world.Names(), (Names{"a.jpg", "b.jpg"}));

    // What was aimed at stays until a command takes it, also when that is refused.
    world.shots.SetTarget(1);
    world.host.WillAsk("b.jpg", false);
    EXPECT_FALSE(DeleteShot(world.session, world.shots));
    EXPECT_EQ(world.shots.Target(), ShotList::noTarget);
    world.shots.SetTarget(2);
    EXPECT_FALSE(RenameShot(world.session, world.shots));
    EXPECT_TRUE(world.host.WasTold("default screen-shot, you can not rename it :-)"));

    // Without pictures there is nothing to choose from, so nothing is asked.
    ShotWorld empty;
    empty.Load();
    EXPECT_FALSE(SaveShotAs(empty.host, empty.session.Folders(), empty.shots));
    EXPECT_FALSE(ShotToResize(empty.session.host, empty.shots));
    EXPECT_TRUE(empty.host.WasTold("you can not save it"));
    EXPECT_TRUE(empty.host.WasTold("you can not resize it"));
}

TEST(ShotCommands, DeleteTakesOneFileAndItsSizeAndSparesTheDefaultPicture)
{
    ShotWorld world;
    world.session.archive.levels[1].extrasSize = 100;
    world.session.archive.header.secondaryFolderSize = 1000;
    world.Put("a.jpg", "0123456789");
    world.Put("A.JPG", "another picture");
    world.Load();
    world.shots.SetTarget(world.shots.Find("a.jpg"));
    world.host.WillAsk("a.jpg\"", true);
    ASSERT_TRUE(DeleteShot(world.session, world.shots));
    EXPECT_EQ(world.Names(), Names{"A.JPG"}) << "a name in other letters is another picture";
    EXPECT_EQ(world.session.archive.levels[1].extrasSize, 90);
    EXPECT_EQ(world.session.archive.header.secondaryFolderSize, 990);
    const auto saved = ParseArchive(world.Read("home/LevelArchive.kva"));
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->levels[1].extrasSize, 90);

    const std::string original = "home/LEVEL_0000/screenshots/Tomb Raider Level Editor.bmp";
    world.Write(original, "the default picture");
    ASSERT_TRUE(world.shots.Load(world.session.Folders(), originalCode));
    EXPECT_FALSE(DeleteShot(world.session, world.shots));
    EXPECT_TRUE(world.host.WasTold("default screen-shot, you can not delete it :-)"));
    EXPECT_TRUE(world.Has(original));
}

TEST(ShotCommands, RenameNeverReplacesAPictureAndStaysInItsFolder)
{
    ShotWorld world;
    world.Put("a.jpg", "picture a");
    world.Put("b.jpg", "picture b");
    world.Load();
    const auto rename = [&](const std::string& answer) {
        world.shots.SetTarget(world.shots.Find("a.jpg"));
        world.host.WillAskText("Type new name for screenshot", answer);
        return RenameShot(world.session, world.shots);
    };
    for (const char* bad : {"", "  ", ".jpg", "  .jpg", "b", "../out.jpg", "sub/x.jpg", "x\\y.jpg",
                            "..", "C:x.jpg", "line\nend.jpg", ".kv~hidden.jpg", "b.jpg", "B.JPG"})
        EXPECT_FALSE(rename(bad)) << bad;
    EXPECT_FALSE(rename(std::string(300, 'x') + ".jpg"));
    EXPECT_TRUE(world.host.WasTold("could not be renamed"));
    EXPECT_EQ(world.Snapshot("levels/LEVEL_0001"),
              (std::map<std::string, std::string>{{"screenshots/a.jpg", "picture a"},
                                                  {"screenshots/b.jpg", "picture b"}}));
    EXPECT_TRUE(rename("A.jpg")) << "other letters for the same picture";
    world.shots.SetTarget(world.shots.Find("A.jpg"));
    world.host.WillAskText("Type new name", "Zoë 1");
    EXPECT_TRUE(RenameShot(world.session, world.shots));
    EXPECT_EQ(world.Names(), (Names{"b.jpg", "Zoë 1.jpg"})) << "it keeps its ending";
    EXPECT_EQ(world.Read(folder + "Zoë 1.jpg"), "picture a");
    world.shots.SetTarget(world.shots.Find("b.jpg"));
    world.host.WillAskText("Type new name", " Mr. Fox ");
    EXPECT_TRUE(RenameShot(world.session, world.shots));
    EXPECT_EQ(world.Names(), (Names{"Mr. Fox.jpg", "Zoë 1.jpg"}));
}

TEST(ShotCommands, AddKeepsBothPicturesOrAsksAndShowsAnEvenPair)
{
    ShotWorld world;
    world.Write("from/new.JPG", Pixel(1));
    world.Write("from/a.jpg", Pixel(2));
    world.Write("from/picture.png", Pixel(3));
    world.Write("from/garbage.jpg", "only its name says that it is a picture");
    world.Write("from/cut.bmp", Pixel(4).substr(0, 40));
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
        world.Put(name, "old");
    world.Load();
    world.shots.SetTarget(0);
    world.host.WillChoose("Select an image to add in screen-shot list", world / "from/new.JPG");
    ASSERT_TRUE(AddShot(world.session, world.shots));
    EXPECT_EQ(world.shots.Target(), ShotList::noTarget);
    EXPECT_EQ(world.shots.Index(), 2) << "new.JPG is the fourth and stands on the right";
    EXPECT_EQ(world.shots.Right().filename(), "new.JPG");
    EXPECT_EQ(world.session.archive.levels[1].extrasSize, 0) << "added pictures are not counted";

    world.host.WillAsk("already a screenshot with name 'a.jpg'", false);
    ASSERT_TRUE(AddShotFile(world.session, world.shots, world / "from/a.jpg"));
    EXPECT_EQ(world.Read(folder + "a.jpg"), "old");
    EXPECT_EQ(world.Read(folder + "1) Lost City.jpg"), Pixel(2));
    EXPECT_TRUE(
        world.host.WasTold("Screenshot 'a.jpg' saved in screenshot list as '1) Lost City.jpg'"));
    world.host.WillAsk("already a screenshot", true);
    ASSERT_TRUE(AddShotFile(world.session, world.shots, world / "from/a.jpg"));
    EXPECT_EQ(world.Read(folder + "a.jpg"), Pixel(2));

    const auto before = world.Snapshot(folder);
    for (const char* bad : {"from/garbage.jpg", "from/cut.bmp"}) {
        EXPECT_FALSE(AddShotFile(world.session, world.shots, world / bad));
        EXPECT_TRUE(world.host.WasTold("there is no picture in it"));
    }
    EXPECT_EQ(world.Snapshot(folder), before);
    EXPECT_FALSE(AddShotFile(world.session, world.shots, world / "from/picture.png"));
    EXPECT_FALSE(AddShotFile(world.session, world.shots, world / "from/gone.jpg"));
    std::filesystem::remove_all(world / folder);
    ASSERT_TRUE(AddShotFile(world.session, world.shots, world / "from/a.jpg"))
        << "a folder that is gone is made again";
}

TEST(ShotCapture, ANameWithoutAnEndingGetsOne)
{
    ShotWorld world;
    const CapturedShot shot{{1, 1, {1, 2, 3}}, 1, world / folder};
    std::filesystem::create_directories(world / folder);
    for (const char* name : {"Mr. Fox", "plain", "whole.JPG"}) {
        world.host.WillChoose("Save captured screen-shot", world / (folder + name));
        ASSERT_TRUE(AskSaveCapturedShot(world.session, shot));
    }
    world.Load();
    EXPECT_EQ(world.Names(), (Names{"Mr. Fox.jpg", "plain.jpg", "whole.JPG"}));
    // The name that it gets may be taken, of which no chooser asked.
    world.Put("plain.jpg", "mine");
    world.host.WillChoose("Save captured screen-shot", world / (folder + "plain"));
    world.host.WillAsk("already a screenshot with name 'plain.jpg'", false);
    ASSERT_TRUE(AskSaveCapturedShot(world.session, shot));
    EXPECT_EQ(world.Read(folder + "plain.jpg"), "mine");
    EXPECT_TRUE(world.Has(folder + "1) Lost City.jpg"));
}

TEST(ShotCommands, AFaultAtAnyStepLeavesEveryOldPicture)
{
    for (int step = 1; step < 1000; step = NextPoint(step)) {
        ShotWorld world;
        world.host.AnswerAll(true);
        world.Put("a.jpg", "old a");
        world.Put("b.jpg", "old b");
        world.Write("from/a.jpg", Pixel(5));
        world.Load();
        const FaultRun run = WithFaultAt(step, [&] {
            const bool added = AddShotFile(world.session, world.shots, world / "from/a.jpg");
            return RenameShotTo(world.session, world.shots, world / (folder + "b.jpg"), "c.jpg") &&
                   added;
        });
        const std::string a = world.Read(folder + "a.jpg");
        EXPECT_TRUE(a == "old a" || a == Pixel(5)) << run.call;
        EXPECT_TRUE(world.Read(folder + "b.jpg") == "old b" ||
                    world.Read(folder + "c.jpg") == "old b")
            << run.call;
        if (!run.reached) {
            EXPECT_TRUE(run.answer);
            return;
        }
        EXPECT_TRUE(run.answer || !world.host.told.empty()) << "silent about " << run.call;
    }
    FAIL() << "never finished";
}

TEST(ImportShots, TakesEveryPictureOfTheStoreUnderNewNames)
{
    ShotWorld world;
    world.AddLevel("Second", {});
    const std::string store = "levels/LEVEL_0001/savegames/";
    world.Write(store + "slot1/shot3.bmp", "bitmap");
    world.Write(store + "slot1/shot3.jpg", "jpeg");
    world.Write(store + "slot2/SHOT0.JPG", "other");
    world.Write(store + "slot2/savegame.0", "no picture");
    world.Write("levels/LEVEL_0002/savegames/slot1/shot0.jpg", "of the second");
    world.Put("1) Lost City.jpg", "mine");
    const auto progress = world.host.BeginProgress(ProgressWindow::Progress, {});
    const auto import = [&] {
        return ImportShots(world.session.host, world.session, 1, *progress);
    };
    EXPECT_EQ(import().pictures, 3U);
    const auto shots = world.Snapshot(folder);
    ASSERT_EQ(shots.size(), 4U);
    EXPECT_EQ(shots.at("1) Lost City.jpg"), "mine");
    EXPECT_EQ(shots.at("2) Lost City.jpg"), "bitmap") << "only its name says jpeg";
    const ImportedShots again =
        ImportShotsOfAllLevels(world.session.host, world.session, *progress);
    EXPECT_TRUE(again.all);
    EXPECT_EQ(again.pictures, 4U);
    EXPECT_EQ(world.Snapshot(folder).size(), 7U) << "nothing remembers an earlier import";
    EXPECT_TRUE(world.Has("levels/LEVEL_0002/screenshots/1) Second.jpg"));

    EXPECT_FALSE(WithFaultAt(1, [&] { return import().all; }));
    EXPECT_TRUE(world.host.WasTold("Error while copying file: "));
    EXPECT_EQ(world.Snapshot(folder).size(), 9U) << "the others go on";
}

TEST(ShotCommands, NoPictureTakesTheNameOfOneThatCouldNotBeLookedAt)
{
    AtEachReadAndLook([](const FailingRun& failing) {
        ShotWorld world;
        world.host.AnswerAll(false); // no picture is to be replaced
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
            world.Put(name, std::string{"old "} + name);
        world.Write("from/a.jpg", Pixel(5));
        world.Load();
        const FaultRun run = failing([&] {
            const bool added = AddShotFile(world.session, world.shots, world / "from/a.jpg");
            return !RenameShotTo(world.session, world.shots, world / (folder + "b.jpg"), "C.jpg") &&
                   added;
        });
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
            EXPECT_EQ(world.Read(folder + name), std::string{"old "} + name);
        return run;
    });
}

} // namespace kestrova::testing
