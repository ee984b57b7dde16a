#include "pictures/bitmap.h"
#include "pictures/jpeg.h"
#include "play/game_watch.h"
#include "play/hot_keys.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace
{

std::string BitmapOf(int width, int height)
{
    Picture picture{width, height, {}};
    picture.rgb.resize(static_cast<std::size_t>(width * height) * 3, 200);
    return EncodeBitmap(picture);
}

/// The first level stands in the Level Editor's folder, another one is selected.
class KeyedWorld : public World
{
public:
    HotKeys keys{session};
    const std::string shots = "levels/LEVEL_0001/screenshots/";

    KeyedWorld()
    {
        MakeTrle();
        MakeBackupAndArchive();
        AddLevel("Lost City", {});
        AddLevel("Other", {});
        Write("trle/Kestrva.txt", "#LEVEL_CODE=0001#\r\n");
        list.selected = 2;
        session.running.hotKeys = true;
        keys.Tick();
    }
    void Copy(const std::string& picture)
    {
        machine.clipboard = picture;
        keys.NoteClipboard();
        keys.Tick();
    }
    [[nodiscard]] std::size_t Shots() const { return Snapshot(shots).size(); }
    [[nodiscard]] bool HasSlot(int n) const
    {
        return Has("levels/LEVEL_0001/savegames/slot" + std::to_string(n));
    }
};

} // namespace

TEST(HotKeys, DoNothingUntilAGameWasStartedAndWhileSomethingRuns)
{
    KeyedWorld world;
    world.list.selected = 1;
    world.Write("trle/savegame.0", SavegameBytes("Start", 4));
    world.machine.keysDown = {GameKey::F9, GameKey::F11};
    world.machine.clipboard = BitmapOf(4, 4);
    world.keys.NoteClipboard();
    world.session.running.hotKeys = false;
    world.keys.Tick();
    world.session.running.hotKeys = true;
    ++world.session.running.operations;
    world.keys.Tick();
    --world.session.running.operations;
    EXPECT_FALSE(world.HasSlot(1));
    EXPECT_EQ(world.machine.clipboardReads, 0);
    // The key that was pressed before is not meant for the game; the picture waits.
    world.keys.Tick();
    EXPECT_FALSE(world.HasSlot(1));
    world.machine.keysDown.clear();
    world.keys.Tick();
    EXPECT_EQ(world.Shots(), 1U);
}

TEST(HotKeys, SayAtOnceWhatTheyDid)
{
    KeyedWorld world;
    std::vector<std::string> said;
    world.keys.done = [&](const std::string& words) { said.push_back(words); };
    world.list.selected = 1;
    world.Write("trle/savegame.0", SavegameBytes("Start", 4));
    world.machine.keysDown = {GameKey::F9};
    world.keys.Tick();
    world.keys.Tick();
    ASSERT_EQ(said.size(), 1U) << "a key that is held, and does nothing more, says nothing more";
    EXPECT_EQ(said[0].find("F9: Savegames that went into archive slot 1: 1 of 1;"), 0U) << said[0];
    world.machine.keysDown.clear();
    world.keys.Tick();
    world.machine.keysDown = {GameKey::F9};
    world.keys.Tick();
    EXPECT_EQ(said.back().find("F9: Nothing new went into the archive"), 0U) << said.back();
    world.machine.keysDown = {GameKey::F11};
    world.keys.Tick();
    EXPECT_EQ(said.back().find("F11: "), 0U) << said.back();
    world.machine.keysDown.clear();
    world.session.preferences.promptCapture = false;
    world.Copy(BitmapOf(4, 4));
    EXPECT_EQ(said.back(), "Print Screen: the picture is kept as “1) Lost City.jpg”.");
    EXPECT_EQ(said.size(), 4U);
}

