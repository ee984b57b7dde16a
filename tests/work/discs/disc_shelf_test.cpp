#include "core/text.h"
#include "discs/disc_notes.h"
#include "discs/disc_world.h"
#include "discs/insert_cd.h"
#include "discs/setup_cd.h"

namespace kestrova::testing
{

TEST(DiscShelf, FindsADiscInAnyDriveAndNamesAWrongOne)
{
    DiscWorld world;
    const LevelCode one = world.AddOnDisc("First", 1, "a", {{"data/one.tr4", "one"}});
    const LevelCode two = world.AddOnDisc("Second", 2, "b", {{"data/two.tr4", "two"}});
    const auto missing = world.Find(two);
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.Error().code, ErrorCode::Missing);
    EXPECT_NE(missing.Error().sentence.find("Please, insert CD # 2"), std::string::npos);
    EXPECT_NE(missing.Error().reason.find("\"Kestrova #2\""), std::string::npos)
        << missing.Error().reason;

    // The other disc of the archive lies there, then one of another archive.
    world.places.drives = {world.DriveWith("a")};
    EXPECT_NE(world.Find(two).Error().reason.find("Disc # 1 of this archive"), std::string::npos);
    world.Write("discs/c/others2/LEVEL_0002/files/x.tr4", "x");
    world.places.drives = {world.DriveWith("c")};
    EXPECT_NE(world.Find(two).Error().reason.find("another archive, \"others\""),
              std::string::npos);

    world.places.drives = {world.DriveWith("a"), world.DriveWith("b")};
    EXPECT_EQ(*world.Find(one), world / world.DiscPlace("a", 1, one));
    EXPECT_EQ(*world.Find(two), world / world.DiscPlace("b", 2, two));
    // The disc moves to another drive, in another spelling, and leaves again.
    std::filesystem::rename(world / "discs/b/levels2", world / "discs/b/LEVELS2");
    std::filesystem::rename(world / "discs/b", world / "discs/e");
    world.places.drives = {world.DriveWith("e")};
    EXPECT_EQ(*world.Find(two, DiscWish::Look),
              world / ("discs/e/LEVELS2/LEVEL_" + ZeroPadded(two, 4)));
    world.places.drives.clear();
    std::filesystem::rename(world / "discs/e", world / "gone");
    EXPECT_FALSE(world.Find(two, DiscWish::Look));
}

TEST(DiscShelf, TakesTheDiscWhoseFilesAreThoseOfTheNote)
{
    DiscWorld world;
    const LevelCode code = world.AddOnDisc("Level", 1, "a", {{"data/one.tr4", "right"}});
    world.Write(world.DiscPlace("b", 1, code) + "/files/data/one.tr4", "of another size");
    DiscNote note;
    note.folder = "levels";
    note.Put({1,
              "Kestrova #1",
              0,
              {},
              0,
              {{code, true, *NoteFilesOf(world / (world.DiscPlace("a", 1, code) + "/files"))}}});
    ASSERT_TRUE(WriteDiscNote(world / "levels", note));
    world.places.drives = {world.DriveWith("b")};
    const auto refused = world.Find(code);
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.Error().reason.find("data/one.tr4"), std::string::npos);
    EXPECT_EQ(refused.Error().code, ErrorCode::Damaged) << "it is there";
    world.places.drives = {world.DriveWith("b"), world.DriveWith("a")};
    EXPECT_EQ(*world.Find(code), world / world.DiscPlace("a", 1, code));
    // The same size with other bytes is told before anything is done with it; a look is content.
    world.Write(world.DiscPlace("a", 1, code) + "/files/data/one.tr4", "wrong");
    EXPECT_TRUE(world.Find(code, DiscWish::Look));
    EXPECT_FALSE(world.Find(code, DiscWish::Prove));
    const auto damaged = world.Find(code);
    ASSERT_FALSE(damaged);
    EXPECT_NE(damaged.Error().reason.find("data/one.tr4"), std::string::npos);
    EXPECT_EQ(damaged.Error().code, ErrorCode::Damaged);
    world.places.drives.clear();
    EXPECT_EQ(world.Find(code).Error().code, ErrorCode::Missing);
    world.places.drives = {world.DriveWith("b"), world.DriveWith("a")};
    world.Write(world.DiscPlace("a", 1, code) + "/files/data/one.tr4", "right");
    EXPECT_TRUE(world.Find(code));
    world.host.StopAtStep(1);
    world.NewShelf();
    EXPECT_EQ(world.Find(code).Error().code, ErrorCode::Stopped);
    world.host.StopAtStep(0);
    // A file too many, and one that is gone, are as wrong as another size.
    world.Write(world.DiscPlace("a", 1, code) + "/files/more.tr4", "x");
    EXPECT_FALSE(world.Find(code));
    std::filesystem::remove_all(world / (world.DiscPlace("a", 1, code) + "/files"));
    EXPECT_FALSE(world.Find(code));
}

