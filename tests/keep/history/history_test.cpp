#include "history/history.h"

#include "formats/savegame_info.h"
#include "formats/swap_journal.h"
#include "history/delete_from_history.h"
#include "history/room_needed.h"
#include "saves/bring_back.h"
#include "swap/swap_world.h"

namespace kestrova::testing
{

TEST(History, KeepsContentsOnceAndBringsThemBackIntoAFreeSlot)
{
    SwapWorld world;
    const std::string save = SavegameBytes("Caves", 300);
    world.Write("levels/LEVEL_0001/backup_savegames/savegame.7", save);
    const Path file = world / "levels/LEVEL_0001/backup_savegames/savegame.7";
    std::vector<std::string> ids;
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, 1, {file}, "test", &ids));
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, 1, {file}, "test", &ids));
    ASSERT_EQ(ids.size(), 2U);
    EXPECT_EQ(ids[0], ids[1]);
    const auto entries = HistoryOf(world.session.Folders(), 1);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].number, 300);
    EXPECT_EQ(entries[0].title, "Caves");

    // Its own slot is taken, so the lowest free one takes it; 0 is taken too.
    const auto place = BringBack(world.session, 1, ids[0]);
    ASSERT_TRUE(place) << place.Error().subject;
    EXPECT_EQ(place->filename(), "savegame.1");
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/savegame.1"), save);
    for (int slot = 0; slot < 15; ++slot)
        world.Write("levels/LEVEL_0001/backup_savegames/savegame." + std::to_string(slot), "x");
    EXPECT_FALSE(BringBack(world.session, 1, ids[0]));
    EXPECT_FALSE(BringBack(world.session, 1, "0001-99"));
}

TEST(History, APictureComesBackAmongTheLevelsPictures)
{
    SwapWorld world;
    const std::string shots = "levels/LEVEL_0001/screenshots/";
    // Among the pictures, a name as the game's companions have it is a picture all the same.
    for (const char* name : {"1) Dawn.jpg", "shot3.jpg"})
        world.Write(shots + name, std::string{"picture "} + name);
    world.Write("levels/LEVEL_0001/backup_savegames/shot4.jpg", "of a savegame");
    std::vector<std::string> ids;
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, 1,
                              {world / (shots + "1) Dawn.jpg"), world / (shots + "shot3.jpg"),
                               world / "levels/LEVEL_0001/backup_savegames/shot4.jpg"},
                              "test", &ids));
    std::filesystem::remove_all(world / shots);
    std::filesystem::remove(world / "levels/LEVEL_0001/backup_savegames/shot4.jpg");
    const auto folder = world.Snapshot("trle");
    for (const std::string& id : ids)
        ASSERT_TRUE(BringBack(world.session, 1, id));
    EXPECT_EQ(world.Snapshot("trle"), folder);
    EXPECT_EQ(world.Read(shots + "1) Dawn.jpg"), "picture 1) Dawn.jpg");
    EXPECT_EQ(world.Read(shots + "shot3.jpg"), "picture shot3.jpg");
    EXPECT_EQ(world.Read("levels/LEVEL_0001/backup_savegames/shot4.jpg"), "of a savegame");
    EXPECT_EQ(BringBack(world.session, 1, ids[0])->filename(), "1) Dawn-2.jpg")
        << "what stands there stays";
}

TEST(History, NeverDropsWhatExistsNowhereElse)
{
    SwapWorld world;
    world.session.settings.historyCount = 2;
    for (int number = 1; number <= 4; ++number) {
        world.Write("trle/savegame.9", SavegameBytes("Alone", number));
        ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                                  world.session.settings, 0, {world / "trle/savegame.9"}, "test"));
    }
    // Only the last content is live as well; the three others are kept whatever the bound says.
    EXPECT_EQ(HistoryOf(world.session.Folders(), 0).size(), 4U);
    world.Write("home/LEVEL_0000/savegames/slot1/savegame.0", SavegameBytes("Alone", 1));
    world.Write("home/LEVEL_0000/savegames/slot1/savegame.1", SavegameBytes("Alone", 2));
    world.Write("trle/savegame.9", SavegameBytes("Alone", 5));
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, 0, {world / "trle/savegame.9"}, "test"));
    std::vector<int> numbers;
    for (const HistoryEntry& entry : HistoryOf(world.session.Folders(), 0))
        numbers.push_back(entry.number);
    EXPECT_EQ(numbers, (std::vector<int>{3, 4, 5}));
}

TEST(History, HoldsWhatTheGameMayWriteOver)
{
    SwapWorld world;
    world.session.settings.historyCount = 2;
    for (int number = 1; number <= 4; ++number) {
        const Path live = world / ("trle/savegame." + std::to_string(number));
        world.Write("trle/savegame." + std::to_string(number), SavegameBytes("Slot", number));
        ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                                  world.session.settings, 0, {live}, "test"));
    }
    EXPECT_EQ(HistoryOf(world.session.Folders(), 0).size(), 4U)
        << "a slot that the game writes over next holds nothing for good";
}

TEST(History, PassesOverDamagedLines)
{
    SwapWorld world;
    ASSERT_TRUE(KeepInHistory(world.session.machine, world.session.Folders(),
                              world.session.settings, 0, {world / "trle/savegame.0"}, "test"));
    const std::string index = world.Read("home/history/level_0000.jsonl");
    world.Write("home/history/level_0000.jsonl",
                "{\"id\":\"0000-9\",\"hash\":\"../../evil\",\"name\":\"savegame.0\"}\n" +
                    index.substr(0, 20) + "\n" + index);
    EXPECT_EQ(HistoryOf(world.session.Folders(), 0).size(), 1U);
}

