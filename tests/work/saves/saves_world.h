#pragma once

#include "formats/savegame_info.h"
#include "saves/savegame_moves.h"
#include "saves/savegame_store.h"
#include "swap/live_state.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

/// A level whose savegames are live in the Level Editor's folder, and one that rests in its store.
class SavesWorld : public World
{
public:
    LevelCode played = 0;
    LevelCode resting = 0;

    SavesWorld()
    {
        MakeTrle(1);
        MakeBackupAndArchive();
        played = AddLevel("Played", {});
        resting = AddLevel("Resting", {});
        Write("trle/Kestrva.txt", "#LEVEL_CODE=0001#");
        list.selected = played;
    }

    static constexpr const char* store = "levels/LEVEL_0001/savegames/";

    void Live(const std::string& name, int number, const std::string& data = "data") const
    {
        Write("trle/savegame." + name, SavegameBytes("Live " + name, number, data));
    }
    void Archived(int slot, const std::string& name, int number,
                  const std::string& data = "data") const
    {
        Write(store + ("slot" + std::to_string(slot)) + "/savegame." + name,
              SavegameBytes("Archived", number, data));
    }

    /// Name and save number of each savegame of a folder, notes and pictures with their content:
    /// `savegame.0=5 note0.txt=words`.
    [[nodiscard]] std::string Shown(const std::string& folder) const
    {
        std::string text;
        for (const auto& [name, content] : Snapshot(folder))
            if (IsPlayersFile(name))
                text += (text.empty() ? "" : " ") + name + "=" +
                        (MatchesPattern(name, "savegame.*")
                             ? std::to_string(ParseSavegameInfo(content).number)
                             : content);
        return text;
    }
    [[nodiscard]] std::string ShownSlot(int slot) const
    {
        return Shown(store + ("slot" + std::to_string(slot)));
    }
    [[nodiscard]] int Count() const
    {
        const auto header = ParseSavegameArchiveHeader(Read(store + std::string{"savegames.bva"}));
        return header ? header->archivedCount : -1;
    }

    /// Every content of a player's file that the sandbox holds, the exported ones in `out` with
    /// them or not.
    [[nodiscard]] std::set<std::string> Treasures(bool exported = true) const
    {
        std::set<std::string> contents;
        for (const auto& [file, content] : Snapshot(""))
            if (!exported && file.starts_with("out/"))
                continue;
            else if (IsPlayersFile(Path{file}.filename().native()) ||
                     file.find("history/content") != std::string::npos)
                contents.insert(content);
        return contents;
    }
    void ExpectNothingLost(const std::set<std::string>& before, bool exported = true) const
    {
        const std::set<std::string> now = Treasures(exported);
        for (const std::string& content : before)
            EXPECT_TRUE(now.contains(content)) << "lost: " << content.substr(0, 20);
    }
};

} // namespace kestrova::testing