TEST(HotKeys, ActAtEachTickInWhichTheyAreDownAndF9GoesFirst)
{
    KeyedWorld world;
    world.list.selected = 1;
    for (int slot = 0; slot < 3; ++slot)
        world.Write("trle/savegame." + std::to_string(slot), SavegameBytes("Save", 4 + slot));
    world.machine.keysDown = {GameKey::F9};
    world.keys.Tick();
    EXPECT_TRUE(world.HasSlot(1));
    EXPECT_EQ(ListFiles(world / "trle", "savegame.*")->size(), 1U);
    world.keys.Tick();
    EXPECT_TRUE(world.HasSlot(2)) << "held for two ticks it acts twice: an empty slot more";
    world.machine.keysDown = {GameKey::F9, GameKey::F11};
    world.keys.Tick();
    EXPECT_EQ(ListFiles(world / "trle", "savegame.*")->size(), 3U)
        << "what F9 freed came back in the same tick";
    EXPECT_TRUE(world.session.running.hotKeys);
    EXPECT_EQ(world.session.running.operations, 0);
    EXPECT_TRUE(world.host.told.empty()) << "nothing stands before the game";

    // No level is selected: nothing happens, and the keys stay awake.
    world.list.selected.reset();
    const auto before = world.Snapshot("");
    world.keys.Tick();
    EXPECT_EQ(world.Snapshot(""), before);
    EXPECT_TRUE(world.session.running.hotKeys);
}

TEST(HotKeys, AFailureIsSaidWithoutABox)
{
    KeyedWorld world;
    world.list.selected = 1;
    world.Write("trle/savegame.0", SavegameBytes("Start", 4));
    std::filesystem::remove_all(world / "levels/LEVEL_0001/savegames");
    world.Write("levels/LEVEL_0001/savegames", "a file in the folder's place");
    std::string said;
    world.keys.failed = [&](const std::string& words) { said = words; };
    world.machine.keysDown = {GameKey::F9};
    world.keys.Tick();
    EXPECT_NE(said.find("F9: the game's slots could not be freed"), std::string::npos);
    EXPECT_TRUE(world.host.told.empty());
    EXPECT_TRUE(world.session.running.hotKeys);
    EXPECT_TRUE(world.Has("trle/savegame.0"));
}

TEST(HotKeys, APictureIsKeptOnceWithTheInstalledLevel)
{
    KeyedWorld world;
    world.Copy(BitmapOf(40, 30));
    ASSERT_EQ(world.Shots(), 1U);
    const std::string jpeg = world.Read(world.shots + "1) Lost City.jpg");
    const auto kept = DecodeJpeg(jpeg);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->width, 40);
    EXPECT_EQ(world.session.archive.levels[1].extrasSize, static_cast<std::int32_t>(jpeg.size()));
    EXPECT_EQ(world.machine.clipboardCleared, 1) << "it is used up";
    EXPECT_EQ(world.list.selected, 2) << "what is selected is shown anew";
    EXPECT_TRUE(world.machine.typed.empty());
    world.keys.NoteClipboard(); // its own clearing
    for (int i = 0; i < 9; ++i)
        world.keys.Tick();
    EXPECT_EQ(world.Shots(), 1U);
    EXPECT_EQ(world.machine.clipboardReads, 2) << "without news nobody asks";

    world.session.preferences.captureEnabled = false;
    world.Copy(BitmapOf(4, 4));
    EXPECT_EQ(world.machine.clipboardReads, 2);
    EXPECT_FALSE(world.machine.clipboard.empty()) << "it stays where it is";
    world.session.preferences.captureEnabled = true;
    world.keys.Tick();
    EXPECT_EQ(world.Shots(), 2U) << "and is kept as soon as that is wanted";

    // F9 and a picture in one tick.
    world.list.selected = 1;
    world.Write("trle/savegame.0", SavegameBytes("Start", 4));
    world.machine.keysDown = {GameKey::F9};
    world.Copy(BitmapOf(4, 4));
    EXPECT_TRUE(world.HasSlot(1));
    EXPECT_EQ(world.Shots(), 3U);
}

TEST(HotKeys, AnOwnerThatHangsOrHandsOverNothingIsLeftAlone)
{
    KeyedWorld world;
    world.machine.clipboardBusy = true;
    world.Copy(BitmapOf(4, 4));
    world.keys.Tick();
    EXPECT_EQ(world.machine.clipboardReads, 2) << "in use: the next tick asks again";
    world.machine.clipboardBusy = false;
    world.keys.Tick();
    EXPECT_EQ(world.Shots(), 1U);

    world.machine.clipboardBusy = true;
    world.keys.NoteClipboard();
    for (int i = 0; i < 100; ++i)
        world.keys.Tick();
    EXPECT_LE(world.machine.clipboardReads, 30) << "it gives up";
    world.machine.clipboardTakes = 1'500'000'000;
    world.machine.clipboardReads = 0;
    world.keys.NoteClipboard();
    for (int i = 0; i < 5; ++i)
        world.keys.Tick();
    EXPECT_EQ(world.machine.clipboardReads, 1) << "a frozen program blocks the windows once";
    world.machine.clipboardTakes = 0;
    world.machine.clipboardBusy = false;
    world.Copy("BM but no picture");
    world.Copy(BitmapOf(4, 4));
    EXPECT_EQ(world.Shots(), 2U);
}

