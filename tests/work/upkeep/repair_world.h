#pragma once

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/stored_notes.h"
#include "conversion/sound_converter.h"
#include "pictures/bitmap.h"
#include "storage/storage.h"
#include "storage/zl_file.h"
#include "swap/recovery.h"
#include "upkeep/level_checks.h"
#include "world/world.h"

#include <gtest/gtest.h>

namespace kestrova::testing
{

/// An archive that compresses, with a level that was stored as levels are.
class RepairWorld : public World
{
public:
    static constexpr const char* files = "levels/LEVEL_0001/files/";

    RepairWorld()
    {
        MakeTrle();
        MakeBackupAndArchive();
        session.archive.header.compressLevels = true;
        code = AddLevel("Dawn", {});
        Write("from/dawn.tr4", std::string(5000, 'd') + "dawn");
        Write("from/readme.txt", "how to play");
        Write("from/load.bmp", EncodeBitmap({8, 8, std::vector<std::uint8_t>(8 * 8 * 3, 77)}));
        EXPECT_TRUE(Store("from"));
        EXPECT_TRUE(SaveArchive(session));
        whole = Files();
    }
    Status Store(const std::string& folder)
    {
        return StoreLevelFiles(host, session.Folders(), session.archive, SoundConverterOf(session),
                               root / folder, code, nullptr);
    }
    [[nodiscard]] FileContents Files() const { return Snapshot(files); }
    [[nodiscard]] std::optional<StoredNote> Note() const
    {
        return ReadStoredNote(root / "levels/LEVEL_0001").ValueOr({});
    }
    /// What a check names: `file kind`, by file.
    [[nodiscard]] std::map<std::string, FileFault> Faults()
    {
        LevelChecks checks{session};
        EXPECT_TRUE(checks.Check({code}));
        EXPECT_TRUE(checks.Unchecked().empty());
        std::map<std::string, FileFault> faults;
        for (const CheckedRow& row : checks.Rows())
            faults[row.fault.file] = row.fault.kind;
        return faults;
    }
    bool Repair(const Path& offered = {})
    {
        LevelChecks checks{session};
        return checks.Check({code}) && checks.Repair(offered) && checks.Harmed() == 0;
    }
    LevelCode code = 0;
    FileContents whole;
};

} // namespace kestrova::testing
