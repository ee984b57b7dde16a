#include "pictures/bitmap.h"
#include "pictures/jpeg.h"
#include "platform/files.h"
#include "ui/widgets/cover_cache.h"
#include "ui/widgets/level_tile.h"
#include "world/world.h"

#include <QPainter>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestrova::testing
{

namespace
{

constexpr std::uint8_t strongRed = 220;

Picture Plain(int width, int height, std::uint8_t red)
{
    Picture picture{width, height, {}};
    for (int i = 0; i < width * height; ++i)
        picture.rgb.insert(picture.rgb.end(), {red, 40, 40});
    return picture;
}

/// Levels whose screen-shots and files lie in a sandbox, and a cache over them.
struct Covers {
    explicit Covers(const Path& shelf = {}) : cache(shelf)
    {
        cache.places = [this](LevelCode code) {
            ++asked;
            return CoverPlaces{Shots(code), box / ("level" + std::to_string(code) + "/files"),
                               chosen};
        };
        cache.came = [this](LevelCode code) { came.push_back(code); };
    }
    [[nodiscard]] Path Shots(LevelCode code) const
    {
        return box / (home + std::to_string(code) + "/screenshots");
    }
    void Write(LevelCode code, const std::string& name, const std::string& bytes)
    {
        box.Write("level" + std::to_string(code) + "/" + name, bytes);
    }
    /// Asks for a cover until it is there, or until everything that was asked for is done.
    QPixmap Wait(LevelCode code)
    {
        came.clear();
        (void)cache.Cover(code);
        [[maybe_unused]] const bool done = QTest::qWaitFor(
            [&] { return std::find(came.begin(), came.end(), code) != came.end(); }, 60'000);
        return cache.Cover(code);
    }
    static int RedOf(const QPixmap& cover)
    {
        const QImage image = cover.toImage();
        return qRed(image.pixel(image.width() / 2, image.height() / 2));
    }

    World box;
    std::string home = "level";
    std::string chosen;
    int asked = 0;
    std::vector<LevelCode> came;
    CoverCache cache;
};

} // namespace

TEST(Covers, AreTheChosenPictureElseTheFirstElseTheLoadPicture)
{
    Covers covers;
    covers.Write(1, "files/Load.JPG", *EncodeJpeg(Plain(640, 480, 10)));
    EXPECT_TRUE(covers.cache.Cover(1).isNull()) << "it is not known yet";
    EXPECT_NEAR(Covers::RedOf(covers.Wait(1)), 10, 4);
    EXPECT_EQ(covers.cache.Cover(1).size(), QSize(256, 192));

    // A jpeg by its content, whatever its name says; bitmaps come first.
    covers.Write(1, "screenshots/b.bmp", *EncodeJpeg(Plain(300, 600, 90)));
    covers.Write(1, "screenshots/a.jpg", EncodeBitmap(Plain(1200, 40, strongRed)));
    EXPECT_NEAR(Covers::RedOf(covers.cache.Cover(1)), 10, 4) << "what is there stays";
    covers.cache.LookAgain();
    EXPECT_NEAR(Covers::RedOf(covers.Wait(1)), 90, 4);
    EXPECT_EQ(covers.cache.Cover(1).size(), QSize(128, 256));
    covers.chosen = "A.JPG";
    covers.cache.LookAgain(1);
    EXPECT_NEAR(Covers::RedOf(covers.Wait(1)), strongRed, 4);
    covers.chosen = "../../level2/screenshots/x.jpg";
    covers.cache.LookAgain(1);
    EXPECT_NEAR(Covers::RedOf(covers.Wait(1)), 90, 4) << "another level's is never taken";

    std::filesystem::remove_all(covers.box / "level1");
    covers.cache.LookAgain(1);
    EXPECT_TRUE(covers.Wait(1).isNull()) << "a picture that is gone is told too";
}

TEST(Covers, OfAnotherArchiveAreNeverShown)
{
    Covers covers;
    covers.Write(1, "screenshots/a.jpg", *EncodeJpeg(Plain(64, 48, strongRed)));
    EXPECT_EQ(covers.Wait(1).size(), QSize(64, 48)) << "what is small is not made larger";
    covers.home = "other";
    covers.cache.LookAgain();
    EXPECT_TRUE(covers.cache.Cover(1).isNull());
}

TEST(Covers, WaitForNobodyWhoIsNotSeenAnyMore)
{
    Covers covers;
    const std::string picture = *EncodeJpeg(Plain(400, 300, strongRed));
    for (LevelCode code = 1; code <= 60; ++code)
        covers.Write(code, "screenshots/a.jpg", picture);
    for (LevelCode code = 1; code <= 60; ++code)
        (void)covers.cache.Cover(code);
    covers.cache.WantOnly({60});
    EXPECT_FALSE(covers.Wait(60).isNull());
    EXPECT_LT(covers.came.size(), 10U) << "what was under way, and the one that is seen";
    EXPECT_FALSE(covers.Wait(30).isNull()) << "one that is seen again is asked for again";
}

TEST(Covers, OutliveTheRunInABoundedFolder)
{
    World box;
    const Path shelf = box / "cache/kestrova/covers";
    std::string unshown;
    {
        Covers covers{shelf};
        covers.Write(1, "screenshots/a.jpg", *EncodeJpeg(Plain(800, 600, strongRed)));
        EXPECT_FALSE(covers.Wait(1).isNull());
        std::vector<platform::FolderEntry> kept;
        ASSERT_FALSE(platform::ListFolder(shelf, kept));
        ASSERT_EQ(kept.size(), 1U);
        // Another content under the kept name shows that the next run takes it from there.
        box.Write("cache/kestrova/covers/" + kept.front().name, *EncodeJpeg(Plain(8, 8, 10)));
        covers.cache.LookAgain();
        CoverCache next{shelf};
        next.places = covers.cache.places;
        bool came = false;
        next.came = [&](LevelCode) { came = true; };
        (void)next.Cover(1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return came; }, 60'000));
        EXPECT_EQ(next.Cover(1).size(), QSize(8, 8));
    }
    CoverShelf bounded{shelf, 10'000};
    box.Write("cache/kestrova/covers/letter.txt", std::string(20'000, 'x'));
    platform::FileFacts facts;
    std::vector<std::string> names;
    for (std::uint64_t i = 0; i < 30; ++i) {
        facts.size = i;
        names.push_back(CoverShelf::NameOf("picture", facts));
        bounded.Keep(names.back(), std::string(1'000, 'c'));
        // Written within the same moment they would have no order.
        (void)platform::SetModified(shelf / names.back(), INT64_C(1'000'000'000) * (1 + i));
    }
    const auto there = std::count_if(names.begin(), names.end(), [&](const std::string& name) {
        return bounded.Find(name).has_value();
    });
    EXPECT_LE(there, 10);
    EXPECT_GE(there, 5);
    EXPECT_TRUE(bounded.Find(names.back()).has_value()) << "the oldest go";
    EXPECT_EQ(box.Read("cache/kestrova/covers/letter.txt").size(), 20'000U)
        << "what is not ours stays";
}

TEST(Covers, WorkWithoutAFolderToKeepThemIn)
{
    World box;
    box.Write("cache", "a file stands where the folder would be made");
    Covers covers{box / "cache/kestrova/covers"};
    for (LevelCode code = 1; code <= 3; ++code) {
        covers.Write(code, "screenshots/a.jpg", *EncodeJpeg(Plain(80, 60, strongRed)));
        EXPECT_FALSE(covers.Wait(code).isNull());
    }
    EXPECT_EQ(box.Read("cache"), "a file stands where the folder would be made");
}

TEST(Covers, OfHostilePicturesAreNone)
{
    Covers covers;
    const std::string jpeg = *EncodeJpeg(Plain(640, 480, strongRed));
    covers.Write(1, "screenshots/cut.jpg", jpeg.substr(0, jpeg.size() / 2));
    // 60000 by 60000 pixels, as a bitmap and as a jpeg whose frame says so.
    std::string huge = EncodeBitmap(Plain(8, 8, strongRed));
    huge[18] = huge[22] = static_cast<char>(0x60);
    huge[19] = huge[23] = static_cast<char>(0xEA);
    covers.Write(2, "screenshots/huge.bmp", huge);
    std::string wide = jpeg;
    const std::size_t frame = wide.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    for (const std::size_t at : {5U, 7U})
        wide[frame + at] = wide[frame + at + 1] = static_cast<char>(0xFA);
    covers.Write(3, "screenshots/wide.jpg", wide);
    // A pipe without a writer, a device without an end, a picture of another level.
    for (const LevelCode code : {4, 5, 6})
        std::filesystem::create_directories(covers.Shots(code));
    ASSERT_EQ(::mkfifo((covers.Shots(4) / "pipe.jpg").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", covers.Shots(5) / "endless.bmp");
    covers.Write(7, "screenshots/a.jpg", jpeg);
    std::filesystem::create_symlink(covers.Shots(7) / "a.jpg", covers.Shots(6) / "link.jpg");
    for (LevelCode code = 1; code <= 6; ++code)
        (void)covers.cache.Cover(code);
    EXPECT_FALSE(covers.Wait(7).isNull()) << "nothing before it held it up";
    for (LevelCode code = 1; code <= 6; ++code)
        EXPECT_TRUE(covers.cache.Cover(code).isNull()) << code;
}

TEST(LevelTile, HasTheInitialsOfTwoWordsInAColourOfItsOwn)
{
    const std::pair<const char*, const char*> names[] = {
        {"The Drowned Observatory", "TD"},
        {"- TRLE: Original configuration -", "TO"},
        {"caves", "C"},
        {"Lara's home", "LH"},
        {"2 Tombs", "2T"},
        {"\xC3\xA9toile", "\xC3\x89"},
        {"\xF0\x9D\x94\x84 x", "\xF0\x9D\x94\x84X"},
        {"... \xF0\x9F\x90\x8D\xF0\x9F\x8F\xBA", "\xF0\x9F\x90\x8D"}, // of pictures alone
        {"", ""},
        {"...", ""}};
    for (const auto& [name, initials] : names)
        EXPECT_EQ(InitialsOf(QString::fromUtf8(name)), QString::fromUtf8(initials)) << name;
    EXPECT_EQ(TileColourOf("Caves"), TileColourOf("Caves"));
    EXPECT_NE(TileColourOf("Caves"), TileColourOf("Temple"));
    QImage tile(64, 48, QImage::Format_RGB32);
    tile.fill(Qt::magenta);
    QPainter painter(&tile);
    PaintInitials(painter, tile.rect(), "Caves");
    painter.end();
    bool written = false;
    for (int x = 0; x < tile.width(); ++x)
        written = written || tile.pixelColor(x, tile.height() / 2).lightness() > 200;
    EXPECT_TRUE(written);
    EXPECT_NE(tile.pixelColor(0, 0), QColor(Qt::magenta)) << "all of the place is filled";
}

} // namespace kestrova::testing