TEST(HotKeys, APictureThatCannotBeKeptIsSaid)
{
    KeyedWorld world;
    std::filesystem::remove_all(world / world.shots);
    world.Write("levels/LEVEL_0001/screenshots", "a file in the folder's place");
    world.Copy(BitmapOf(4, 4));
    EXPECT_TRUE(world.host.WasTold("Error saving captured screen-shot as: "));
    EXPECT_TRUE(world.host.WasTold("1) Lost City.jpg"));
    EXPECT_EQ(world.machine.clipboardCleared, 1);
    EXPECT_TRUE(world.session.running.hotKeys);
    EXPECT_EQ(world.session.archive.levels[1].extrasSize, 0);

    world.Write("trle/Kestrva.txt", "#LEVEL_CODE=0777#\r\n");
    world.Copy(BitmapOf(4, 4));
    EXPECT_TRUE(world.host.WasTold("is not in this archive"));
    EXPECT_FALSE(world.Has("levels/LEVEL_0777"));
}

TEST(HotKeys, WithThePromptThePersonNamesIt)
{
    KeyedWorld world;
    world.session.preferences.promptCapture = true;
    int asked = 0;
    world.keys.ask = [&](const CapturedShot& shot) {
        ++asked;
        EXPECT_FALSE(world.session.running.hotKeys);
        EXPECT_EQ(world.session.running.operations, 0) << "the prompt must take input";
        EXPECT_EQ(world.machine.typed, "13");
        EXPECT_EQ(shot.picture.width, 40);
        world.machine.keysDown = {GameKey::F9};
        world.keys.Tick(); // the timer goes on under the prompt
        world.host.WillChoose("Save captured", std::nullopt);
        EXPECT_FALSE(AskSaveCapturedShot(world.session, shot)) << "it goes on asking";
        world.host.WillChoose("Save captured", world / (world.shots + "mine.jpg"));
        EXPECT_TRUE(AskSaveCapturedShot(world.session, shot));
        EXPECT_EQ(world.host.lastStart, shot.folder);
        world.host.WillChoose("Save captured", world / "no/folder/mine.jpg");
        EXPECT_TRUE(AskSaveCapturedShot(world.session, shot));
    };
    world.list.selected = 1;
    world.Copy(BitmapOf(40, 30));
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(world.session.running.hotKeys);
    EXPECT_FALSE(world.HasSlot(1)) << "F9 did not act under the prompt";
    const auto kept = world.Snapshot(world.shots);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(world.session.archive.levels[1].extrasSize,
              static_cast<std::int32_t>(kept.at("mine.jpg").size()));
    EXPECT_TRUE(world.host.WasTold("Error while saving captured screen-shot in : \r\n" +
                                   (world / "no/folder/mine.jpg").native() + "\r\nError: "));

    // Enter goes to the game's window and to no other one.
    world.machine.typed.clear();
    BringGameBack(world.session.machine);
    EXPECT_TRUE(world.machine.typed.empty());
    world.machine.windowOfGame = "Tomb Raider - The Last Revelation";
    BringGameBack(world.session.machine);
    EXPECT_EQ(world.machine.typed, "\n");
}

TEST(GameWatch, TellsWhenAGameComesAndGoes)
{
    World box;
    GameWatch watch{box.session};
    EXPECT_FALSE(watch.Look());
    box.machine.running = {{4711, "tomb4.exe"}};
    EXPECT_TRUE(watch.Look());
    EXPECT_TRUE(watch.Running());
    EXPECT_FALSE(watch.Look());
    box.machine.running.clear();
    EXPECT_TRUE(watch.Look());
    EXPECT_FALSE(watch.Running());
}

} // namespace kestrova::testing
