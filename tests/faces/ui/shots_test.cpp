#include "ui/dialogs/shot_panes.h"
#include "window_world.h"

#include <QBuffer>
#include <QImage>

namespace kestrova::testing
{

namespace
{

std::string PictureBytes(const char* format, QColor colour)
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format));
    return bytes.toStdString();
}

} // namespace

TEST(ShotPanes, ShowsPairsOfBitmapsThenJpegs)
{
    WindowWorld world;
    const LevelCode code = world.AddLevel("Seen");
    const std::string shots = "levels/LEVEL_0001/screenshots/";
    world.box.Write("home/LEVEL_0000/screenshots/Tomb Raider Level Editor.bmp",
                    PictureBytes("bmp", Qt::gray));
    world.box.Write(shots + "b.jpg", PictureBytes("jpg", Qt::red));
    world.box.Write(shots + "a.jpg", PictureBytes("png", Qt::blue));
    world.box.Write(shots + "Z.BMP", PictureBytes("bmp", Qt::green));
    world.Show();
    world.list.Select(code);

    EXPECT_EQ(world.TextOfLabel("Label_InfoImage1"), "Z");
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage2"), "a");
    EXPECT_TRUE(dynamic_cast<PictureView*>(world.Find("Image2"))->HasPicture())
        << "a picture is what its content says";
    EXPECT_FALSE(world.Find("Pul_PrimaScreenShot")->isEnabled());
    world.Click("Pul_DopoScreenShot");
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage1"), "b");
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage2"), "Tomb Raider Level Editor");
    EXPECT_FALSE(world.Find("Pul_DopoScreenShot")->isEnabled());
    world.Click("Pul_PrimaScreenShot");
    EXPECT_EQ(world.TextOfLabel("Label_InfoImage1"), "Z");
    EXPECT_NE(world.TextOfLabel("Label_InfoDir").find("Screenshots: 3"), std::string::npos);
}

TEST(ShotPanes, SaysWhyAPictureCannotBeSeen)
{
    WindowWorld world;
    const LevelCode code = world.AddLevel("Broken");
    const std::string cut = PictureBytes("bmp", Qt::red).substr(0, 100);
    world.box.Write("levels/LEVEL_0001/screenshots/cut.bmp", cut);
    world.Show();
    world.list.Select(code);
    auto* left = dynamic_cast<PictureView*>(world.Find("Image1"));
    auto* right = dynamic_cast<PictureView*>(world.Find("Image2"));
    EXPECT_FALSE(left->HasPicture());
    EXPECT_NE(FromQt(left->ShownWords()).find("cannot be shown: the file is damaged"),
              std::string::npos);
    EXPECT_NE(FromQt(right->ShownWords()).find("Tomb Raider Level Editor.bmp] not found"),
              std::string::npos);
    EXPECT_TRUE(world.box.host.told.empty()) << "no box stands between a player and the list";

    // 60000 by 60000 pixels in 64 bytes.
    std::string huge = cut;
    huge[18] = huge[22] = static_cast<char>(0x60);
    huge[19] = huge[23] = static_cast<char>(0xEA);
    world.box.Write("levels/LEVEL_0001/screenshots/huge.bmp", huge);
    const auto picture = LoadPicture(world.box / "levels/LEVEL_0001/screenshots/huge.bmp");
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.Error().reason, "it is too large");
}

TEST(LoadPicture, TakesTheFirstPictureOfAnAnimationAndNoneThatClaimsTooMuch)
{
    World box;
    const auto animation = [](const std::string& size) {
        const std::string frame{"\x2C\0\0\0\0\1\0\1\0\0\x02\x02\x44\x01\0", 15};
        return "GIF89a" + size + std::string{"\x80\0\0\0\0\0\xFF\xFF\xFF", 9} + frame + frame + ";";
    };
    box.Write("moving.jpg", animation(std::string{"\1\0\1\0", 4}));
    const auto moving = LoadPicture(box / "moving.jpg");
    ASSERT_TRUE(moving) << moving.Error().reason;
    EXPECT_EQ(moving->size(), QSize(1, 1));
    box.Write("wide.bmp", animation("\xFF\xFF\xFF\xFF"));
    EXPECT_FALSE(LoadPicture(box / "wide.bmp")) << "65,535 by 65,535 pixels";
    box.Write("drawing.jpg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
    EXPECT_FALSE(LoadPicture(box / "drawing.jpg")) << "what can name other files is no picture";
}

TEST(ShotList, TurnsOnlyWherePicturesAre)
{
    World box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    const LevelCode code = box.AddLevel("Seven", {});
    ShotList shots;
    ASSERT_TRUE(shots.Load(box.session.Folders(), code));
    EXPECT_EQ(shots.Index(), -2);
    EXPECT_FALSE(shots.HasNext());
    EXPECT_FALSE(shots.Next());
    EXPECT_FALSE(shots.Previous());
    for (int i = 1; i <= 7; ++i)
        box.Write("levels/LEVEL_0001/screenshots/" + std::to_string(i) + ".jpg", "x");
    ASSERT_TRUE(shots.Load(box.session.Folders(), code));
    std::vector<std::ptrdiff_t> pairs{shots.Index()};
    while (shots.Next())
        pairs.push_back(shots.Index());
    EXPECT_EQ(pairs, (std::vector<std::ptrdiff_t>{0, 2, 4, 6}));
    EXPECT_EQ(shots.Right().filename(), "Tomb Raider Level Editor.bmp");
    EXPECT_TRUE(shots.Previous());
    EXPECT_EQ(shots.Index(), 4);
}

} // namespace kestrova::testing