TEST(DiscShelf, FindsImagesByItsNoteAndBesideThoseItKnows)
{
    DiscWorld world;
    const LevelCode one = world.AddOnDisc("First", 1, "a", {{"one.tr4", "one"}});
    const LevelCode two = world.AddOnDisc("Second", 2, "b", {{"two.tr4", "two"}});
    for (const auto& [image, place] : {std::pair{"isos/x.iso", "a"}, std::pair{"isos/y.iso", "b"}})
        world.Write(image, "an image"),
            world.places.images[world / image] = world / "discs" / place;
    world.places.labels = {{world / "isos/x.iso", "Kestrova #1"},
                           {world / "isos/y.iso", "Kestrova #2"}};
    EXPECT_FALSE(world.Find(one));
    ASSERT_TRUE(world.shelf->TakeImage(world.session.archive, world / "isos/x.iso"));
    world.NewShelf(); // a later run
    EXPECT_EQ(*world.Find(one), world / world.DiscPlace("a", 1, one));
    // The second lies beside it; only a look does not write that down.
    EXPECT_EQ(*world.Find(two, DiscWish::Look), world / world.DiscPlace("b", 2, two));
    EXPECT_EQ(ReadDiscNote(world / "levels")->Find(2), nullptr);
    EXPECT_TRUE(world.Find(two));
    EXPECT_EQ(ReadDiscNote(world / "levels")->Find(2)->image, (world / "isos/y.iso").native());
    // An image of another archive's is refused.
    world.Write("discs/c/others1/LEVEL_0001/files/x.tr4", "x");
    world.places.images[world / "isos/z.iso"] = world / "discs/c";
    EXPECT_FALSE(world.shelf->TakeImage(world.session.archive, world / "isos/z.iso"));
}

TEST(DiscShelf, TheQuestionForADiscChecksTheDrive)
{
    DiscWorld world;
    const LevelCode code = world.AddOnDisc("Level", 7, "a", {{"one.tr4", "one"}});
    world.Write("discs/empty/readme.txt", "nothing");
    int asked = 0;
    world.windows.insert = [&](InsertCd& question) {
        ++asked;
        EXPECT_EQ(question.Message(), "Please, insert CD # 7");
        question.chosen.reset();
        EXPECT_FALSE(question.Accept());
        EXPECT_TRUE(world.host.WasTold("No drive unit selected"));
        question.chosen = 0;
        EXPECT_FALSE(question.Accept());
        EXPECT_TRUE(world.host.WasTold("Drive [sr-a] not ready"));
        world.places.drives = {world.DriveWith("empty")};
        question.Refresh();
        question.chosen = 0;
        EXPECT_FALSE(question.Accept());
        EXPECT_TRUE(world.host.WasTold("Main folder levels7 not found"));
        world.places.drives = {world.DriveWith("a")};
        question.chosen = 0;
        EXPECT_FALSE(question.Accept());
        EXPECT_TRUE(world.host.WasTold("Error: drive [sr-empty] is not present"));
        world.places.drives[0].holdsDisc =
            false; // the lid is shut, the disc is seen a moment later
        world.places.waited = [&] { world.places.drives[0].holdsDisc = true; };
        question.Refresh();
        question.chosen = 0;
        return question.Accept();
    };
    world.places.drives = {{"sr-a", {}, false, {}}};
    world.NewShelf();
    EXPECT_FALSE(world.Find(code, DiscWish::Look));
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(*world.Find(code), world / world.DiscPlace("a", 7, code));
    EXPECT_TRUE(world.Find(code)); // it lies there now
    EXPECT_EQ(asked, 1);

    // Without any drive an image can be named, and giving up is no failure to tell.
    world.places.drives.clear();
    std::filesystem::rename(world / "discs/a", world / "discs/image");
    world.host.WillChoose("Choose an image of disc # 7", std::nullopt);
    EXPECT_EQ(world.Find(code).Error().code, ErrorCode::Stopped);
    EXPECT_TRUE(world.host.WasTold("Error: no cd reader available in this pc"));
    world.places.images[world / "d.iso"] = world / "discs/image";
    world.host.WillChoose("Choose an image of disc # 7", world / "d.iso");
    EXPECT_EQ(*world.Find(code), world / world.DiscPlace("image", 7, code));
    EXPECT_EQ(ReadDiscNote(world / "levels")->Find(7)->image, (world / "d.iso").native());
}

} // namespace kestrova::testing
