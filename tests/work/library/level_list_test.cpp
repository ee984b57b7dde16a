#include "formats/savegame_records.h"
#include "levels/more_info.h"
#include "library/level_list.h"
#include "swap/install.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{
namespace
{

class LevelListing : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
    }
    std::optional<LevelFacts> Select(LevelCode code)
    {
        Session& session = box.session;
        return SelectLevel(session.host, session.Folders(), session.archive, session.preferences,
                           code);
    }
    World box;
};

TEST_F(LevelListing, TheTitleNamesTheArchive)
{
    EXPECT_EQ(WindowTitle(box.session.archive), "Kestrova: LevelArchive.kva (1 levels)");
    box.session.archive.file = "/a/levels.kva";
    box.session.archive.levels.resize(12);
    EXPECT_EQ(WindowTitle(box.session.archive), "Kestrova: levels.kva (12 levels)");
}

TEST_F(LevelListing, TheInfoLineCountsSavegamesWhereTheyLie)
{
    const LevelCode code = box.AddLevel("Dawn", {{"dawn.tr4", "level"}});
    const std::string folder = "levels/LEVEL_0001/";
    box.Write(folder + "backup_savegames/savegame.0", SavegameBytes("one", 1));
    box.Write(folder + "backup_savegames/SAVEGAME.3", SavegameBytes("two", 2));
    box.Write(folder + "screenshots/a.jpg", "");
    box.Write(folder + "screenshots/b.BMP", "");
    box.Write(folder + "screenshots/c.txt", "");
    SavegameArchiveHeader header;
    header.archivedCount = -7; // a running count, which drifts when files are changed by hand
    box.Write(folder + "savegames/savegames.bva", FormatSavegameArchiveHeader(header));
    for (const char* file : {"slot1/savegame.0", "slot1/savegame.1", "slot2/SAVEGAME.0",
                             "slot2/note0.txt", "slot4/savegame.0"})
        box.Write(folder + "savegames/" + file, "");

    const std::string path = "Path: \"" + (box / "levels/LEVEL_0001").native() + "\"";
    const auto before = box.Snapshot("");
    const auto looked =
        LookAtLevel(box.session.host, box.session.Folders(), box.session.archive, code);
    ASSERT_TRUE(looked);
    EXPECT_EQ(looked->info, path + "  -  Screenshots: 2 - Savegames: 2 + 3");
    EXPECT_EQ(box.Snapshot(""), before);

    box.session.archive.levels[1].cdNumber = 3;
    const auto selected = Select(code);
    ASSERT_TRUE(selected);
    EXPECT_EQ(selected->info, path + " - CD# 3  -  Screenshots: 2 - Savegames: 2 + 3");
    box.session.archive.levels[1].cdNumber = 0;

    ASSERT_TRUE(InstallLevel(box.session, code)) << box.host.AllTold();
    box.Write("trle/savegame.9", SavegameBytes("three", 3));
    const auto current = Select(code);
    ASSERT_TRUE(current);
    EXPECT_TRUE(current->current);
    EXPECT_EQ(current->liveSavegames, 3);
}

TEST_F(LevelListing, AnUnknownCodeIsTold)
{
    EXPECT_FALSE(Select(99));
    EXPECT_TRUE(box.host.WasTold("Internal error: unknown level code: 99"));
}

TEST_F(LevelListing, MoreInfoOpensAFileOfTheLevelAndNothingElse)
{
    const LevelCode code = box.AddLevel("Dawn", {{"ReadMe.txt", "how to play"}});
    EXPECT_FALSE(ShowMoreInfo(box.session.host, box.session.machine, box.session.Folders(),
                              box.session.archive, code));
    EXPECT_TRUE(box.host.WasTold("Sorry, there is not any doc file\r\n"));

    box.session.archive.levels[1].moreInfoFile = "readme.TXT";
    EXPECT_TRUE(ShowMoreInfo(box.session.host, box.session.machine, box.session.Folders(),
                             box.session.archive, code));
    EXPECT_EQ(box.machine.opened,
              std::vector<std::string>{(box / "levels/LEVEL_0001/files/ReadMe.txt").native()});

    box.Write("levels/secret.txt", "");
    for (const char* name : {"../../secret.txt", "..\\..\\secret.txt", "gone.txt"}) {
        box.session.archive.levels[1].moreInfoFile = name;
        EXPECT_FALSE(ShowMoreInfo(box.session.host, box.session.machine, box.session.Folders(),
                                  box.session.archive, code))
            << name;
    }
    EXPECT_EQ(box.machine.opened.size(), 1U);
    box.Write("levels/LEVEL_0001/files/Przeczytaj się.txt", "how to play");
    for (const char* name : {"Przeczytaj się.txt", "Przeczytaj si?.txt"}) {
        box.session.archive.levels[1].moreInfoFile = name;
        EXPECT_TRUE(ShowMoreInfo(box.session.host, box.session.machine, box.session.Folders(),
                                 box.session.archive, code))
            << name;
    }
    EXPECT_TRUE(box.host.WasTold("gone.txt' not found"));
}

TEST_F(LevelListing, WhatIsNoDocumentIsOpenedOnlyAfterItsNameWasAsked)
{
    const LevelCode code =
        box.AddLevel("Trap", {{"Readme.desktop", "[Desktop Entry]"}, {"plain.txt", "text"}});
    std::filesystem::create_symlink("Readme.desktop", box / "levels/LEVEL_0001/files/Page.html");
    for (const char* name : {"Readme.desktop", "Page.html"}) {
        box.session.archive.levels[1].moreInfoFile = name;
        box.host.WillAsk(name, false);
        EXPECT_FALSE(ShowMoreInfo(box.session.host, box.session.machine, box.session.Folders(),
                                  box.session.archive, code));
        EXPECT_TRUE(box.machine.opened.empty()) << name;
    }
    box.host.WillAsk("Page.html is no text, page or picture", true);
    EXPECT_TRUE(ShowMoreInfo(box.session.host, box.session.machine, box.session.Folders(),
                             box.session.archive, code));
    box.session.archive.levels[1].moreInfoFile = "plain.txt";
    EXPECT_TRUE(ShowMoreInfo(box.session.host, box.session.machine, box.session.Folders(),
                             box.session.archive, code))
        << "a document needs no question";
    EXPECT_EQ(box.machine.opened.size(), 2U);
    EXPECT_TRUE(box.host.told.empty()) << box.host.AllTold();
}

} // namespace
} // namespace kestrova::testing
