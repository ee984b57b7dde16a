#pragma once

#include "sandbox/sandbox.h"
#include "session/session.h"
#include "session/shown_list.h"
#include "world/fake_machine.h"
#include "world/scripted_host.h"

namespace kestrova::testing
{

class PlainList : public LevelList
{
public:
    int refreshes = 0;
    std::optional<LevelCode> selected;
    void Refresh() override { ++refreshes; }
    void Select(LevelCode code) override { selected = code; }
    [[nodiscard]] std::optional<LevelCode> Selected() const override { return selected; }
    void ShowActivity(const std::string&) override {}
};

/// A sandbox with a session whose program folder is `home`, Level Editor's folder `trle`, archive
/// folder `levels`.
class World : public Sandbox
{
public:
    World();

    ScriptedHost host;
    FakeMachine machine;
    PlainList list;
    Session session;

    /// A small original Level Editor's folder in `trle`; it passes the folder test with 54 waves.
    void MakeTrle(int waves = 54) const;
    /// A full backup of it in `home/backup_trle`, the level 0000 folder and an archive with the
    /// original configuration.
    void MakeBackupAndArchive();
    /// A level with these files in its `files` folder, as a record of the session.
    LevelCode AddLevel(const std::string& name, const std::map<std::string, std::string>& files);
    /// A second session over the same folders, as a new start of the program has it.
    [[nodiscard]] Session Reopened();
};

/// A savegame file as the game writes it: title, save number at byte 75, some data.
std::string SavegameBytes(const std::string& title, int number, const std::string& data = "data");

} // namespace kestrova::testing