TEST(SavegameInfo, ReadsTitleAndNumberOfAnything)
{
    EXPECT_EQ(ParseSavegameInfo(SavegameBytes("  Temple \xE9", -1)).title, "Temple \u00E9");
    EXPECT_EQ(ParseSavegameInfo(SavegameBytes("x", -1)).number, -1);
    EXPECT_EQ(ParseSavegameInfo(SavegameBytes("One, two", 258)).title, "One");
    EXPECT_EQ(ParseSavegameInfo(SavegameBytes("x", 258)).number, 258);
    EXPECT_EQ(ParseSavegameInfo("short").number, 0);
    EXPECT_EQ(ReadSavegameInfo("/nowhere/savegame.0").title, "<NOT READABLE>");
}

TEST(SwapRecords, ComeBackAsTheyWereWritten)
{
    SwapJournal journal;
    journal.folder = {"/games/tr\xFFle 100%", 7, UINT64_C(0xFFFFFFFFFFFFFFFF)};
    journal.phase = SwapPhase::Coming;
    journal.from = 3;
    journal.to = -1;
    journal.live = {{"savegame.0", std::string(32, 'a')}};
    journal.remove = {{"\\data\\\xE9.tr4", 12, -5}};
    journal.restore = {"\\script.dat"};
    const std::string text = FormatJournal(journal);
    const auto back = ParseJournal(text);
    ASSERT_TRUE(back);
    EXPECT_EQ(FormatJournal(*back), text);
    EXPECT_EQ(back->folder.path, journal.folder.path);
    EXPECT_EQ(back->remove[0].name, journal.remove[0].name);
    EXPECT_EQ(back->remove[0].modifiedNs, -5);
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_FALSE(ParseJournal(std::string_view{text}.substr(0, length))) << length;

    OwnerRecord owner;
    owner.marker = "absent";
    const auto nobody = ParseOwner(FormatOwner(owner));
    ASSERT_TRUE(nobody);
    EXPECT_FALSE(nobody->owner);
    owner.owner = 12;
    EXPECT_EQ(ParseOwner(FormatOwner(owner))->owner, 12);
}

TEST(RoomNeeded, IsThatOfAllFoldersOfADisk)
{
    SwapWorld world;
    world.Write("levels/one.tr4", std::string(10, 'o'));
    for (const auto& [free, isThere] : {std::pair{UINT64_C(169), false}, {UINT64_C(170), true}}) {
        world.machine.free = free;
        RoomNeeded room;
        room.Add(world / "levels/one.tr4", 60); // 50 more than stand there
        room.Add(world / "home/yet to be made/two.tr4", 60);
        EXPECT_EQ(bool{room.IsThere(world.machine)}, isThere) << free;
    }
}

TEST(History, DeletesForGoodWhatNoOtherLevelNames)
{
    SwapWorld world;
    const Folders folders = world.session.Folders();
    const auto keep = [&](LevelCode code, const std::string& bytes) {
        world.Write("levels/LEVEL_0001/backup_savegames/savegame.7", bytes);
        std::vector<std::string> ids;
        EXPECT_TRUE(KeepInHistory(world.machine, folders, world.session.settings, code,
                                  {world / "levels/LEVEL_0001/backup_savegames/savegame.7"}, "test",
                                  &ids));
        return ids.front();
    };
    const auto contents = [&] { return world.Snapshot("home/history/content").size(); };
    const std::string shared = keep(1, "shared");
    const std::string own = keep(1, "own");
    keep(2, "shared");
    ASSERT_EQ(contents(), 2U);
    EXPECT_TRUE(DeleteFromHistory(folders, 1, {shared}));
    EXPECT_EQ(contents(), 2U) << "the other level has it";
    ASSERT_EQ(HistoryOf(folders, 1).size(), 1U);
    EXPECT_EQ(HistoryOf(folders, 1).front().id, own);
    EXPECT_TRUE(DeleteFromHistory(folders, 1, {own, "0001-99"}));
    EXPECT_EQ(contents(), 1U);
    ASSERT_EQ(HistoryOf(folders, 2).size(), 1U);
    EXPECT_EQ(*ReadWholeFile(HistoryContent(folders, HistoryOf(folders, 2).front().hash)),
              "shared");

    // Who noted an id down gets that very file by it, or none.
    EXPECT_EQ(keep(1, "later"), "0001-3");
    EXPECT_TRUE(DeleteFromHistory(folders, 1, {"0001-3"}));
    EXPECT_EQ(keep(1, "latest"), "0001-4");
    EXPECT_EQ(HistoryOf(folders, 1).size(), 1U);
    EXPECT_TRUE(DeleteFromHistory(folders, 1, {"0001-4"}));

    // An index that a later version wrote may name anything.
    const std::string index = "home/history/level_0001.jsonl";
    ASSERT_TRUE(world.Has(index)) << world.Snapshot("home/history").begin()->first;
    world.Write(index, "{\"version\":9}\n");
    const auto refused = DeleteFromHistory(folders, 2, {HistoryOf(folders, 2).front().id});
    EXPECT_FALSE(refused);
    EXPECT_NE(refused.Error().sentence.find("0001"), std::string::npos);
    EXPECT_TRUE(HistoryOf(folders, 2).empty());
    EXPECT_EQ(contents(), 1U);
}

} // namespace kestrova::testing
