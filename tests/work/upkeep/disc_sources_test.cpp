#include "upkeep/disc_sources.h"

#include "discs/disc_notes.h"
#include "platform/real_path.h"
#include "upkeep/repair_world.h"
#include "world/folder_discs.h"

namespace kestrova::testing
{

namespace
{

namespace fs = std::filesystem;

/// The level was put on disc 2, which is at hand, and stayed on the hard disk.
class DiscRepairWorld : public RepairWorld
{
public:
    static constexpr const char* onDisc = "discs/levels2/LEVEL_0001/files/";

    DiscRepairWorld() : discs(root / "discs")
    {
        session.discs = &discs;
        for (const auto& [name, content] : whole)
            Write(onDisc + name, content);
        auto noted = NoteFilesOf(root / files);
        EXPECT_TRUE(noted);
        DiscNote note;
        note.folder = "levels";
        note.Put({2, "Kestrova #2", 0, {}, 0, {{code, true, std::move(noted).Value()}}});
        EXPECT_TRUE(WriteDiscNote(session.Folders().levels, note));
    }
    void Lose(const std::string& name) { fs::remove(root / (files + name)); }
    /// Where the check would take the file from.
    std::string SourceOf(const std::string& name)
    {
        LevelChecks checks{session};
        EXPECT_TRUE(checks.Check({code}));
        for (const CheckedRow& row : checks.Rows())
            if (row.fault.file == name)
                return row.source;
        return "no fault";
    }
    FolderDiscs discs;
};

} // namespace

TEST(DiscSources, GiveBackWhatADiscStillHolds)
{
    DiscRepairWorld world;
    fs::permissions(world / (DiscRepairWorld::onDisc + std::string{"dawn.tr4.zl"}),
                    fs::perms::owner_read);
    world.Lose("dawn.tr4.zl");
    EXPECT_EQ(world.SourceOf("dawn.tr4"), "the disc Kestrova #2");
    EXPECT_TRUE(world.Repair()) << world.host.AllTold();
    EXPECT_EQ(world.Files(), world.whole);
    EXPECT_TRUE(platform::MayWrite(world / (RepairWorld::files + std::string{"dawn.tr4.zl"})));

    // The disc is damaged too: its sums say so.
    world.Lose("readme.txt");
    world.Write(DiscRepairWorld::onDisc + std::string{"readme.txt"}, "how to pray");
    EXPECT_EQ(world.SourceOf("readme.txt"), "");
    EXPECT_FALSE(world.Repair());
    EXPECT_FALSE(world.Has(RepairWorld::files + std::string{"readme.txt"}));
    fs::remove_all(world / "discs");
    EXPECT_FALSE(world.Repair()) << "it is not at hand";
}

TEST(DiscSources, TellWhatNobodyNotedAtStoringOfTheLevelItselfAlone)
{
    for (const bool isOther : {false, true}) {
        DiscRepairWorld world;
        fs::remove(world / "levels/LEVEL_0001/undo/stored.json");
        world.Lose("dawn.tr4.zl");
        if (isOther)
            world.Write(RepairWorld::files + std::string{"readme.txt"}, "of another level");
        EXPECT_EQ(world.SourceOf("dawn.tr4"), isOther ? "" : "the disc Kestrova #2");
        EXPECT_EQ(world.Repair(), !isOther) << world.host.AllTold();
        EXPECT_EQ(world.Files() == world.whole, !isOther);
    }
}

} // namespace kestrova::testing
