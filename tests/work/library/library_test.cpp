#include "library/library.h"
#include "swap/install.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

LibraryLevel Level(LevelCode code, const std::string& name, const std::string& author = {},
                   const LevelNote& own = {})
{
    LibraryLevel level;
    level.text = name;
    level.author = author;
    level.code = code;
    level.own = own;
    return level;
}

std::vector<LevelCode> CodesOf(const Library& library)
{
    std::vector<LevelCode> codes;
    for (int row = 0; row < library.Count(); ++row) {
        codes.push_back(library.At(row).code);
        EXPECT_EQ(library.RowOf(codes.back()), row);
    }
    return codes;
}
using Order = std::vector<LevelCode>;

/// Four levels that differ in everything, and the original configuration.
Library SomeLevels()
{
    LevelNote dawn;
    dawn.lastPlayed = 300;
    dawn.secondsPlayed = 50;
    dawn.stars = 4;
    dawn.status = LevelStatus::Finished;
    dawn.tags = {"jungle", "Short"};
    LevelNote moon;
    moon.added = 900;
    moon.lastPlayed = 100;
    moon.secondsPlayed = 70;
    moon.stars = 5;
    moon.status = LevelStatus::Playing;
    moon.ownNote = "Key behind the STATUE";
    LevelNote nile;
    nile.added = 1000;
    nile.status = LevelStatus::GivenUp;
    nile.stars = 1;
    nile.tags = {"short"};
    std::vector<LibraryLevel> levels{
        Level(originalCode, "- TRLE: Original configuration -"), Level(1, "Dawn", "beta", dawn),
        Level(2, "moon", "Alpha", moon), Level(3, "Nile", "", nile), Level(4, "Moon", "alpha")};
    levels[2].size = 10;
    levels[1].size = 3'000'000'000;
    levels[3].cdNumber = 2;
    levels[4].note = "Über den Dächern";
    Library library;
    library.SetLevels(std::move(levels));
    return library;
}

TEST(Library, IsSortedByWhatOneWants)
{
    Library library = SomeLevels();
    EXPECT_EQ(CodesOf(library), (Order{0, 1, 2, 4, 3}))
        << "names, equal ones as the archive has them";
    const std::pair<LibraryOrder, Order> orders[] = {
        {LibraryOrder::Author, {2, 4, 1, 0, 3}},     {LibraryOrder::LastPlayed, {1, 2, 0, 4, 3}},
        {LibraryOrder::TimePlayed, {2, 1, 0, 4, 3}}, {LibraryOrder::Size, {1, 2, 0, 4, 3}},
        {LibraryOrder::Added, {3, 2, 0, 1, 4}},      {LibraryOrder::Stars, {2, 1, 3, 0, 4}},
        {LibraryOrder::Status, {2, 0, 4, 1, 3}},     {LibraryOrder::Name, {0, 1, 2, 4, 3}},
    };
    for (const auto& [order, codes] : orders) {
        library.SetOrder(order);
        EXPECT_EQ(CodesOf(library), codes) << static_cast<int>(order);
    }
}

TEST(Library, TurnsItsOrderRoundAndCountsSavegamesAsTheyCome)
{
    Library library = SomeLevels();
    const std::pair<LibraryOrder, Order> orders[] = {
        {LibraryOrder::Name, {3, 4, 2, 1, 0}},
        {LibraryOrder::Author, {1, 4, 2, 0, 3}}, // those without one stay last
        {LibraryOrder::LastPlayed, {2, 1, 0, 4, 3}},
        {LibraryOrder::Size, {0, 4, 3, 2, 1}},
        {LibraryOrder::Stars, {3, 1, 2, 0, 4}},
    };
    for (const auto& [order, codes] : orders) {
        library.SetOrder(order, true);
        EXPECT_EQ(CodesOf(library), codes) << static_cast<int>(order);
        EXPECT_TRUE(library.IsTurned());
    }
    library.SetOrder(LibraryOrder::Savegames);
    EXPECT_EQ(CodesOf(library), (Order{0, 1, 2, 4, 3})) << "nothing is counted yet";
    library.SetSavegames(3, 15);
    library.SetSavegames(2, 0);
    EXPECT_EQ(CodesOf(library), (Order{0, 1, 2, 4, 3})) << "no row jumps by itself";
    library.SortAgain();
    EXPECT_EQ(CodesOf(library), (Order{3, 2, 0, 1, 4}));
    library.SetOrder(LibraryOrder::Savegames, true);
    EXPECT_EQ(CodesOf(library), (Order{2, 3, 0, 1, 4}));
}

