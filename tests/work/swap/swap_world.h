#pragma once

#include "history/standing.h"
#include "swap/install.h"
#include "swap/live_state.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

/// An original folder with its backup, two levels, and savegames of everybody: the original's live,
/// the levels' in their stores.
class SwapWorld : public World
{
public:
    LevelCode first = 0;
    LevelCode second = 0;

    SwapWorld()
    {
        MakeTrle(5); // thousands of steps are tried, each on a folder of its own
        MakeBackupAndArchive();
        first = AddLevel("The First", {{"script.dat", "first script"},
                                       {"english.dat", "first english"},
                                       {"LOAD.bmp", "first picture"},
                                       {"first.TR4", "first level"},
                                       {"title.tr4", "first title"},
                                       {"003.wav", "first wave"},
                                       {"readme.txt", "stays in the archive"}});
        second = AddLevel("Il Secondo", {{"script.dat", "second script"},
                                         {"italian.dat", "second italian"},
                                         {"second.tr4", "second level"},
                                         {"extra.h", "second header"}});
        Write("trle/savegame.0", SavegameBytes("Original", 3));
        Write("trle/savegame.12", SavegameBytes("Original late", 9));
        Write("trle/note0.txt", "original note");
        Write("levels/LEVEL_0001/backup_savegames/savegame.0", SavegameBytes("First", 5));
        Write("levels/LEVEL_0001/backup_savegames/note0.txt", "first note");
        Write("levels/LEVEL_0001/backup_savegames/shot0.jpg", "first shot");
        Write("levels/LEVEL_0002/backup_savegames/savegame.1", SavegameBytes("Second", 7));
    }

    /// The first level stands in the folder, and the game has saved since.
    void PlayFirst()
    {
        ASSERT_TRUE(InstallLevel(session, first)) << host.AllTold();
        Write("trle/savegame.0", SavegameBytes("First later", 6));
        Write("trle/savegame.4", SavegameBytes("First new", 8));
        Write("trle/shot4.bmp", "first big shot");
    }

    /// From now on another archive is the loaded one, whose levels have the same codes; then the
    /// first one again.
    void ExchangeArchive()
    {
        std::swap(session.archive.header.secondaryFolder, otherFolder_);
        std::swap(session.archive.levels, otherLevels_);
        if (!otherLevels_.empty() && session.archive.levels.empty()) {
            session.archive.header.secondaryFolder = (root / "other").native();
            session.archive.levels = otherLevels_;
            for (LevelRecord& level : session.archive.levels)
                level.levelName += " of the other archive";
            for (const char* name : {"other/LEVEL_0001", "other/LEVEL_0002"})
                for (const char* part : {"savegames", "backup_savegames", "files", "screenshots"})
                    std::filesystem::create_directories(root / name / part);
            Write("other/LEVEL_0001/files/other.tr4", "other level");
            Write("other/LEVEL_0001/files/script.dat", "other script");
            Write("other/LEVEL_0002/files/more.tr4", "one more level");
            Write("other/LEVEL_0001/backup_savegames/savegame.2", SavegameBytes("Other", 11));
        }
    }

    /// Every content of a player's file that the sandbox holds anywhere, and all that a test wrote
    /// as "my own" work. `files` is a snapshot of the whole.
    [[nodiscard]] static std::set<std::string> Treasures(const FileContents& files)
    {
        std::set<std::string> contents;
        for (const auto& [file, content] : files)
            if (file.find("savegame.") != std::string::npos ||
                file.find("/note") != std::string::npos ||
                file.find("/shot") != std::string::npos ||
                file.find("history/content") != std::string::npos || content.starts_with("my own"))
                contents.insert(content);
        return contents;
    }
    [[nodiscard]] std::set<std::string> Treasures() const { return Treasures(Snapshot("")); }

    static void ExpectNothingLost(const std::set<std::string>& before, const FileContents& files)
    {
        const std::set<std::string> now = Treasures(files);
        for (const std::string& content : before)
            EXPECT_TRUE(now.contains(content)) << "lost: " << content.substr(0, 20);
    }
    void ExpectNothingLost(const std::set<std::string>& before) const
    {
        ExpectNothingLost(before, Snapshot(""));
    }

    /// The folder without what belongs to the player.
    [[nodiscard]] FileContents Configuration() const
    {
        auto files = Snapshot("trle");
        std::erase_if(files, [](const auto& file) { return IsPlayersFile(file.first); });
        return files;
    }

    void ExpectOriginal() const
    {
        EXPECT_EQ(Configuration(), Snapshot("home/backup_trle"));
        EXPECT_EQ(CurrentLevelCode(session.Folders(), session.archive), originalCode);
    }

private:
    std::string otherFolder_;
    std::vector<LevelRecord> otherLevels_;
};

} // namespace kestrova::testing
