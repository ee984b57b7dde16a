#include "world/world.h"

#include "core/staged_file.h"
#include "core/text.h"
#include "session/session.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace kestrova::testing
{

namespace fs = std::filesystem;

World::World() : session{host, machine, list, root / "home"}
{
    for (const char* folder : {"home", "trle", "levels"})
        fs::create_directories(root / folder);
    // What this machine's own person has is nothing to a test.
    ::setenv("HOME", (root / "person").c_str(), 1);
    ::unsetenv("WINEPREFIX");
    ::unsetenv("XDG_DATA_HOME");
    session.preferences.trlePath = (root / "trle").native();
    session.archive.header.mainFolder = session.archive.header.secondaryFolder =
        (root / "levels").native();
    machine.drives = {{root, UINT64_C(1) << 40, true}};
}

void World::MakeTrle(int waves) const
{
    Write("trle/tomb4.exe", "the game");
    Write("trle/Script.dat", "original script");
    Write("trle/English.DAT", "original english");
    Write("trle/LOAD.BMP", "original load picture");
    Write("trle/DATA/Title.tr4", "original title");
    Write("trle/DATA/tut1.tr4", "original tutorial");
    for (int track = 0; track < waves; ++track)
        Write("trle/Audio/" + ZeroPadded(track, 3) + ".wav", "wave " + std::to_string(track));
    Write("trle/script/script.txt", "script source");
    Write("trle/graphics/wads/city.was", "wad");
    Write("trle/sound/samples/step.wav", "sample");
    Write("trle/manual/manual.htm", "manual");
}

void World::MakeBackupAndArchive()
{
    fs::copy(root / "trle", root / "home/backup_trle", fs::copy_options::recursive);
    session.preferences.fullBackup = true;
    for (const char* folder : {"savegames", "backup_savegames", "files", "screenshots"})
        fs::create_directories(root / "home/LEVEL_0000" / folder);
    LevelRecord original;
    original.levelName = "- TRLE: Original configuration -";
    session.archive.levels = {original};
    session.archive.file = root / "home/LevelArchive.kva";
    session.preferences.archivePath = session.archive.file.native();
    ASSERT_TRUE(WriteWholeFile(session.ArchivePath(),
                               FormatArchive({session.archive.header, session.archive.levels})));
}

LevelCode World::AddLevel(const std::string& name, const std::map<std::string, std::string>& files)
{
    LevelRecord level;
    level.levelName = name;
    for (const LevelRecord& other : session.archive.levels)
        level.levelCode = std::max(level.levelCode, other.levelCode + 1);
    const std::string folder = "levels/LEVEL_" + ZeroPadded(level.levelCode, 4);
    for (const char* part : {"savegames", "backup_savegames", "files", "screenshots"})
        fs::create_directories(root / folder / part);
    for (const auto& [file, content] : files)
        Write(folder + "/files/" + file, content);
    session.archive.levels.push_back(level);
    return level.levelCode;
}

Session World::Reopened()
{
    Session fresh{host, machine, list, session.programFolder};
    fresh.preferences = session.preferences;
    fresh.settings = session.settings;
    fresh.archive = session.archive;
    return fresh;
}

std::string SavegameBytes(const std::string& title, int number, const std::string& data)
{
    std::string bytes = title;
    bytes.resize(77, '\0');
    bytes[75] = static_cast<char>(number & 0xFF);
    bytes[76] = static_cast<char>((number >> 8) & 0xFF);
    return bytes + data;
}

} // namespace kestrova::testing