TEST(Library, ShowsWhatIsLeftOfFilterAndSearch)
{
    Library library = SomeLevels();
    const std::pair<LibraryFilter, Order> filters[] = {
        {LibraryFilter::Playing, {2}},  {LibraryFilter::New, {4}},
        {LibraryFilter::Finished, {1}}, {LibraryFilter::GivenUp, {3}},
        {LibraryFilter::OnDisc, {3}},   {LibraryFilter::Favourites, {1, 2}},
    };
    for (const auto& [filter, codes] : filters) {
        library.SetFilter(filter);
        EXPECT_EQ(CodesOf(library), codes) << static_cast<int>(filter);
    }
    EXPECT_EQ(library.Tags(), (std::vector<std::string>{"jungle", "Short"}));
    library.SetFilter(LibraryFilter::Tag, "SHORT");
    EXPECT_EQ(CodesOf(library), (Order{1, 3}));
    EXPECT_EQ(library.RowOf(2), -1);
    EXPECT_TRUE(library.Has(2));
    EXPECT_FALSE(library.Has(99));
    EXPECT_EQ(library.RowOf(99), -1);

    EXPECT_TRUE(library.SetSearch("  ni "));
    EXPECT_FALSE(library.SetSearch("NI")) << "nothing else is shown";
    EXPECT_EQ(CodesOf(library), (Order{3}));
    library.SetFilter(LibraryFilter::All);
    const std::pair<const char*, Order> searches[] = {
        {"ALPHA", {2, 4}}, {"statue", {2}}, {"DÄCHER", {4}},
        {"moonalpha", {}}, {"config", {0}}, {"", {0, 1, 2, 4, 3}},
    };
    for (const auto& [text, codes] : searches) {
        library.SetSearch(text);
        EXPECT_EQ(CodesOf(library), codes) << text;
    }
    library.SetSearch("moon");
    library.SetOrder(LibraryOrder::Added);
    library.SetLevels({Level(7, "Blue moon"), Level(8, "Sun")});
    EXPECT_EQ(CodesOf(library), (Order{7})) << "new levels are narrowed as the old ones were";
}

TEST(Library, HoldsTenThousandLevels)
{
    std::vector<LibraryLevel> levels;
    for (int i = 0; i < 10'000; ++i) {
        levels.push_back(Level(i + 1, "Level " + std::to_string(i * 7919 % 10'000) + " (Näme)"));
        levels.back().note = std::string(200, static_cast<char>('a' + i % 26));
        levels.back().own.stars = i % 6;
        levels.back().own.tags = {"tag " + std::to_string(i % 40)};
    }
    Library library;
    library.SetLevels(levels);
    EXPECT_EQ(library.Count(), 10'000);
    library.SetSearch("999 (NÄM");
    EXPECT_EQ(library.Count(), 10);
    library.SetOrder(LibraryOrder::Stars);
    EXPECT_EQ(library.Count(), 10);
    library.SetSearch({});
    EXPECT_EQ(library.At(0).own.stars, 5);
    EXPECT_EQ(library.Tags().size(), 40U);
    library.SetFilter(LibraryFilter::Tag, "tag 7");
    EXPECT_EQ(library.Count(), 250);
}

TEST(LibraryLevels, ComeFromTheListTheFolderAndTheNotes)
{
    World box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    const LevelCode zebra = box.AddLevel("zebra", {});
    const LevelCode first = box.AddLevel("!first of all", {});
    LevelRecord& record = box.session.archive.levels.back();
    record.authorName = "Someone  ";
    record.levelNote = "A note";
    record.cdNumber = 3;
    record.filesSize = 2'000'000'000;
    record.extrasSize = 2'000'000'000;
    ASSERT_TRUE(InstallLevel(box.session, zebra)) << box.host.AllTold();
    const auto levels =
        LibraryLevels(box.session.Folders(), box.session.archive, [&](LevelCode code) {
            LevelNote note;
            note.stars = code == first ? 3 : 0;
            return note;
        });
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_EQ(levels[1].text, "zebra (*)");
    EXPECT_EQ(NameOf(levels[1]), "zebra");
    EXPECT_EQ(NameOf(levels[2]), "!first of all");
    EXPECT_TRUE(levels[1].current);
    EXPECT_EQ(levels[2].author, "Someone");
    EXPECT_EQ(levels[2].note, "A note");
    EXPECT_EQ(levels[2].cdNumber, 3);
    EXPECT_EQ(levels[2].size, 4'000'000'000);
    EXPECT_EQ(levels[2].own.stars, 3);

    Library library;
    library.SetLevels(levels);
    EXPECT_EQ(library.At(0).code, first) << "the original configuration is sorted as the others";
}

} // namespace
} // namespace kestrova::testing
